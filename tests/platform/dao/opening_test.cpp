#include "platform/dao/DaoTest.h"
#include "platform/files/DrawingFileTest.h"

#include <fstream>
#include <thread>

namespace veldrin::testing {

namespace {

namespace fs = std::filesystem;

class DaoOpening : public DaoTest {
protected:
    DaoOpening() {
        database.BeginTrans();
        run("create table tblOne(ixOne integer primary key, n long not null, s text(9) unique, check(n < "
            "1000))");
        for (const char* row : {"1, 10, 'a'", "2, 20, 'b'", "3, 30, 'c'"})
            run("insert into tblOne values(" + CString(row) + ")");
        database.CommitTrans();
    }
    int open(const std::string& name, bool exclusive = false, bool readOnly = false) {
        const int number = failure([&] { other.Open(path(name), exclusive, readOnly); });
        EXPECT_EQ(other.IsOpen(), number == 0);
        return number;
    }
    std::string sum() { return DaoFolderTest::rows(other, "select sum(n) from tblOne"); }

    CDaoDatabase other;
};

TEST_F(DaoOpening, WhatIsNoDatabaseIsRefusedAndStaysAsItIs) {
    const std::string jet("\0\1\0\0Standard Jet DB\0\1\0\0\0", 24);
    const struct {
        const char* name;
        std::string bytes;
        int number;
    } cases[] = {
        {"empty.vq", "", kDaoUnrecognized},
        {"short.vq", "xx", kDaoUnrecognized},
        {"text.vq", std::string(5000, 'x'), kDaoUnrecognized},
        {"zeros.vq", std::string(8192, '\0'), kDaoUnrecognized},
        {"jet.vq", jet + std::string(8192, '\7'), kDaoFormerEngine},
        {"ace.vq", std::string("\0\1\0\0Standard ACE DB", 19) + std::string(8192, '\7'), kDaoFormerEngine},
        {"late.vq", "...." + jet + std::string(8192, '\7'), kDaoUnrecognized},
    };
    for (const auto& c : cases) {
        std::ofstream(path(c.name), std::ios::binary) << c.bytes;
        for (const bool readOnly : {false, true})
            EXPECT_EQ(open(c.name, false, readOnly), c.number) << c.name;
        std::ifstream file(path(c.name), std::ios::binary);
        EXPECT_EQ(std::string(std::istreambuf_iterator<char>(file), {}), c.bytes) << c.name;
    }
    EXPECT_EQ(open("none.vq"), kDaoFileNotFound);
    EXPECT_FALSE(fs::exists(path("none.vq")));
    EXPECT_EQ(failure([&] { other.Open(folder.string()); }), kDaoCannotOpen);
    EXPECT_EQ(failure([&] { other.Create(path("a.vq")); }), kDaoObjectExists);
    EXPECT_EQ(failure([&] { other.Create(path("none/b.vq")); }), kDaoCannotOpen);
}

TEST_F(DaoOpening, AClosedDatabaseSaysSo) {
    database.Close();
    EXPECT_FALSE(database.CanUpdate());
    EXPECT_EQ(failure([&] { run("delete from tblOne"); }), kDaoClosed);
    EXPECT_EQ(failure([&] { rows("select 1"); }), kDaoClosed);
    EXPECT_EQ(failure([&] { database.GetTableNames(); }), kDaoClosed);
    EXPECT_EQ(failure([&] { database.GetName(); }), kDaoClosed);
    EXPECT_EQ(failure([&] { database.BeginTrans(); }), kDaoClosed);
    database.Open(path("a.vq"));
    EXPECT_EQ(database.GetName(), path("a.vq"));
    EXPECT_EQ(failure([&] { database.Open(path("none.vq")); }), kDaoFileNotFound);
    EXPECT_FALSE(database.IsOpen()) << "the former one is closed first";
}

TEST_F(DaoOpening, WhatMayNotBeWrittenCanBeReadOnly) {
    database.Close();
    fs::permissions(folder, fs::perms(0755));
    const auto refusedToWrite = [&] {
        const OrdinaryUser user;
        EXPECT_EQ(open("a.vq"), kDaoCannotOpen);
        ASSERT_EQ(open("a.vq", false, true), 0);
        EXPECT_EQ(sum(), "long 60");
        EXPECT_FALSE(other.CanUpdate());
        other.Close();
    };
    fs::permissions(path("a.vq"), fs::perms(0444));
    refusedToWrite();
    // A journal cannot be made in a folder that may not be written.
    fs::permissions(path("a.vq"), fs::perms(0666));
    refusedToWrite();
    fs::permissions(path("a.vq"), fs::perms(0));
    const OrdinaryUser user;
    EXPECT_EQ(open("a.vq", false, true), kDaoCannotOpen);
}

TEST_F(DaoOpening, WhatSomebodyHasExclusivelyCanBeReadOnly) {
    database.Close();
    database.Open(path("a.vq"), true);
    EXPECT_EQ(open("a.vq"), kDaoCannotOpen);
    ASSERT_EQ(open("a.vq", false, true), 0);
    EXPECT_FALSE(other.CanUpdate());
    EXPECT_EQ(sum(), "long 60");
    EXPECT_EQ(failure([&] { other.Execute("delete from tblOne"); }), kDaoReadOnly);
    run("insert into tblOne values(4, 40, 'd')");
    EXPECT_EQ(sum(), "long 100") << "what the holder writes is seen";
    database.Close();
    ASSERT_EQ(open("a.vq"), 0);
    EXPECT_EQ(sum(), "long 100");
}

TEST_F(DaoOpening, WhatOthersUseCannotBeHadExclusively) {
    ASSERT_EQ(open("a.vq"), 0);
    database.BeginTrans();
    run("update tblOne set n = 11 where n = 10");
    CDaoDatabase third;
    const int number = failure([&] { third.Open(path("a.vq"), true); });
    EXPECT_EQ(number, kDaoLocked);
    database.Rollback();
    EXPECT_EQ(failure([&] { third.Open(path("a.vq"), true); }), 0) << "nobody is at it now";
    third.Execute("update tblOne set n = 12 where n = 10");
}

TEST_F(DaoOpening, AWriterHindersNobodyFromReading) {
    database.BeginTrans();
    run("delete from tblOne");
    ASSERT_EQ(open("a.vq"), 0);
    EXPECT_TRUE(other.CanUpdate());
    EXPECT_EQ(sum(), "long 60");
    CDaoRecordset records(other);
    records.Open("tblOne");
    records.MoveLast();
    EXPECT_EQ(shown(records.GetFieldValue("s")), "'c'");
    records.Close();
    ASSERT_EQ(open("a.vq", false, true), 0);
    EXPECT_EQ(sum(), "long 60");
    database.CommitTrans();
    EXPECT_EQ(sum(), "null");
}

TEST_F(DaoOpening, ALockThatPassesIsWaitedForAndOneThatStaysIsNoDamage) {
    run("begin exclusive");
    run("update tblOne set n = n + 1");
    EXPECT_EQ(open("a.vq", false, true), kDaoLocked);
    std::thread holder([&] {
        std::this_thread::sleep_for(std::chrono::milliseconds(150));
        database.CommitTrans();
    });
    const int number = open("a.vq");
    holder.join();
    ASSERT_EQ(number, 0);
    EXPECT_EQ(sum(), "long 63");
}

TEST_F(DaoOpening, FailuresHaveTheirNumbers) {
    const struct {
        const char* sql;
        int number;
    } cases[] = {
        {"insert into tblOne values(1, 1, 'x')", kDaoDuplicateKey},
        {"insert into tblOne values(9, 1, 'a')", kDaoDuplicateKey},
        {"insert into tblOne values(9, null, 'x')", kDaoRequired},
        {"insert into tblOne values(9, 1000, 'x')", kDaoValidation},
        {"insert into tblOne values('x', 1, 'x')", kDaoWrongType},
        {"delete from tblNone", kDaoNoSuchTable},
        {"delete from tblOne where none = 1", kDaoWrongParameters},
        {"delete tblOne", kDaoSyntax},
        {"nonsense", kDaoSyntax},
        {"insert into tblOne values(1)", kDaoSyntax},
    };
    for (const auto& c : cases) EXPECT_EQ(failure([&] { run(c.sql); }), c.number) << c.sql;
    EXPECT_EQ(rows("select sum(n) from tblOne"), "long 60");
    EXPECT_EQ(failure([&] {
                  run("insert into tblOne select ixOne + 10, n, s || case n when 30 then '' else 'x' end "
                      "from tblOne");
              }),
              kDaoDuplicateKey);
    EXPECT_EQ(rows("select count(*) from tblOne"), "long 3") << "it runs whole or not at all";
    EXPECT_EQ(run("update tblOne set n = n + 1 where n >= 20"), 2);
    EXPECT_EQ(run("delete from tblOne where n > 500"), 0);
    EXPECT_EQ(run("create table tblTwo(a long)"), 0);
}

TEST_F(DaoOpening, ADamagedPageIsToldWhenItIsRead) {
    run("insert into tblOne select ixOne + 3, n, null from tblOne");
    run("create table tblLong(s longtext)");
    run("insert into tblLong with recursive n(i) as (select 1 union all select i + 1 from n where i < 500) "
        "select "
        "hex(zeroblob(100)) from n");
    database.Close();
    {
        std::fstream file(path("a.vq"), std::ios::in | std::ios::out | std::ios::binary);
        file.seekp(8 * 4096);
        for (int i = 0; i < 20'000; ++i) file.put('\xA5');
    }
    ASSERT_EQ(open("a.vq"), 0);
    EXPECT_EQ(sum(), "long 120");
    EXPECT_EQ(failure([&] { DaoFolderTest::rows(other, "select sum(length(s)) from tblLong"); }),
              kDaoDamaged);
}

} // namespace

} // namespace veldrin::testing
