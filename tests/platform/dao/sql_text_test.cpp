#include "dao/SqlText.h"
#include "platform/dao/DaoTest.h"

namespace veldrin::testing {

namespace {

class DaoSqlText : public DaoTest {
protected:
    DaoSqlText() {
        database.BeginTrans();
        run("create table tblPipe(ixPipe integer primary key, Size double, sName text(50) collate nocase, "
            "[In Use] yesno, [true] long)");
        run("insert into tblPipe values(1, 2.5, 'Cold', True, 10)");
        run("insert into tblPipe values(2, 4, 'sName', False, 20)");
        run("insert into tblPipe values(3, 6, 'He said \"no\"', True, 30)");
        run("insert into tblPipe values(4, 8, 'it''s -- /* one', False, 40)");
        database.CommitTrans();
    }
    std::string found(const std::string& condition) {
        return rows("select ixPipe from tblPipe where " + condition + " order by 1");
    }
};

TEST_F(DaoSqlText, TextsStandInEitherKindOfQuotesAndAreNeverNames) {
    EXPECT_EQ(found("sName = \"Cold\""), "long 1");
    EXPECT_EQ(found("sName = \"sName\""), "long 2") << "every row would be equal to itself";
    EXPECT_EQ(found("sName = 'sName'"), "long 2");
    EXPECT_EQ(found("sName = \"He said \"\"no\"\"\""), "long 3");
    EXPECT_EQ(found("sName = 'He said \"no\"'"), "long 3");
    EXPECT_EQ(found("sName = \"it's -- /* one\""), "long 4");
    EXPECT_EQ(rows("select \"\", '''', \"\"\"\""), "'', ''', '\"'");
    EXPECT_EQ(rows("select \"Kälte'n\""), "'Kälte'n'");
}

TEST_F(DaoSqlText, YesAndNoHaveWordsThatAreNoWordsInTextsAndNames) {
    EXPECT_EQ(found("[In Use] = True"), "long 1; long 3");
    EXPECT_EQ(found("[in use] = FALSE"), "long 2; long 4");
    EXPECT_EQ(found("[true] = 20"), "long 2");
    EXPECT_EQ(found("tblPipe.true = 20"), "long 2");
    EXPECT_EQ(rows("select true, false, 'true', \"True\""), "long -1, long 0, 'true', 'True'");
}

TEST_F(DaoSqlText, CommentsMayHoldAnything) {
    EXPECT_EQ(found("sName = 'Cold' -- or \"it's\" [\n"), "long 1");
    EXPECT_EQ(found("/* \" ' true [ */ ixPipe = 2 /**/"), "long 2");
    EXPECT_EQ(found("ixPipe = 3 -- to the end"), "long 3");
}

TEST_F(DaoSqlText, OneStatementRunsAtATime) {
    EXPECT_EQ(failure([&] { run("delete from tblPipe where ixPipe = 1; delete from tblPipe"); }), kDaoSyntax);
    EXPECT_EQ(failure([&] { rows("select 1; select 2"); }), kDaoSyntax);
    EXPECT_EQ(failure([&] { run("delete from tblPipe; drop table tblPipe"); }), kDaoSyntax);
    EXPECT_EQ(rows("select count(*) from tblPipe"), "long 4");
    EXPECT_EQ(rows("select 1 ; \n;"), "long 1");
    EXPECT_EQ(rows("select ';'"), "';'");
    for (const char* nothing : {"", " ;", "-- nothing", "/* nothing */"}) {
        EXPECT_EQ(failure([&] { rows(nothing); }), kDaoSyntax) << nothing;
        EXPECT_EQ(failure([&] { run(nothing); }), kDaoSyntax) << nothing;
    }
}

TEST_F(DaoSqlText, WhatIsNeverClosedIsRefused) {
    for (const char* sql : {"select 'a", "select \"a", "select [a", "select 'a''", "\"", "'", "[",
                            "PARAMETERS a Long select a", "PARAMETERS"})
        EXPECT_EQ(failure([&] { rows(sql); }), kDaoSyntax) << sql;
}

TEST_F(DaoSqlText, ParametersAreNamedLikeColumns) {
    const dao::SqlText text = dao::translateSql(
        " parameters [Pipe Size] Double, Floor Text ( 50 ), `low`  Long; select [pipe size], FLOOR, t.Floor, "
        "'Floor', \"floor\", Low, Flooring from t");
    EXPECT_EQ(text.parameters, (std::vector<CString>{"Pipe Size", "Floor", "low"}));
    EXPECT_EQ(text.engine.substr(text.engine.find("select")),
              "select ?1, ?2, t.Floor, 'Floor', 'floor', ?3, Flooring from t");
    EXPECT_TRUE(dao::translateSql("select parameters from t").parameters.empty());
}

TEST_F(DaoSqlText, QueriesTakeTheirParametersByNameInAnyOrder) {
    CDaoQueryDef query(database);
    query.Create("", "PARAMETERS [Least Size] Double, Word Text; select ixPipe from tblPipe where Size >= "
                     "[Least Size] and (sName = Word or Size > [least size]) order by ixPipe");
    query.SetParamValue("word", "SNAME");
    query.SetParamValue("LEAST SIZE", 4.0);
    EXPECT_EQ(shown(query.Snapshot().flat()), "long 2 long 3 long 4 ");
    query.SetParamValue("Word", "' or 1 = 1 --");
    EXPECT_EQ(shown(query.Snapshot().flat()), "long 3 long 4 ");
    query.SetParamValue("word", COleVariant::null());
    query.SetParamValue("least size", 6.0);
    EXPECT_EQ(shown(query.Snapshot().flat()), "long 4 ");
    EXPECT_EQ(failure([&] { query.SetParamValue("Floor", 1.0); }), kDaoItemNotFound);

    query.Create("", "PARAMETERS Low Long; delete from tblPipe where ixPipe >= Low");
    EXPECT_EQ(query.Execute(), 0) << "a parameter without a value is null";
    query.SetParamValue("Low", 3);
    EXPECT_EQ(query.Execute(), 2);
    EXPECT_EQ(failure([&] { query.SetParamValue("word", "x"); }), kDaoItemNotFound);
}

TEST_F(DaoSqlText, LiteralsAndNamesComeThroughTheEngineAsTheyWere) {
    for (const char* text : {"", "'", "''", "a\"b", "--", "Wärme", "\\n", "]["})
        EXPECT_EQ(rows("select " + dao::quoted(text)), "'" + CString(text) + "'");
    run("create table " + dao::bracketed("my \"odd\" [ta]ble'") + "(a long)");
    EXPECT_TRUE(database.TableExists("my \"odd\" table'"));
}

TEST_F(DaoSqlText, TextsAreCutBetweenCharacters) {
    const struct {
        const char* text;
        std::size_t count;
        const char* cut;
    } cases[] = {{"pipe", 2, "pi"},
                 {"pipe", 4, "pipe"},
                 {"pipe", 99, "pipe"},
                 {"pipe", 0, ""},
                 {"", 3, ""},
                 {"äöü", 2, "äö"},
                 {"äöü", 0, ""},
                 {"a€b\U0001F6B0c", 3, "a€b"},
                 {"\U0001F6B0c", 1, "\U0001F6B0"}};
    for (const auto& c : cases) EXPECT_EQ(dao::firstCharacters(c.text, c.count), c.cut) << c.text << c.count;
    EXPECT_EQ(dao::characterCount("a€b\U0001F6B0c"), 5U);
}

TEST_F(DaoSqlText, CommentsDoNotHideWhatAStatementIs) {
    run("/* a table */ create table tblOn(ixOn integer primary key, bOn yesno, sName text(9), sNote memo)");
    EXPECT_EQ(run("-- a row\ninsert into tblOn(bOn, sName, sNote) values(1, 'Abc', '007')"), 1);
    EXPECT_EQ(rows("select bOn, sNote from tblOn; -- that is all"), "yes, '007'");
    EXPECT_EQ(rows("select ixOn from tblOn where sName = 'aBC' and sNote = '007'"), "long 1")
        << "texts without case";
    EXPECT_EQ(failure([&] { rows("select \"a\"\""); }), kDaoSyntax) << "never closed";
}

} // namespace

} // namespace veldrin::testing
