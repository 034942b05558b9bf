#include "platform/drawing/Drawing.h"

#include "drawing/AcDbRegAppTable.h"
#include "runtime/CException.h"
#include "runtime/ResbufChain.h"

namespace veldrin::tests {
namespace {

using Objects = Drawing;

TEST_F(Objects, IdOfADrawingThatIsGoneFindsNothing) {
    auto other = std::make_unique<AcDbDatabase>();
    const AcDbObjectId id = addLine(*other, 1.0);
    ads_name name;
    ASSERT_EQ(acdbGetAdsName(name, id), Acad::eOk);
    other.reset();
    const AcDbDatabase next; // must not take over the generation
    EXPECT_TRUE(id.isErased());
    EXPECT_FALSE(id.isValid());
    EXPECT_EQ(id.database(), nullptr);
    EXPECT_TRUE(id.handle().isNull());
    AcDbObject* object = nullptr;
    EXPECT_EQ(acdbOpenAcDbObject(object, id, AcDb::kForRead, true), Acad::ePermanentlyErased);
    AcDbObjectId named;
    EXPECT_EQ(acdbGetObjectId(named, name), Acad::eInvalidInput);
    EXPECT_EQ(acdbGetAdsName(name, id), Acad::eInvalidInput);
}

TEST_F(Objects, OnlyNamesThatTheHostGaveAreNames) {
    const AcDbObjectId line = addLine();
    ads_name name;
    ASSERT_EQ(acdbGetAdsName(name, line), Acad::eOk);
    setErased(line);
    AcDbObjectId id;
    EXPECT_EQ(acdbGetObjectId(id, name), Acad::eOk) << "an erased entity keeps its name";
    EXPECT_EQ(id, line);
    const ads_name otherSlot = {name[0] + 1, name[1]};
    const ads_name noCheck = {name[0], 0};
    const ads_name zeros = {0, 0};
    for (const auto& garbage : {otherSlot, noCheck, zeros}) {
        EXPECT_EQ(acdbGetObjectId(id, garbage), Acad::eInvalidInput);
        EXPECT_TRUE(id.isNull());
    }
}

TEST_F(Objects, ManyReadOrOneWrites) {
    const AcDbObjectId id = addLine();
    AcDbObject* first = nullptr;
    AcDbObject* second = nullptr;
    ASSERT_EQ(acdbOpenAcDbObject(first, id, AcDb::kForRead), Acad::eOk);
    ASSERT_EQ(acdbOpenAcDbObject(second, id, AcDb::kForRead), Acad::eOk);
    EXPECT_EQ(first->upgradeOpen(), Acad::eWasOpenForRead);
    EXPECT_EQ(acdbOpenAcDbObject(second, id, AcDb::kForWrite), Acad::eWasOpenForRead);
    EXPECT_THROW(first->assertWriteEnabled(), CException);
    EXPECT_EQ(first->close(), Acad::eOk);
    EXPECT_EQ(first->upgradeOpen(), Acad::eOk);
    EXPECT_EQ(acdbOpenAcDbObject(second, id, AcDb::kForRead), Acad::eWasOpenForWrite);
    EXPECT_EQ(acdbOpenAcDbObject(second, id, AcDb::kForNotify), Acad::eOk) << "notification minds nobody";
    EXPECT_EQ(second->close(), Acad::eOk);
    EXPECT_TRUE(first->isWriteEnabled()) << "the writer's opening is another";
    EXPECT_EQ(first->downgradeOpen(), Acad::eOk);
    EXPECT_EQ(first->erase(), Acad::eNotOpenForWrite);
    EXPECT_EQ(first->close(), Acad::eOk);
    EXPECT_EQ(first->close(), Acad::eNotOpenForRead);
    EXPECT_THROW(first->assertReadEnabled(), CException);
}

TEST_F(Objects, WrongKindIsClosedAgain) {
    const AcDbObjectId id = addLine();
    const AcDbObjectPointer<AcDbLayerTableRecord> layer(id, AcDb::kForWrite);
    EXPECT_EQ(layer.openStatus(), Acad::eNotThatKindOfClass);
    EXPECT_EQ(AcDbObjectPointer<AcDbLine>(id, AcDb::kForWrite).openStatus(), Acad::eOk);
}

TEST_F(Objects, AnErasedObjectOpensOnlyWhenAskedFor) {
    const AcDbObjectId id = addLine();
    setErased(id);
    EXPECT_EQ(AcDbObjectPointer<AcDbLine>(id).openStatus(), Acad::eWasErased);
    setErased(id, false);
    EXPECT_FALSE(id.isErased());
    const AcDbObjectPointer<AcDbBlockTableRecord> space(db.modelSpaceId());
    EXPECT_EQ(space->entityIds(), std::vector{id}) << "its place in the block stays";
}

TEST_F(Objects, AppendRefusesAndLeavesTheEntityToTheCaller) {
    auto line = std::make_unique<AcDbLine>();
    const AcDbObjectId placed = addLine();
    AcDbObjectPointer<AcDbBlockTableRecord> readOnly(db.modelSpaceId());
    EXPECT_EQ(readOnly->appendAcDbEntity(line.get()), Acad::eNotOpenForWrite);
    AcDbBlockTableRecord loose;
    EXPECT_EQ(loose.appendAcDbEntity(line.get()), Acad::eNotInDatabase);
    EXPECT_TRUE(line->objectId().isNull());
    AcDbObjectPointer<AcDbLine> twice(placed, AcDb::kForWrite);
    ASSERT_EQ(readOnly->upgradeOpen(), Acad::eOk);
    EXPECT_EQ(readOnly->appendAcDbEntity(twice.object()), Acad::eAlreadyInDatabase);
    EXPECT_EQ(readOnly->entityIds().size(), 1U);
}

TEST_F(Objects, HandlesOfAReaderKeepTheirOrderInLookUp) {
    AcDbDatabase other;
    const std::uint64_t seed = other.handseed().value();
    std::vector<AcDbObjectId> lines;
    for (int i = 0; i < 3; ++i) lines.push_back(addLine(other, i));
    AcDbObjectId id;
    EXPECT_EQ(other.getAcDbObjectId(id, AcDbHandle(seed + 1)), Acad::eOk);
    EXPECT_EQ(id, lines[1]);
    EXPECT_EQ(other.getAcDbObjectId(id, other.handseed()), Acad::eUnknownHandle);
    EXPECT_TRUE(id.isNull());
    EXPECT_EQ(AcDbHandle::fromText(AcDbHandle(0x1AB).text()), AcDbHandle(0x1AB));
    for (const char* wrong : {"", "1G", "-1", "11112222333344445"})
        EXPECT_TRUE(AcDbHandle::fromText(wrong).isNull()) << wrong;
}

TEST_F(Objects, GenerationsMoveWithWhatIsDrawn) {
    const AcDbObjectId line = addLine();
    const std::uint64_t tables = db.tablesGeneration();
    std::uint64_t graphics = db.graphicsGeneration();
    { const AcDbObjectPointer<AcDbLine> reader(line); }
    EXPECT_EQ(db.graphicsGeneration(), graphics);
    setLength(line, 5.0);
    EXPECT_GT(db.graphicsGeneration(), graphics);
    addLine();
    EXPECT_EQ(db.tablesGeneration(), tables) << "a new entity changes no table";
    addLayer("L");
    EXPECT_GT(db.tablesGeneration(), tables);
}

TEST_F(Objects, ExtendedDataIsKeptByApplication) {
    const AcDbObjectId id = addLine();
    {
        AcDbObjectPointer<AcDbRegAppTable> table(db.regAppTableId(), AcDb::kForWrite);
        auto* application = new AcDbRegAppTableRecord;
        application->setName("Mine");
        ASSERT_EQ(table->add(application), Acad::eOk);
        application->close();
    }
    AcDbObjectPointer<AcDbLine> line(id, AcDb::kForWrite);
    const auto set = [&](ResbufPtr chain) { return line->setXData(chain.get()); };
    EXPECT_EQ(set(ResbufPtr(acutBuildList(1001, "Nobody", 1000, "x", 0))), Acad::eKeyNotFound);
    EXPECT_EQ(set(ResbufPtr(acutBuildList(1000, "no application", 0))), Acad::eInvalidInput);
    EXPECT_EQ(set(ResbufPtr(acutBuildList(1001, "Mine", 40, 1.0, 0))), Acad::eInvalidInput);
    EXPECT_EQ(set(ResbufPtr(acutBuildList(1001, "Mine", 1000, "a", 1001, "ACAD", 1070, 7, 0))), Acad::eOk);
    EXPECT_EQ(set(ResbufPtr(acutBuildList(1001, "MINE", 1000, "b", 0))), Acad::eOk);
    const ResbufPtr mine(line->xData("mine"));
    ASSERT_TRUE(mine && mine->rbnext);
    EXPECT_STREQ(mine->rbnext->resval.rstring, "b");
    EXPECT_EQ(mine->rbnext->rbnext, nullptr);
    EXPECT_EQ(set(ResbufPtr(acutBuildList(1001, "Mine", 0))), Acad::eOk);
    EXPECT_EQ(line->xData("Mine"), nullptr);
    const ResbufPtr others(line->xData());
    EXPECT_STREQ(others->resval.rstring, "ACAD");
}

} // namespace
} // namespace veldrin::tests
