#include "module/database/DatabaseTest.h"

#include <algorithm>

using namespace plumb;

class SchemaList : public DatabaseTest {
protected:
    using Items = std::vector<COleVariant>;
    const COleVariant yes{std::int16_t{-1}, VT_BOOL};
    const COleVariant no{std::int16_t{0}, VT_BOOL};

    std::string fields(const char* table) {
        std::string text;
        int count = 0;
        FieldArray info;
        EXPECT_TRUE(connection.OpenTable(table, "") && connection.GetFieldCount(count));
        for (int i = 0; i < count; ++i) {
            CString name;
            EXPECT_TRUE(connection.GetFieldName(i, name) && connection.GetFieldInfo(name, info));
            text += (i == 0 ? "" : "|") + name;
            for (std::size_t n : {1U, 2U, 3U, 5U, 6U}) text += " " + std::to_string(info[n].value.whole());
            text += " " + info[7].value.text();
        }
        return text;
    }
};

TEST_F(SchemaList, MakesFieldsAndTheirIndexes) {
    const Items list{
        "*RTLB*", "*RTLB*", "ixThing", "LONG",   yes,    COleVariant(),    "I",      yes,
        yes,      "*RTLE*", "*RTLB*",  "sName",  "text", std::int32_t{30}, yes,      "none",
        "X",      yes,      "*RTLE*",  "*RTLB*", "bOn",  "BOOL",           no,       COleVariant(),
        "",       "*RTLE*", "*RTLB*",  "dSize",  "REAL", COleVariant(),    "1.5",    "D",
        "*RTLE*", "*RTLB*", "sNote",   "MEMO",   no,     COleVariant(),    "*RTLE*", "*RTLE*"};
    ASSERT_TRUE(connection.CreateTable("tblThing", list)) << lastError();
    EXPECT_EQ(fields("tblThing"),
              "ixThing 4 4 16 0 0 |sName 10 30 0 1 1 none|bOn 1 1 0 0 0 |dSize 7 8 0 0 0 1.5|"
              "sNote 12 0 0 0 1 ");
    std::vector<CString> names;
    ASSERT_TRUE(connection.OpenTable("tblThing", "") && connection.GetIndexNames(names));
    std::sort(names.begin(), names.end());
    EXPECT_EQ(names, (std::vector<CString>{"dSize", "ixThing", "sName"}));
    run("insert into tblThing(dSize, sName) values (1, 'a'), (3, 'b')");
    EXPECT_FALSE(connection.Execute("insert into tblThing(sName) values ('A')"))
        << "unique, whatever the case";
    ASSERT_TRUE(connection.OpenTable("tblThing", "dSize") && connection.MoveFirst());
    COleVariant first;
    EXPECT_TRUE(connection.GetFieldValue("sName", first));
    EXPECT_EQ(first.text(), "b") << "descending";
    bool isRequired = false;
    EXPECT_TRUE(connection.IsFieldRequired("tblThing", "sName", isRequired) && isRequired);
}

TEST_F(SchemaList, WhatIsWrongEndsItAndLeavesTheFieldsBefore) {
    const Items good{"*RTLB*", "iGood", "INT", no, COleVariant(), "", "*RTLE*"};
    const std::pair<const char*, Items> wrong[] = {
        {"a type that there is not", {"*RTLB*", "x", "WORD", no, COleVariant(), ""}},
        {"a text without its size", {"*RTLB*", "x", "TEXT", no, COleVariant(), ""}},
        {"an end before the index word", {"*RTLB*", "x", "LONG", no, COleVariant()}},
        {"a number for a name", {"*RTLB*", std::int32_t{5}, "LONG", no, COleVariant(), ""}},
        {"another word for a bracket", {"iGood"}},
        {"a value for a bracket", {COleVariant()}},
    };
    int n = 0;
    for (const auto& [what, items] : wrong) {
        Items list = good;
        list.insert(list.end(), items.begin(), items.end());
        const std::string table = "t" + std::to_string(++n);
        EXPECT_FALSE(connection.CreateTable(table, list)) << what;
        EXPECT_EQ(fields(table.c_str()), "iGood 3 2 0 0 0 ") << what;
    }
    EXPECT_FALSE(connection.AddFields("tblPipeSize",
                                      Items{"*RTLB*", "sLabel", "MEMO", no, COleVariant(), "", "*RTLE*"}));
    EXPECT_TRUE(connection.HasError()) << "there is such a field";
    EXPECT_TRUE(connection.AddFields("tblPipeSize", Items{"*RTLB*", "bNew", "BOOL", no, COleVariant(), "A"}));
    EXPECT_EQ(rows("select distinct(bNew) from tblPipeSize"), "0") << "a yes/no is never null";
}

TEST_F(SchemaList, TablesAreRenamedLinkedRelatedAndDeleted) {
    bool flag = false;
    ASSERT_TRUE(connection.RenameTable("tblPipeSize", "tblSize"));
    EXPECT_TRUE(connection.OpenTable("tblSize", "ixPipeType_sLabel") && connection.Seek2(1, "3/4\""));
    EXPECT_TRUE(connection.TableExists("tblsize", flag) && flag);
    EXPECT_TRUE(connection.TableExists("tblPipeSize", flag) && !flag);

    CDBConnection other;
    const std::string source = folder.file("other.vq");
    ASSERT_TRUE(other.CreateDatabase(source) && other.Open(source, false, false) == source);
    ASSERT_TRUE(other.Execute("create table tblFar(ixFar INTEGER PRIMARY KEY, bOn YESNO)"));
    ASSERT_TRUE(other.Execute("insert into tblFar values (3, 1)"));
    EXPECT_FALSE(connection.LinkTable("tblNear", folder.file("nowhere.vq"), "tblFar", flag));
    EXPECT_FALSE(flag);
    ASSERT_TRUE(connection.LinkTable("tblNear", source, "tblFar", flag)) << lastError();
    EXPECT_TRUE(flag);
    EXPECT_EQ(rows("select ixFar, bOn from tblNear"), "3 -1");
    ASSERT_TRUE(connection.OpenTable("tblNear", "ixFar") && connection.Seek1(3)) << lastError();
    EXPECT_TRUE(connection.EditRecord({{"bOn", std::int16_t{0}}})) << lastError();
    std::vector<CString> names;
    ASSERT_TRUE(connection.GetTableNames(names));
    std::sort(names.begin(), names.end());
    EXPECT_EQ(names, (std::vector<CString>{"tblNear", "tblPipeType", "tblSize"}))
        << "nothing of the engine's";

    EXPECT_TRUE(connection.RelationExists("none", flag) && !flag);
    EXPECT_TRUE(connection.DeleteRelation("tblPipeType", "tblSize"));
    EXPECT_TRUE(connection.DeleteTable("tblSize", true));
    EXPECT_FALSE(connection.DeleteTable("tblSize", false));
    EXPECT_TRUE(connection.DeleteTable("tblNear", false));
    RowArray result;
    EXPECT_TRUE(other.Select("select bOn from tblFar", result)) << "only the link is gone";
    EXPECT_EQ(result.at(0, 0).whole(), 0);
}
