#include "platform/drawing/Drawing.h"

#include "drawing/AcDbMText.h"
#include "drawing/RecordFiler.h"
#include "drawing/RecordInspection.h"
#include "platform/drawing/TestPart.h"

#include "drawing/acdb.h"

#include <cmath>
#include <random>

namespace veldrin::tests {
namespace {

using Records = Drawing;

TEST_F(Records, ItemsComeBackAsTheyWentIn) {
    const AcDbObjectId line = addLine();
    RecordWriter writer(AcDb::kFileFiler);
    writer.writeBool(true);
    writer.writeInt8(-1);
    writer.writeInt16(-300);
    writer.writeInt32(-70000);
    writer.writeInt64(Adesk::Int64{1} << 40);
    writer.writeDouble(-0.0);
    writer.writePoint3d({1.0, 2.0, 3.0});
    writer.writeString(std::string_view("a\0ß", 4));
    writer.writeHardPointerId(line);
    RecordReader reader(AcDb::kFileFiler, &db, writer.record());
    bool flag = false;
    Adesk::Int8 i8 = 0;
    Adesk::Int16 i16 = 0;
    Adesk::Int32 i32 = 0;
    Adesk::Int64 i64 = 0;
    double real = 1.0;
    AcGePoint3d point;
    std::string text;
    AcDbObjectId id;
    reader.readBool(flag);
    reader.readInt8(i8);
    reader.readInt16(i16);
    reader.readInt32(i32);
    reader.readInt64(i64);
    reader.readDouble(real);
    reader.readPoint3d(point);
    reader.readString(text);
    EXPECT_EQ(reader.readHardPointerId(id), Acad::eOk);
    EXPECT_TRUE(flag && i8 == -1 && i16 == -300 && i32 == -70000 && i64 == Adesk::Int64{1} << 40);
    EXPECT_TRUE(std::signbit(real));
    EXPECT_EQ(point.z, 3.0);
    EXPECT_EQ(text, std::string("a\0ß", 4));
    EXPECT_EQ(id, line);
}

TEST_F(Records, AWrongTypeStaysAnErrorAndGivesNoValue) {
    RecordWriter writer(AcDb::kFileFiler);
    writer.writeInt32(5);
    writer.writeInt32(6);
    RecordReader reader(AcDb::kFileFiler, &db, writer.record());
    double real = 1.0;
    Adesk::Int32 whole = 1;
    EXPECT_EQ(reader.readDouble(real), Acad::eBadRecord);
    EXPECT_EQ(real, 0.0);
    EXPECT_EQ(reader.readInt32(whole), Acad::eBadRecord);
    EXPECT_EQ(whole, 0);
    reader.resetFilerStatus();
    EXPECT_EQ(reader.readInt32(whole), Acad::eOk);
    EXPECT_EQ(whole, 5);
    reader.readInt32(whole);
    EXPECT_EQ(reader.readInt32(whole), Acad::eEndOfObject);
    char* text = nullptr;
    EXPECT_EQ(reader.readString(text), Acad::eEndOfObject);
    EXPECT_EQ(text, nullptr);
}

TEST_F(Records, AnIdWithoutObjectDoesNotSpoilTheRest) {
    AcDbDatabase other;
    AcDbObjectId foreign;
    while (foreign.handle().value() < db.handseed().value()) foreign = addLine(other, 1.0);
    RecordWriter writer(AcDb::kFileFiler);
    writer.writeHardPointerId(foreign);
    writer.writeSoftPointerId({});
    writer.writeInt32(3);
    RecordReader reader(AcDb::kFileFiler, &db, writer.record());
    AcDbObjectId id = foreign;
    Adesk::Int32 behind = 0;
    EXPECT_EQ(reader.readHardPointerId(id), Acad::eUnknownHandle);
    EXPECT_TRUE(id.isNull());
    EXPECT_EQ(reader.filerStatus(), Acad::eOk);
    EXPECT_EQ(reader.readSoftPointerId(id), Acad::eOk) << "a null id is no unknown one";
    EXPECT_EQ(reader.readInt32(behind), Acad::eOk);
    EXPECT_EQ(behind, 3);
}

TEST_F(Records, EmbeddedObjectsEndWhereTheyEnd) {
    RecordWriter writer(AcDb::kFileFiler);
    writer.beginEmbedded("AcDbMText");
    writer.writeInt32(1);
    writer.endEmbedded();
    EXPECT_EQ(writer.endEmbedded(), Acad::eInvalidInput);
    Adesk::Int32 value = 0;
    RecordReader beyond(AcDb::kFileFiler, &db, writer.record());
    beyond.beginEmbedded("AcDbMText");
    beyond.readInt32(value);
    EXPECT_EQ(beyond.readInt32(value), Acad::eEndOfObject);
    RecordReader unread(AcDb::kFileFiler, &db, writer.record());
    unread.beginEmbedded("AcDbMText");
    EXPECT_EQ(unread.endEmbedded(), Acad::eBadRecord);
    RecordReader other(AcDb::kFileFiler, &db, writer.record());
    EXPECT_EQ(other.beginEmbedded("AcDbLine"), Acad::eBadRecord);
    RecordReader never(AcDb::kFileFiler, &db, writer.record());
    EXPECT_EQ(never.endEmbedded(), Acad::eBadRecord);
}

class Parts : public Drawing {
protected:
    std::string recordOf(const AcDbObject& object) {
        RecordWriter writer(AcDb::kFileFiler);
        EXPECT_EQ(object.dwgOutFields(&writer), Acad::eOk);
        return writer.takeRecord();
    }
    TestPartClass partClass;
};

TEST_F(Parts, EveryTruncatedRecordIsRefused) {
    TestPart part;
    part.note.setContents("text");
    const std::string whole = recordOf(part);
    for (std::size_t size = 0; size < whole.size(); ++size) {
        TestPart copy;
        const std::string cut(whole, 0, size);
        RecordReader reader(AcDb::kFileFiler, &db, cut);
        EXPECT_NE(copy.dwgInFields(&reader), Acad::eOk) << "cut at " << size;
    }
}

// Nothing is expected of what such a record holds, only that reading it ends within its bounds.
TEST_F(Parts, DamagedRecordsAreReadWithoutHarm) {
    TestPart part;
    part.note.setContents("text");
    const std::string whole = recordOf(part);
    std::mt19937 random(20260101);
    for (int round = 0; round < 3000; ++round) {
        std::string damaged = whole;
        for (int i = 0; i < 3; ++i) damaged[random() % damaged.size()] = static_cast<char>(random());
        TestPart copy;
        RecordReader reader(AcDb::kFileFiler, &db, damaged);
        const Acad::ErrorStatus status = copy.dwgInFields(&reader);
        EXPECT_NE(acadErrorStatusText(status), std::string("unknown status"));
        std::vector<RecordItem> items;
        listRecord(damaged, &db, items);
    }
}

TEST_F(Parts, AListOfItemsMakesTheSameObject) {
    TestPart part;
    part.size = 4.5;
    part.note.setContents("in the part");
    part.layerOfNote = addLayer("Notes");
    std::vector<RecordItem> items;
    ASSERT_EQ(inspectObject(part, items), Acad::eOk);
    ASSERT_EQ(items.size(), 4U) << "version, size, embedded text, pointer; nothing of the base part";
    EXPECT_EQ(items[0].type, "Int32");
    EXPECT_EQ(std::get<double>(items[1].value), 4.5);
    EXPECT_EQ(items[2].type, "Object");
    EXPECT_EQ(items[3].type, "HardPointer");
    EXPECT_EQ(std::get<AcDbObjectId>(items[3].value), part.layerOfNote);

    Acad::ErrorStatus status = Acad::eNotApplicable;
    const auto made = objectFromItems(*partClass.get(), db, items, status);
    ASSERT_EQ(status, Acad::eOk);
    const auto& copy = *static_cast<TestPart*>(made.get());
    EXPECT_EQ(copy.size, 4.5);
    EXPECT_EQ(copy.note.contents(), "in the part");
    EXPECT_EQ(copy.layerOfNote, part.layerOfNote);
    EXPECT_EQ(copy.visibility(), AcDb::kVisible) << "the base part is a fresh object's";
}

TEST_F(Parts, AWrongListIsRefusedWithTheReadersStatus) {
    std::vector<RecordItem> items;
    ASSERT_EQ(inspectObject(TestPart(), items), Acad::eOk);
    Acad::ErrorStatus status = Acad::eOk;
    const auto statusOf = [&](std::vector<RecordItem> changed) {
        EXPECT_EQ(objectFromItems(*partClass.get(), db, changed, status), nullptr);
        return status;
    };
    auto changed = items;
    changed[0].value = std::int64_t{TestPart::kVersion + 1};
    EXPECT_EQ(statusOf(changed), Acad::eMakeMeProxy);
    changed[0].value = std::int64_t{1} << 33;
    EXPECT_EQ(statusOf(changed), Acad::eInvalidInput);
    changed = items;
    changed[1] = {"Int32", std::int64_t{1}};
    EXPECT_EQ(statusOf(changed), Acad::eBadRecord);
    changed[1] = {"Real", 1.0};
    EXPECT_EQ(statusOf(changed), Acad::eInvalidInput);
    changed = items;
    changed.pop_back();
    EXPECT_EQ(statusOf(changed), Acad::eEndOfObject);
}

} // namespace
} // namespace veldrin::tests
