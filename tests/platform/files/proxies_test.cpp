#include "drawing/AcDbProxyEntity.h"
#include "drawing/RecordFiler.h"
#include "graphics/DisplayList.h"
#include "graphics/Recorder.h"
#include "platform/files/DrawingFileTest.h"

#include <sstream>
#include <utility>

namespace veldrin::testing {

namespace {

// An entity of a module that comes and goes. Its records have a version; one above what the reader knows is
// newer.
class TestValve : public AcDbEntity {
public:
    static constexpr int kNewest = 2;
    static inline int versionWritten = 1;
    static inline int versionRead = 1;
    static inline AcRxClass* descriptor = nullptr;

    static void rxInit() {
        descriptor = newAcRxClass(
            "TestValve", "AcDbEntity", 1, 2, 3, []() -> AcRxObject* { return new TestValve; }, "TEST_VALVE",
            "Valves|1.0");
        acrxBuildClassHierarchy();
    }
    static void unload() { deleteAcRxClass(std::exchange(descriptor, nullptr)); }
    AcRxClass* isA() const override { return descriptor; }

    double width = 0.0;

    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override {
        const Acad::ErrorStatus status = AcDbEntity::dwgOutFields(filer);
        if (status != Acad::eOk) return status;
        filer->writeInt32(versionWritten);
        filer->writeDouble(width);
        filer->writeString("brass");
        filer->writeHardPointerId(layerId());
        return filer->filerStatus();
    }
    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override {
        const Acad::ErrorStatus status = AcDbEntity::dwgInFields(filer);
        if (status != Acad::eOk) return status;
        Adesk::Int32 version = 0;
        filer->readInt32(version);
        if (version > versionRead) return Acad::eMakeMeProxy;
        return filer->readDouble(width);
    }

protected:
    bool subWorldDraw(AcGiWorldDraw* draw) override {
        const AcGePoint3d corners[] = {{0, 0, 1}, {width, 0, 1}};
        const AcGePoint3d ends[] = {{0, 0, 0}, {2, 0, 0}};
        const double bulges[] = {0.5, 0.0};
        AcGiText label;
        label.location = {1, 2, 3};
        label.direction = AcGeVector3d::kYAxis;
        label.height = 2.5;
        label.contents = "DN \xE2\x8C\x80 50";
        AcGiWorldGeometry& geometry = draw->geometry();
        draw->subEntityTraits().setColor(1);
        geometry.polyline(2, corners);
        geometry.polygon(2, corners);
        draw->subEntityTraits().setLineType(database()->continuousLinetype());
        geometry.circle({5, 5, 0}, 1.5, AcGeVector3d::kZAxis);
        geometry.circularArc({5, 5, 0}, 1.5, AcGeVector3d::kZAxis, AcGeVector3d::kXAxis, -1.25,
                             kAcGiArcSector);
        geometry.text(label);
        geometry.fittedCurve({corners, ends, bulges, AcGeVector3d::kZAxis, true});
        return true;
    }
};

class ProxyFiles : public DrawingFileTest {
protected:
    ProxyFiles() {
        TestValve::versionWritten = TestValve::versionRead = 1;
        TestValve::rxInit();
    }
    ~ProxyFiles() override {
        if (TestValve::descriptor) TestValve::unload();
    }

    // A drawing with a valve, saved as a.vqd.
    AcDbHandle saveValve() {
        AcDbDatabase drawing;
        auto valve = std::make_unique<TestValve>();
        valve->width = 12.5;
        const AcDbHandle handle = add(drawing, std::move(valve)).handle();
        EXPECT_EQ(save(drawing, path("a.vqd")), "");
        return handle;
    }
    static AcDbObject* at(AcDbDatabase& database, AcDbHandle handle) {
        AcDbObjectId id;
        EXPECT_EQ(database.getAcDbObjectId(id, handle), Acad::eOk);
        return AcDbObjectAccess::object(id);
    }
    static std::string record(const std::string& file, AcDbHandle handle, const char* column = "record") {
        SqlFile sql(file, SqlFile::Mode::kExisting);
        SqlStatement row(sql, std::string("select ") + column +
                                  ", class from objects left join pictures using (handle) "
                                  "where handle = ?");
        EXPECT_TRUE(row.bind(1, static_cast<std::int64_t>(handle.value())).step());
        return std::string(row.text(1)) + " " + std::string(row.bytes(0));
    }

    // Each primitive as kind, colour, linetype and the box around it.
    static std::vector<std::string> drawn(AcDbObject* object) {
        DisplayList list;
        Recorder recorder(list);
        const ReadAccess access(object->objectId());
        recorder.draw(static_cast<AcDbEntity*>(object));
        std::vector<std::string> all;
        for (std::size_t i = 0; i < list.size(); ++i) {
            const DrawTraits& traits = list.traits(i);
            AcDbExtents box;
            list.addExtents(i, box);
            std::ostringstream text;
            text << static_cast<int>(list.kind(i)) << ' ' << traits.color.colorIndex() << ' '
                 << traits.layer.handle().text() << ' ' << traits.linetype.handle().text();
            for (const AcGePoint3d& corner : {box.minPoint(), box.maxPoint()})
                text << ' ' << corner.x << ' ' << corner.y << ' ' << corner.z;
            if (list.kind(i) == PrimitiveKind::kText) text << ' ' << list.text(i).contents;
            if (list.kind(i) == PrimitiveKind::kArc)
                text << ' ' << list.arc(i).sweep << ' ' << list.arc(i).type;
            all.push_back(text.str());
        }
        return all;
    }
};

TEST_F(ProxyFiles, anEntityWithoutItsClassSurvivesWithRecordAndPicture) {
    const AcDbHandle handle = saveValve();
    const std::string before = record(path("a.vqd"), handle);
    const std::vector<std::string> picture = drawn(at(*open(path("a.vqd")), handle));
    EXPECT_EQ(picture.size(), 6U);
    TestValve::unload();

    const auto opened = open(path("a.vqd"));
    ASSERT_TRUE(opened);
    const auto* proxy = AcDbProxyEntity::cast(at(*opened, handle));
    ASSERT_TRUE(proxy);
    EXPECT_EQ(proxy->originalClassName(), "TestValve");
    EXPECT_EQ(proxy->originalDxfName(), "TEST_VALVE");
    EXPECT_EQ(proxy->applicationDescription(), "Valves|1.0");
    EXPECT_EQ(drawn(at(*opened, handle)), picture);

    // A whole new file and, in the old one, a change of the proxy's own properties.
    ASSERT_EQ(save(*opened, path("b.vqd")), "");
    EXPECT_EQ(record(path("b.vqd"), handle), before);
    EXPECT_EQ(drawn(at(*open(path("b.vqd")), handle)), picture);
    ASSERT_TRUE(AcDbObjectPointer<AcDbEntity>(proxy->objectId(), AcDb::kForWrite));
    ASSERT_EQ(save(*opened, path("b.vqd")), "");
    EXPECT_EQ(record(path("b.vqd"), handle), before);

    // With its class it is alive again, in the open drawing and in one opened later.
    TestValve::rxInit();
    EXPECT_EQ(static_cast<TestValve*>(at(*opened, handle))->width, 12.5);
    EXPECT_EQ(at(*opened, handle)->isA(), TestValve::descriptor);
    const auto later = open(path("b.vqd"));
    EXPECT_EQ(at(*later, handle)->isA(), TestValve::descriptor);
    EXPECT_EQ(drawn(at(*later, handle)), picture);
}

TEST_F(ProxyFiles, aNewerRecordSurvivesAnOlderReader) {
    TestValve::versionWritten = TestValve::versionRead = TestValve::kNewest;
    const AcDbHandle handle = saveValve();
    const std::string before = record(path("a.vqd"), handle);
    TestValve::versionRead = 1;
    const auto opened = open(path("a.vqd"));
    ASSERT_TRUE(opened);
    EXPECT_TRUE(AcDbProxyEntity::cast(at(*opened, handle)));
    ASSERT_EQ(save(*opened, path("b.vqd")), "");
    EXPECT_EQ(record(path("b.vqd"), handle), before);
}

TEST_F(ProxyFiles, thePictureFollowsTheEntityAndGoesWithIt) {
    const AcDbHandle handle = saveValve();
    const std::string before = record(path("a.vqd"), handle, "picture");
    const auto opened = open(path("a.vqd"));
    const AcDbObjectId id = at(*opened, handle)->objectId();
    static_cast<TestValve*>(AcDbObjectPointer<AcDbEntity>(id, AcDb::kForWrite).object())->width = 99.0;
    ASSERT_EQ(save(*opened, path("a.vqd")), "");
    EXPECT_NE(record(path("a.vqd"), handle, "picture"), before);
    AcDbObjectPointer<AcDbEntity>(id, AcDb::kForWrite)->erase();
    ASSERT_EQ(save(*opened, path("a.vqd")), "");
    EXPECT_EQ(ask(path("a.vqd"), "select count(*) from pictures"), 0);
}

TEST_F(ProxyFiles, aDamagedPictureIsLeftOut) {
    const AcDbHandle handle = saveValve();
    TestValve::unload();
    for (const char* bytes : {"x'01'", "x'0201'", "substr(picture, 1, length(picture) - 3)", "x'0263'"}) {
        edit(path("a.vqd"), std::string("update pictures set picture = ") + bytes);
        const auto opened = open(path("a.vqd"));
        ASSERT_TRUE(opened) << bytes;
        EXPECT_TRUE(drawn(at(*opened, handle)).empty()) << bytes;
    }
}

} // namespace

} // namespace veldrin::testing
