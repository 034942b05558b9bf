#include "platform/dao/DaoTest.h"

#include <fstream>

namespace veldrin::testing {

namespace {

class DaoTables : public DaoTest {
protected:
    // A file with a table of two records, closed.
    void makeSource(const std::string& name) {
        CDaoDatabase source;
        source.Create(path(name));
        source.Execute(
            "create table tblPipe(ixPipe integer primary key autoincrement, sName text(20) collate "
            "nocase, bWet yesno)");
        CDaoTableDef table(source);
        table.Open("tblPipe");
        table.CreateIndex({"sName", "sName", false, false, true});
        table.CreateField(field("bHot", dbBoolean));
        source.Execute("insert into tblPipe(sName, bWet) values('Cold', 1)");
        source.Execute("insert into tblPipe(sName, bWet) values('Hot', 0)");
    }
    void link(const char* name, const char* table, const std::string& file) {
        CDaoTableDef linked(database);
        linked.CreateLink(name, table, path(file));
        linked.Append();
    }
    std::vector<CString> indexesOf(const char* table) {
        CDaoRecordset records(database);
        records.Open(table);
        return records.GetIndexNames();
    }
};

TEST_F(DaoTables, ATableIsThereOnceItIsAppended) {
    CDaoTableDef table(database);
    table.Create("tblNew");
    EXPECT_EQ(failure([&] { table.Append(); }), kDaoSyntax) << "without fields";
    table.CreateField(counter("ixNew"));
    table.CreateField(field("sName", dbText, 30));
    EXPECT_EQ(failure([&] { table.CreateField(field("SNAME", dbLong)); }), kDaoObjectExists);
    EXPECT_EQ(failure([&] { table.CreateField(field("", dbLong)); }), kDaoSyntax);
    table.CreateIndex({"ixNew", "ixNew", true, true, false});
    table.CreateIndex({"sName", "sName", false, false, true});
    EXPECT_FALSE(database.TableExists("tblNew"));
    table.Append();
    EXPECT_TRUE(database.TableExists("TBLNEW"));
    EXPECT_EQ(failure([&] { table.Append(); }), kDaoTableExists);
    EXPECT_EQ(indexesOf("tblNew"), (std::vector<CString>{"ixNew", "sName"}));

    table.CreateField(field("nMore", dbLong));
    table.CreateIndex({"nMore", "nMore", true, false, false});
    EXPECT_EQ(indexesOf("tblNew"), (std::vector<CString>{"ixNew", "sName", "nMore"}));
    EXPECT_NE(failure([&] { table.CreateField(field("nmore", dbLong)); }), 0);
    EXPECT_NE(failure([&] { table.CreateIndex({"none", "none", false, false, false}); }), 0);
    EXPECT_EQ(failure([&] { table.CreateField(counter("ixMore")); }), kDaoValidation);
    EXPECT_EQ(failure([&] { table.Open("none"); }), kDaoNoSuchTable);
    run("insert into tblNew(nMore) values(5)");
    EXPECT_EQ(failure([&] { run("insert into tblNew(nMore) values(5)"); }), kDaoDuplicateKey);
}

TEST_F(DaoTables, AnIndexThatCannotBeMadeLeavesNoTable) {
    CDaoTableDef table(database);
    table.Create("tblNew");
    table.CreateField(field("a", dbLong));
    table.CreateIndex({"b", "b", false, false, false});
    EXPECT_NE(failure([&] { table.Append(); }), 0);
    EXPECT_FALSE(database.TableExists("tblNew"));
}

TEST_F(DaoTables, AYesNoFieldComesToRecordsThatAreThere) {
    makeTable("tblOne", {counter("ixOne"), field("n", dbLong)});
    run("insert into tblOne(n) values(1)");
    run("insert into tblOne(n) values(2)");
    CDaoTableDef table(database);
    table.Open("tblOne");
    table.CreateField(field("bNew", dbBoolean));
    EXPECT_EQ(rows("select bNew, bNew + 0 from tblOne"), "no, long 0; no, long 0");
    run("update tblOne set bNew = 3 where n = 1");
    run("insert into tblOne(n) values(3)");
    EXPECT_EQ(rows("select bNew + 0 from tblOne"), "long -1; long 0; long 0");
    run("alter table tblOne add column bSql yesno default -1");
    run("update tblOne set bSql = 7, bNew = null where n = 2");
    EXPECT_EQ(rows("select bNew + 0, bSql + 0 from tblOne"),
              "long -1, long -1; long 0, long -1; long 0, long -1");
}

TEST_F(DaoTables, ARenamedTableKeepsItsIndexesAndRules) {
    makeTable("tblOld", {counter("ixOld"), field("sName", dbText, 20), field("bWet", dbBoolean)});
    CDaoTableDef table(database);
    table.Open("tblOld");
    table.CreateIndex({"sName", "sName", true, false, true});
    run("create index [tblOld.Both] on tblOld(bWet desc, sName)");
    run("insert into tblOld(sName, bWet) values('a', 1)");
    database.RenameTable("TBLOLD", "my new");
    EXPECT_FALSE(database.TableExists("tblOld"));
    EXPECT_EQ(indexesOf("my new"), (std::vector<CString>{"ixOld", "sName", "Both"}));
    EXPECT_EQ(failure([&] { run("insert into [my new](sName) values('A')"); }), kDaoDuplicateKey);
    run("insert into [my new](sName, bWet) values('b', 2)");
    EXPECT_EQ(rows("select ixOld, bWet + 0 from [my new] order by sName"), "long 1, long -1; long 2, long -1")
        << "a number that a refused record had is free";
    CDaoRecordset records(database);
    records.Open("my new");
    records.SetCurrentIndex("sName");
    records.MoveFirst();
    EXPECT_EQ(shown(records.GetFieldValue("sName")), "'b'") << "descending";

    // The former name is free for another table, with indexes of the same names.
    makeTable("tblOld", {counter("ixOld"), field("sName", dbText, 20), field("bWet", dbBoolean)});
    table.Open("tblOld");
    table.CreateIndex({"sName", "sName", false, false, false});
    run("insert into tblOld(bWet) values(1)");
    EXPECT_EQ(failure([&] { database.RenameTable("tblOld", "MY NEW"); }), kDaoSyntax);
    EXPECT_EQ(rows("select bWet + 0 from tblOld"), "long -1") << "what was refused left it as it was";
    EXPECT_EQ(indexesOf("tblOld"), (std::vector<CString>{"ixOld", "sName"}));
    EXPECT_EQ(failure([&] { database.RenameTable("none", "some"); }), kDaoNoSuchTable);
}

TEST_F(DaoTables, NamesOfTablesAreThoseOfTheProject) {
    makeTable("tblB", {counter("ixB")});
    makeTable("tblA", {field("a", dbLong)});
    run("insert into tblB default values");
    EXPECT_EQ(database.GetTableNames(), (std::vector<CString>{"tblA", "tblB"}));
    database.DeleteTableDef("TBLA");
    EXPECT_EQ(database.GetTableNames(), (std::vector<CString>{"tblB"}));
    EXPECT_EQ(failure([&] { database.DeleteTableDef("tblA"); }), kDaoNoSuchTable);
    CDaoRecordset records(database);
    EXPECT_EQ(failure([&] { records.Open("tblA"); }), kDaoNoSuchTable);
    EXPECT_FALSE(records.IsOpen());
}

TEST_F(DaoTables, ALinkedTableIsReadAndWrittenInItsFile) {
    makeSource("source's.vq");
    link("tblLinked", "TBLPIPE", "source's.vq");
    for (const bool again : {false, true}) { // and after opening the database again
        if (again) database.Open(path("a.vq"));
        EXPECT_TRUE(database.TableExists("tbllinked"));
        EXPECT_EQ(rows("select sName, bWet from tblLinked where bWet = True"), "'Cold', yes");
        EXPECT_EQ(indexesOf("tblLinked"), (std::vector<CString>{"ixPipe", "sName"}));
    }
    CDaoRecordset records(database);
    records.Open("tblLinked");
    records.SetCurrentIndex("sName");
    records.MoveFirst();
    EXPECT_EQ(shown(records.GetFieldValue("sName")), "'Hot'");
    records.Edit();
    records.SetFieldValue("bWet", 1);
    records.Update();
    records.AddNew();
    records.SetFieldValue("sName", "Warm");
    records.Update();
    ASSERT_TRUE(seek(records, {"COLD"}));
    records.Delete();

    CDaoDatabase source;
    source.Open(path("source's.vq"));
    EXPECT_EQ(DaoFolderTest::rows(source, "select ixPipe, sName, bWet + 0 from tblPipe order by 1"),
              "long 2, 'Hot', long -1; long 3, 'Warm', long 0");
    EXPECT_EQ(records.GetRecordCount(), 2);
    records.Close();
    database.DeleteTableDef("tblLinked");
    EXPECT_FALSE(database.TableExists("tblLinked"));
    EXPECT_EQ(failure([&] { rows("select * from tblLinked"); }), kDaoNoSuchTable);
    EXPECT_TRUE(source.TableExists("tblPipe"));
}

TEST_F(DaoTables, WhatCannotBeLinkedIsTold) {
    makeSource("source.vq");
    makeTable("tblOwn", {counter("ixOwn")});
    std::ofstream(path("text.vq")) << std::string(5000, 'x');
    EXPECT_EQ(failure([&] { link("tblLinked", "tblPipe", "none.vq"); }), kDaoFileNotFound);
    EXPECT_FALSE(std::filesystem::exists(path("none.vq")));
    EXPECT_EQ(failure([&] { link("tblLinked", "tblNone", "source.vq"); }), kDaoNoSuchTable);
    EXPECT_EQ(failure([&] { link("tblLinked", "tblPipe", "text.vq"); }), kDaoUnrecognized);
    EXPECT_EQ(failure([&] { link("TBLOWN", "tblPipe", "source.vq"); }), kDaoTableExists);
    EXPECT_EQ(database.GetTableNames(), (std::vector<CString>{"tblOwn"}));
}

TEST_F(DaoTables, ALinkWhoseFileIsGoneNamesIt) {
    makeSource("source.vq");
    makeTable("tblOwn", {counter("ixOwn")});
    link("tblLinked", "tblPipe", "source.vq");
    std::filesystem::remove(path("source.vq"));
    database.Open(path("a.vq"));
    EXPECT_EQ(rows("select count(*) from tblOwn"), "long 0");
    CDaoRecordset records(database);
    try {
        records.Open("tblLinked");
        ADD_FAILURE() << "it was opened";
    } catch (const CDaoException& exception) {
        EXPECT_EQ(exception.number(), kDaoFileNotFound);
        EXPECT_NE(exception.GetErrorMessage().find(path("source.vq")), std::string::npos);
    }
    EXPECT_EQ(failure([&] { rows("select * from tblLinked"); }), kDaoNoSuchTable);
    database.DeleteTableDef("tblLinked");
    EXPECT_EQ(failure([&] { records.Open("tblLinked"); }), kDaoNoSuchTable);
}

TEST_F(DaoTables, QueriesAreStoredUnderTheirNames) {
    makeTable("tblOne", {counter("ixOne"), field("n", dbLong)});
    run("insert into tblOne(n) values(1)");
    run("insert into tblOne(n) values(2)");
    CDaoQueryDef query(database);
    EXPECT_EQ(failure([&] { query.Open("Some"); }), kDaoItemNotFound);
    query.Create("Some", "PARAMETERS Low Long; select n from tblOne where n >= Low");
    EXPECT_EQ(failure([&] { CDaoQueryDef(database).Open("Some"); }), kDaoItemNotFound);
    query.Append();
    database.Open(path("a.vq"));
    CDaoQueryDef stored(database);
    stored.Open("SOME");
    stored.SetParamValue("low", 2);
    EXPECT_EQ(shown(stored.Snapshot().flat()), "long 2 ");
    EXPECT_EQ(failure([&] { stored.SetParamValue("high", 2); }), kDaoItemNotFound);
    stored.SetSQL("select 'it''s'");
    stored.Open("some");
    EXPECT_EQ(stored.GetSQL(), "select 'it''s'");
    EXPECT_EQ(database.Select("select count(*) from MSysQueries").at(0, 0).whole(), 1);
}

TEST_F(DaoTables, RelationsDescribeAndDoNotHinder) {
    EXPECT_TRUE(database.GetRelations().empty());
    makeTable("tblOne", {counter("ixOne")});
    makeTable("tblTwo", {counter("ixTwo"), field("ixOne", dbLong)});
    database.CreateRelation({"b", "tblOne", "tblTwo", "ixOne", "ixOne"});
    database.CreateRelation({"a", "tblTwo", "tblOne", "ixTwo", "ixOne"});
    EXPECT_EQ(failure([&] { database.CreateRelation({"A", "x", "y", "z", "z"}); }), kDaoDuplicateKey);
    run("insert into tblTwo(ixOne) values(99)");
    database.DeleteRelation("A");
    const auto left = database.GetRelations();
    ASSERT_EQ(left.size(), 1U);
    EXPECT_EQ(left[0].m_strName, "b");
    EXPECT_EQ(left[0].m_strTable + left[0].m_strForeignTable, "tblOnetblTwo");
    EXPECT_EQ(left[0].m_strField + left[0].m_strForeignField, "ixOneixOne");
}

TEST_F(DaoTables, ACompactedFileHoldsTheSameInLessSpace) {
    makeSource("source.vq");
    makeTable("tblOne", {counter("ixOne"), field("s", dbMemo), field("bWet", dbBoolean)});
    run("insert into tblOne(s, bWet) with recursive n(i) as (select 1 union all select i + 1 from n where i "
        "< 2000) "
        "select hex(zeroblob(200)), i % 2 from n");
    run("delete from tblOne where ixOne > 10");
    link("tblLinked", "tblPipe", "source.vq");
    const std::string before = rows("select * from tblOne");
    CDaoWorkspace::CompactDatabase(path("a.vq"), path("b'%.vq"));
    EXPECT_LT(std::filesystem::file_size(path("b'%.vq")), std::filesystem::file_size(path("a.vq")) / 4);
    EXPECT_EQ(failure([&] { CDaoWorkspace::CompactDatabase(path("a.vq"), path("b'%.vq")); }),
              kDaoObjectExists);
    EXPECT_EQ(failure([&] { CDaoWorkspace::CompactDatabase(path("none.vq"), path("c.vq")); }),
              kDaoFileNotFound);
    EXPECT_FALSE(std::filesystem::exists(path("c.vq")));

    CDaoDatabase compacted;
    compacted.Open(path("b'%.vq"));
    EXPECT_EQ(DaoFolderTest::rows(compacted, "select * from tblOne"), before);
    EXPECT_EQ(DaoFolderTest::rows(compacted, "select count(*) from tblLinked"), "long 2");
    compacted.Execute("insert into tblOne(bWet) values(5)");
    EXPECT_EQ(DaoFolderTest::rows(compacted, "select ixOne, bWet + 0 from tblOne where ixOne > 10"),
              "long 2001, long -1");
}

TEST_F(DaoTables, AFlatResultHasMarksForMoreThanOneColumnOnly) {
    run("create table tblOne(a long, b text(9), c yesno)");
    EXPECT_TRUE(database.Select("select a, b from tblOne").flat().isEmpty());
    EXPECT_TRUE(database.Select("select a from tblOne").IsEmpty());
    run("insert into tblOne values(1, 'x', 1)");
    run("insert into tblOne values(2, null, 0)");
    EXPECT_EQ(shown(database.Select("select a from tblOne").flat()), "long 1 long 2 ");
    EXPECT_EQ(shown(database.Select("select b as [My B], c from tblOne order by a").flat()),
              "'*NewRecord*' 'My B' 'x' 'c' yes '*NewRecord*' 'My B' null 'c' no ");
    EXPECT_EQ(shown(database.Select("select null").flat()), "null ");
}

TEST_F(DaoTables, DefaultsAndRequiredFieldsHoldForOldAndNewRecords) {
    makeTable("tblThing", {counter("ixThing"), field("sName", dbText, 20)});
    run("insert into tblThing(sName) values('old')");
    CDaoTableDef table(database);
    table.Open("tblThing");
    for (const auto& [name, value] : {std::pair("bYes", "True"), {"bNo", "No"}, {"bOne", "1"}}) {
        CDaoFieldInfo info = field(name, dbBoolean);
        info.m_strDefaultValue = value;
        info.m_bRequired = true;
        table.CreateField(info);
    }
    CDaoFieldInfo text = field("sNeeded", dbText, 5);
    text.m_bRequired = true;
    table.CreateField(text);
    run("insert into tblThing(sName) values('new')");
    EXPECT_EQ(rows("select bYes, bNo, bOne, sNeeded from tblThing"), "yes, no, yes, ' '; yes, no, yes, ' '");
    EXPECT_EQ(rows("select count(*) from tblThing where bOne = -1 and bYes = True"), "long 2");
    EXPECT_TRUE(table.GetFieldInfo("sNeeded").m_bRequired);
}

TEST_F(DaoTables, ANameMayChangeItsCaseAlone) {
    makeTable("tblthing", {counter("ixThing")});
    database.RenameTable("tblthing", "tblThing");
    EXPECT_EQ(database.GetTableNames(), std::vector<CString>{"tblThing"});
}

} // namespace

} // namespace veldrin::testing
