#include "database/GlobalSettings.h"
#include "database/tables/tblGlobal.h"
#include "database/tables/tblPipeSize.h"
#include "database/tables/tblPipeSizingValue.h"
#include "database/tables/tblPipeType.h"
#include "module/database/DatabaseTest.h"

using namespace plumb;

class Records : public DatabaseTest {
protected:
    tblPipeType types{false, &connection};
};

TEST_F(Records, WithoutAConnectionAWholeSequenceRuns) {
    tblPipeType none(false, nullptr);
    none.SetCurrentIndex("iSortOrder");
    none.MoveFirst();
    EXPECT_TRUE(none.IsEOF() && none.IsBOF());
    EXPECT_FALSE(none.Seek(1));
    none.AddNew();
    none.sName = "x";
    none.Update();
    none.Delete();
    none.Close();
    EXPECT_EQ(none.sName.get(), "x");
}

TEST_F(Records, AllRowsInTheOrderOfAnIndex) {
    std::string seen;
    types.SetCurrentIndex("iSortOrder");
    for (types.MoveFirst(); !types.IsEOF(); types.MoveNext()) seen += types.sShortName.get() + " ";
    EXPECT_EQ(seen, "HW CW V ");
    EXPECT_EQ(types.sShortName.get(), "V") << "past the end the last record stays";
    tblPipeType other(false, &connection);
    types.MoveFirst();
    other.MoveNext();
    other.MoveNext();
    EXPECT_EQ(other.sShortName.get(), "V") << "two objects on a table have one place";
    EXPECT_EQ(types.sShortName.get(), "HW");
    types.Close();
    EXPECT_TRUE(connection.NoTableOpen());
}

TEST_F(Records, AddingGivesTheStoredRecordWithItsKey) {
    types.AddNew();
    types.Update();
    EXPECT_EQ(rows("select count(*) from tblPipeType"), "3") << "nothing was set, nothing is written";
    types.sName = "Storm drainage";
    types.sShortName = "";
    types.bReversed = true;
    types.ixMasterDatabase = 4;
    types.Update();
    EXPECT_EQ(types.ixPipeType, 4);
    EXPECT_EQ(types.sName.get(), "Storm draina") << "as long as the field";
    EXPECT_EQ(types.sShortName.get(), "") << "stored as a blank, read as an empty text";
    EXPECT_TRUE(types.bReversed);
    EXPECT_TRUE(types.iMasterDatabaseIndex.isNull());
    EXPECT_EQ(
        rows("select sShortName, bReversed, ixMasterDatabase, iMasterDatabaseIndex from tblPipeType where "
             "ixPipeType = 4"),
        "' ' -1 4 null");
}

TEST_F(Records, ChangingWritesWhatWasSetAndNothingElse) {
    ASSERT_TRUE(types.Seek(1));
    types.Edit();
    types.iTee = 2;
    run("update tblPipeType set iElbow = 7, sName = 'Changed' where ixPipeType = 1"); // by somebody else
    types.Update();
    EXPECT_EQ(rows("select iTee, iElbow, sName from tblPipeType where ixPipeType = 1"), "2 7 'Changed'");
    EXPECT_EQ(types.sName.get(), "Changed") << "the object has the record as stored";
    types.Edit();
    types.ixMasterDatabase = 5;
    types.Update();
    std::int32_t master = 0;
    EXPECT_TRUE(types.ixMasterDatabase.get(master));
    EXPECT_EQ(master, 5);
    types.Edit();
    types.ixMasterDatabase.setNull();
    types.Update();
    EXPECT_FALSE(types.ixMasterDatabase.get(master));
    EXPECT_EQ(master, 0);
    types.Edit();
    types.iTee = 9;
    types.AddNew();
    types.Edit(); // takes back what was begun
    types.sShortName = "X";
    types.Update();
    EXPECT_EQ(rows("select iTee, sShortName from tblPipeType where ixPipeType = 1"), "2 'X'");
    types.Delete();
    EXPECT_EQ(rows("select count(*) from tblPipeType"), "2");
    types.Edit();
    types.iTee = 1;
    types.Update(); // the record is gone: nothing to change, and nothing is added
    EXPECT_EQ(rows("select count(*) from tblPipeType"), "2");
}

TEST_F(Records, AStandardsFileNeverGetsTheMasterColumns) {
    tblPipeType standards(true, &connection);
    ASSERT_TRUE(standards.Seek(2));
    standards.Edit();
    standards.ixMasterDatabase = 5;
    standards.Update();
    standards.Edit();
    standards.iMasterDatabaseIndex = 6;
    standards.iTee = 3;
    standards.Update();
    EXPECT_EQ(
        rows("select ixMasterDatabase, iMasterDatabaseIndex, iTee from tblPipeType where ixPipeType = 2"),
        "null null 3");
}

TEST_F(Records, SeeksOnNamedIndexes) {
    tblPipeSize sizes(false, &connection);
    EXPECT_TRUE(sizes.Seek(1, "3/4\""));
    EXPECT_EQ(sizes.ixPipeSize, 2);
    EXPECT_EQ(sizes.dExteriorDiameter, 0.0) << "null reads as 0";
    EXPECT_FALSE(sizes.Seek(2, "3/4\""));
    EXPECT_EQ(sizes.ixPipeSize, 2) << "a failed seek leaves the members";
    EXPECT_TRUE(sizes.SeekPipeType(1));
    EXPECT_EQ(sizes.sLabel.get(), "1/2\"");
    COleVariant value;
    sizes.GetFieldValue("dInteriorDiameter", value);
    EXPECT_EQ(value, COleVariant(0.545));
}

TEST_F(Records, AStandardSizeIsAYesNoHeldAsANumber) {
    run("create table tblPipeSizingValue(ixPipeSizingValue INTEGER PRIMARY KEY AUTOINCREMENT, "
        "ixPipeSizingTable "
        "INTEGER, ixPipeSize INTEGER, dFlow DOUBLE, dFlowVertical DOUBLE, bEnable YESNO DEFAULT -1)");
    tblPipeSizingValue values(&connection);
    values.AddNew();
    values.bEnable = 1.0;
    values.Update();
    EXPECT_EQ(values.bEnable, 1.0);
    EXPECT_EQ(rows("select bEnable from tblPipeSizingValue"), "-1");
    values.Edit();
    values.bEnable = 0.0;
    values.Update();
    EXPECT_EQ(rows("select bEnable from tblPipeSizingValue"), "0");
}

TEST_F(Records, SettingsAreNumbersOrTexts) {
    run("create table tblGlobal(ixGlobal INTEGER PRIMARY KEY AUTOINCREMENT, sKey TEXT(100) COLLATE NOCASE, "
        "bNumeric "
        "YESNO, sText TEXT(255), dNumber DOUBLE)");
    run("create unique index [tblGlobal.sKey] on tblGlobal(sKey)");
    tblGlobal settings(&connection);
    EXPECT_EQ(GetGlobalNumber(nullptr, "A"), 0.0);
    EXPECT_EQ(GetGlobalText(&settings, "A"), "");
    SetGlobalText(&settings, "A", "word");
    EXPECT_EQ(GetGlobalText(&settings, "a"), "word") << "keys compare without case";
    EXPECT_EQ(GetGlobalNumber(&settings, "A"), 0.0);
    SetGlobalNumber(&settings, "A", 2.5);
    SetGlobalNumber(&settings, "B", 1.0);
    EXPECT_EQ(rows("select sKey, bNumeric, sText, dNumber from tblGlobal"),
              "'A' -1 'word' 2.5|'B' -1 null 1");
}
