#include "drawing/AcDbDictionary.h"
#include "drawing/AcDbDimension.h"
#include "drawing/AcDbEllipse.h"
#include "drawing/AcDbForeignEntity.h"
#include "drawing/block_copies.h"
#include "drawing/spline_points.h"
#include "files/DxfExport.h"
#include "files/DxfImport.h"
#include "graphics/Recorder.h"
#include "platform/files/DrawingFileTest.h"

#include <chrono>
#include <cmath>
#include <fstream>
#include <numbers>
#include <sstream>

namespace veldrin::testing {

namespace {

using Groups = std::vector<std::pair<int, std::string>>;

class DxfFiles : public DrawingFileTest {
protected:
    static std::string fileOf(const Groups& groups) {
        std::string text;
        for (const auto& [code, value] : groups) text += std::to_string(code) + "\n" + value + "\n";
        return text;
    }
    // A file of nothing but entities.
    static std::string entities(Groups groups) {
        groups.insert(groups.begin(), {{0, "SECTION"}, {2, "ENTITIES"}});
        groups.insert(groups.end(), {{0, "ENDSEC"}, {0, "EOF"}});
        return fileOf(groups);
    }
    std::unique_ptr<AcDbDatabase> import(const std::string& bytes) {
        report = {};
        auto imported = importDxfBytes(bytes, "input.dxf", report);
        auto* const database = std::get_if<std::unique_ptr<AcDbDatabase>>(&imported);
        return database ? std::move(*database) : nullptr;
    }
    std::string exported(AcDbDatabase& drawing, const DxfExportOptions& options = {}) {
        losses.clear();
        EXPECT_EQ(exportDxf(drawing, path("out.dxf"), options, losses), std::nullopt);
        std::ifstream in(path("out.dxf"), std::ios::binary);
        std::ostringstream text;
        text << in.rdbuf();
        return text.str();
    }
    static std::size_t countIn(const AcDbDatabase& drawing) {
        return livingEntities(drawing.modelSpaceId()).size();
    }
    static AcDbEntity* firstIn(const AcDbDatabase& drawing) {
        return AcDbEntity::cast(AcDbObjectAccess::object(livingEntities(drawing.modelSpaceId()).front()));
    }

    DxfImportReport report;
    std::vector<std::string> losses;
};

TEST_F(DxfFiles, numbersAndTextsAreWrittenAsTheirFileWantsThem) {
    AcDbDatabase drawing;
    add(drawing,
        std::make_unique<AcDbLine>(AcGePoint3d(0.1, 1e20, -2.0), AcGePoint3d(1e-7, std::nan(""), 12345.678)));
    std::string text = exported(drawing);
    EXPECT_NE(text.find(" 10\n0.1\n 20\n1.0e+20\n 30\n-2.0\n 11\n1.0e-07\n 21\n0.0\n 31\n12345.678\n"),
              std::string::npos)
        << text.substr(text.find("AcDbLine"), 100);
    EXPECT_EQ(losses, std::vector<std::string>{"1 values that are no numbers were written as 0."});
    text = exported(drawing, {DxfVersion::kR2018, 2, false});
    EXPECT_NE(
        text.find(" 10\n0.1\n 20\n100000000000000000000.0\n 30\n-2.0\n 11\n0.0\n 21\n0.0\n 31\n12345.68\n"),
        std::string::npos);
}

TEST_F(DxfFiles, whatOthersWroteBadlyIsToldAndTheRestIsRead) {
    const auto drawing = import(fileOf({{0, "SECTION"}, {2, "ENTITIES"}, {0, "LINE"}, {8, "0"}, {10, "1"}}) +
                                "oops\nnothing\n" +
                                fileOf({{0, "CIRCLE"},
                                        {8, "A"},
                                        {10, "0"},
                                        {20, "0"},
                                        {40, "-"},
                                        {0, "POINT"},
                                        {10, "3"},
                                        {20, "4"},
                                        {0, "INSERT"},
                                        {2, "NOWHERE"},
                                        {10, "0"},
                                        {0, "WHATEVER"},
                                        {8, "A"},
                                        {1, "text"},
                                        {0, "VERTEX"},
                                        {10, "0"}}));
    ASSERT_NE(drawing, nullptr);
    EXPECT_EQ(countIn(*drawing), 3U); // line, point, and what is kept
    EXPECT_EQ(report.kept, (std::map<std::string, int>{{"WHATEVER", 1}}));
    EXPECT_EQ(report.leftOut, (std::map<std::string, int>{{"CIRCLE", 1}, {"INSERT", 1}, {"VERTEX", 1}}));
    std::string all;
    for (const std::string& line : report.problems) all += line + "\n";
    EXPECT_NE(all.find("line 11: a group code was expected instead of \"oops\""), std::string::npos) << all;
    EXPECT_NE(all.find("line 21: a number was expected in CIRCLE"), std::string::npos) << all;
    EXPECT_NE(all.find("line 29: INSERT cannot be read"), std::string::npos) << all;
    EXPECT_NE(all.find("the file ends before its end mark"), std::string::npos) << all;
    // What is kept goes out again as it came.
    EXPECT_NE(exported(*drawing).find("  0\nWHATEVER\n"), std::string::npos);

    EXPECT_EQ(import("just a note\n"), nullptr);
    EXPECT_EQ(import(""), nullptr);
    EXPECT_EQ(import(std::string("\0\0\0\0", 4)), nullptr);
}

TEST_F(DxfFiles, hostileFilesEndSoon) {
    const auto begun = std::chrono::steady_clock::now();
    // Blocks within blocks, each showing the next one twice.
    Groups groups{{0, "SECTION"}, {2, "BLOCKS"}};
    constexpr int kDepth = 40;
    for (int i = 0; i < kDepth; ++i) {
        const std::string name = "B" + std::to_string(i), next = "B" + std::to_string((i + 1) % kDepth);
        groups.insert(groups.end(), {{0, "BLOCK"}, {2, name}, {10, "0"}, {20, "0"}});
        for (int k = 0; k < 2; ++k)
            groups.insert(groups.end(), {{0, "INSERT"}, {2, next}, {10, "1"}, {20, "0"}});
        groups.insert(groups.end(), {{0, "ENDBLK"}});
    }
    groups.insert(groups.end(),
                  {{0, "ENDSEC"}, {0, "SECTION"}, {2, "ENTITIES"}, {0, "INSERT"}, {2, "B0"}, {10, "0"}});
    const auto nested = import(fileOf(groups));
    ASSERT_NE(nested, nullptr);
    exported(*nested);
    // Counts beyond the file, and a polyline without an end.
    std::string endless = entities({{0, "LWPOLYLINE"},
                                    {100, "AcDbPolyline"},
                                    {90, "2000000000"},
                                    {10, "1"},
                                    {20, "2"},
                                    {0, "SPLINE"},
                                    {100, "AcDbSpline"},
                                    {71, "30000"},
                                    {72, "2000000000"},
                                    {40, "1"},
                                    {0, "HATCH"},
                                    {100, "AcDbHatch"},
                                    {91, "2000000000"},
                                    {92, "2"},
                                    {93, "2000000000"},
                                    {10, "0"},
                                    {20, "0"},
                                    {0, "POLYLINE"}});
    endless.resize(endless.size() - fileOf({{0, "ENDSEC"}, {0, "EOF"}}).size());
    for (int i = 0; i < 100'000; ++i) endless += "0\nVERTEX\n10\n1\n20\n2\n";
    const auto rows = import(endless);
    ASSERT_NE(rows, nullptr);
    EXPECT_EQ(countIn(*rows), 3U);
    EXPECT_EQ(report.leftOut, (std::map<std::string, int>{{"SPLINE", 1}}));
    EXPECT_LT(std::chrono::steady_clock::now() - begun, std::chrono::seconds(60)); // not for ever
}

TEST_F(DxfFiles, curvesOfOtherProgramsHaveTheirShape) {
    // An ellipse that is stretched across its axes is another ellipse: all its points lie where they were
    // moved to.
    AcDbEllipse ellipse({1, 2, 0}, AcGeVector3d::kZAxis, {3, 1, 0}, 0.4, 0.3, 2.0);
    const AcGeMatrix3d stretch =
        AcGeMatrix3d::coordSystem({5, 6, 0}, {2, 0.5, 0}, {0.3, 1, 0}, AcGeVector3d::kZAxis);
    AcGePoint3d start, end, newStart, newEnd;
    ellipse.getStartPoint(start);
    ellipse.getEndPoint(end);
    double param = 0.0;
    AcGePoint3d middle, newMiddle;
    ellipse.getEndParam(param);
    ellipse.getPointAtParam(param / 2.0, middle);
    ASSERT_EQ(ellipse.transformBy(stretch), Acad::eOk);
    ellipse.getStartPoint(newStart);
    ellipse.getEndPoint(newEnd);
    ellipse.getPointAtParam(param / 2.0, newMiddle);
    EXPECT_LE(start.transformBy(stretch).distanceTo(newStart), 1e-9);
    EXPECT_LE(end.transformBy(stretch).distanceTo(newEnd), 1e-9);
    EXPECT_LE(middle.transformBy(stretch).distanceTo(newMiddle), 1e-9);
    EXPECT_LE(ellipse.radiusRatio(), 1.0);
    EXPECT_NEAR(ellipse.majorAxis().dotProduct(ellipse.minorAxis()), 0.0, 1e-9);

    // A rational spline of degree 2 is a quarter circle, exactly.
    const double w = std::numbers::sqrt2 / 2.0;
    const auto points = splinePoints(2, {0, 0, 0, 1, 1, 1}, {{1, 0, 0}, {1, 1, 0}, {0, 1, 0}}, {1, w, 1});
    ASSERT_GT(points.size(), 10U);
    for (const AcGePoint3d& p : points) EXPECT_NEAR(std::hypot(p.x, p.y), 1.0, 1e-12);
    EXPECT_TRUE(splinePoints(3, {0, 1}, {{0, 0, 0}}, {}).empty());
}

TEST_F(DxfFiles, aDimensionTakesItsPictureAlong) {
    const auto source = import(fileOf(
        {{0, "SECTION"}, {2, "BLOCKS"},  {0, "BLOCK"},    {2, "*D1"},       {10, "0"},     {20, "0"},
         {0, "LINE"},    {10, "0"},      {20, "0"},       {11, "5"},        {21, "0"},     {0, "ENDBLK"},
         {0, "ENDSEC"},  {0, "SECTION"}, {2, "ENTITIES"}, {0, "DIMENSION"}, {2, "*D1"},    {70, "1"},
         {13, "0"},      {23, "0"},      {14, "5"},       {24, "0"},        {0, "ENDSEC"}, {0, "EOF"}}));
    ASSERT_NE(source, nullptr);
    // Another drawing has a block of that name already.
    AcDbDatabase target;
    AcDbObjectId other;
    ASSERT_EQ(startBlock(target, "*D1", {}, other), Acad::eOk);
    ASSERT_EQ(mergeDrawing(target, *source), Acad::eOk);
    const auto* dimension = AcDbDimension::cast(firstIn(target));
    ASSERT_NE(dimension, nullptr);
    EXPECT_NE(dimension->block(), other);
    DisplayList list;
    Recorder recorder(list);
    {
        const AcDbObjectPointer<AcDbEntity> moved(livingEntities(target.modelSpaceId()).front(),
                                                  AcDb::kForWrite);
        ASSERT_EQ(moved->transformBy(AcGeMatrix3d::translation({10, 0, 0})), Acad::eOk);
        drawEntity(*moved, recorder);
    }
    ASSERT_EQ(list.size(), 1U);
    EXPECT_EQ(list.points(0)[1].x, 15.0);
    // Files of old have no markers of classes; this one's are put where they belong.
    const std::string text = exported(target);
    const std::size_t aligned = text.find("100\nAcDbAlignedDimension\n 13\n10.0\n");
    EXPECT_NE(aligned, std::string::npos) << text.substr(text.find("AcDbDimension"), 200);
}

TEST_F(DxfFiles, dictionariesAndTheirRecordsComeBack) {
    AcDbDatabase drawing;
    const AcDbObjectId line = addLine(drawing, 5.0);
    const auto addRecord = [](AcDbObjectId dictionary, AcDbObjectId pointed) {
        ResbufBuilder chain;
        chain.addText(1, "a \xC3\xB6");
        chain.addText(102, "{data}");
        ads_name name;
        acdbGetAdsName(name, pointed);
        chain.addName(330, name);
        const ResbufPtr taken = chain.take();
        auto record = std::make_unique<AcDbXrecord>();
        EXPECT_EQ(record->setFromRbChain(taken.get()), Acad::eOk);
        AcDbObjectId id;
        const AcDbObjectPointer<AcDbDictionary> holder(dictionary, AcDb::kForWrite);
        EXPECT_EQ(holder->setAt("SHOP", record.get(), id), Acad::eOk);
        record.release()->close();
    };
    addRecord(drawing.namedObjectsDictionaryId(), line);
    {
        const AcDbObjectPointer<AcDbLine> extended(line, AcDb::kForWrite);
        ASSERT_EQ(extended->createExtensionDictionary(), Acad::eOk);
    }
    addRecord(AcDbObjectPointer<AcDbLine>(line)->extensionDictionary(), line);
    const std::string first = exported(drawing);
    const auto back = import(first);
    ASSERT_NE(back, nullptr);
    EXPECT_EQ(report.leftOut.size(), 0U);
    const auto countOf = [](const std::string& text, const std::string& part) {
        std::size_t count = 0;
        for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) ++count;
        return count;
    };
    const std::string second = exported(*back);
    for (const char* part : {"  1\na \xF6\n102\n{data}\n330\n", "  3\nSHOP\n", "{ACAD_XDICTIONARY\n"})
        EXPECT_EQ(countOf(second, part), countOf(first, part)) << part;
    EXPECT_EQ(countOf(second, "  1\na \xF6\n102\n{data}\n330\n" + firstIn(*back)->handle().text() + "\n"),
              2U);
}

} // namespace

} // namespace veldrin::testing
