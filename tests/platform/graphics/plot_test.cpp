#include "graphics/plot.h"

#include "drawing/AcDbLayerTable.h"
#include "drawing/AcDbLinetypeTable.h"
#include "drawing/AcGiPalette.h"
#include "graphics/plot_paper.h"
#include "platform/entities/EntityTest.h"

#include <cairo.h>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <unistd.h>

using namespace veldrin;
using namespace veldrin::testing;
namespace fs = std::filesystem;

namespace {

class Plotting : public EntityTest {
protected:
    Plotting() {
        std::string pattern = (fs::temp_directory_path() / "plot-XXXXXX").string();
        folder = mkdtemp(pattern.data());
    }
    ~Plotting() override { fs::remove_all(folder); }

    std::string file(const char* name) const { return (folder / name).string(); }
    static std::string bytesOf(const std::string& path) {
        std::ifstream in(path, std::ios::binary);
        std::ostringstream all;
        all << in.rdbuf();
        return all.str();
    }
    // The plot's text as SVG.
    std::string svg(PlotSettings settings = {}) {
        const auto error = plotDrawing(database, settings, file("plot.svg"));
        EXPECT_FALSE(error) << *error;
        return bytesOf(file("plot.svg"));
    }
    static std::size_t count(const std::string& text, const std::string& part) {
        std::size_t hits = 0;
        for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) ++hits;
        return hits;
    }

    AcDbObjectId addLayer(const char* name, const std::function<void(AcDbLayerTableRecord&)>& change) {
        const AcDbObjectPointer<AcDbLayerTable> table(database.layerTableId(), AcDb::kForWrite);
        auto record = std::make_unique<AcDbLayerTableRecord>();
        record->setName(name);
        change(*record);
        AcDbObjectId id;
        EXPECT_EQ(table->add(id, record.get()), Acad::eOk);
        record.release()->close();
        return id;
    }
    void addLine(AcDbObjectId layer, const AcGePoint3d& from, const AcGePoint3d& to) {
        auto line = std::make_unique<AcDbLine>(from, to);
        line->setLayer(layer);
        add(std::move(line));
    }

    fs::path folder;
};

} // namespace

// 100 drawing units at 1:10 are 254 mm; the page is A3 lying, the drawing in its middle.
TEST_F(Plotting, ALineLiesWhereTheScalePutsIt) {
    const AcDbObjectId red = addLayer("RED", [](AcDbLayerTableRecord& layer) {
        layer.setColor(AcCmColor(1));
        layer.setLineWeight(70);
    });
    addLine(red, {0, 0, 0}, {100, 0, 100000});
    PlotSettings settings;
    settings.paper = "A3";
    settings.scale = "1:10";
    const std::string text = svg(settings);
    EXPECT_NE(text.find("width=\"420mm\""), std::string::npos) << text.substr(0, 400);
    EXPECT_NE(text.find("height=\"297mm\""), std::string::npos);
    EXPECT_NE(text.find("stroke:rgb(100%,0%,0%)"), std::string::npos);
    EXPECT_NE(text.find("stroke-width:0.7"), std::string::npos);
    EXPECT_NE(text.find("M 83 148.5 L 337 148.5"), std::string::npos) << text;
}

TEST_F(Plotting, DashesRunOnAndScale) {
    AcDbObjectId dashed;
    {
        const AcDbObjectPointer<AcDbLinetypeTable> table(database.linetypeTableId(), AcDb::kForWrite);
        auto record = std::make_unique<AcDbLinetypeTableRecord>();
        record->setName("DASHED");
        record->setDashes({0.5, -0.25});
        table->add(dashed, record.get());
        record.release()->close();
    }
    HeaderVariables header = database.header();
    header.ltscale = 4.0;
    database.setHeader(header);
    const AcDbObjectId layer =
        addLayer("HIDDEN", [&](AcDbLayerTableRecord& record) { record.setLinetypeObjectId(dashed); });
    auto bend = std::make_unique<AcDb2dPolyline>(AcDb::k2dSimplePoly,
                                                 AcGePoint3dArray{{0, 0, 0}, {20, 0, 0}, {20, 20, 0}});
    bend->setLayer(layer);
    bend->setLinetypeScale(2.0);
    add(std::move(bend));
    addLine(layer, {0, 20, 0}, {1, 20, 0}); // shorter than its pattern
    PlotSettings settings;
    settings.scale = "10";
    const std::string text = svg(settings);
    // 0.5 x 4 x 2 units at 2.54 mm
    EXPECT_EQ(count(text, "stroke-dasharray:10.16,5.08"), 1U) << text;
    EXPECT_EQ(count(text, "<path"), 2U);
}

TEST_F(Plotting, LeavesOutWhatIsNotShown) {
    const AcDbObjectId off = addLayer("OFF", [](AcDbLayerTableRecord& layer) { layer.setIsOff(true); });
    const AcDbObjectId frozen =
        addLayer("FROZEN", [](AcDbLayerTableRecord& layer) { layer.setIsFrozen(true); });
    const AcDbObjectId screen =
        addLayer("SCREEN", [](AcDbLayerTableRecord& layer) { layer.setIsPlottable(false); });
    for (const AcDbObjectId layer : {off, frozen, screen}) addLine(layer, {0, 0, 0}, {1000, 1000, 0});
    auto hidden = std::make_unique<AcDbLine>(AcGePoint3d(0, 0, 0), AcGePoint3d(500, 0, 0));
    hidden->setVisibility(AcDb::kInvisible);
    add(std::move(hidden));
    addLine(database.layerZero(), {0, 0, 0}, {10, 0, 0});
    const AcDbObjectId erased = add(std::make_unique<AcDbCircle>(AcGePoint3d(), AcGeVector3d::kZAxis, 50.0));
    AcDbObjectPointer<AcDbEntity>(erased, AcDb::kForWrite)->erase();
    EXPECT_EQ(count(svg(), "<path"), 1U);

    // A window at full scale keeps away what lies beside it.
    addLine(database.layerZero(), {5000, 0, 0}, {5010, 0, 0});
    PlotSettings settings;
    settings.scale = "1:1";
    settings.window.emplace();
    settings.window->addPoint({0, -1, 0});
    settings.window->addPoint({10, 1, 0});
    EXPECT_EQ(count(svg(settings), "<path"), 1U);
}

// Pixels where a black square's sides are and are not, and the file as a whole the same twice.
TEST_F(Plotting, PngShowsThePlaceAndRepeats) {
    add(std::make_unique<AcDb2dPolyline>(
        AcDb::k2dSimplePoly, AcGePoint3dArray{{0, 0, 0}, {10, 0, 0}, {10, 10, 0}, {0, 10, 0}}, 0.0, true));
    PlotSettings settings;
    settings.paper = "100x100";
    settings.scale = "1:10"; // 25.4 mm square, centred
    settings.resolution = 254.0;
    ASSERT_FALSE(plotDrawing(database, settings, file("a.png")));
    cairo_surface_t* image = cairo_image_surface_create_from_png(file("a.png").c_str());
    ASSERT_EQ(cairo_image_surface_get_width(image), 1000);
    const unsigned char* data = cairo_image_surface_get_data(image);
    const int stride = cairo_image_surface_get_stride(image);
    const auto isInk = [&](int x, int y) { return data[y * stride + x * 4] < 128; };
    EXPECT_TRUE(isInk(500, 627)); // lower side: 12.7 mm below the middle
    EXPECT_TRUE(isInk(373, 500)); // left side
    EXPECT_FALSE(isInk(500, 500));
    EXPECT_FALSE(isInk(500, 640));
    cairo_surface_destroy(image);
    settings.scale = "1:1"; // the sides lie beyond the sheet, so that there is something to cut off
    add(std::make_unique<AcDbLine>(AcGePoint3d(0, 5, 0), AcGePoint3d(10, 5, 0)));
    for (const char* ending : {"png", "pdf", "svg"}) {
        const std::string first = file("first.") + ending;
        const std::string second = file("second.") + ending;
        ASSERT_FALSE(plotDrawing(database, settings, first));
        ASSERT_FALSE(plotDrawing(database, settings, second));
        EXPECT_EQ(bytesOf(first), bytesOf(second)) << ending;
        EXPECT_FALSE(bytesOf(first).empty());
    }
}

TEST_F(Plotting, ArcsAndTextCountForTheFit) {
    add(std::make_unique<AcDbArc>(AcGePoint3d(0, 0, 0), 10.0, 0.0, kPi));
    auto text = std::make_unique<AcDbMText>();
    text->setTextHeight(2.0);
    text->setContents("W");
    text->setLocation({30, 5, 0});
    add(std::move(text));
    PlotSettings settings;
    settings.paper = "A4 landscape";
    const std::string drawn = svg(settings);
    EXPECT_EQ(count(drawn, "<path"), 2U) << drawn;
    EXPECT_GE(count(drawn, " C "), 2U); // the arc is one, not a row of chords
}

TEST_F(Plotting, FailuresSayWhyAndLeaveNothing) {
    addLine(database.layerZero(), {0, 0, 0}, {10, 0, 0});
    const std::string missing = file("no/such/folder.svg");
    PlotSettings paper, scale, margin, resolution;
    paper.paper = "B17";
    scale.scale = "1:0";
    margin.margin = 105.0;
    resolution.paper = "A0";
    resolution.resolution = 5000.0;
    const struct {
        std::string path;
        PlotSettings settings;
        const char* part;
    } cases[] = {
        {missing, {}, "No such file"},
        {file("drawing.dwt"), {}, ".svg, .pdf or .png"},
        {file("a.svg"), paper, "B17"},
        {file("a.svg"), scale, "1:0"},
        {file("a.svg"), margin, "margin"},
        {file("a.png"), resolution, "cannot plot"},
        {folder.string() + "/folder.svg", {}, "folder.svg"},
    };
    fs::create_directory(folder / "folder.svg");
    for (const auto& c : cases) {
        SCOPED_TRACE(c.part);
        const auto error = plotDrawing(database, c.settings, c.path);
        ASSERT_TRUE(error);
        EXPECT_NE(error->find(c.part), std::string::npos) << *error;
        EXPECT_NE(error->find(c.path), std::string::npos) << *error;
        EXPECT_EQ(error->find('\n'), std::string::npos);
    }
    EXPECT_EQ(std::distance(fs::directory_iterator(folder), fs::directory_iterator()), 1); // the folder alone

    // A file that is there stays as it was.
    std::ofstream(file("kept.svg")) << "before";
    EXPECT_TRUE(plotDrawing(database, paper, file("kept.svg")));
    EXPECT_EQ(bytesOf(file("kept.svg")), "before");
}

TEST(PlotWords, ScalesAsDraftersWriteThem) {
    const struct {
        const char* text;
        double ratio; // 0 fit, below 0 refused
    } cases[] = {
        {"fit", 0},
        {"1:48", 1.0 / 48},
        {"1/4\"=1'-0\"", 1.0 / 48},
        {"1/8\" = 1'", 1.0 / 96},
        {"1 1/2\"=1'-0\"", 0.125},
        {"48", 1.0 / 48},
        {"2:1", 2.0},
        {"1=48", 1.0 / 48},
        {"3\"=1'-6\"", 1.0 / 6},
        {"", -1},
        {"1:", -1},
        {"abc", -1},
        {"1:48x", -1},
        {"-2", -1},
        {"1/0=1", -1},
    };
    for (const auto& c : cases) {
        const auto ratio = plotScale(c.text);
        EXPECT_EQ(ratio.has_value(), c.ratio >= 0) << c.text;
        EXPECT_NEAR(ratio.value_or(-1), c.ratio, 1e-15) << c.text;
    }
}

TEST(PlotWords, PapersByNameAndSize) {
    const struct {
        const char* text;
        double width, height;
    } cases[] = {{"a4", 210, 297},
                 {"A3 landscape", 420, 297},
                 {"ARCH D", 609.6, 914.4},
                 {"arch-d portrait", 609.6, 914.4},
                 {"420x297", 420, 297},
                 {"36x24in", 914.4, 609.6},
                 {"B17", 0, 0},
                 {"420x", 0, 0},
                 {"0x100", 0, 0}};
    for (const auto& c : cases) {
        const auto paper = paperSize(c.text);
        EXPECT_EQ(paper.has_value(), c.width > 0) << c.text;
        if (!paper) continue;
        EXPECT_NEAR(paper->width, c.width, 1e-9) << c.text;
        EXPECT_NEAR(paper->height, c.height, 1e-9) << c.text;
    }
}

TEST(Palette, FollowsTheWheel) {
    EXPECT_EQ(paletteColor(1), 0xFF0000U);
    EXPECT_EQ(paletteColor(10), 0xFF0000U);
    EXPECT_EQ(paletteColor(30), 0xFF7F00U);
    EXPECT_EQ(paletteColor(50), 0xFFFF00U);
    EXPECT_EQ(paletteColor(90), 0x00FF00U);
    EXPECT_EQ(paletteColor(170), 0x0000FFU);
    EXPECT_EQ(paletteColor(240), 0xFF003FU);
    EXPECT_EQ(paletteColor(12), 0xA50000U);
    EXPECT_EQ(paletteColor(11), 0xFF7F7FU);
    for (const int index : {1, 2, 5, 8, 30, 96, 171, 250})
        EXPECT_EQ(paletteColor(nearestIndex(paletteColor(index))), paletteColor(index));
}
