#include "platform/drawing/Drawing.h"

#include "drawing/AcDbArc.h"
#include "drawing/AcDbObjectAccess.h"
#include "drawing/DxfListFiler.h"
#include "drawing/EntityList.h"

namespace veldrin::tests {
namespace {

class EntityLists : public Drawing {
protected:
    static std::vector<int> codesOf(const resbuf* list) {
        std::vector<int> codes;
        for (; list; list = list->rbnext) codes.push_back(list->restype);
        return codes;
    }
    static const resbuf* group(const ResbufPtr& list, int code) {
        const resbuf* item = list.get();
        while (item && item->restype != code) item = item->rbnext;
        return item;
    }
    static Acad::ErrorStatus modify(AcDbObjectId id, resbuf* list) {
        const ResbufPtr owned(list);
        return acdbEntMod(id, list);
    }
    static constexpr double kFive[3] = {5.0, 0.0, 0.0};
};

TEST_F(EntityLists, ALineTellsItselfInTheUsualOrder) {
    const AcDbObjectId id = addLine(2.0);
    const ResbufPtr list(acdbEntGet(id));
    EXPECT_EQ(codesOf(list.get()), (std::vector<int>{-1, 0, 330, 5, 100, 67, 410, 8, 100, 10, 11, 210}));
    EXPECT_STREQ(group(list, 0)->resval.rstring, "LINE");
    EXPECT_EQ(group(list, 5)->resval.rstring, id.handle().text());
    EXPECT_EQ(group(list, 11)->resval.rpoint[0], 2.0);
    AcDbObjectId owner;
    ASSERT_EQ(acdbGetObjectId(owner, group(list, 330)->resval.rlname), Acad::eOk);
    EXPECT_EQ(owner, db.modelSpaceId());
    setErased(id);
    EXPECT_EQ(acdbEntGet(id), nullptr);
}

TEST_F(EntityLists, TheListItselfChangesNothing) {
    const AcDbObjectId layer = addLayer("L", 5);
    { AcDbObjectPointer<AcDbLayerTableRecord>(layer, AcDb::kForWrite)->setIsOff(true); }
    const AcDbObjectId arc = append(db, new AcDbArc({1.0, 2.0, 3.0}, 4.0, 0.5, 1.5));
    for (const AcDbObjectId id : {layer, arc, addLine(3.0), db.header().textstyle, db.continuousLinetype()}) {
        const ResbufPtr before(acdbEntGet(id));
        std::string recordBefore, recordAfter;
        AcDbObjectAccess::record(*AcDbObjectAccess::object(id), AcDb::kFileFiler, recordBefore);
        ASSERT_EQ(acdbEntMod(id, before.get()), Acad::eOk) << group(before, 0)->resval.rstring;
        AcDbObjectAccess::record(*AcDbObjectAccess::object(id), AcDb::kFileFiler, recordAfter);
        EXPECT_EQ(recordBefore, recordAfter) << group(before, 0)->resval.rstring;
    }
}

TEST_F(EntityLists, GroupsMayBeAppendedOrComeWithoutMarkers) {
    const AcDbObjectId id = addLine(1.0);
    ResbufPtr list(acdbEntGet(id));
    resbuf* last = list.get();
    while (last->rbnext) last = last->rbnext;
    last->rbnext = acutBuildList(62, 1, 8, "Fresh", 0);
    ASSERT_EQ(acdbEntMod(id, list.get()), Acad::eOk);
    ASSERT_EQ(modify(id, acutBuildList(8, "FRESH", 11, kFive, 6, "Continuous", 0)), Acad::eOk);
    const AcDbObjectPointer<AcDbLine> line(id);
    EXPECT_EQ(line->colorIndex(), 1);
    EXPECT_EQ(line->layer(), "Fresh") << "a layer that was not there is made, once";
    EXPECT_EQ(line->linetypeId(), db.continuousLinetype());
    EXPECT_EQ(line->endPoint().x, 5.0);
    EXPECT_EQ(line->startPoint().x, 0.0) << "what the list does not say stays";
}

// A class reads its own groups and ignores the rest, so what belongs to the entity must not come to it.
TEST_F(EntityLists, CommonGroupsComeFirstWhereverTheyStand) {
    const ResbufPtr list(
        acutBuildList(100, "AcDbEntity", 100, "Part", 40, 1.0, 62, 3, 100, "Rest", 41, 2.0, 8, "L", 0));
    DxfListReader reader(&db, list.get(), true);
    std::vector<int> codes;
    AcDbDxfItem item;
    while (reader.readItem(item) == Acad::eOk) codes.push_back(item.code);
    EXPECT_EQ(codes, (std::vector{62, 8, 100, 40, 100, 41}));
    EXPECT_EQ(reader.filerStatus(), Acad::eOk) << "the end is no failure";

    DxfListReader byParts(&db, list.get(), true);
    EXPECT_FALSE(byParts.atSubclassData("Part")) << "the common groups stand before it";
    byParts.readItem(item);
    byParts.readItem(item);
    EXPECT_FALSE(byParts.atSubclassData("Other"));
    EXPECT_TRUE(byParts.atSubclassData("Part"));
    byParts.readItem(item);
    EXPECT_EQ(item.real, 1.0);

    const ResbufPtr typed(acutBuildList(40, 1.0, 41, 2.0, 0));
    DxfListReader bare(&db, typed.get(), true);
    for (const char* part : {"Part", "Rest"}) {
        ASSERT_TRUE(bare.atSubclassData(part));
        ASSERT_EQ(bare.readItem(item), Acad::eOk);
        EXPECT_EQ(item.code, 40) << "without markers every part sees the whole list";
    }
}

TEST_F(EntityLists, AListThatFailsLeavesTheObjectAsItWas) {
    const AcDbObjectId id = addLine(1.0);
    EXPECT_EQ(modify(id, acutBuildList(RTDXF0, "CIRCLE", 11, kFive, 0)), Acad::eInvalidInput);
    EXPECT_NE(modify(id, acutBuildList(62, 3, 6, "NoSuchLinetype", 0)), Acad::eOk);
    EXPECT_EQ(modify(id, acutBuildList(62, 3, 11, kFive, -3, 1001, "Unknown", 1000, "x", 0)),
              Acad::eKeyNotFound);
    const AcDbObjectId layer = addLayer("Other");
    EXPECT_EQ(modify(layer, acutBuildList(70, 4, 2, "0", 0)), Acad::eDuplicateRecordName);
    EXPECT_FALSE(AcDbObjectPointer<AcDbLayerTableRecord>(layer)->isLocked());
    { AcDbObjectPointer<AcDbLayerTableRecord>(db.layerZero(), AcDb::kForWrite)->setIsLocked(true); }
    EXPECT_EQ(modify(id, acutBuildList(62, 3, 0)), Acad::eOnLockedLayer);
    const AcDbObjectPointer<AcDbLine> line(id, AcDb::kForWrite);
    ASSERT_EQ(line.openStatus(), Acad::eOk) << "and closed";
    EXPECT_EQ(line->colorIndex(), AcCmColor::kByLayer);
    EXPECT_EQ(line->endPoint().x, 1.0);
}

TEST_F(EntityLists, LayersAreTurnedOffByTheirColour) {
    const AcDbObjectId id = addLayer("L");
    ASSERT_EQ(modify(id, acutBuildList(62, -3, 70, 5, 290, 0, 370, 50, 0)), Acad::eOk);
    const AcDbObjectPointer<AcDbLayerTableRecord> layer(id);
    EXPECT_TRUE(layer->isOff() && layer->isFrozen() && layer->isLocked() && !layer->isPlottable());
    EXPECT_EQ(layer->color().colorIndex(), 3);
    EXPECT_EQ(layer->lineWeight(), 50);
    const ResbufPtr list(acdbEntGet(id));
    EXPECT_EQ(group(list, 62)->resval.rint, -3);
}

TEST_F(EntityLists, ExtendedDataOfTheApplicationsThatAreAskedFor) {
    const AcDbObjectId id = addLine();
    ASSERT_EQ(modify(id, acutBuildList(-3, 1001, "ACAD", 1000, "a", 1070, 3, 0)), Acad::eOk);
    EXPECT_EQ(group(ResbufPtr(acdbEntGet(id)), -3), nullptr);
    EXPECT_EQ(group(ResbufPtr(acdbEntGet(id, {"OTHER"})), -3), nullptr);
    for (const char* pattern : {"acad", "*", "A?A*"}) {
        const ResbufPtr list(acdbEntGet(id, {pattern}));
        const resbuf* const mark = group(list, -3);
        ASSERT_NE(mark, nullptr) << pattern;
        EXPECT_EQ(codesOf(mark), (std::vector<int>{-3, 1001, 1000, 1070}));
    }
    ASSERT_EQ(modify(id, acutBuildList(-3, 1001, "ACAD", 0)), Acad::eOk);
    EXPECT_EQ(group(ResbufPtr(acdbEntGet(id, {"*"})), -3), nullptr);
}

} // namespace
} // namespace veldrin::tests
