#include "platform/dao/DaoTest.h"

#include <functional>

namespace veldrin::testing {

namespace {

// One recordset, and another user of the same file.
class DaoEdits : public DaoTest {
protected:
    DaoEdits() {
        database.BeginTrans();
        run("create table tblPipe(ixPipe integer primary key autoincrement, nSize long not null default 0, "
            "sName text(30) collate nocase, bWet yesno)");
        run("create index [tblPipe.nSize] on tblPipe(nSize)");
        run("create unique index [tblPipe.sName] on tblPipe(sName)");
        run("insert into tblPipe(nSize, sName) with recursive n(i) as (select 1 union all select i + 1 from "
            "n "
            "where i < 900) select i * 10, 'P' || i from n");
        database.CommitTrans();
        other.Open(path("a.vq"));
        records.Open("tblPipe");
        records.SetCurrentIndex("nSize");
    }
    std::string get(const char* field) { return shown(records.GetFieldValue(field)); }
    void setSize(int size) { records.SetFieldValue("nSize", size); }

    CDaoDatabase other;
    CDaoRecordset records{database};
};

TEST_F(DaoEdits, AWalkMeetsWhatOthersDidFarAhead) {
    records.MoveFirst();
    EXPECT_EQ(other.Execute("delete from tblPipe where nSize between 5000 and 8000"), 301);
    other.Execute("insert into tblPipe(nSize) values(8005)");
    other.Execute("update tblPipe set nSize = 7005 where nSize = 9000");
    other.Execute("update tblPipe set nSize = 1 where nSize = 4990");
    std::vector<std::int64_t> sizes;
    for (; !records.IsEOF(); records.MoveNext()) sizes.push_back(records.GetFieldValue("nSize").whole());
    std::vector<std::int64_t> expected;
    for (int size = 10; size < 4990; size += 10) expected.push_back(size);
    expected.insert(expected.end(), {7005, 8005});
    for (int size = 8010; size < 9000; size += 10) expected.push_back(size);
    EXPECT_EQ(sizes, expected);
}

TEST_F(DaoEdits, ASeekAndAnEditMeetThePresentRecord) {
    records.MoveFirst();
    records.Move(20);
    other.Execute("update tblPipe set sName = 'new' || ixPipe where nSize in (210, 220)");
    EXPECT_EQ(get("sName"), "'P21'") << "read ahead";
    records.Edit();
    EXPECT_EQ(get("sName"), "'new21'");
    records.CancelUpdate();
    ASSERT_TRUE(seek(records, {220}));
    EXPECT_EQ(get("sName"), "'new22'");

    other.Execute("update tblPipe set sName = 'newer' where nSize = 220");
    EXPECT_EQ(get("sName"), "'new22'");
    CDaoDatabase::noteTurn();
    EXPECT_EQ(get("sName"), "'newer'") << "others had a turn";
}

TEST_F(DaoEdits, ARecordThatAnotherUserDeletedCannotBeEdited) {
    records.MoveFirst();
    records.Move(4);
    other.Execute("delete from tblPipe where nSize in (50, 60)");
    EXPECT_EQ(failure([&] { records.Edit(); }), kDaoRecordDeleted);
    EXPECT_EQ(failure([&] { records.Update(); }), kDaoNotEditing);
    EXPECT_EQ(other.Execute("update tblPipe set bWet = 1 where nSize = 70"), 1) << "no lock is left";
    records.MoveNext();
    EXPECT_EQ(get("nSize"), "long 70") << "the walk goes on behind it";
    other.Execute("delete from tblPipe where nSize = 70");
    EXPECT_EQ(failure([&] { records.Delete(); }), kDaoRecordDeleted);
    other.Execute("delete from tblPipe where ixPipe = 8");
    EXPECT_EQ(failure([&] { records.SetBookmark(8); }), kDaoRecordDeleted);
}

TEST_F(DaoEdits, ARecordIsReadAgainAfterAWriteOfTheSameDatabase) {
    records.MoveFirst();
    run("update tblPipe set sName = 'first', nSize = 35 where nSize = 10");
    EXPECT_EQ(get("sName"), "'first'");
    records.MoveNext();
    EXPECT_EQ(get("nSize"), "long 40") << "the place is where the record is now";
    run("delete from tblPipe where nSize = 40");
    EXPECT_EQ(failure([&] { records.record(); }), kDaoRecordDeleted);
    records.MovePrev();
    EXPECT_EQ(get("nSize"), "long 35");

    CDaoRecordset second(database);
    second.Open("tblPipe");
    second.SetBookmark(records.GetBookmark());
    second.Edit();
    second.SetFieldValue("sName", "second");
    second.Update();
    EXPECT_EQ(get("sName"), "'second'");
}

TEST_F(DaoEdits, AnUpdatedRecordStaysCurrentInItsNewPlace) {
    ASSERT_TRUE(seek(records, {100}));
    records.Edit();
    setSize(8995);
    records.SetFieldValue("bWet", 5);
    records.SetFieldValue("NSIZE", 8994);
    records.Update();
    EXPECT_EQ(get("nSize"), "long 8994");
    EXPECT_EQ(get("bWet"), "yes");
    EXPECT_EQ(records.GetLastModifiedBookmark(), records.GetBookmark());
    records.MovePrev();
    EXPECT_EQ(get("nSize"), "long 8990");
    records.Move(2);
    EXPECT_EQ(get("nSize"), "long 9000");
    EXPECT_EQ(DaoFolderTest::rows(other, "select nSize, bWet from tblPipe where sName = 'P10'"),
              "long 8994, yes");
}

TEST_F(DaoEdits, AnAddedRecordIsTheLastModifiedAndNotTheCurrentOne) {
    ASSERT_TRUE(seek(records, {100}));
    records.AddNew();
    setSize(105);
    records.Update();
    EXPECT_EQ(get("nSize"), "long 100");
    records.SetBookmark(records.GetLastModifiedBookmark());
    EXPECT_EQ(get("nSize"), "long 105");
    EXPECT_EQ(get("ixPipe"), "long 901");
    EXPECT_EQ(get("bWet"), "no");
    records.MoveNext();
    EXPECT_EQ(get("nSize"), "long 110");
}

TEST_F(DaoEdits, WhatIsNotUpdatedLeavesNothing) {
    const std::string before = rows("select * from tblPipe");
    const std::vector<std::function<void()>> ways = {
        [&] { records.CancelUpdate(); },
        [&] { records.MoveNext(); },
        [&] { records.MoveFirst(); },
        [&] { records.SetBookmark(7); },
        [&] { seek(records, {500}); },
        [&] {
            records.Edit();
            records.CancelUpdate();
        },
        [&] {
            records.AddNew();
            records.CancelUpdate();
        },
        [&] {
            records.Close();
            records.Open("tblPipe");
        },
    };
    for (const auto& leave : ways)
        for (const bool isNew : {false, true}) {
            records.SetCurrentIndex("nSize");
            ASSERT_TRUE(seek(records, {300}));
            if (isNew)
                records.AddNew();
            else
                records.Edit();
            setSize(12345);
            leave();
            EXPECT_EQ(failure([&] { setSize(1); }), kDaoNotEditing);
            EXPECT_EQ(failure([&] { records.Update(); }), kDaoNotEditing);
            EXPECT_EQ(DaoFolderTest::rows(other, "select * from tblPipe"), before);
            EXPECT_EQ(other.Execute("update tblPipe set nSize = nSize where ixPipe = 1"), 1)
                << "no lock is left";
        }
    {
        CDaoRecordset passing(database);
        passing.Open("tblPipe");
        passing.Edit();
        passing.SetFieldValue("nSize", 1);
    }
    EXPECT_EQ(other.Execute("update tblPipe set nSize = nSize where ixPipe = 1"), 1);
    EXPECT_EQ(rows("select * from tblPipe"), before);
}

TEST_F(DaoEdits, ARefusedUpdateLeavesTheRecordAndNoLock) {
    ASSERT_TRUE(seek(records, {100}));
    records.Edit();
    setSize(1);
    records.SetFieldValue("sName", "p11");
    EXPECT_EQ(failure([&] { records.Update(); }), kDaoDuplicateKey);
    EXPECT_EQ(get("nSize"), "long 100");
    EXPECT_EQ(get("sName"), "'P10'");
    EXPECT_EQ(other.Execute("update tblPipe set bWet = 1 where sName = 'P10'"), 1);
    records.AddNew();
    records.SetFieldValue("sName", "P12");
    EXPECT_EQ(failure([&] { records.Update(); }), kDaoDuplicateKey);
    EXPECT_EQ(records.GetRecordCount(), 900);

    // A field that is refused does not end the edit.
    records.Edit();
    EXPECT_EQ(failure([&] { records.SetFieldValue("none", 1); }), kDaoItemNotFound);
    EXPECT_EQ(failure([&] { records.GetFieldValue("none"); }), kDaoItemNotFound);
    EXPECT_EQ(failure([&] { records.SetFieldValue("nSize", COleVariant()); }), kDaoRequired);
    setSize(2);
    records.Update();
    EXPECT_EQ(get("nSize"), "long 2");
    EXPECT_EQ(get("bWet"), "yes");
}

TEST_F(DaoEdits, NobodyElseWritesBetweenEditAndUpdate) {
    CDaoRecordset theirs(other);
    theirs.Open("tblPipe");
    theirs.SetCurrentIndex("nSize");
    ASSERT_TRUE(seek(theirs, {100}));
    ASSERT_TRUE(seek(records, {100}));
    records.Edit();
    records.SetFieldValue("sName", "mine");
    EXPECT_EQ(failure([&] { theirs.Edit(); }), kDaoLocked); // another user's patience ends
    EXPECT_EQ(shown(theirs.GetFieldValue("sName")), "'P10'") << "reading goes on";
    records.Update();
    theirs.Edit();
    EXPECT_EQ(shown(theirs.GetFieldValue("sName")), "'mine'");
    theirs.SetFieldValue("nSize", 101);
    theirs.Update();
    EXPECT_EQ(rows("select sName, nSize from tblPipe where ixPipe = 10"), "'mine', long 101");
}

TEST_F(DaoEdits, WithoutPessimisticLockingOthersWriteMeanwhile) {
    records.SetLockingMode(false);
    ASSERT_TRUE(seek(records, {100}));
    records.Edit();
    setSize(101);
    EXPECT_EQ(other.Execute("update tblPipe set sName = 'theirs' where ixPipe = 10"), 1);
    records.Update();
    EXPECT_EQ(get("sName"), "'theirs'");
    EXPECT_EQ(get("nSize"), "long 101");
}

TEST_F(DaoEdits, ATransactionIsThereWholeOrNotAtAll) {
    database.BeginTrans();
    ASSERT_TRUE(seek(records, {100}));
    records.Edit();
    setSize(101);
    records.Update();
    run("delete from tblPipe where nSize > 200");
    EXPECT_EQ(DaoFolderTest::rows(other, "select count(*), sum(nSize = 101) from tblPipe"),
              "long 900, long 0");
    database.Rollback();
    EXPECT_EQ(get("nSize"), "long 100");
    EXPECT_EQ(records.GetRecordCount(), 900);
    database.BeginTrans();
    records.Delete();
    run("delete from tblPipe where nSize > 200");
    database.CommitTrans();
    EXPECT_EQ(DaoFolderTest::rows(other, "select count(*) from tblPipe"), "long 19");
}

TEST_F(DaoEdits, WhatIsReadOnlyCannotBeWritten) {
    CDaoRecordset closed(database);
    closed.Open("tblPipe", true);
    CDaoDatabase reader;
    reader.Open(path("a.vq"), false, true);
    EXPECT_FALSE(reader.CanUpdate());
    CDaoRecordset read(reader);
    read.Open("tblPipe");
    for (CDaoRecordset* recordset : {&closed, &read}) {
        recordset->MoveFirst();
        EXPECT_FALSE(recordset->CanUpdate());
        EXPECT_EQ(failure([&] { recordset->Edit(); }), kDaoReadOnly);
        EXPECT_EQ(failure([&] { recordset->AddNew(); }), kDaoReadOnly);
        EXPECT_EQ(failure([&] { recordset->Delete(); }), kDaoReadOnly);
    }
    EXPECT_EQ(failure([&] { reader.Execute("delete from tblPipe"); }), kDaoReadOnly);
    EXPECT_EQ(records.GetRecordCount(), 900);
}

TEST_F(DaoEdits, GivingUpAnEditKeepsWhatElseWasWritten) {
    CDaoRecordset second(database);
    second.Open("tblPipe");
    records.MoveFirst();
    records.Edit();
    second.AddNew();
    second.SetFieldValue("sName", "beside");
    second.Update();
    run("insert into tblPipe(sName) values('by SQL')");
    records.CancelUpdate();
    EXPECT_EQ(DaoFolderTest::rows(other, "select count(*) from tblPipe where sName in ('beside', 'by SQL')"),
              "long 2");
}

TEST_F(DaoEdits, AnUpdateOfARecordThatIsGoneIsAnError) {
    records.MoveFirst();
    records.SetLockingMode(false);
    records.Edit();
    setSize(5);
    other.Execute("delete from tblPipe where nSize = 10");
    EXPECT_EQ(failure([&] { records.Update(); }), kDaoRecordDeleted);
    EXPECT_EQ(rows("select count(*) from tblPipe where nSize = 5"), "long 0");
}

} // namespace

} // namespace veldrin::testing
