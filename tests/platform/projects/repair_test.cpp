#include "platform/dao/DaoTest.h"
#include "projects/ProjectCheck.h"
#include "projects/ProjectDump.h"
#include "projects/ProjectMaker.h"
#include "projects/ProjectSchema.h"

#include <sys/stat.h>

#include <algorithm>
#include <fstream>
#include <random>
#include <set>

namespace veldrin::testing {

namespace {

namespace fs = std::filesystem;

std::string dumpOf(const std::string& file) {
    std::ostringstream text;
    dumpProject(file, text);
    return text.str();
}

// A project with many records of its own; made once, each test works on a copy.
class ProjectRepairs : public DaoFolderTest {
protected:
    static constexpr int kPipes = 3000;
    static constexpr std::size_t kPage = 4096;

    static void SetUpTestSuite() {
        std::string name = (fs::temp_directory_path() / "veldrin-dao-XXXXXX").string();
        origin = mkdtemp(name.data());
        CDaoDatabase database;
        database.Open(makeProject(origin, "Tower"));
        database.Execute(
            "create table tblMine(ixMine integer primary key autoincrement, sText text(80), bIn yesno)");
        database.Execute("create index [tblMine.sText] on tblMine(sText)");
        // The last record first, so that an end that is lost is not the one that says how many there were.
        database.Execute(
            "insert into tblMine with recursive n(i) as (select " + std::to_string(kPipes) +
            " union all select i - 1 from n where i > 1) select i, 'text of record ' || i, i % 2 from n");
        whole = dumpOf(origin + "/Tower vq_plumb.vq");
        records = checkProject(origin + "/Tower vq_plumb.vq").records;
    }
    static void TearDownTestSuite() { fs::remove_all(origin); }

    ProjectRepairs() {
        project = path("Tower vq_plumb.vq");
        fs::copy_file(origin + "/Tower vq_plumb.vq", project);
    }
    void put(std::size_t at, const std::string& bytes) const {
        std::fstream file(project, std::ios::in | std::ios::out | std::ios::binary);
        file.seekp(static_cast<std::streamoff>(at));
        file << bytes;
    }
    std::string bytes(const std::string& file) const {
        std::ifstream stream(file, std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), {}};
    }
    std::string otherFiles() const {
        std::string names;
        for (const auto& entry : fs::directory_iterator(folder))
            if (entry.path() != project) names += entry.path().filename().string() + ";";
        return names;
    }
    static ino_t inode(const std::string& file) {
        struct stat status {};
        EXPECT_EQ(stat(file.c_str(), &status), 0);
        return status.st_ino;
    }

    static std::string origin;
    static std::string whole; // the dump of the sound project
    static std::int64_t records;
    std::string project;
};
std::string ProjectRepairs::origin;
std::string ProjectRepairs::whole;
std::int64_t ProjectRepairs::records = 0;

TEST_F(ProjectRepairs, ASoundProjectIsLeftAlone) {
    const ProjectReport checked = checkProject(project);
    EXPECT_EQ(checked.failure, "");
    EXPECT_TRUE(checked.problems.empty()) << checked.problems.front();
    EXPECT_GT(checked.records, kPipes);
    EXPECT_EQ(bytes(project), bytes(origin + "/Tower vq_plumb.vq")) << "a check changes nothing";
    const ProjectReport repaired = repairProject(project);
    EXPECT_EQ(repaired.failure, "");
    EXPECT_TRUE(repaired.problems.empty()) << repaired.problems.front();
    EXPECT_EQ(repaired.records, checked.records);
    EXPECT_EQ(repaired.kept, "");
    EXPECT_EQ(otherFiles(), "");
    EXPECT_EQ(dumpOf(project), whole);
}

TEST_F(ProjectRepairs, ADamagedBeginningCostsNoRecord) {
    const std::string garbage(16, '\xEE');
    for (const std::size_t at : {0, 4, 16}) {
        fs::copy_file(origin + "/Tower vq_plumb.vq", project, fs::copy_options::overwrite_existing);
        put(at, garbage.substr(0, 8));
        const std::string damaged = bytes(project);
        EXPECT_TRUE(!checkProject(project).failure.empty() || !checkProject(project).problems.empty()) << at;
        EXPECT_EQ(bytes(project), damaged);
        const ino_t file = inode(project);
        const ProjectReport report = repairProject(project);
        EXPECT_EQ(report.failure, "") << at;
        EXPECT_EQ(report.records, records) << at;
        EXPECT_EQ(bytes(report.kept), damaged) << at;
        EXPECT_EQ(inode(project), file);
        EXPECT_EQ(dumpOf(project), whole) << at;
        EXPECT_TRUE(checkProject(project).problems.empty()) << at;
        fs::remove(report.kept);
        EXPECT_EQ(otherFiles(), "");
    }
}

// Pages that are lost take their records with them; what a repair saves is what was there.
TEST_F(ProjectRepairs, WhatIsSavedOfADamagedProjectIsTrue) {
    const std::string sound = bytes(project);
    std::vector<std::size_t> pages; // of the table and its index
    for (std::size_t page = 0; page < sound.size() / kPage; ++page)
        if (sound.substr(page * kPage, kPage).find("text of record") != std::string::npos)
            pages.push_back(page);
    ASSERT_GT(pages.size(), 20U);
    std::mt19937 random(11);
    std::int64_t lost = 0;
    for (int round = 0; round < 3; ++round) {
        fs::copy_file(origin + "/Tower vq_plumb.vq", project, fs::copy_options::overwrite_existing);
        if (round == 0) {
            fs::resize_file(project, pages[pages.size() * 9 / 10] * kPage);
        } else {
            for (int hit = 0; hit < 2; ++hit) {
                std::string noise;
                for (std::size_t i = 0; i < kPage; ++i) noise += static_cast<char>(random());
                put(pages[random() % pages.size()] * kPage, noise);
            }
        }
        const std::string damaged = bytes(project);
        const ProjectReport checked = checkProject(project);
        EXPECT_TRUE(!checked.failure.empty() || !checked.problems.empty()) << round;
        const ProjectReport report = repairProject(project);
        ASSERT_EQ(report.failure, "") << round;
        EXPECT_FALSE(report.problems.empty()) << round;
        EXPECT_EQ(bytes(report.kept), damaged);
        CDaoDatabase mended;
        mended.Open(project);
        const RowArray saved = mended.Select("select ixMine, sText, bIn from tblMine");
        for (std::size_t row = 0; row < saved.rows(); ++row) {
            const std::int64_t number = saved.at(row, 0).whole();
            EXPECT_EQ(saved.at(row, 1).text(), "text of record " + std::to_string(number));
            EXPECT_EQ(saved.at(row, 2).whole(), -(number % 2));
        }
        EXPECT_GT(saved.rows(), kPipes / 2U) << round;
        lost += kPipes - static_cast<std::int64_t>(saved.rows());
        mended.Close();
        const ProjectReport after = checkProject(project);
        EXPECT_TRUE(after.problems.empty()) << after.problems.front();
        EXPECT_EQ(after.records, report.records);
        fs::remove(report.kept);
        EXPECT_EQ(otherFiles(), "");
    }
    EXPECT_GT(lost, 0) << "no page of the table was hit";
}

TEST_F(ProjectRepairs, WhoeverHasTheProjectOpenGoesOnWithTheMendedOne) {
    CDaoDatabase user;
    user.Open(project);
    EXPECT_EQ(rows(user, "select count(*) from tblMine"), "long " + std::to_string(kPipes));
    {
        // The index loses its order; the records stay.
        CDaoDatabase damage;
        damage.Open(project);
        const std::int64_t page =
            damage.Select("select rootpage from sqlite_schema where name = 'tblMine.sText'").at(0, 0).whole();
        damage.Close();
        put(static_cast<std::size_t>(page - 1) * kPage, std::string(3000, '\xA5'));
    }
    const ino_t file = inode(project);
    const ProjectReport report = repairProject(project);
    EXPECT_EQ(report.failure, "");
    EXPECT_EQ(report.problems.size(), 1U);
    EXPECT_EQ(inode(project), file);
    EXPECT_EQ(rows(user, "select count(*) from tblMine where sText like 'text of record%'"),
              "long " + std::to_string(kPipes));
    EXPECT_EQ(user.Execute("update tblMine set bIn = 5 where ixMine = 2"), 1);
    EXPECT_EQ(rows(user, "select bIn + 0 from tblMine where ixMine = 2"), "long -1");
    EXPECT_TRUE(checkProject(project).problems.empty());
}

TEST_F(ProjectRepairs, WhatCannotBeRepairedStaysAsItIs) {
    const std::string jet("\0\1\0\0Standard Jet DB\0\1\0\0\0", 24);
    const struct {
        const char* name;
        std::string bytes;
    } cases[] = {{"text.vq", std::string(50'000, 'x')},
                 {"zeros.vq", std::string(8192, '\0')},
                 {"short.vq", "xx"},
                 {"jet.vq", jet + std::string(20'000, '\7')}};
    fs::remove(project);
    for (const auto& c : cases) {
        std::ofstream(path(c.name), std::ios::binary) << c.bytes;
        EXPECT_NE(checkProject(path(c.name)).failure, "") << c.name;
        const ProjectReport report = repairProject(path(c.name));
        EXPECT_TRUE(report.failure.starts_with("Cannot repair " + path(c.name) + ": ")) << report.failure;
        EXPECT_EQ(report.failure.find('\n'), std::string::npos);
        EXPECT_EQ(report.kept, "");
        EXPECT_EQ(bytes(path(c.name)), c.bytes) << c.name;
        fs::remove(path(c.name));
        EXPECT_EQ(otherFiles(), "") << c.name;
    }
    EXPECT_NE(checkProject(path("none.vq")).failure, "");
    EXPECT_NE(repairProject(path("none.vq")).failure, "");
    EXPECT_EQ(otherFiles(), "");
}

TEST_F(ProjectRepairs, AnEmptyFileBecomesAnEmptyProject) {
    fs::resize_file(project, 0);
    EXPECT_NE(checkProject(project).failure, "");
    const ProjectReport report = repairProject(project);
    EXPECT_EQ(report.failure, "");
    EXPECT_EQ(report.problems.size(), 1U);
    EXPECT_TRUE(checkProject(project).problems.empty());
    CDaoDatabase database;
    database.Open(project);
    EXPECT_EQ(describeSchemaGaps(database), "");
    database.Execute("insert into tblLayer(bRGBColor) values(1)");
    EXPECT_EQ(rows(database, "select bRGBColor + 0 from tblLayer"), "long -1");
}

TEST_F(ProjectRepairs, MissingTablesAndColumnsAreToldAndAdded) {
    {
        CDaoDatabase database;
        database.Open(project);
        database.Execute("alter table tblGlobal drop column dNumber");
        database.Execute("drop table tblLayerSystem");
        database.Execute("alter table tblGlobal add column nMore long");
        EXPECT_EQ(describeSchemaGaps(database),
                  project + " lacks tblGlobal.dNumber, the table tblLayerSystem.");
    }
    const std::set<std::string> missing{"tblGlobal.dNumber is missing",
                                        "the table tblLayerSystem is missing"};
    const auto checked = checkProject(project).problems;
    EXPECT_EQ(std::set<std::string>(checked.begin(), checked.end()), missing);
    const ProjectReport report = repairProject(project);
    EXPECT_EQ(report.failure, "");
    EXPECT_EQ(report.problems.size(), 2U);
    EXPECT_EQ(report.kept, "") << "nothing was lost";
    EXPECT_TRUE(checkProject(project).problems.empty());
    CDaoDatabase database;
    database.Open(project);
    database.Execute("insert into tblLayerSystem(bSolid) values(1)");
    EXPECT_EQ(rows(database, "select bSolid + 0 from tblLayerSystem"), "long -1");
}

TEST_F(ProjectRepairs, AProjectThatSomebodyHasExclusivelyIsLeftAlone) {
    CDaoDatabase holder;
    holder.Open(project, true);
    const ProjectReport report = repairProject(project);
    EXPECT_EQ(report.failure, "Cannot repair " + project + ": it is in use.");
    EXPECT_EQ(otherFiles(), "");
    holder.Execute("update tblMine set bIn = 1 where ixMine = 2");
    holder.Close();
    EXPECT_NE(dumpOf(project), whole);
    EXPECT_TRUE(checkProject(project).problems.empty());
}

TEST_F(ProjectRepairs, ADumpDiffersByWhatTheProjectHolds) {
    EXPECT_EQ(dumpOf(project), whole);
    EXPECT_NE(
        whole.find("\n[tblMine] 3000\n\nixMine = 1\nsText = \"text of record 1\"\nbIn = yes\n\nixMine = 2\n"),
        std::string::npos);
    CDaoDatabase database;
    database.Open(project);
    database.Execute("update tblMine set sText = 'a \"b\\' || char(10) || 'c' where ixMine = 1");
    database.Execute("update tblMine set sText = null, bIn = 1 where ixMine = 2");
    EXPECT_NE(dumpOf(project).find("\n\nixMine = 1\nsText = \"a \\\"b\\\\\\nc\"\nbIn = yes\n\nixMine = "
                                   "2\nbIn = yes\n\nixMine = 3\n"),
              std::string::npos);
    // The same contents that came in another way are the same text.
    database.Execute(
        "update tblMine set sText = 'text of record ' || ixMine, bIn = ixMine % 2 where ixMine < 3");
    database.Execute("delete from tblMine where ixMine = 3000");
    database.Execute("insert into tblMine values(3000, 'text of record 3000', 0)");
    EXPECT_EQ(dumpOf(project), whole);
    EXPECT_EQ(failure([&] { dumpOf(path("none.vq")); }), kDaoFileNotFound);
}

} // namespace

} // namespace veldrin::testing
