#include "architecture/IncludeRules.h"

#include <fstream>
#include <sstream>
#include <stdexcept>

#include <gtest/gtest.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

const fs::path sources = VELDRIN_SOURCE_DIR;

std::string readText(const fs::path& path) {
    std::ifstream in(path);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

/// The rules of the page, and an empty source tree to break them in.
class IncludeRulesTest : public testing::Test {
protected:
    void SetUp() override {
        std::string name = (fs::temp_directory_path() / "veldrin-includes-XXXXXX").string();
        ASSERT_NE(mkdtemp(name.data()), nullptr);
        root = name;
    }
    void TearDown() override { fs::remove_all(root); }

    void write(const std::string& file, const std::string& text) const {
        fs::create_directories((root / file).parent_path());
        std::ofstream(root / file) << text;
    }

    /// What the check says about one include in one file of the tree.
    std::vector<std::string> judge(const std::string& file, const std::string& include) const {
        write(file, "// first line\n#include " + include + "\n");
        std::vector<std::string> found = rules.violations(root);
        fs::remove(root / file);
        return found;
    }

    IncludeRules rules = IncludeRules::fromPage(readText(sources / "docs/architecture.md"));
    fs::path root;
};

TEST_F(IncludeRulesTest, sourcesObeyThePage) {
    for (const std::string& violation : rules.violations(sources)) ADD_FAILURE() << violation;
}

TEST_F(IncludeRulesTest, everyRoomHasARow) {
    for (const fs::directory_entry& entry : fs::directory_iterator(sources / "platform"))
        EXPECT_TRUE(rules.rooms().contains("platform/" + entry.path().filename().string())) << entry.path();
}

TEST_F(IncludeRulesTest, breachesAreFound) {
    write("platform/geometry/Point.h", "");
    write("platform/drawing/Line.h", "");
    write("platform/cellar/Barrel.h", "");
    write("module/pipe/Pipe.h", "");
    write("app/cli/Options.h", "");
    const std::pair<std::string, std::string> breaches[] = {
        {"platform/geometry/a.cpp", "\"drawing/Line.h\""},
        {"platform/lisp/a.h", "  \"drawing/Line.h\" // far below"},
        {"platform/scripting/a.cpp", "\"pipe/Pipe.h\""},
        {"platform/scripting/a.cpp", "\"cli/Options.h\""},
        {"platform/drawing/a.cpp", "\"../geometry/Point.h\""},
        {"platform/drawing/a.cpp", "\"Line.h\""},
        {"platform/scripting/a.cpp", "\"cellar/Barrel.h\""},
        {"platform/cellar/a.cpp", "\"geometry/Point.h\""},
        {"platform/drawing/a.cpp", "<sqlite3.h>"},
        {"platform/editor/a.cpp", "<cairo/cairo.h>"},
        {"platform/editor/a.cpp", "<QWidget>"},
        {"platform/editor/a.cpp", "<boost/any.hpp>"},
        {"platform/editor/a.cpp", "<gtest/gtest.h>"},
        {"module/pipe/a.cpp", "\"cli/Options.h\""},
        {"module/pipe/a.cpp", "<fmt/format.h>"},
        {"module/pipe/a.cpp", "<unistd.h>"},
        {"app/cli/a.cpp", "\"pipe/Pipe.h\""},
        {"app/window/a.cpp", "<CLI/CLI.hpp>"},
        {"tests/platform/a.cpp", "\"pipe/Pipe.h\""},
    };
    for (const auto& [file, include] : breaches) {
        const std::vector<std::string> found = judge(file, include);
        ASSERT_EQ(found.size(), 1U) << file << " " << include;
        EXPECT_TRUE(found[0].starts_with(file + ":2: ")) << found[0];
    }
}

TEST_F(IncludeRulesTest, whatIsAllowedPasses) {
    write("platform/geometry/Point.h", "");
    write("platform/files/File.h", "");
    write("module/pipe/Pipe.h", "");
    const std::pair<std::string, std::string> good[] = {
        {"platform/geometry/a.cpp", "\"geometry/Point.h\""},
        {"platform/graphics/a.cpp", "\"files/File.h\""},
        {"platform/scripting/a.cpp", "\"files/File.h\""},
        {"platform/dao/a.cpp", "<sqlite3.h>"},
        {"platform/graphics/a.cpp", "<cairo-pdf.h>"},
        {"module/host/a.cpp", "\"pipe/Pipe.h\""},
        {"module/host/a.cpp", "\"geometry/Point.h\""},
        {"module/host/a.cpp", "<string_view>"},
        {"app/window/a.cpp", "<QWidget>"},
        {"tests/module/a.cpp", "\"pipe/Pipe.h\""},
    };
    for (const auto& [file, include] : good)
        EXPECT_EQ(judge(file, include), std::vector<std::string>()) << file << " " << include;
}

TEST_F(IncludeRulesTest, aPageWithoutItsTablesIsNoPage) {
    EXPECT_THROW(IncludeRules::fromPage("# Nothing here\n"), std::runtime_error);
    EXPECT_THROW(IncludeRules::fromPage("| Tree | Sees |\n|---|---|\n| platform | `platform` |\n"),
                 std::runtime_error);
}

} // namespace
