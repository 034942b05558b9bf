#include "platform/drawing/Drawing.h"

#include "drawing/AcDbMText.h"

namespace veldrin::tests {
namespace {

using Kind = UndoLog::Kind;

class Undo : public Drawing {
protected:
    std::size_t count(Kind kind) {
        std::size_t found = 0;
        for (const auto& entry : db.undoLog().steps().back().entries) found += entry.kind == kind ? 1 : 0;
        return found;
    }
    void takeBack(AcDbObjectId id) {
        const UndoLog::Entry* const before = lastEntry(Kind::kState);
        ASSERT_NE(before, nullptr);
        const std::string record = before->record;
        AcDbObjectPointer<AcDbObject> object(id, AcDb::kForWrite, true);
        ASSERT_EQ(object.openStatus(), Acad::eOk);
        ASSERT_EQ(restoreState(*object, record), Acad::eOk);
    }
};

TEST_F(Undo, TheStateBeforeTheFirstChangeOfAStepIsFiled) {
    const AcDbObjectId id = addLine(1.0);
    const AcDbObjectId layer = addLayer("L");
    db.undoLog().begin("STRETCH");
    setLength(id, 2.0);
    {
        AcDbObjectPointer<AcDbLine> line(id, AcDb::kForWrite);
        line->setEndPoint({3.0, 0.0, 0.0});
        line->setLayer(layer);
        line->setColorIndex(1);
    }
    db.undoLog().end();
    EXPECT_EQ(db.undoLog().steps().back().label, "STRETCH");
    EXPECT_EQ(count(Kind::kState), 1U);
    takeBack(id);
    const AcDbObjectPointer<AcDbLine> line(id);
    EXPECT_EQ(line->endPoint().x, 1.0);
    EXPECT_EQ(line->layerId(), db.layerZero());
    EXPECT_EQ(line->colorIndex(), AcCmColor::kByLayer);
}

TEST_F(Undo, ARenamedLayerIsFoundUnderItsOldNameAgain) {
    const AcDbObjectId id = addLayer("Old", 3);
    db.undoLog().begin("LAYER");
    {
        AcDbObjectPointer<AcDbLayerTableRecord> layer(id, AcDb::kForWrite);
        ASSERT_EQ(layer->setName("New"), Acad::eOk);
        layer->setColor(AcCmColor(5));
        layer->setIsLocked(true);
    }
    db.undoLog().end();
    const AcDbObjectPointer<AcDbLayerTable> table(db.layerTableId());
    ASSERT_TRUE(table->has("New"));
    takeBack(id);
    EXPECT_TRUE(table->has("OLD"));
    EXPECT_FALSE(table->has("New"));
    const AcDbObjectPointer<AcDbLayerTableRecord> layer(id);
    EXPECT_EQ(layer->color().colorIndex(), 3);
    EXPECT_FALSE(layer->isLocked());
}

TEST_F(Undo, AnIdOfAnErasedObjectIsInTheRecord) {
    const AcDbObjectId layer = addLayer("L");
    const AcDbObjectId id = addLine();
    { AcDbObjectPointer<AcDbLine>(id, AcDb::kForWrite)->setLayer(layer); }
    setErased(layer);
    db.undoLog().begin("CHANGE");
    { AcDbObjectPointer<AcDbLine>(id, AcDb::kForWrite)->setLayer(db.layerZero()); }
    db.undoLog().end();
    takeBack(id);
    EXPECT_EQ(AcDbObjectPointer<AcDbLine>(id)->layerId(), layer);
}

TEST_F(Undo, StepsNestAndEmptyOnesLeaveNoTrace) {
    const std::size_t before = db.undoLog().steps().size();
    db.undoLog().begin("NOTHING");
    db.undoLog().begin("INNER");
    db.undoLog().end();
    db.undoLog().end();
    EXPECT_EQ(db.undoLog().steps().size(), before);
    db.undoLog().begin("OUTER");
    const AcDbObjectId id = addLine();
    db.undoLog().begin("INNER");
    setLength(id, 2.0);
    setErased(id);
    HeaderVariables header = db.header();
    header.ltscale = 7.0;
    db.setHeader(header);
    db.undoLog().end();
    db.undoLog().end();
    ASSERT_EQ(db.undoLog().steps().size(), before + 1);
    EXPECT_EQ(count(Kind::kAppended), 1U);
    EXPECT_EQ(count(Kind::kErased), 1U);
    ASSERT_NE(lastEntry(Kind::kHeader), nullptr);
    EXPECT_EQ(lastEntry(Kind::kHeader)->header->ltscale, 1.0);
    EXPECT_EQ(lastEntry(Kind::kState)->id, db.modelSpaceId())
        << "what came into being in the step needs no state";
}

// Else every append would file all that was appended before it.
TEST_F(Undo, AppendingDoesNotFileTheBlocksContents) {
    for (int i = 0; i < 200; ++i) addLine();
    db.undoLog().begin("LINE");
    const AcDbObjectId last = addLine();
    db.undoLog().end();
    const UndoLog::Entry* const state = lastEntry(Kind::kState);
    ASSERT_TRUE(state && state->id == db.modelSpaceId());
    EXPECT_LT(state->record.size(), 200U);
    takeBack(db.modelSpaceId());
    const AcDbObjectPointer<AcDbBlockTableRecord> space(db.modelSpaceId());
    EXPECT_EQ(space->entityIds().size(), 201U);
    EXPECT_EQ(space->entityIds().back(), last);
}

TEST_F(Undo, CancelTakesBackThisOpeningOnly) {
    const AcDbObjectId id = addLine(1.0);
    db.undoLog().begin("TWICE");
    setLength(id, 2.0);
    {
        AcDbObject* line = nullptr;
        ASSERT_EQ(acdbOpenAcDbObject(line, id, AcDb::kForWrite), Acad::eOk);
        static_cast<AcDbLine*>(line)->setEndPoint({9.0, 0.0, 0.0});
        ASSERT_EQ(line->erase(), Acad::eOk);
        EXPECT_EQ(line->cancel(), Acad::eOk);
    }
    db.undoLog().end();
    EXPECT_FALSE(id.isErased());
    EXPECT_EQ(lengthOf(id), 2.0);
    AcDbObjectPointer<AcDbBlockTableRecord> space(db.modelSpaceId(), AcDb::kForWrite);
    auto* fresh = new AcDbLine;
    space->appendAcDbEntity(fresh);
    fresh->cancel();
    EXPECT_TRUE(fresh->objectId().isErased());
}

} // namespace
} // namespace veldrin::tests
