#include "platform/files/DrawingFileTest.h"

#include <array>
#include <chrono>
#include <csignal>
#include <random>
#include <thread>

#include <sys/wait.h>

namespace fs = std::filesystem;

namespace veldrin::testing {

namespace {

constexpr int kKills = 500;
constexpr int kLines = 40;

// The program is killed while it saves, at any moment. Every save gives all lines the same length, one more
// than the save before.
class KilledSaves : public DrawingFileTest {
protected:
    static void setLengths(AcDbDatabase& database, int length) {
        for (const AcDbObjectId id : linesOf(database)) {
            const AcDbObjectPointer<AcDbLine> line(id, AcDb::kForWrite);
            line->setEndPoint(AcGePoint3d(length, 0, 0));
        }
    }
    static std::vector<AcDbObjectId> linesOf(const AcDbDatabase& database) {
        const AcDbObjectPointer<AcDbBlockTableRecord> space(database.modelSpaceId());
        return space->entityIds();
    }
    // The one length that all lines have; -1 when they differ or some are missing.
    static int length(const AcDbDatabase& database) {
        const std::vector<AcDbObjectId> lines = linesOf(database);
        int common = -1;
        for (const AcDbObjectId id : lines) {
            const AcDbObjectPointer<AcDbLine> line(id);
            const int own = static_cast<int>(line->endPoint().x);
            if (common != -1 && common != own) return -1;
            common = own;
        }
        return lines.size() == kLines ? common : -1;
    }

    // Saves again and again: changes into the file, or all of it anew.
    [[noreturn]] static void goOnSaving(const std::string& file, int from, bool isWhole, int ready) {
        auto opened = openDrawing(file);
        AcDbDatabase& drawing = *std::get<std::unique_ptr<AcDbDatabase>>(opened);
        if (write(ready, "y", 1) != 1) _exit(1);
        for (int number = from + 1;; ++number) {
            setLengths(drawing, number);
            if (isWhole ? saveDrawingCopy(drawing, file) : saveDrawing(drawing, file)) _exit(1);
        }
    }
};

TEST_F(KilledSaves, leaveTheOldDrawingOrTheNewOne) {
    const std::string file = path("a.vqd");
    {
        AcDbDatabase drawing;
        for (int i = 0; i < kLines; ++i) addLine(drawing, 0.0);
        ASSERT_EQ(save(drawing, file), "");
    }
    std::mt19937 random(20240517); // NOLINT: the same moments each time, as far as the machine allows
    std::uniform_int_distribution<int> microseconds(0, 12'000);
    int before = 0;
    int moved = 0;
    std::array<int, 2> ready{};
    ASSERT_EQ(pipe(ready.data()), 0);
    for (int i = 0; i < kKills; ++i) {
        const pid_t program = fork();
        if (program == 0) goOnSaving(file, before, i % 3 == 0, ready[1]);
        char go = 0;
        ASSERT_EQ(read(ready[0], &go, 1), 1);
        std::this_thread::sleep_for(std::chrono::microseconds(microseconds(random)));
        kill(program, SIGKILL);
        int status = 0;
        ASSERT_EQ(waitpid(program, &status, 0), program);
        ASSERT_TRUE(WIFSIGNALED(status)) << "a save failed after kill " << i;
        const auto found = open(file);
        ASSERT_NE(found, nullptr) << "after kill " << i;
        const int now = length(*found);
        ASSERT_GE(now, before) << "after kill " << i;
        moved += now > before;
        before = now;
    }
    EXPECT_GT(moved, kKills / 20); // else the kills came too early to mean anything
    // What a killed save left beside it is gone after the next one, and the previous drawing is whole too.
    const auto last = open(file);
    setLengths(*last, before + 1);
    ASSERT_EQ(save(*last, file), "");
    const auto previous = open(path("a.bak"));
    ASSERT_NE(previous, nullptr);
    EXPECT_EQ(length(*previous), before);
    for (const auto& entry : fs::directory_iterator(folder))
        EXPECT_TRUE(entry.path() == file || entry.path() == path("a.bak")) << entry.path();
}

} // namespace

} // namespace veldrin::testing
