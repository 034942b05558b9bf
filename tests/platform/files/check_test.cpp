#include "drawing/AcDbCircle.h"
#include "files/DrawingCheck.h"
#include "platform/files/DrawingFileTest.h"

#include <fstream>
#include <random>

namespace veldrin::testing {
namespace {

namespace fs = std::filesystem;

class DrawingChecks : public DrawingFileTest {
protected:
    DrawingChecks() {
        for (int i = 1; i <= 400; ++i) addLine(drawing, i);
        EXPECT_FALSE(saveDrawing(drawing, path("a.vqd")));
        whole = contents(drawing);
    }
    void edit(const char* statements) {
        fs::copy_file(path("a.vqd"), path("b.vqd"), fs::copy_options::overwrite_existing);
        SqlFile file(path("b.vqd"), SqlFile::Mode::kExisting);
        EXPECT_TRUE(file.run(statements)) << file.error();
    }
    static bool tells(const DrawingReport& report, const std::string& what) {
        for (const std::string& problem : report.problems)
            if (problem.find(what) != std::string::npos) return true;
        return false;
    }
    std::unique_ptr<AcDbDatabase> open(const std::string& name) {
        auto opened = openDrawing(path(name));
        if (const auto* problem = std::get_if<std::string>(&opened)) ADD_FAILURE() << *problem;
        auto* database = std::get_if<std::unique_ptr<AcDbDatabase>>(&opened);
        return database ? std::move(*database) : nullptr;
    }

    AcDbDatabase drawing;
    std::map<std::string, std::string> whole;
};

TEST_F(DrawingChecks, ASoundDrawingIsLeftAlone) {
    const DrawingReport checked = checkDrawing(path("a.vqd"));
    EXPECT_EQ(checked.failure, "");
    EXPECT_TRUE(checked.problems.empty()) << checked.problems.front();
    EXPECT_EQ(checked.objects, static_cast<int>(whole.size()));
    const auto before = fs::last_write_time(path("a.vqd"));
    EXPECT_EQ(repairDrawing(path("a.vqd")).kept, "");
    EXPECT_EQ(fs::last_write_time(path("a.vqd")), before);
}

TEST_F(DrawingChecks, WhatIsNoDrawingIsToldInOneLine) {
    EXPECT_EQ(checkDrawing(path("none.vqd")).failure,
              "Cannot check drawing " + path("none.vqd") + ": there is no such file.");
    std::ofstream(path("text.vqd")) << std::string(5000, 'x');
    EXPECT_EQ(repairDrawing(path("text.vqd")).failure,
              "Cannot repair drawing " + path("text.vqd") + ": it is not a drawing.");
    EXPECT_EQ(fs::file_size(path("text.vqd")), 5000U);
}

TEST_F(DrawingChecks, ADamagedObjectIsNamedAndTheRestIsSaved) {
    edit("update objects set record = x'FF01' where class = 'AcDbLine' and handle % 7 = 0");
    const DrawingReport checked = checkDrawing(path("b.vqd"));
    const std::size_t lost = checked.problems.size();
    EXPECT_GT(lost, 50U);
    EXPECT_TRUE(tells(checked, "of class AcDbLine is damaged"));
    const DrawingReport repaired = repairDrawing(path("b.vqd"));
    EXPECT_EQ(repaired.failure, "");
    EXPECT_EQ(repaired.problems, checked.problems);
    EXPECT_EQ(repaired.kept, path("b.damaged.vqd"));
    EXPECT_EQ(contents(*open("b.vqd")).size(), whole.size() - lost);
    EXPECT_TRUE(checkDrawing(path("b.vqd")).problems.empty());
    EXPECT_FALSE(checkDrawing(path("b.damaged.vqd")).problems.empty()) << "the damaged file is kept";
}

TEST_F(DrawingChecks, LostTablesComeAnewAndOrphansFindAPlace) {
    edit("delete from objects where class in ('AcDbLayerTable', 'AcDbBlockTable', 'AcDbBlockTableRecord')");
    EXPECT_TRUE(tells(checkDrawing(path("b.vqd")), "the table of layers is missing"));
    EXPECT_EQ(repairDrawing(path("b.vqd")).failure, "");
    const auto mended = open("b.vqd");
    ASSERT_TRUE(mended);
    const AcDbObjectPointer<AcDbBlockTableRecord> space(mended->modelSpaceId());
    EXPECT_EQ(space->entityIds().size(), 400U);
    for (const AcDbObjectId id : space->entityIds()) {
        const AcDbObjectPointer<AcDbEntity> entity(id);
        EXPECT_EQ(entity->layer(), "0");
    }
}

// Wherever a file is hit, what a repair saves is what was there.
TEST_F(DrawingChecks, WhatIsSavedOfADamagedFileIsTrue) {
    std::mt19937 random(4);
    const auto size = fs::file_size(path("a.vqd"));
    int mended = 0;
    for (int round = 0; round < 25; ++round) {
        const std::string name = "c" + std::to_string(round) + ".vqd";
        fs::copy_file(path("a.vqd"), path(name));
        if (round % 5 == 0) {
            fs::resize_file(path(name), size * (40 + random() % 60) / 100);
        } else {
            std::fstream file(path(name), std::ios::in | std::ios::out | std::ios::binary);
            file.seekp(static_cast<std::streamoff>(200 + random() % (size - 4000)));
            for (unsigned i = 0; i < 500 + random() % 3000; ++i) file.put(static_cast<char>(random()));
        }
        const DrawingReport report = repairDrawing(path(name));
        if (!report.failure.empty()) {
            EXPECT_EQ(report.failure.find('\n'), std::string::npos);
            continue;
        }
        ++mended;
        for (const auto& [handle, record] : contents(*open(name))) {
            const bool wasThere = record.starts_with("AcDbLine ") && whole.contains(handle);
            EXPECT_TRUE(!wasThere || record.size() == whole[handle].size()) << handle;
        }
        EXPECT_TRUE(checkDrawing(path(name)).problems.empty());
        EXPECT_FALSE(fs::exists(path(name) + ".salvaged"));
    }
    EXPECT_GT(mended, 15);
}

} // namespace
} // namespace veldrin::testing
