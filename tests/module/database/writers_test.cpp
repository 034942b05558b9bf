// Several users write one project at the same time.

#include "module/database/DatabaseTest.h"

#include <chrono>
#include <cstdlib>
#include <thread>

#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace plumb;

namespace {

constexpr int kUsers = 8;
constexpr int kFailed = 1;

// A short run by default; VELDRIN_WRITER_RECORDS=2000 is a long one.
int recordsOfEach() {
    const char* wanted = std::getenv("VELDRIN_WRITER_RECORDS");
    return wanted ? std::atoi(wanted) : 40;
}

FieldArray record(int user, int n) {
    return {{"sName", std::to_string(user) + "-" + std::to_string(n)}, {"iElbow", user}, {"iTee", n}};
}

[[noreturn]] void failBecause(const CDBConnection& connection, const char* what) {
    int code = 0;
    CString text;
    connection.GetLastError(code, text);
    std::fprintf(stderr, "%s: %d %s\n", what, code, text.c_str());
    _exit(kFailed);
}

// Adds two records and deletes one, changes the other, and those who live count.
void work(const CString& path, int user, int records) {
    CDBConnection connection;
    if (connection.Open(path, false, false) != path || !connection.CanUpdate())
        failBecause(connection, "open");
    if (!connection.OpenTable("tblPipeType", "ixPipeType")) failBecause(connection, "table");
    for (int n = 0; n < records; ++n) {
        if (!connection.AddRecord(record(user, n), false)) failBecause(connection, "add");
        if (!connection.EditRecord({{"iSortOrder", 1000 + n}})) failBecause(connection, "edit");
        if (!connection.AddRecord(record(user, -1), false)) failBecause(connection, "add another");
        if (!connection.DeleteRecord()) failBecause(connection, "delete");
        // A statement meets the retry of nobody but itself.
        for (int attempt = 0;
             user < kUsers &&
             !connection.Execute("update tblPipeType set iLabelLocation = iLabelLocation + 1 where "
                                 "ixPipeType = 1");
             ++attempt)
            if (attempt == 20) failBecause(connection, "count");
    }
    connection.Close();
}

template<class Work>
pid_t asProcess(Work run) {
    const pid_t child = fork();
    if (child != 0) return child;
    run();
    _exit(0);
}

} // namespace

class Writers : public DatabaseTest {};

TEST_F(Writers, LoseNothingOfEachOther) {
    const int records = recordsOfEach();
    connection.Close();
    std::vector<pid_t> users;
    for (int user = 0; user < kUsers; ++user) users.push_back(asProcess([&] { work(path, user, records); }));
    // Meanwhile others die in the middle of their work.
    constexpr int kKilled = 10;
    for (int n = 0; n < kKilled; ++n) {
        const pid_t victim = asProcess([&] { work(path, kUsers + n, 1'000'000); });
        std::this_thread::sleep_for(std::chrono::milliseconds(40 + 7 * n));
        kill(victim, SIGKILL);
        waitpid(victim, nullptr, 0);
    }
    for (const pid_t user : users) {
        int status = 0;
        waitpid(user, &status, 0);
        EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
    }
    ASSERT_EQ(connection.Open(path, false, false), path);
    const std::string users8 = std::to_string(kUsers);
    EXPECT_EQ(rows("pragma integrity_check"), "'ok'");
    EXPECT_EQ(rows(("select count(*), count(distinct sName) from tblPipeType where iElbow < " + users8 +
                    " and iSortOrder = 1000 + iTee and sName = iElbow || '-' || iTee and ixPipeType > 3")
                       .c_str()),
              std::to_string(kUsers * records) + " " + std::to_string(kUsers * records));
    EXPECT_EQ(rows(("select count(*) from tblPipeType where iTee < 0 and iElbow < " + users8).c_str()), "0");
    EXPECT_EQ(rows("select iLabelLocation from tblPipeType where ixPipeType = 1"),
              std::to_string(kUsers * records))
        << "no update is lost";
}
