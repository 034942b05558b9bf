#include "platform/dao/DaoTest.h"

#include <cmath>
#include <limits>

namespace veldrin::testing {

namespace {

class DaoFieldTypes : public DaoTest {
protected:
    // Opens a table of a counter and these fields.
    void open(std::vector<CDaoFieldInfo> fields) {
        fields.insert(fields.begin(), counter("ixOne"));
        makeTable("tblOne", fields);
        records.Open("tblOne");
    }
    int set(const COleVariant& value) {
        records.AddNew();
        const int number = failure([&] {
            records.SetFieldValue("value", value);
            records.Update();
            records.SetBookmark(records.GetLastModifiedBookmark());
        });
        records.CancelUpdate();
        return number;
    }
    std::string stored() { return shown(records.GetFieldValue("VALUE")); }

    CDaoRecordset records{database};
};

TEST_F(DaoFieldTypes, AYesIsMinusOneHoweverItIsWritten) {
    run("create table tblYes(ixYes integer primary key, bYes yesno, bOther yesno)");
    database.BeginTrans();
    const struct {
        const char* value;
        const char* stored;
    } cases[] = {{"1", "long -1"},  {"2", "long -1"},   {"1.0", "long -1"},  {"'1'", "long -1"},
                 {"-1", "long -1"}, {"0.5", "long -1"}, {"True", "long -1"}, {"0", "long 0"},
                 {"0.0", "long 0"}, {"'0'", "long 0"},  {"null", "long 0"},  {"False", "long 0"}};
    for (const auto& c : cases) {
        const std::string value = c.value;
        EXPECT_EQ(run("insert into tblYes(bYes, bOther) values(" + value + ", 0)"), 1);
        EXPECT_EQ(rows("select bYes + 0 from tblYes"), c.stored) << value;
        for (const char* before : {"0", "-1"}) {
            run("update tblYes set bYes = " + std::string(before));
            EXPECT_EQ(run("update tblYes set bOther = " + value + ", bYes = " + value), 1);
            EXPECT_EQ(rows("select bYes + 0 from tblYes"), c.stored) << value;
            EXPECT_EQ(rows("select bOther + 0 from tblYes"), c.stored) << value;
        }
        run("delete from tblYes");
    }
    run("insert into tblYes(ixYes) values(1)");
    EXPECT_EQ(rows("select bYes, bOther from tblYes"), "no, no");
    database.CommitTrans();
}

TEST_F(DaoFieldTypes, YesNoSetInARecordIsStoredLikeThat) {
    open({field("value", dbBoolean)});
    const struct {
        COleVariant value;
        const char* stored;
    } cases[] = {{COleVariant(std::int16_t{1}), "yes"},
                 {2, "yes"},
                 {1.0, "yes"},
                 {"1", "yes"},
                 {-1, "yes"},
                 {COleVariant(std::int16_t{-1}, VT_BOOL), "yes"},
                 {0, "no"},
                 {0.0, "no"},
                 {"0", "no"},
                 {"", "no"},
                 {COleVariant(), "no"},
                 {COleVariant::null(), "no"}};
    for (const auto& c : cases) {
        EXPECT_EQ(set(c.value), 0);
        EXPECT_EQ(stored(), c.stored) << shown(c.value);
        EXPECT_EQ(rows("select count(*) from tblOne where value not in (0, -1) or value is null"), "long 0");
    }
    EXPECT_EQ(set("perhaps"), kDaoWrongType);
}

TEST_F(DaoFieldTypes, YesNoFieldsOfAResultAreKnownHoweverTheyGetThere) {
    run("create table tblPipe(ixPipe integer primary key, bWet yesno, ixFloor long)");
    run("create table tblFloor(ixFloor integer primary key, bTop yesno)");
    run("insert into tblFloor values(7, 1)");
    run("insert into tblPipe values(1, 1, 7)");
    run("insert into tblPipe values(2, 0, 8)");
    EXPECT_EQ(
        rows("select p.bWet as Wet, f.bTop from tblPipe p left join tblFloor f on f.ixFloor = p.ixFloor "
             "order by p.ixPipe"),
        "yes, yes; no, null");
    EXPECT_EQ(rows("select x.w from (select bWet as w, ixPipe from tblPipe) x order by ixPipe"), "yes; no");
    EXPECT_EQ(rows("select -bWet, bWet + 1, bWet = True, max(bWet) from tblPipe where ixPipe = 1"),
              "long 1, long 0, long 1, long -1");
}

TEST_F(DaoFieldTypes, EveryKindComesBackAsItWasSet) {
    const struct {
        DaoFieldType type;
        COleVariant value;
        const char* stored;
    } cases[] = {
        {dbByte, 255, "byte 255"},
        {dbInteger, -32768, "integer -32768"},
        {dbLong, std::numeric_limits<std::int32_t>::min(), "long -2147483648"},
        {dbLong, 2.5, "long 2"},
        {dbLong, 3.5, "long 4"},
        {dbLong, " 12 ", "long 12"},
        {dbLong, "", "long 0"},
        {dbLong, COleVariant::null(), "null"},
        {dbSingle, 0.25, "single 0.25"},
        {dbSingle, 3, "single 3"},
        {dbDouble, "1e3", "double 1000"},
        {dbDouble, 2, "double 2"},
        {dbCurrency, 1.25, "double 1.25"},
        {dbDate, COleVariant::date(45000.5), "date 45000.5"},
        {dbDate, COleVariant::date(45000), "date 45000"},
        {dbText, 15, "'15'"},
        {dbText, 2.5, "'2.5'"},
        {dbText, "1.50", "'1.50'"},
        {dbMemo, "007", "'007'"},
        {dbMemo, COleVariant(), "null"},
    };
    database.BeginTrans();
    for (const auto& c : cases) {
        open({field("value", c.type, c.type == dbText ? 20 : 0)});
        EXPECT_EQ(set(c.value), 0);
        EXPECT_EQ(stored(), c.stored) << c.type;
        EXPECT_EQ(rows("select value from tblOne"), c.stored) << c.type;
        records.Close();
        database.DeleteTableDef("tblOne");
    }
}

TEST_F(DaoFieldTypes, WhatAFieldCannotHoldIsRefused) {
    const struct {
        DaoFieldType type;
        COleVariant value;
        int number;
    } cases[] = {
        {dbByte, 256, kDaoWrongType},          {dbByte, -1, kDaoWrongType},
        {dbInteger, 32768, kDaoWrongType},     {dbLong, 3e9, kDaoWrongType},
        {dbLong, 2147483647.5, kDaoWrongType}, {dbLong, -2147483649.0, kDaoWrongType},
        {dbLong, std::nan(""), kDaoWrongType}, {dbLong, "12a", kDaoWrongType},
        {dbDouble, "two", kDaoWrongType},      {dbDate, "soon", kDaoWrongType},
        {dbText, "123456", kDaoFieldTooSmall}, {dbText, std::vector<COleVariant>{1}, kDaoWrongType},
        {dbText, "äöüäöü", kDaoFieldTooSmall}, {dbText, "äöüßé", 0},
    };
    for (const auto& c : cases) {
        open({field("value", c.type, c.type == dbText ? 5 : 0)});
        EXPECT_EQ(set(c.value), c.number) << c.type << " " << shown(c.value);
        EXPECT_EQ(records.GetRecordCount(), c.number == 0 ? 1 : 0);
        records.Close();
        database.DeleteTableDef("tblOne");
    }
}

TEST_F(DaoFieldTypes, NumbersBeyondAFieldsKindComeInAWiderOne) {
    run("create table tblWide(a byte, b smallint, c long, d double)");
    run("insert into tblWide values(256, 32768, 2147483648, 2147483648)");
    run("insert into tblWide values(-1, -32769, -2147483649, 1)");
    EXPECT_EQ(rows("select a, b, c from tblWide"),
              "long 256, long 32768, double 2.14748e+09; long -1, long -32769, double -2.14748e+09");
    EXPECT_EQ(database.Select("select c from tblWide").at(0, 0).real(), 2147483648.0);
    EXPECT_EQ(rows("select 2147483647, -2147483648, 1.5, null"),
              "long 2147483647, long -2147483648, double 1.5, null");
}

TEST_F(DaoFieldTypes, DatesAreShownWithWhatTheyHave) {
    const struct {
        double days;
        const char* text;
    } cases[] = {{0.0, "00:00:00"},
                 {0.5, "12:00:00"},
                 {1.0, "1899-12-31"},
                 {2.25, "1900-01-01 06:00:00"},
                 {45000.0, "2023-03-15"},
                 {-1.25, "1899-12-29 06:00:00"},
                 {1.9999999, "1900-01-01"},
                 {std::nan(""), ""},
                 {1e300, ""}};
    for (const auto& c : cases) EXPECT_EQ(dateText(c.days), c.text) << c.days;
}

TEST_F(DaoFieldTypes, DefaultsFillWhatIsNotSet) {
    std::vector<CDaoFieldInfo> fields{field("s", dbText, 20), field("n", dbLong), field("d", dbDouble),
                                      field("value", dbLong)};
    const char* defaults[] = {"it's \"so\"", "7", "-0.5", ""};
    for (std::size_t i = 0; i < 4; ++i) fields[i].m_strDefaultValue = defaults[i];
    fields[0].m_bRequired = true;
    open(fields);
    EXPECT_EQ(set(1), 0);
    EXPECT_EQ(rows("select s, n, d, value from tblOne"), "'it's \"so\"', long 7, double -0.5, long 1");
    for (std::size_t i = 0; i < 4; ++i) EXPECT_EQ(records.fields()[i + 1].m_strDefaultValue, defaults[i]);
    records.AddNew();
    records.Update();
    EXPECT_EQ(records.GetRecordCount(), 2);
}

TEST_F(DaoFieldTypes, RequiredFieldsAndEmptyTextsAreKeptToAfterReopening) {
    std::vector<CDaoFieldInfo> fields{field("must", dbText, 20), field("full", dbText, 20),
                                      field("long", dbMemo), field("value", dbMemo)};
    fields[0].m_bRequired = true;
    fields[1].m_bAllowZeroLength = fields[2].m_bAllowZeroLength = false;
    open(fields);
    records.Close();
    database.Open(path("a.vq"));
    CDaoTableDef table(database);
    table.Open("TBLONE");
    for (const CDaoFieldInfo& made : fields) {
        const CDaoFieldInfo read = table.GetFieldInfo(made.m_strName);
        EXPECT_EQ(read.m_nType, made.m_nType) << made.m_strName;
        EXPECT_EQ(read.m_lSize, made.m_lSize) << made.m_strName;
        EXPECT_EQ(read.m_bRequired, made.m_bRequired) << made.m_strName;
        EXPECT_EQ(read.m_bAllowZeroLength, made.m_bAllowZeroLength) << made.m_strName;
    }
    EXPECT_EQ(failure([&] { table.GetFieldInfo("none"); }), kDaoItemNotFound);
    EXPECT_EQ(table.GetFieldInfo("ixOne").m_lAttributes, dbAutoIncrField);

    records.Open("tblOne");
    EXPECT_EQ(set("x"), kDaoRequired) << "the required field has no value";
    records.AddNew();
    EXPECT_EQ(failure([&] { records.SetFieldValue("must", COleVariant::null()); }), kDaoRequired);
    records.SetFieldValue("must", "");
    EXPECT_EQ(failure([&] { records.SetFieldValue("full", ""); }), kDaoZeroLength);
    EXPECT_EQ(failure([&] { records.SetFieldValue("long", ""); }), kDaoZeroLength);
    records.SetFieldValue("full", " ");
    records.SetFieldValue("value", "");
    records.Update();
    EXPECT_EQ(rows("select must, full, [long], value from tblOne"), "'', ' ', null, ''");
    EXPECT_EQ(failure([&] { run("update tblOne set full = ''"); }), kDaoValidation);
}

TEST_F(DaoFieldTypes, TextsAreComparedWithoutRegardToCase) {
    open({field("value", dbText, 20)});
    CDaoTableDef table(database);
    table.Open("tblOne");
    table.CreateIndex({"value", "value", true, false, false});
    records.Open("tblOne");
    records.SetCurrentIndex("VALUE");
    for (const char* word : {"b", "A", "C"}) EXPECT_EQ(set(word), 0);
    EXPECT_EQ(rows("select value from tblOne order by value"), "'A'; 'b'; 'C'");
    EXPECT_EQ(rows("select value from tblOne where value = 'B'"), "'b'");
    ASSERT_TRUE(seek(records, {"B"}));
    EXPECT_EQ(stored(), "'b'");
    records.MoveNext();
    EXPECT_EQ(stored(), "'C'");
    EXPECT_EQ(set("c"), kDaoDuplicateKey);
}

TEST_F(DaoFieldTypes, NumbersOfRecordsAreNeverUsedAgain) {
    open({field("value", dbLong)});
    for (int i = 1; i <= 3; ++i) EXPECT_EQ(set(i), 0);
    run("delete from tblOne where ixOne >= 2");
    EXPECT_EQ(set(4), 0);
    EXPECT_EQ(shown(records.GetFieldValue("ixOne")), "long 4");
    records.Delete();
    records.Close();
    database.Open(path("a.vq"));
    records.Open("tblOne");
    EXPECT_EQ(set(5), 0);
    EXPECT_EQ(shown(records.GetFieldValue("ixOne")), "long 5");
    records.Edit();
    EXPECT_EQ(failure([&] { records.SetFieldValue("ixOne", 9); }), kDaoReadOnly);
}

} // namespace

} // namespace veldrin::testing
