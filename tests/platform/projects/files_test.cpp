#include "platform/dao/DaoTest.h"
#include "projects/LockTrust.h"
#include "projects/ProjectFiles.h"
#include "projects/ProjectMaker.h"

#include <algorithm>
#include <fstream>

namespace veldrin::testing {

namespace {

namespace fs = std::filesystem;

class ProjectFiles : public DaoFolderTest {
protected:
    std::string projects(const char* module = "vq_plumb", const char* extension = "vq") const {
        std::vector<std::string> names;
        for (const std::string& file : projectFilesIn(folder.string(), module, extension)) {
            EXPECT_EQ(fs::path(file).parent_path(), folder);
            names.push_back(fs::path(file).filename().string());
        }
        std::sort(names.begin(), names.end());
        std::string all;
        for (const std::string& name : names) all += name + ";";
        return all;
    }
};

TEST_F(ProjectFiles, AFolderKnowsItsProjectsByTheirNames) {
    for (const char* name :
         {"Tower vq_plumb.vq", "TOWER VQ_PLUMB 2.VQ", "vq_plumb.vq", "vq_plumbing.vq", "52-VQ vq_plumb.vq",
          "52-vqx vq_plumb.vq", "Tower vq_plumb_MASTER.vq", "_master vq_plumb.vq",
          "Tower vq_plumb_Standards.vq", "Tower vq_plumb.vq.damaged", "Tower vq_plumb.vqd", "Tower.vq",
          "vq_plum.vq", "vq_plumbvq", "Tower vq_duct.vq"})
        std::ofstream(path(name)).flush();
    fs::create_directory(path("Folder vq_plumb.vq"));
    EXPECT_EQ(projects(), "TOWER VQ_PLUMB 2.VQ;Tower vq_plumb.vq;vq_plumb.vq;vq_plumbing.vq;");
    EXPECT_EQ(projects("VQ_DUCT", "VQ"), "Tower vq_duct.vq;");
    EXPECT_EQ(projects("vq_plumb.v", "vq"), "") << "the module's name lies before the ending";
    EXPECT_TRUE(projectFilesIn(path("none"), "vq_plumb", "vq").empty());
}

TEST_F(ProjectFiles, PathsThatLookLikeProjects) {
    const struct {
        const char* path;
        bool looks;
    } cases[] = {{"/a/Tower vq_plumb.vq", true},
                 {"/a/b.VQ", true},
                 {"old.mdb", true},
                 {"/a/b.vq.damaged", true},
                 {"/a/b.vq.Damaged-3", true},
                 {"/a.vq/b", false},
                 {"/a/b.vqd", false},
                 {"/a/b.damaged.vqd", false},
                 {"vq", false},
                 {"", false},
                 {"/a/b.vq.mended", false}};
    for (const auto& c : cases) EXPECT_EQ(looksLikeProject(c.path), c.looks) << c.path;
}

TEST_F(ProjectFiles, AFolderGetsOneProject) {
    const std::string made = makeProject(path("new/deep"), "Tower");
    EXPECT_EQ(made, path("new/deep/Tower vq_plumb.vq"));
    EXPECT_EQ(projectFilesIn(path("new/deep"), "vq_plumb", "vq"), std::vector<std::string>{made});
    EXPECT_EQ(failure([&] { makeProject(path("new/deep"), "Other"); }), kDaoObjectExists);
    const std::string standards = makeStandardsFile(path("new/deep"), "Tower");
    EXPECT_EQ(projectFilesIn(path("new/deep"), "vq_plumb", "vq"), std::vector<std::string>{made});
    EXPECT_EQ(failure([&] { makeStandardsFile(path("new/deep"), "Tower"); }), kDaoObjectExists);
    std::ofstream(path("file")).flush();
    for (const char* name : {"", "a/b", "a\\b"})
        EXPECT_EQ(failure([&] { makeProject(folder.string(), name); }), kDaoCannotOpen) << name;
    EXPECT_EQ(failure([&] { makeProject(path("file"), "Tower"); }), kDaoCannotOpen);
    EXPECT_EQ(projects(), "");
    const auto count = std::distance(fs::directory_iterator(path("new/deep")), fs::directory_iterator());
    EXPECT_EQ(count, 2) << "nothing else is left";

    CDaoDatabase database;
    database.Open(made);
    EXPECT_FALSE(database.TableExists("tblValveM"));
    EXPECT_GT(database.Select("select count(*) from tblLayer").at(0, 0).whole(), 0);
    database.Execute("update tblLayer set bRGBColor = 1");
    EXPECT_EQ(rows(database, "select distinct bRGBColor + 0 from tblLayer"), "long -1");
    database.Open(standards);
    EXPECT_TRUE(database.TableExists("tblValveM"));
}

constexpr const char* kMounts =
    "22 1 8:1 / / rw,relatime shared:1 - ext4 /dev/sda1 rw\n"
    "23 22 0:20 / /proc rw shared:5 master:2 - proc proc rw\n"
    "30 22 0:40 / /srv/nolock rw - nfs server:/a rw,vers=3,nolock,addr=10.0.0.1\n"
    "31 30 8:2 / /srv/nolock/local rw shared:7 - ext4 /dev/sdb1 rw,nolock\n"
    "32 22 0:41 / /srv/sound rw shared:8 - nfs4 server:/b rw,vers=4.2,local_lock=none\n"
    "33 32 0:42 / /srv/sound/half rw - nfs server:/c rw,local_lock=posix\n"
    "34 22 0:43 / /srv/My\\040Share rw shared:9 - cifs //server/share rw,vers=3.0,nobrl\n"
    "35 22 0:44 / /srv/cifs rw - cifs //server/other rw,vers=3.0\n"
    "36 22 0:45 / /srv/fuse rw - fuse.sshfs me@server:/ rw,user_id=0\n"
    "37 22 0:46 / /srv/over rw - nfs server:/d rw,nolock\n"
    "38 22 8:3 / /srv/over rw - xfs /dev/sdc1 rw\n"
    "39 22 0:47 / /srv/option nolock,rw - nfs4 server:/e rw\n"
    "broken line\n"
    "40 22 0:48 / /srv/short rw - nfs\n";

TEST_F(ProjectFiles, LocksAreTrustedByTheMountThatAPathIsOn) {
    const struct {
        const char* path;
        bool onNetwork;
        const char* option;
    } cases[] = {
        {"/home/me", false, ""},
        {"/srv/nolock", true, "nolock"},
        {"/srv/nolock/project", true, "nolock"},
        {"/srv/nolocks", false, ""},
        {"/srv/nolock/local/project", false, ""},
        {"/srv/sound/project", true, ""},
        {"/srv/sound/half/project", true, "local_lock=posix"},
        {"/srv/My Share/project", true, "nobrl"},
        {"/srv/My\\040Share/project", false, ""},
        {"/srv/cifs/project", true, ""},
        {"/srv/fuse/project", true, ""},
        {"/srv/over/project", false, ""},
        {"/srv/option/project", true, "nolock"},
        {"/srv/short/project", false, ""},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(isOnNetwork(kMounts, c.path), c.onNetwork) << c.path;
        const std::string option = c.option;
        EXPECT_EQ(whyMountIsDoubtful(kMounts, c.path),
                  option.empty() ? "" : "the share is mounted with " + option)
            << c.path;
    }
    EXPECT_EQ(whyMountIsDoubtful("", "/home/me"), "");
    EXPECT_FALSE(isOnNetwork("", "/home/me"));
}

} // namespace

} // namespace veldrin::testing
