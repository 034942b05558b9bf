#include "dao/CDaoDatabase.h"
#include "module/database/DatabaseTest.h"

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <fstream>
#include <thread>

using namespace plumb;

class Connection : public DatabaseTest {};

TEST_F(Connection, AClosedOneLetsACallerWithoutAProjectGoOn) {
    connection.Close();
    FieldArray record;
    RowArray rows;
    COleVariant value(1.0);
    int count = 7;
    bool flag = true;
    EXPECT_FALSE(connection.IsOpen());
    EXPECT_FALSE(connection.CanUpdate());
    EXPECT_TRUE(connection.IsReadOnly());
    EXPECT_EQ(connection.GetName(), "");
    EXPECT_EQ(connection.GetCurrentTable() + connection.GetCurrentIndex(), "");
    EXPECT_TRUE(connection.Close() && connection.CloseAllTables());
    EXPECT_FALSE(connection.CloseCurrentTable());
    EXPECT_TRUE(connection.OpenTable("tblPipeType", "ixPipeType"));
    EXPECT_TRUE(connection.NoTableOpen());
    EXPECT_TRUE(connection.Execute("delete from x"));
    EXPECT_TRUE(connection.ExecuteCount("delete from x", count));
    EXPECT_FALSE(connection.Select("select 1", rows));
    EXPECT_TRUE(connection.SelectQuery("q", {}, rows));
    EXPECT_TRUE(connection.SetQuerySql("q", "select 1"));
    EXPECT_TRUE(connection.CreateTable("x", {}) && connection.AddFields("x", {}) &&
                connection.RenameTable("x", "y"));
    EXPECT_TRUE(connection.DeleteTable("x", true) && connection.CreateIndex("x", "y", false, false));
    EXPECT_TRUE(connection.DeleteRelation("x", "y") && connection.RelationExists("x", flag));
    EXPECT_FALSE(flag);
    EXPECT_TRUE(connection.LinkTable("x", "y", "z", flag) && connection.IsFieldRequired("x", "y", flag));
    EXPECT_FALSE(connection.TableExists("x", flag));
    EXPECT_FALSE(connection.Seek1(1) || connection.MoveFirst() || connection.MoveLast() ||
                 connection.Move(1));
    EXPECT_FALSE(connection.IsBOF() || connection.IsEOF());
    EXPECT_FALSE(connection.GetRecord(record) || connection.GetBlankRecord(record));
    EXPECT_FALSE(connection.AddRecord({}, false) || connection.EditRecord({}) || connection.DeleteRecord());
    EXPECT_FALSE(connection.GetRecordCount(count));
    EXPECT_EQ(count, 0);
    EXPECT_FALSE(connection.GetFieldValue("x", value));
    EXPECT_TRUE(value.isNull());
    EXPECT_FALSE(connection.HasError());
    EXPECT_FALSE(ReportDatabaseError(connection));
}

TEST_F(Connection, TablesStayOpenAndTheCurrentOneStandsAtTheHead) {
    ASSERT_TRUE(connection.OpenTable("tblPipeType", "iSortOrder"));
    ASSERT_TRUE(connection.MoveFirst());
    ASSERT_TRUE(connection.Move(1));
    ASSERT_TRUE(connection.OpenTable("tblPipeSize", ""));
    EXPECT_EQ(connection.GetCurrentTable(), "tblPipeSize");
    EXPECT_EQ(connection.GetCurrentIndex(), "");
    ASSERT_TRUE(connection.OpenTable("tblPipeType", ""));
    EXPECT_EQ(connection.GetCurrentIndex(), "iSortOrder") << "an empty index changes nothing";
    COleVariant name;
    EXPECT_TRUE(connection.GetFieldValue("sName", name));
    EXPECT_EQ(name.text(), "Cold water") << "nor does coming back move the place";
    ASSERT_TRUE(connection.OpenTable("TBLPIPETYPE", "")) << "another spelling is another recordset";
    EXPECT_EQ(connection.GetCurrentIndex(), "");
    connection.CloseTable("no such table");
    connection.CloseTable("TBLPIPETYPE");
    EXPECT_FALSE(connection.OpenTable("tblNothing", ""));
    EXPECT_EQ(errorCode(), kDaoNoSuchTable);
    EXPECT_FALSE(connection.OpenTable("tblPipeType", "noSuchIndex"));
    EXPECT_EQ(errorCode(), kDaoNotAnIndex);
    std::vector<CString> names;
    EXPECT_TRUE(connection.OpenTable("tblPipeSize", "") && connection.GetIndexNames(names));
    std::sort(names.begin(), names.end());
    EXPECT_EQ(names, (std::vector<CString>{"ixPipeSize", "ixPipeType", "ixPipeType_sLabel"}));
}

TEST_F(Connection, RecordsTravelAsPairs) {
    FieldArray record;
    ASSERT_TRUE(connection.OpenTable("tblPipeSize", "ixPipeType_sLabel"));
    ASSERT_TRUE(connection.Seek2(1, "3/4\"", &record));
    ASSERT_EQ(record.size(), 5U);
    EXPECT_EQ(record[2].name, "sLabel");
    EXPECT_EQ(record[2].value, COleVariant("3/4\""));
    EXPECT_TRUE(record[4].value.isNull());
    EXPECT_FALSE(connection.Seek2(1, "9\"", &record));
    EXPECT_FALSE(connection.HasError()) << "not finding is no error";
    EXPECT_FALSE(connection.Seek3(1, 2, 3)) << "more keys than the index has";
    EXPECT_TRUE(connection.HasError());
    EXPECT_FALSE(connection.Move(0, &record)) << "no move";
    EXPECT_FALSE(connection.HasError());

    ASSERT_TRUE(connection.GetBlankRecord(record));
    EXPECT_EQ(record[0].value, COleVariant(std::int32_t{0}));
    EXPECT_EQ(record[2].value, COleVariant(""));
    EXPECT_EQ(record[3].value, COleVariant(0.0));
    ASSERT_TRUE(connection.GetFieldInfo("sLabel", record));
    ASSERT_EQ(record.size(), 8U);
    EXPECT_EQ(record[0].value, COleVariant("sLabel"));
    EXPECT_EQ(record[1].value, COleVariant(std::int16_t{10}));
    EXPECT_EQ(record[2].value, COleVariant(std::int32_t{20}));
    EXPECT_EQ(record[7].name, "strDefaultValue");
    CString name;
    COleVariant value;
    EXPECT_TRUE(connection.GetFieldName(1, name));
    EXPECT_EQ(name, "ixPipeType");
    EXPECT_FALSE(connection.GetFieldName(5, name) || connection.GetFieldName(-1, name));
    EXPECT_TRUE(connection.MoveLast());
    EXPECT_TRUE(connection.GetFieldValueAt(0, value));
    EXPECT_EQ(value, COleVariant(std::int32_t{2}));
}

TEST_F(Connection, TextsAreCutAndNeverEmptyAndKeysAreTheDatabases) {
    FieldArray record;
    ASSERT_TRUE(connection.OpenTable("tblPipeType", "ixPipeType"));
    ASSERT_TRUE(connection.AddRecord({{"ixPipeType", 77},
                                      {"sName", "Grauwasser\u00fc\u00f6\u00e4"},
                                      {"sShortName", ""},
                                      {"bReversed", std::int16_t{5}}},
                                     false, &record));
    EXPECT_EQ(rows("select ixPipeType, sName, sShortName, bReversed from tblPipeType where ixPipeType > 3"),
              "4 'Grauwasser\u00fc\u00f6' ' ' -1");
    EXPECT_EQ(record[0].value, COleVariant(std::int32_t{4})) << "the key that the database gave";
    ASSERT_TRUE(
        connection.EditRecord({{"ixPipeType", 99}, {"sNote", ""}, {"iElbow", COleVariant::null()}}, &record));
    EXPECT_EQ(rows("select ixPipeType, sNote, iElbow, sName from tblPipeType where ixPipeType = 4"),
              "4 ' ' null 'Grauwasser\u00fc\u00f6'");
    takePrinted();
    EXPECT_FALSE(connection.EditRecord({{"iElbow", 2}, {"noSuchField", 1}}));
    EXPECT_EQ(takePrinted(), "\nAppend error: noSuchField");
    EXPECT_EQ(rows("select iElbow from tblPipeType where ixPipeType = 4"), "null") << "all or nothing";
    EXPECT_FALSE(connection.HasError());
    EXPECT_TRUE(connection.DeleteRecord());
    EXPECT_FALSE(connection.DeleteRecord());
    EXPECT_EQ(rows("select count(*) from tblPipeType"), "3");
}

TEST_F(Connection, SelectionsAreRowsWithoutARowTheyAreEmpty) {
    RowArray result;
    EXPECT_TRUE(connection.Select("select sName from tblPipeType where iSortOrder > 9", result));
    EXPECT_TRUE(result.IsEmpty());
    EXPECT_TRUE(result.flat().isEmpty());
    EXPECT_TRUE(
        connection.Select("select ixPipeType, bReversed from tblPipeType where sName = \"VENT\"", result));
    EXPECT_EQ(result.flat(),
              COleVariant(std::vector<COleVariant>{"*NewRecord*", "ixPipeType", std::int32_t{2}, "bReversed",
                                                   COleVariant(std::int16_t{-1}, VT_BOOL)}));
    EXPECT_FALSE(connection.Select("select * from nowhere", result));
    EXPECT_EQ(errorCode(), kDaoNoSuchTable);
    int count = 0;
    EXPECT_TRUE(connection.ExecuteCount("update tblPipeType set iTee = 1 where bReversed = 0", count));
    EXPECT_EQ(count, 2);
    EXPECT_FALSE(connection.Execute("update tblPipeSize set sLabel = 'x'")) << "the labels of a type differ";
    EXPECT_EQ(errorCode(), kDaoDuplicateKey);
    EXPECT_EQ(rows("select count(*) from tblPipeSize where sLabel = 'x'"), "0");

    EXPECT_TRUE(connection.SetQuerySql("byType",
                                       "PARAMETERS [Which] Long; select sLabel from tblPipeSize where "
                                       "ixPipeType = [Which] order by sLabel"));
    EXPECT_TRUE(connection.SelectQuery("byType", {{"Which", 1}}, result));
    EXPECT_EQ(result.rows(), 2U);
    EXPECT_FALSE(connection.SelectQuery("byType", {{"Other", 1}}, result));
    EXPECT_EQ(errorCode(), kDaoItemNotFound);
}

TEST_F(Connection, ErrorsAreReportedByTheirKind) {
    EXPECT_FALSE(connection.OpenTable("tblNothing", ""));
    takePrinted();
    EXPECT_TRUE(ReportDatabaseError(connection));
    EXPECT_EQ(takePrinted(), "\nDatabase Error: There is no table tblNothing in " + path + ".");
    ASSERT_TRUE(connection.OpenTable("tblPipeType", "ixPipeType"));
    EXPECT_FALSE(ReportDatabaseError(connection)) << "a later operation clears it";
    ASSERT_TRUE(connection.MoveLast());
    connection.Move(1);
    EXPECT_FALSE(connection.Move(1));
    EXPECT_EQ(errorCode(), kDaoNoCurrentRecord);
    EXPECT_TRUE(ReportDatabaseError(connection));
    EXPECT_EQ(takePrinted(), "") << "no current record is no news";
}

TEST_F(Connection, OpeningTellsDamagedFromUnwritableFromBusy) {
    connection.Close();
    std::ofstream(folder.file("damaged.vq")) << "this is no database, this is a text";
    EXPECT_EQ(connection.Open(folder.file("damaged.vq"), false, false), "*REPAIR*");
    EXPECT_TRUE(connection.HasError());
    EXPECT_FALSE(connection.IsOpen());
    std::ofstream(folder.file("former.mdb"))
        << std::string("\0\1\0\0Standard Jet DB\0", 20) << std::string(4000, ' ');
    EXPECT_EQ(connection.Open(folder.file("former.mdb"), false, false), "") << "nothing to repair";
    EXPECT_EQ(errorCode(), kDaoFormerEngine);
    bool isReadOnly = true;
    EXPECT_FALSE(connection.OpenOrFlagReadOnly(folder.file("damaged.vq"), isReadOnly));
    EXPECT_FALSE(isReadOnly);

    CDaoDatabase other;
    other.Open(path, true);
    EXPECT_EQ(connection.Open(path, false, false), path) << "somebody has it exclusively: it can be read";
    EXPECT_FALSE(connection.CanUpdate());
    EXPECT_EQ(rows("select count(*) from tblPipeType"), "3");
    EXPECT_FALSE(connection.Execute("delete from tblPipeType"));
    ASSERT_TRUE(connection.OpenTable("tblPipeType", "ixPipeType") && connection.Seek1(1));
    EXPECT_FALSE(connection.AddRecord({{"iTee", 1}}, false) || connection.EditRecord({{"iTee", 1}}) ||
                 connection.DeleteRecord());
    EXPECT_FALSE(connection.HasError()) << "read-only is no error";
    EXPECT_TRUE(connection.OpenOrFlagReadOnly(path, isReadOnly));
    EXPECT_TRUE(isReadOnly);
    EXPECT_FALSE(connection.IsOpen());
}

TEST_F(Connection, AWriteWaitsForAnotherUsersLockAndGivesUpInTheEnd) {
    ASSERT_TRUE(connection.OpenTable("tblPipeType", "ixPipeType") && connection.Seek1(1));
    CDaoDatabase other;
    other.Open(path);
    other.BeginTrans();
    other.Execute("update tblPipeType set iTee = 5 where ixPipeType = 2");
    // Longer than one attempt's patience, and shorter than all of them.
    std::thread release([&] {
        std::this_thread::sleep_for(std::chrono::milliseconds(1300));
        other.CommitTrans();
    });
    EXPECT_TRUE(connection.EditRecord({{"iTee", 9}})) << lastError();
    release.join();
    EXPECT_EQ(rows("select iTee from tblPipeType order by ixPipeType"), "9|5|0");
}

TEST_F(Connection, WhatIsStoredTogetherIsThereWholeOrNotAtAll) {
    const char* all = "select sName, iTee from tblPipeType order by ixPipeType";
    const std::string before = rows(all);
    const auto add = [&](const char* name) { connection.AddRecord({{"sName", name}}, false); };
    const auto open = [&] { connection.OpenTable("tblPipeType", "ixPipeType"); };
    run("create unique index once on tblPipeType(sName)");
    EXPECT_FALSE(connection.StoreTogether([&] {
        open();
        EXPECT_TRUE(connection.Execute("delete from tblPipeType where ixPipeType = 3"));
        add("Gas");
        EXPECT_FALSE(connection.AddRecord({{"sName", "vent"}}, false));
        EXPECT_FALSE(connection.Execute("update tblPipeType set iTee = 5")) << "nothing behind a failure";
        EXPECT_FALSE(connection.Seek1(99)) << "which clears the flag, and not the failure";
    }));
    EXPECT_TRUE(connection.HasError());
    EXPECT_NE(lastError().find("sName"), std::string::npos) << lastError();
    EXPECT_EQ(rows(all), before);
    EXPECT_FALSE(connection.StoreTogether([&] {
        open();
        add("Gas");
        connection.AddRecord({{"dNone", 1.0}}, false); // refused, and no error of the connection's
    }));
    EXPECT_THROW(connection.StoreTogether([&] {
        open();
        add("Gas");
        throw CException("a fault of ours");
    }),
                 CException);
    EXPECT_EQ(rows(all), before);
    EXPECT_TRUE(connection.StoreTogether([&] {
        open();
        add("Gas");
    })) << lastError();
    EXPECT_EQ(rows(all), before + "|'Gas' 0");
}

// Half a minute of waiting: run with VELDRIN_LONG_TESTS=1.
TEST_F(Connection, ALockThatStaysGivesAnErrorInTheEnd) {
    if (!std::getenv("VELDRIN_LONG_TESTS")) GTEST_SKIP();
    ASSERT_TRUE(connection.OpenTable("tblPipeType", "ixPipeType") && connection.Seek1(1));
    CDaoDatabase other;
    other.Open(path);
    other.BeginTrans();
    other.Execute("update tblPipeType set iTee = 5 where ixPipeType = 2");
    EXPECT_FALSE(connection.EditRecord({{"iTee", 9}}));
    EXPECT_EQ(errorCode(), kDaoLocked);
    takePrinted();
    EXPECT_TRUE(ReportDatabaseError(connection));
    EXPECT_EQ(takePrinted(), "\nDatabase Error: " + path + " is locked by another user.");
    other.Rollback();
    EXPECT_EQ(lisp("(type (vq_plumb-insertPipe 1 '(0 0 0) '(9 0 0)))"), "ENAME") << "drawing goes on";
    EXPECT_TRUE(connection.EditRecord({{"iTee", 9}}));
}
