#include "drawing/AcDbBlockTable.h"
#include "drawing/AcDbDatabase.h"
#include "drawing/AcDbLayerTable.h"
#include "drawing/RecordFiler.h"
#include "drawing/UndoLog.h"
#include "module/ModuleTest.h"
#include "util/DrawingHelpers.h"

using namespace plumb;
using veldrin::ItemType;

namespace {

// Names of a record's items behind the base part; an embedded object is one.
Lines itemTypes(const std::string& record, std::size_t from) {
    Lines types;
    veldrin::RecordCursor cursor{record, from};
    int depth = 0;
    for (veldrin::RecordCursor::Item item; !cursor.atEnd() && cursor.next(item) == Acad::eOk;) {
        if (item.type == ItemType::kBeginEmbedded && depth++ == 0)
            types.push_back("Object");
        else if (item.type == ItemType::kEndEmbedded)
            --depth;
        else if (depth == 0)
            types.push_back(veldrin::itemTypeName(item.type));
    }
    return types;
}

void repeat(Lines& types, int count, const char* type) {
    types.insert(types.end(), static_cast<std::size_t>(count), type);
}

} // namespace

class PipeFiling : public ModuleTest {
protected:
    PipeFiling() { setEnds(pipe, {1, 2, 3}, {40, 2, 3}); }

    static std::string write(const PlumbPipe& from, AcDb::FilerType type = AcDb::kFileFiler) {
        veldrin::RecordWriter writer(type);
        EXPECT_EQ(from.dwgOutFields(&writer), Acad::eOk);
        return writer.takeRecord();
    }
    // The base part of a pipe, and behind it a record of another version.
    Acad::ErrorStatus readOld(PlumbPipe& into, const std::function<void(veldrin::RecordWriter&)>& fill) {
        veldrin::RecordWriter writer(AcDb::kFileFiler);
        EXPECT_EQ(pipe.AcDbEntity::dwgOutFields(&writer), Acad::eOk);
        fill(writer);
        const std::string record = writer.takeRecord();
        veldrin::RecordReader reader(AcDb::kFileFiler, CurrentDatabase(), record);
        const Acad::ErrorStatus status = into.dwgInFields(&reader);
        EXPECT_TRUE(status != Acad::eOk || reader.atEnd()) << "items are left over";
        return status;
    }
    Acad::ErrorStatus readBack(PlumbPipe& into, const std::string& record) {
        veldrin::RecordReader reader(AcDb::kFileFiler, CurrentDatabase(), record);
        return into.dwgInFields(&reader);
    }

    PlumbPipe pipe;
};

TEST_F(PipeFiling, WritesItsItemsInOrder) {
    pipe.addElbow({5.0, 0.5});
    pipe.addArc({1.0, 2.0, -1});
    pipe.edit().hiddenLayerId = addLayer("HID");
    veldrin::RecordWriter writer(AcDb::kFileFiler);
    ASSERT_EQ(pipe.dwgOutFields(&writer), Acad::eOk);
    Lines expected{"Int32", "Point3d", "Point3d", "Int32", "Bool", "Bool", "String"};
    repeat(expected, 4, "Double");
    expected.push_back("Int32");
    repeat(expected, 12, "Double");
    expected.insert(expected.end(), {"Double", "Int32", "Double", "Double", "Int32"});
    repeat(expected, 10, "Double");
    repeat(expected, 3, "Double");
    repeat(expected, 4, "Bool");
    expected.insert(expected.end(), {"Int32", "Double", "Int32", "Double", "Int32", "Double", "String",
                                     "Bool", "Object", "Bool", "Bool", "Bool", "Double", "Int32", "Int32",
                                     "Int32", "Bool", "Bool", "HardPointer"});
    EXPECT_EQ(itemTypes(writer.record(), writer.endOfBase()), expected);
}

TEST_F(PipeFiling, ComesBackAsItWas) {
    PipeData& d = pipe.edit();
    d.sDwg = "dwg";
    d.ixPipe = 42;
    d.bDwgEnd = true;
    d.dHeadOffset = 4.5;
    d.dTickOffsetHead = 1.0;
    d.dTickOffsetTail = 2.0;
    d.verticalAngles = {1.0, 0.5};
    d.pipeBreaks = {3.0, 9.0};
    d.sText = "3/4\" CW";
    d.ptrapLine2Breaks = {7.0};
    d.bIsometric = true;
    pipe.addElbow({5.0, 0.5});
    pipe.addElbowBreak(0, 2.0);
    pipe.addArc({1.0, 2.0, -1});
    pipe.labelText().setTextHeight(4.25);

    PlumbPipe copy;
    copy.addElbow({1.0, 1.0}); // what it held is replaced
    copy.addPipeBreak(77.0);
    ASSERT_EQ(readBack(copy, write(pipe)), Acad::eOk);
    const PipeData& c = copy.data();
    EXPECT_EQ(write(copy), write(pipe));
    EXPECT_EQ(c.sDwg + " " + c.sText, "dwg 3/4\" CW");
    EXPECT_EQ(c.ixPipe, 42);
    EXPECT_EQ(c.verticalAngles, (std::vector<double>{1.0, 0.5})) << "in stored order";
    EXPECT_EQ(c.pipeBreaks, (BreakList{3.0, 9.0}));
    ASSERT_EQ(c.elbows.size(), 1U);
    EXPECT_EQ(c.elbows[0].breaks[0], 2.0);
    EXPECT_DOUBLE_EQ(c.elbows[0].cosAngle, std::cos(0.5)) << "what is derived comes back too";
    EXPECT_EQ(copy.labelText().textHeight(), 4.25);
}

TEST_F(PipeFiling, DrawingChangesNothingThatIsFiled) {
    pipe.edit().sText = "CW";
    const std::string before = write(pipe);
    EXPECT_GT(pictureOf(pipe).size(), 2U) << "a label stands in the line";
    EXPECT_EQ(write(pipe), before);
}

TEST_F(PipeFiling, TakesAHundredOfEverything) {
    for (int i = 0; i < 101; ++i) {
        pipe.addElbow({1.0 + i, 0.5});
        pipe.addPipeBreak(i);
    }
    PlumbPipe copy;
    ASSERT_EQ(readBack(copy, write(pipe)), Acad::eOk);
    EXPECT_EQ(copy.data().elbows.size(), 100U);
    EXPECT_EQ(copy.data().elbows.back().dLength, 100.0);
    EXPECT_EQ(copy.data().pipeBreaks.size(), 100U);
}

namespace {

void writeHead(veldrin::RecordWriter& w, Adesk::Int32 version) {
    w.writeInt32(version);
    w.writePoint3d({1, 2, 3});
    w.writePoint3d({9, 2, 3});
    w.writeInt32(5);
    w.writeBool(true);
    w.writeBool(false);
    w.writeString("old");
    for (const double value : {1.0, 2.0, 3.0, 4.0}) w.writeDouble(value);
}

// From the tick width to the label's text style.
void writeMiddle(veldrin::RecordWriter& w, bool hasExtraDouble) {
    w.writeDouble(0.5);
    for (int i = 0; i < 4; ++i) w.writeBool(i == 2);
    w.writeInt32(1);
    w.writeDouble(8.0);
    if (hasExtraDouble) w.writeDouble(99.0);
    w.writeInt32(1);
    w.writeDouble(0.25); // riser angles
    w.writeDouble(6.5);
    w.writeInt32(2);
    w.writeDouble(10.0); // breaks
    w.writeDouble(20.0);
    w.writeDouble(30.0);
    w.writeString("label");
    w.writeBool(true);
    AcDbMText text;
    text.setTextHeight(2.0);
    text.dwgOut(&w);
    w.writeBool(false);
}

} // namespace

TEST_F(PipeFiling, ReadsTheTwoOldestRecords) {
    for (const Adesk::Int32 version : {1, 2}) {
        PlumbPipe old;
        old.addPtrapLine1Break(3.0);
        ASSERT_EQ(readOld(old,
                          [&](veldrin::RecordWriter& w) {
                              writeHead(w, version);
                              for (const double value : {5.0, 0.0, 6.0, 1.5, 0.75, 2.0, 2.5, 7.0})
                                  w.writeDouble(value);
                              writeMiddle(w, version == 1);
                              w.writeBool(true); // isometric
                          }),
                  Acad::eOk);
        const PipeData& d = old.data();
        ASSERT_EQ(d.elbows.size(), 1U) << "a length of 0 is none";
        EXPECT_EQ(d.elbows[0].dAngle, 0.7853981625);
        ASSERT_EQ(d.arcs.size(), 2U);
        EXPECT_TRUE(d.arcs[0].dLength == 1.5 && d.arcs[0].dOffset == 2.0 && d.arcs[0].iNormal == 1);
        EXPECT_TRUE(d.arcs[1].dLength == 0.75 && d.arcs[1].dOffset == 2.5 && d.arcs[1].iNormal == -1);
        EXPECT_TRUE(d.dTickOffsetHead == 7.0 && d.dTickOffsetTail == 7.0);
        EXPECT_TRUE(d.dVerticalRadius == 8.0 && d.bElbowArc && d.bIsometric);
        EXPECT_EQ(d.sText, "label");
        EXPECT_TRUE(d.ptrapLine1Breaks.empty());
    }
}

TEST_F(PipeFiling, ReadsRecordsWithoutTheYoungestItems) {
    for (const Adesk::Int32 version : {11, 12}) {
        PlumbPipe old;
        old.addPtrapLine1Break(3.0);
        ASSERT_EQ(readOld(old,
                          [&](veldrin::RecordWriter& w) {
                              writeHead(w, version);
                              w.writeInt32(1); // one elbow, of no length
                              for (int i = 0; i < 12; ++i) w.writeDouble(0.0);
                              w.writeDouble(6.0);
                              w.writeInt32(0);
                              w.writeDouble(7.0);
                              writeMiddle(w, false);
                              w.writeBool(false);
                              w.writeBool(true);
                              w.writeDouble(12.0);
                              for (int list = 0; version == 12 && list < 3; ++list) {
                                  w.writeInt32(1);
                                  w.writeDouble(1.0 + list);
                              }
                              w.writeBool(false);
                              w.writeBool(false);
                          }),
                  Acad::eOk)
            << version;
        const PipeData& d = old.data();
        EXPECT_EQ(d.elbows.size(), 1U);
        EXPECT_EQ(d.dTickOffsetTail, 7.0);
        EXPECT_TRUE(d.bPtrap && d.dPtrapWidth == 12.0);
        EXPECT_EQ(d.ptrapLine1Breaks, version == 12 ? BreakList{1.0} : BreakList{});
        EXPECT_EQ(d.ptrapLine2Breaks, version == 12 ? BreakList{3.0} : BreakList{});
    }
}

TEST_F(PipeFiling, NewerUnknownAndCutRecords) {
    const auto onlyVersion = [](Adesk::Int32 version) {
        return [=](veldrin::RecordWriter& w) { w.writeInt32(version); };
    };
    PlumbPipe other;
    other.setIxPipe(3);
    EXPECT_EQ(readOld(other, onlyVersion(14)), Acad::eMakeMeProxy);
    for (const Adesk::Int32 version : {-1, 0, 3, 10})
        EXPECT_EQ(readOld(other, onlyVersion(version)), Acad::eOk);
    EXPECT_EQ(other.data().ixPipe, 3) << "an unknown record leaves the pipe as it is";
    EXPECT_NE(readOld(other, [](veldrin::RecordWriter& w) { writeHead(w, 13); }), Acad::eOk);
    EXPECT_EQ(other.data().ixPipe, 5) << "what was read before the end stays";
    EXPECT_NE(readOld(other,
                      [](veldrin::RecordWriter& w) {
                          writeHead(w, 13);
                          w.writeInt32(2000000000);
                      }),
              Acad::eOk)
        << "a count is not believed";
}

TEST_F(PipeFiling, ErasedLayersStayInUndoAlone) {
    const AcDbObjectId layer = addLayer("HID");
    pipe.edit().hiddenLayerId = layer;
    const auto last = [&](AcDb::FilerType type) { return itemTypes(write(pipe, type), 0).back(); };
    EXPECT_EQ(last(AcDb::kFileFiler), "HardPointer");
    {
        const AcDbObjectPointer<AcDbLayerTableRecord> open(layer, AcDb::kForWrite);
        ASSERT_EQ(open->erase(), Acad::eOk);
    }
    EXPECT_EQ(last(AcDb::kFileFiler), "Bool");
    EXPECT_EQ(last(AcDb::kUndoFiler), "HardPointer");
}

TEST_F(PipeFiling, ADanglingReferenceDoesNotStopTheLoad) {
    pipe.edit().hiddenLayerId = addLayer("HID");
    pipe.edit().textLayerId = addLayer("TXT");
    const std::string record = write(pipe);
    veldrin::RecordReader reader(
        AcDb::kFileFiler, [](std::uint64_t) { return AcDbObjectId(); }, record);
    PlumbPipe copy;
    EXPECT_EQ(copy.dwgInFields(&reader), Acad::eOk);
    EXPECT_TRUE(copy.data().hiddenLayerId.isNull() && reader.atEnd());
}

TEST_F(PipeFiling, ChangesAreFiledForUndoOnce) {
    lisp("(setq e (vq_plumb-insertPipe 1 '(0 0 0) '(9 0 0)))");
    const std::size_t before = CurrentDatabase()->undoLog().steps().size();
    lisp("(vq_plumb-setPipeInfo e '(\"ELBOWLIST\" 5.0 1.0) '(\"TAILOFFSET\" 2.0))");
    const auto& steps = CurrentDatabase()->undoLog().steps();
    ASSERT_EQ(steps.size(), before + 1);
    EXPECT_EQ(steps.back().entries.size(), 1U);
    ASSERT_EQ(steps.back().entries[0].kind, veldrin::UndoLog::Kind::kState);
}

// What Lisp reads and what it may write are not the same groups.
TEST_F(PipeFiling, EntgetAndEntmodMeetInFewGroups) {
    lisp("(setq e (vq_plumb-insertPipe 12 '(0 0 1) '(9 0 2)))");
    lisp(
        "(vq_plumb-setPipeInfo e '(\"TEXT\" \"CW\") '(\"DWGSTART\" T) '(\"TAILOFFSET\" 2.5) '(\"TEE45\" T))");
    EXPECT_EQ(
        lisp("(mapcar (function (lambda (g) (cdr (assoc g (entget e))))) '(0 1 10 11 41 90 91 92 291 295))"),
        "(\"VQPLUMBPIPE\" \"CW\" (0.0 0.0 1.0) (9.0 0.0 2.0) 2.5 12 1 0 1 0)");
    EXPECT_EQ(lisp("(> (cdr (assoc 43 (entget e))) 0)"), "T");
    lisp("(setq d (entget e))"
         "(entmod (subst '(41 . 9.9) (assoc 41 d) (subst '(11 8.0 1.0 4.0) (assoc 11 d) (subst '(90 . 77) "
         "(assoc 90 d) "
         "d))))");
    EXPECT_EQ(lisp("(mapcar (function (lambda (g) (cdr (assoc g (entget e))))) '(1 11 41 90))"),
              "(\"CW\" (8.0 1.0 4.0) 2.5 77)");
    AcDbObjectId id;
    {
        const AcDbObjectPointer<AcDbBlockTableRecord> space(CurrentDatabase()->modelSpaceId());
        id = space->entityIds().back();
    }
    const AcDbObjectPointer<PlumbPipe> open(id);
    EXPECT_EQ(open->data().sDwg, "CW") << "the label's group comes back as the drawing text";
}
