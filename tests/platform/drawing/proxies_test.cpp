#include "platform/drawing/Drawing.h"

#include "drawing/AcDbObjectAccess.h"
#include "drawing/AcDbProxyEntity.h"
#include "drawing/RecordFiler.h"
#include "platform/drawing/TestPart.h"
#include "runtime/CException.h"

#include <optional>

namespace veldrin::tests {
namespace {

class Proxies : public Drawing {
protected:
    AcDbObjectId addPart(double size) {
        auto* part = new TestPart;
        part->size = size;
        part->note.setContents("note");
        part->layerOfNote = addLayer("Notes" + std::to_string(size));
        return append(db, part);
    }
    static double sizeOf(AcDbObjectId id) {
        const AcDbObjectPointer<TestPart> part(id, AcDb::kForRead, true);
        return part ? part->size : -1.0;
    }
    static std::string itemsOf(AcDbObjectId id) {
        const AcDbObjectPointer<AcDbProxyEntity> proxy(id, AcDb::kForRead, true);
        return proxy ? proxy->record() : "no proxy";
    }
    std::optional<TestPartClass> partClass{std::in_place};
};

TEST_F(Proxies, ObjectsOutliveTheirClass) {
    const AcDbObjectId part = addPart(1.5);
    const AcDbObjectId erased = addPart(2.5);
    const AcDbObjectId line = addLine();
    { AcDbObjectPointer<TestPart>(part, AcDb::kForWrite)->setColorIndex(3); }
    setErased(erased);
    partClass.reset();
    {
        const AcDbObjectPointer<AcDbProxyEntity> proxy(part);
        ASSERT_EQ(proxy.openStatus(), Acad::eOk);
        EXPECT_EQ(proxy->originalClassName(), "TestPart");
        EXPECT_EQ(proxy->originalDxfName(), "TESTPART");
        EXPECT_EQ(proxy->colorIndex(), 3) << "the base part stays readable";
        EXPECT_EQ(proxy->ownerId(), db.modelSpaceId());
        EXPECT_EQ(proxy->objectId(), part);
    }
    EXPECT_EQ(line.objectClass(), AcDbLine::desc());
    partClass.emplace();
    EXPECT_EQ(sizeOf(part), 1.5);
    EXPECT_EQ(AcDbObjectPointer<TestPart>(part)->note.contents(), "note");
    EXPECT_TRUE(erased.isErased());
    EXPECT_EQ(sizeOf(erased), 2.5);
}

TEST_F(Proxies, UndoReachesAcrossTheProxy) {
    const AcDbObjectId id = addPart(1.0);
    db.undoLog().begin("SIZE");
    { AcDbObjectPointer<TestPart>(id, AcDb::kForWrite)->size = 2.0; }
    db.undoLog().end();
    const std::string before = lastEntry(UndoLog::Kind::kState)->record;
    partClass.reset();
    {
        AcDbObjectPointer<AcDbProxyEntity> proxy(id, AcDb::kForWrite);
        ASSERT_EQ(restoreState(*proxy, before), Acad::eOk);
    }
    partClass.emplace();
    EXPECT_EQ(sizeOf(id), 1.0);
}

TEST_F(Proxies, AClassWithAnOpenObjectStaysAndSoDoAllItsObjects) {
    const AcDbObjectId closed = addPart(1.0);
    const AcDbObjectId open = addPart(2.0);
    {
        const AcDbObjectPointer<TestPart> holder(open);
        EXPECT_THROW(deleteAcRxClass(partClass->get()), CException);
    }
    EXPECT_EQ(acrxClassByName("TestPart"), partClass->get());
    EXPECT_EQ(sizeOf(closed), 1.0);
    EXPECT_EQ(sizeOf(open), 2.0);
}

TEST_F(Proxies, ANewerRecordStaysAProxyAndPassesThroughUnchanged) {
    TestPart newer;
    newer.version = TestPart::kVersion + 1;
    RecordWriter writer(AcDb::kFileFiler);
    newer.dwgOutFields(&writer);
    writer.writeString("what only the newer class knows");
    const std::string record = writer.record();
    const std::string items = record.substr(writer.endOfBase());

    Acad::ErrorStatus status = Acad::eNotApplicable;
    auto object = objectFromRecord({"TestPart", "TESTPART", "Tests", ""}, true, db, record, status);
    ASSERT_EQ(status, Acad::eOk);
    auto* proxy = dynamic_cast<AcDbProxyEntity*>(object.get());
    ASSERT_NE(proxy, nullptr);
    object.release();
    const AcDbObjectId id = append(db, proxy);
    partClass.reset();
    partClass.emplace();
    EXPECT_EQ(itemsOf(id), items) << "registering the class again does not read what it cannot read";
    std::string saved;
    ASSERT_EQ(AcDbObjectAccess::record(*AcDbObjectAccess::object(id), AcDb::kFileFiler, saved), Acad::eOk);
    EXPECT_TRUE(saved.ends_with(items));
    const std::unique_ptr<AcDbObject> copy(AcDbObjectPointer<AcDbProxyEntity>(id)->clone());
    ASSERT_NE(copy, nullptr);
    EXPECT_EQ(proxyContentOf(*copy)->items, items);
    EXPECT_EQ(proxyContentOf(*copy)->className, "TestPart");
}

TEST_F(Proxies, UnknownClassesAndDamagedRecords) {
    TestPart part;
    RecordWriter writer(AcDb::kFileFiler);
    part.dwgOutFields(&writer);
    Acad::ErrorStatus status = Acad::eOk;
    auto proxy = objectFromRecord({"NeverHeardOf", "X", "Y", ""}, true, db, writer.record(), status);
    ASSERT_TRUE(proxy && proxyContentOf(*proxy));
    EXPECT_EQ(proxyContentOf(*proxy)->className, "NeverHeardOf");
    const std::string cut = writer.record().substr(0, writer.endOfBase() + 3);
    EXPECT_EQ(objectFromRecord({"TestPart", "", "", ""}, true, db, cut, status), nullptr);
    EXPECT_EQ(status, Acad::eBadRecord);
}

} // namespace
} // namespace veldrin::tests
