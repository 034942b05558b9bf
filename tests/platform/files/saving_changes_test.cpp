#include "drawing/AcDbLayerTable.h"
#include "platform/files/DrawingFileTest.h"

#include <fstream>

namespace fs = std::filesystem;

namespace veldrin::testing {

namespace {

class SavingChanges : public DrawingFileTest {
protected:
    static void setLength(AcDbObjectId id, double length) {
        const AcDbObjectPointer<AcDbLine> line(id, AcDb::kForWrite);
        ASSERT_TRUE(line);
        line->setEndPoint({length, 0, 0});
    }
    static void setErased(AcDbObjectId id, bool erased) {
        const AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForWrite, true);
        ASSERT_TRUE(entity);
        EXPECT_EQ(entity->erase(erased), Acad::eOk);
    }
    static double length(AcDbDatabase& database, AcDbHandle handle) {
        AcDbObjectId id;
        EXPECT_EQ(database.getAcDbObjectId(id, handle), Acad::eOk);
        const AcDbObjectPointer<AcDbLine> line(id);
        return line ? line->endPoint().x : -1.0;
    }
};

TEST_F(SavingChanges, onlyWhatChangedIsWritten) {
    AcDbDatabase drawing;
    const AcDbObjectId kept = addLine(drawing, 1.0);
    const AcDbObjectId changed = addLine(drawing, 2.0);
    const AcDbObjectId erased = addLine(drawing, 3.0);
    ASSERT_EQ(save(drawing, path("a.vqd")), "");
    const std::string wasWritten = "select count(*) from objects where record <> x'00' and handle = ";
    edit(path("a.vqd"), "update objects set record = x'00'");
    setLength(changed, 20.0);
    setErased(erased, true);
    const AcDbObjectId added = addLine(drawing, 4.0);
    ASSERT_EQ(save(drawing, path("a.vqd")), "");
    EXPECT_EQ(ask(path("a.vqd"), wasWritten + handleNumber(kept)), 0);
    EXPECT_EQ(ask(path("a.vqd"), wasWritten + handleNumber(changed)), 1);
    EXPECT_EQ(ask(path("a.vqd"), wasWritten + handleNumber(added)), 1);
    EXPECT_EQ(ask(path("a.vqd"), wasWritten + handleNumber(drawing.modelSpaceId())), 1);
    EXPECT_EQ(ask(path("a.vqd"), "select count(*) from objects where handle = " + handleNumber(erased)), 0);
    // With a name of its own the file is whole again.
    ASSERT_EQ(save(drawing, path("b.vqd")), "");
    EXPECT_EQ(contents(*open(path("b.vqd"))), contents(drawing));
}

TEST_F(SavingChanges, manySavesInARowAddUp) {
    AcDbDatabase drawing;
    const AcDbObjectId first = addLine(drawing, 1.0);
    ASSERT_EQ(save(drawing, path("a.vqd")), "");
    auto opened = open(path("a.vqd"));
    ASSERT_TRUE(opened);
    for (int round = 0; round < 5; ++round) {
        AcDbObjectId id;
        ASSERT_EQ(opened->getAcDbObjectId(id, first.handle()), Acad::eOk);
        setLength(id, 10.0 + round);
        addLine(*opened, round);
        ASSERT_EQ(save(*opened, path("a.vqd")), "");
        const auto again = open(path("a.vqd"));
        ASSERT_TRUE(again);
        EXPECT_EQ(contents(*again), contents(*opened));
    }
}

// What was erased at a full save is listed nowhere in the file, and coming back does not change its owner.
TEST_F(SavingChanges, whatComesBackFromBeingErasedIsListedByItsOwner) {
    AcDbDatabase drawing;
    const AcDbObjectId line = addLine(drawing, 1.0);
    auto record = std::make_unique<AcDbLayerTableRecord>();
    record->setName("Back");
    AcDbObjectId layer;
    {
        const AcDbObjectPointer<AcDbLayerTable> table(drawing.layerTableId(), AcDb::kForWrite);
        ASSERT_EQ(table->add(layer, record.get()), Acad::eOk);
        record.release()->close();
    }
    setErased(line, true);
    AcDbObjectPointer<AcDbLayerTableRecord>(layer, AcDb::kForWrite)->erase();
    ASSERT_EQ(save(drawing, path("a.vqd")), "");
    setErased(line, false);
    AcDbObjectPointer<AcDbLayerTableRecord>(layer, AcDb::kForWrite, true)->erase(false);
    ASSERT_EQ(save(drawing, path("a.vqd")), "");
    const auto opened = open(path("a.vqd"));
    ASSERT_TRUE(opened);
    EXPECT_EQ(contents(*opened), contents(drawing));
    EXPECT_EQ(AcDbObjectPointer<AcDbBlockTableRecord>(opened->modelSpaceId())->entityIds().size(), 1U);
    EXPECT_TRUE(AcDbObjectPointer<AcDbLayerTable>(opened->layerTableId())->has("Back"));
}

TEST_F(SavingChanges, anObjectThatIsOpenDuringASaveIsChangedAfterIt) {
    AcDbDatabase drawing;
    const AcDbObjectId id = addLine(drawing, 1.0);
    ASSERT_EQ(save(drawing, path("a.vqd")), "");
    {
        const AcDbObjectPointer<AcDbLine> line(id, AcDb::kForWrite);
        line->setEndPoint({2, 0, 0});
        ASSERT_EQ(save(drawing, path("a.vqd")), "");
        line->setEndPoint({3, 0, 0});
    }
    ASSERT_EQ(save(drawing, path("a.vqd")), "");
    EXPECT_EQ(length(*open(path("a.vqd")), id.handle()), 3.0);
}

TEST_F(SavingChanges, theFirstSaveOfAnOpenedDrawingKeepsThePreviousOne) {
    AcDbDatabase drawing;
    const AcDbHandle line = addLine(drawing, 1.0).handle();
    ASSERT_EQ(save(drawing, path("a.vqd")), "");
    EXPECT_FALSE(fs::exists(path("a.bak")));
    const auto opened = open(path("a.vqd"));
    ASSERT_TRUE(opened);
    AcDbObjectId id;
    ASSERT_EQ(opened->getAcDbObjectId(id, line), Acad::eOk);
    for (const double next : {2.0, 3.0}) {
        setLength(id, next);
        ASSERT_EQ(save(*opened, path("a.vqd")), "");
        EXPECT_EQ(length(*open(path("a.vqd")), line), next);
        EXPECT_EQ(length(*open(path("a.bak")), line), 1.0);
    }
}

TEST_F(SavingChanges, aFileThatSomebodyElseSavedOrRemovedIsWrittenWhole) {
    AcDbDatabase drawing, other;
    const AcDbHandle line = addLine(drawing, 1.0).handle();
    addLine(other, 50.0);
    ASSERT_EQ(save(drawing, path("a.vqd")), "");
    ASSERT_EQ(save(other, path("a.vqd")), "");
    ASSERT_EQ(save(drawing, path("a.vqd")), "");
    EXPECT_EQ(contents(*open(path("a.vqd"))), contents(drawing));
    EXPECT_EQ(length(*open(path("a.bak")), line), 50.0);
    fs::remove(path("a.vqd"));
    ASSERT_EQ(save(drawing, path("a.vqd")), "");
    EXPECT_EQ(contents(*open(path("a.vqd"))), contents(drawing));
    std::ofstream(path("a.vqd")) << "a note";
    ASSERT_EQ(save(drawing, path("a.vqd")), "");
    EXPECT_EQ(contents(*open(path("a.vqd"))), contents(drawing));
}

TEST_F(SavingChanges, aCopyLeavesTheDrawingAsItIs) {
    AcDbDatabase drawing;
    const AcDbObjectId line = addLine(drawing, 1.0);
    ASSERT_EQ(save(drawing, path("a.vqd")), "");
    setLength(line, 2.0);
    ASSERT_FALSE(saveDrawingCopy(drawing, path("copy.sv$")));
    EXPECT_TRUE(drawing.isModified());
    EXPECT_EQ(length(*open(path("copy.sv$")), line.handle()), 2.0);
    EXPECT_EQ(length(*open(path("a.vqd")), line.handle()), 1.0);
    ASSERT_EQ(save(drawing, path("a.vqd")), "");
    EXPECT_EQ(length(*open(path("a.vqd")), line.handle()), 2.0);
}

// A journal that a killed program left belongs to the file that was there, not to the one that replaces it.
TEST_F(SavingChanges, aJournalThatWasLeftBehindIsNotPlayedIntoTheNewFile) {
    AcDbDatabase old, drawing;
    for (int i = 0; i < 200; ++i) addLine(old, i);
    addLine(drawing, 1.0);
    ASSERT_EQ(save(old, path("a.vqd")), "");
    {
        SqlFile writer(path("a.vqd"), SqlFile::Mode::kExisting);
        ASSERT_TRUE(
            writer.run("pragma cache_size = 1; begin immediate; update objects set record = zeroblob(500)"));
        ASSERT_TRUE(fs::exists(path("a.vqd-journal")));
        fs::copy(path("a.vqd-journal"), path("kept"));
    }
    fs::copy(path("kept"), path("b.vqd-journal"));
    ASSERT_EQ(save(drawing, path("b.vqd")), "");
    EXPECT_EQ(contents(*open(path("b.vqd"))), contents(drawing));
}

} // namespace

} // namespace veldrin::testing
