#include "files/DrawingHold.h"
#include "platform/files/DrawingFileTest.h"

#include <array>
#include <csignal>
#include <fstream>

#include <sys/wait.h>

namespace fs = std::filesystem;

namespace veldrin::testing {

namespace {

// Another program that holds a drawing until it is killed.
class OtherProgram {
public:
    explicit OtherProgram(const std::string& drawing) {
        std::array<int, 2> ready{};
        EXPECT_EQ(pipe(ready.data()), 0);
        m_process = fork();
        if (m_process == 0) {
            const auto attempt = DrawingHold::take(drawing);
            const char done = attempt.hold ? 'y' : 'n';
            if (write(ready[1], &done, 1) == 1)
                for (;;) pause();
            _exit(1);
        }
        char done = 0;
        EXPECT_EQ(read(ready[0], &done, 1), 1);
        EXPECT_EQ(done, 'y');
        close(ready[0]);
        close(ready[1]);
    }
    ~OtherProgram() { stop(); }
    OtherProgram(const OtherProgram&) = delete;
    OtherProgram& operator=(const OtherProgram&) = delete;

    void stop() {
        if (m_process <= 0) return;
        kill(m_process, SIGKILL);
        waitpid(m_process, nullptr, 0);
        m_process = 0;
    }
    std::string number() const { return std::to_string(m_process); }

private:
    pid_t m_process = 0;
};

class DrawingHolds : public DrawingFileTest {
protected:
    std::string lockFile() const { return path("a.vqd.lock"); }
};

TEST_F(DrawingHolds, oneHasItTheOtherIsToldWho) {
    {
        const OtherProgram other(path("a.vqd"));
        const DrawingHold::Attempt refused = DrawingHold::take(path("a.vqd"));
        EXPECT_EQ(refused.hold, nullptr);
        EXPECT_NE(refused.holder.find("process " + other.number()), std::string::npos) << refused.holder;
        EXPECT_EQ(refused.holder.find('\n'), std::string::npos);
        // By any name of the file.
        std::ofstream(path("a.vqd")).flush();
        fs::create_symlink(path("a.vqd"), path("link.vqd"));
        EXPECT_EQ(DrawingHold::take(path("link.vqd")).hold, nullptr);
    }
    EXPECT_TRUE(fs::exists(lockFile()));
}

TEST_F(DrawingHolds, aKilledProgramHoldsNothing) {
    OtherProgram other(path("a.vqd"));
    other.stop();
    EXPECT_TRUE(fs::exists(lockFile()));
    {
        const DrawingHold::Attempt attempt = DrawingHold::take(path("a.vqd"));
        ASSERT_NE(attempt.hold, nullptr);
        EXPECT_TRUE(attempt.afterCrash);
    }
    EXPECT_FALSE(fs::exists(lockFile()));
    EXPECT_FALSE(DrawingHold::take(path("a.vqd")).afterCrash);
}

TEST_F(DrawingHolds, whereNothingCanBeWrittenThereIsNone) {
    EXPECT_EQ(DrawingHold::take(path("no/folder/a.vqd")).hold, nullptr);
    fs::permissions(folder, fs::perms(0555));
    {
        const OrdinaryUser user;
        EXPECT_TRUE(DrawingHold::take(path("a.vqd")).isDenied);
    }
    fs::permissions(folder, fs::perms(0755));
    // A foreign file of that name is no reason to fail.
    std::ofstream(lockFile()) << "\n\nnotes";
    EXPECT_NE(DrawingHold::take(path("a.vqd")).hold, nullptr);
}

} // namespace

} // namespace veldrin::testing
