#include "platform/files/DrawingFileTest.h"

#include <csignal>
#include <fstream>

#include <sys/resource.h>

namespace fs = std::filesystem;

namespace veldrin::testing {

namespace {

class DrawingFailures : public DrawingFileTest {
protected:
    void SetUp() override {
        line = addLine(drawing, 1.0);
        ASSERT_EQ(save(drawing, path("a.vqd")), "");
    }

    std::string openLine(const std::string& name, const std::string& reason) const {
        return "Cannot open drawing " + path(name) + ": " + reason + ".";
    }
    std::string saveLine(const std::string& name, const std::string& reason) const {
        return "Cannot save drawing " + path(name) + ": " + reason + ".";
    }
    // Names and sizes of all files but the drawing's own.
    std::string otherFiles() const {
        std::string names;
        for (const auto& entry : fs::directory_iterator(folder))
            if (entry.path() != path("a.vqd")) names += entry.path().filename().string() + " ";
        return names;
    }

    AcDbDatabase drawing;
    AcDbObjectId line;
};

// A disk on which no file grows beyond a size.
class SmallDisk {
public:
    explicit SmallDisk(rlim_t bytes) : m_handler(std::signal(SIGXFSZ, SIG_IGN)) {
        getrlimit(RLIMIT_FSIZE, &m_before);
        rlimit limit = m_before;
        limit.rlim_cur = bytes;
        EXPECT_EQ(setrlimit(RLIMIT_FSIZE, &limit), 0);
    }
    ~SmallDisk() {
        setrlimit(RLIMIT_FSIZE, &m_before);
        std::signal(SIGXFSZ, m_handler);
    }
    SmallDisk(const SmallDisk&) = delete;
    SmallDisk& operator=(const SmallDisk&) = delete;

private:
    rlimit m_before{};
    void (*m_handler)(int);
};

TEST_F(DrawingFailures, whatIsNoDrawingIsToldInOneLine) {
    EXPECT_EQ(whyNot(path("none.vqd")), openLine("none.vqd", "there is no such file"));
    EXPECT_EQ(whyNot(folder.string()), "Cannot open drawing " + folder.string() + ": it is a folder.");
    std::ofstream(path("empty.vqd")).flush();
    EXPECT_EQ(whyNot(path("empty.vqd")), openLine("empty.vqd", "it is empty"));
    std::ofstream(path("text.vqd")) << "just a note\n";
    EXPECT_EQ(whyNot(path("text.vqd")), openLine("text.vqd", "it is not a drawing"));
    std::ofstream(path("long.vqd")) << std::string(100'000, 'x');
    EXPECT_EQ(whyNot(path("long.vqd")), openLine("long.vqd", "it is not a drawing"));
    SqlFile(path("other.vqd"), SqlFile::Mode::kCreate).run("create table tblPipe(ixPipe integer)");
    EXPECT_EQ(whyNot(path("other.vqd")), openLine("other.vqd", "it is not a drawing"));
}

TEST_F(DrawingFailures, aNewerFormatIsRefusedWithItsNumber) {
    edit(path("a.vqd"), "pragma user_version = 7");
    EXPECT_EQ(whyNot(path("a.vqd")),
              openLine("a.vqd", "it has format 7 of a newer program, this one reads up to 1"));
}

TEST_F(DrawingFailures, aTruncatedFileOpensNowhere) {
    for (int i = 0; i < 300; ++i) addLine(drawing, i);
    ASSERT_EQ(save(drawing, path("a.vqd")), "");
    const auto whole = fs::file_size(path("a.vqd"));
    for (const auto size :
         {whole - 1, whole / 2, whole / 2 + 777, std::uintmax_t{4096}, std::uintmax_t{100}}) {
        fs::copy_file(path("a.vqd"), path("cut.vqd"), fs::copy_options::overwrite_existing);
        fs::resize_file(path("cut.vqd"), size);
        const std::string reason = whyNot(path("cut.vqd"));
        EXPECT_TRUE(reason.starts_with(openLine("cut.vqd", "it is ").substr(0, 40))) << reason;
        EXPECT_NE(reason, "it was opened") << size;
        EXPECT_EQ(reason.find('\n'), std::string::npos);
    }
}

TEST_F(DrawingFailures, aDamagedRecordIsNamed) {
    const std::string where = " where handle = " + handleNumber(line);
    for (const char* record : {"x''", "x'FF'", "substr(record, 1, length(record) - 1)", "zeroblob(400)"}) {
        fs::copy_file(path("a.vqd"), path("b.vqd"), fs::copy_options::overwrite_existing);
        edit(path("b.vqd"), std::string("update objects set record = ") + record + where);
        const std::string reason = whyNot(path("b.vqd"));
        const std::string expected = "object " + line.handle().text() + " of class AcDbLine is damaged (";
        EXPECT_TRUE(reason.starts_with(openLine("b.vqd", expected).substr(0, reason.find('(')))) << reason;
    }
    fs::copy_file(path("a.vqd"), path("b.vqd"), fs::copy_options::overwrite_existing);
    edit(path("b.vqd"), "update objects set class = 'AcDbCurve'" + where);
    EXPECT_NE(whyNot(path("b.vqd")).find("of class AcDbCurve is damaged"), std::string::npos);
    edit(path("b.vqd"), "delete from objects where class = 'AcDbLayerTable'");
    edit(path("b.vqd"), "delete from objects" + where);
    EXPECT_EQ(whyNot(path("b.vqd")), openLine("b.vqd", "it is damaged (a table is missing)"));
    edit(path("b.vqd"), "drop table header");
    EXPECT_EQ(whyNot(path("b.vqd")), openLine("b.vqd", "it is damaged (no such table: header)"));
}

TEST_F(DrawingFailures, aFileInUseIsNotTouched) {
    SqlFile other(path("a.vqd"), SqlFile::Mode::kExisting);
    ASSERT_TRUE(other.run("begin exclusive"));
    EXPECT_EQ(whyNot(path("a.vqd")), openLine("a.vqd", "another program is using it"));
    addLine(drawing, 2.0);
    EXPECT_EQ(save(drawing, path("a.vqd")), saveLine("a.vqd", "another program is using it"));
    EXPECT_TRUE(drawing.isModified());
    ASSERT_TRUE(other.run("rollback") && other.close());
    EXPECT_EQ(save(drawing, path("a.vqd")), "");
    EXPECT_EQ(contents(*open(path("a.vqd"))), contents(drawing));
}

TEST_F(DrawingFailures, wherePermissionLacksTheOldFileStays) {
    fs::permissions(folder, fs::perms(0755));
    const auto before = contents(drawing);
    addLine(drawing, 2.0);
    fs::permissions(path("a.vqd"), fs::perms(0444));
    {
        const OrdinaryUser user;
        EXPECT_EQ(contents(*open(path("a.vqd"))), before);
        EXPECT_EQ(save(drawing, path("a.vqd")), saveLine("a.vqd", "it is write-protected"));
        EXPECT_EQ(save(drawing, path("b.vqd")), saveLine("b.vqd", "its folder is write-protected"));
    }
    fs::permissions(path("a.vqd"), fs::perms(0666));
    fs::permissions(folder, fs::perms(0555));
    {
        const OrdinaryUser user;
        EXPECT_EQ(save(drawing, path("a.vqd")), saveLine("a.vqd", "its folder is write-protected"));
        EXPECT_EQ(contents(*open(path("a.vqd"))), before);
    }
    fs::permissions(folder, fs::perms(0755));
    EXPECT_EQ(save(drawing, path("no/where/a.vqd")), saveLine("no/where/a.vqd", "its folder does not exist"));
    EXPECT_EQ(save(drawing, folder.string()), "Cannot save drawing " + folder.string() + ": it is a folder.");
    EXPECT_TRUE(drawing.isModified());
    EXPECT_EQ(otherFiles(), "");
}

TEST_F(DrawingFailures, aFullDiskLeavesTheOldFileAndNoRemains) {
    const auto before = contents(drawing);
    const auto room = fs::file_size(path("a.vqd"));
    for (int i = 0; i < 2000; ++i) addLine(drawing, i);
    for (const char* name : {"a.vqd", "b.vqd"}) {
        std::string reason;
        {
            const SmallDisk disk(room + 8192);
            reason = save(drawing, path(name));
        }
        EXPECT_TRUE(reason.starts_with("Cannot save drawing " + path(name) + ": ")) << reason;
        EXPECT_EQ(contents(*open(path("a.vqd"))), before);
        EXPECT_EQ(otherFiles(), "");
    }
    // With room again the changes are still there to be saved.
    EXPECT_EQ(save(drawing, path("a.vqd")), "");
    EXPECT_EQ(contents(*open(path("a.vqd"))), contents(drawing));
}

} // namespace

} // namespace veldrin::testing
