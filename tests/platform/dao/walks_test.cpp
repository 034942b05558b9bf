#include "platform/dao/DaoTest.h"

#include <algorithm>
#include <functional>
#include <random>

namespace veldrin::testing {

namespace {

struct Order {
    const char* index;
    const char* sql;
};
constexpr Order kOrders[] = {{"", "ixWalk"},
                             {"ixWalk", "ixWalk"},
                             {"A", "a, ixWalk"},
                             {"S", "s desc, ixWalk"},
                             {"Three", "a, s desc, d, ixWalk"},
                             {"Down", "a desc, d desc, ixWalk"}};

// More rows than are read ahead at a time, with many equal keys and nulls among them.
class DaoWalks : public DaoTest {
protected:
    static constexpr int kRows = 1700;

    DaoWalks() {
        database.BeginTrans();
        run("create table tblWalk(ixWalk integer primary key autoincrement, a long, s text(20) collate "
            "nocase, "
            "d double)");
        run("create index [tblWalk.A] on tblWalk(a)");
        run("create index [tblWalk.S] on tblWalk(s desc)");
        run("create index [tblWalk.Three] on tblWalk(a, s desc, d)");
        run("create index [tblWalk.Down] on tblWalk(a desc, d desc)");
        run("create table tblOther(ixOther integer primary key, a long)");
        run("create index [tblOther.A] on tblOther(a desc)");
        database.CommitTrans();
    }
    void fill(int count = kRows) {
        run("insert into tblWalk(a, s, d) with recursive n(i) as (select 0 union all select i + 1 from n "
            "where "
            "i + 1 < " +
            std::to_string(count) +
            ") select case when i % 7 = 0 then null else i * 37 % 11 end, case i % 5 when 0 then null "
            "when 1 then 'Word' || i % 4 else 'wORD' || i % 3 end, case when i % 9 = 0 then null else i % 6 "
            "/ "
            "2.0 end from n");
    }
    std::vector<std::int64_t> numbersBy(const std::string& order, const std::string& where = "true") {
        const RowArray result =
            database.Select("select ixWalk from tblWalk where " + where + " order by " + order);
        std::vector<std::int64_t> numbers;
        for (std::size_t row = 0; row < result.rows(); ++row) numbers.push_back(result.at(row, 0).whole());
        return numbers;
    }
    static std::int64_t number(CDaoRecordset& records) { return records.GetFieldValue("ixWalk").whole(); }
};

TEST_F(DaoWalks, RecordsComeInTheOrderOfTheIndexBothWays) {
    fill();
    for (const Order& order : kOrders) {
        const std::vector<std::int64_t> expected = numbersBy(order.sql);
        ASSERT_EQ(expected.size(), static_cast<std::size_t>(kRows));
        CDaoRecordset records(database);
        records.Open("tblWalk");
        records.SetCurrentIndex(order.index);
        std::vector<std::int64_t> forward;
        for (; !records.IsEOF() && forward.size() <= expected.size(); records.MoveNext())
            forward.push_back(number(records));
        EXPECT_EQ(forward, expected) << order.index;
        EXPECT_FALSE(records.IsBOF());
        EXPECT_EQ(failure([&] { records.MoveNext(); }), kDaoNoCurrentRecord);

        std::vector<std::int64_t> backward;
        for (records.MovePrev(); !records.IsBOF() && backward.size() <= expected.size(); records.MovePrev())
            backward.push_back(number(records));
        std::reverse(backward.begin(), backward.end());
        EXPECT_EQ(backward, expected) << order.index;
        EXPECT_FALSE(records.IsEOF());
        EXPECT_EQ(failure([&] { records.MovePrev(); }), kDaoNoCurrentRecord);
        records.MoveNext();
        EXPECT_EQ(number(records), expected.front());
    }
}

TEST_F(DaoWalks, AWalkMayTurnRoundAnywhere) {
    fill();
    std::mt19937 random(7);
    for (const Order& order : kOrders) {
        const std::vector<std::int64_t> expected = numbersBy(order.sql);
        CDaoRecordset records(database);
        records.Open("tblWalk");
        records.SetCurrentIndex(order.index);
        long at = 0;
        for (int turn = 0; turn < 60; ++turn) {
            const long reach = turn % 3 == 0 ? 400 : 7;
            const long step = static_cast<long>(random() % static_cast<unsigned>(2 * reach + 1)) - reach;
            const long to = std::clamp(at + step, -1L, long{kRows});
            records.Move(to - at);
            at = to;
            ASSERT_EQ(records.IsBOF(), at < 0) << order.index;
            ASSERT_EQ(records.IsEOF(), at == kRows) << order.index;
            if (at >= 0 && at < kRows) {
                ASSERT_EQ(number(records), expected[static_cast<std::size_t>(at)]) << order.index << at;
            }
        }
        records.MoveLast();
        EXPECT_EQ(number(records), expected.back());
        records.Move(-1000);
        EXPECT_EQ(number(records), expected[kRows - 1001]);
        records.MoveFirst();
        EXPECT_EQ(number(records), expected.front());
    }
}

TEST_F(DaoWalks, ASeekMeetsTheFirstRecordOfItsKeys) {
    fill();
    const struct {
        Order order;
        std::vector<COleVariant> keys;
        const char* where;
    } cases[] = {
        {kOrders[2], {3}, "a = 3"},
        {kOrders[2], {"3"}, "a = 3"},
        {kOrders[2], {3.0}, "a = 3"},
        {kOrders[2], {COleVariant()}, "a is null"},
        {kOrders[2], {COleVariant::null()}, "a is null"},
        {kOrders[2], {99}, "a = 99"},
        {kOrders[3], {"WORD1"}, "s = 'word1'"},
        {kOrders[4], {4}, "a = 4"},
        {kOrders[4], {4, "Word2"}, "a = 4 and s = 'word2'"},
        {kOrders[4], {4, COleVariant()}, "a = 4 and s is null"},
        {kOrders[4], {4, "Word2", 1.5}, "a = 4 and s = 'word2' and d = 1.5"},
        {kOrders[4], {COleVariant(), "Word1", COleVariant()}, "a is null and s = 'word1' and d is null"},
        {kOrders[4], {4, "Word"}, "s = 'word'"},
        {kOrders[5], {4}, "a = 4"},
        {kOrders[5], {COleVariant(), COleVariant()}, "a is null and d is null"},
        {kOrders[1], {1234}, "ixWalk = 1234"},
        {kOrders[1], {"17"}, "ixWalk = 17"},
        {kOrders[1], {COleVariant()}, "ixWalk is null"},
        {kOrders[1], {0}, "ixWalk = 0"},
    };
    CDaoRecordset records(database);
    records.Open("tblWalk");
    for (const auto& c : cases) {
        const std::vector<std::int64_t> expected = numbersBy(c.order.sql, c.where);
        records.SetCurrentIndex(c.order.index);
        EXPECT_EQ(seek(records, c.keys), !expected.empty()) << c.order.index << " " << c.where;
        std::vector<std::int64_t> met; // they stand one behind the other
        for (std::size_t i = 0; i < expected.size(); ++i, records.MoveNext()) met.push_back(number(records));
        EXPECT_EQ(met, expected) << c.order.index << " " << c.where;
    }
}

TEST_F(DaoWalks, AFailedSeekLeavesNoCurrentRecord) {
    fill(20);
    CDaoRecordset records(database);
    records.Open("tblWalk");
    EXPECT_EQ(failure([&] { seek(records, {1}); }), kDaoNoCurrentIndex);
    records.SetCurrentIndex("A");
    ASSERT_FALSE(seek(records, {99}));
    const std::vector<std::function<void()>> uses = {
        [&] { records.record(); },   [&] { records.GetFieldValue("a"); }, [&] { records.GetBookmark(); },
        [&] { records.Edit(); },     [&] { records.Delete(); },           [&] { records.MoveNext(); },
        [&] { records.MovePrev(); },
    };
    for (const auto& use : uses) EXPECT_EQ(failure(use), kDaoNoCurrentRecord);
    EXPECT_FALSE(records.IsEOF());
    EXPECT_FALSE(records.IsBOF());
    EXPECT_EQ(records.GetRecordCount(), 20);
    records.MoveFirst();
    EXPECT_EQ(number(records), 1);
}

TEST_F(DaoWalks, ASeekTakesNoMoreKeysThanTheIndexHas) {
    CDaoRecordset records(database);
    records.Open("tblWalk");
    const struct {
        const char* index;
        std::size_t most;
    } cases[] = {{"A", 1}, {"Three", 3}, {"ixWalk", 1}};
    for (const auto& c : cases) {
        records.SetCurrentIndex(c.index);
        for (std::size_t keys = 0; keys <= 11; ++keys) {
            const bool fits = keys > 0 && keys <= c.most;
            EXPECT_EQ(failure([&] { seek(records, std::vector<COleVariant>(keys, COleVariant(1))); }),
                      fits ? 0 : kDaoWrongParameters)
                << c.index << keys;
        }
    }
}

TEST_F(DaoWalks, IndexNamesAreOfOneTable) {
    run("insert into tblOther values(1, 5)");
    run("insert into tblOther values(2, 6)");
    fill(3);
    CDaoRecordset walk(database);
    CDaoRecordset other(database);
    walk.Open("TBLWALK");
    other.Open("tblOther");
    EXPECT_EQ(walk.GetIndexNames(), (std::vector<CString>{"ixWalk", "A", "S", "Three", "Down"}));
    EXPECT_EQ(other.GetIndexNames(), (std::vector<CString>{"ixOther", "A"}));
    walk.SetCurrentIndex("a");
    other.SetCurrentIndex("a");
    EXPECT_EQ(other.GetCurrentIndex(), "a");
    other.MoveFirst();
    EXPECT_EQ(shown(other.GetFieldValue("a")), "long 6");
    walk.MoveFirst();
    EXPECT_EQ(shown(walk.GetFieldValue("a")), "null");
    EXPECT_EQ(failure([&] { other.SetCurrentIndex("Three"); }), kDaoNotAnIndex);
    EXPECT_EQ(failure([&] { other.SetCurrentIndex("tblOther.A"); }), kDaoNotAnIndex);
    EXPECT_EQ(other.GetCurrentIndex(), "a");
}

TEST_F(DaoWalks, AnotherIndexLeavesThePlace) {
    fill();
    CDaoRecordset records(database);
    records.Open("tblWalk");
    records.SetCurrentIndex("A");
    ASSERT_TRUE(seek(records, {5}));
    records.Move(20);
    const std::int64_t here = number(records);
    const std::vector<std::int64_t> down = numbersBy(kOrders[5].sql);
    const auto at = std::find(down.begin(), down.end(), here);
    records.SetCurrentIndex("Down");
    EXPECT_EQ(number(records), here);
    records.MovePrev();
    EXPECT_EQ(number(records), *(at - 1));
    records.Move(2);
    EXPECT_EQ(number(records), *(at + 1));
    records.SetCurrentIndex("");
    records.MoveNext();
    EXPECT_EQ(number(records), *(at + 1) + 1);
}

TEST_F(DaoWalks, AnEmptyTableIsAtBothEnds) {
    CDaoRecordset records(database);
    records.Open("tblWalk");
    for (const Order& order : kOrders) {
        records.SetCurrentIndex(order.index);
        EXPECT_TRUE(records.IsBOF());
        EXPECT_TRUE(records.IsEOF());
        EXPECT_EQ(failure([&] { records.MoveFirst(); }), kDaoNoCurrentRecord);
        EXPECT_EQ(failure([&] { records.MoveLast(); }), kDaoNoCurrentRecord);
        EXPECT_EQ(failure([&] { records.record(); }), kDaoNoCurrentRecord);
    }
    EXPECT_EQ(records.GetRecordCount(), 0);
    fill(2);
    records.MoveFirst();
    EXPECT_FALSE(records.IsBOF());
    EXPECT_FALSE(records.IsEOF());
}

TEST_F(DaoWalks, AWalkGoesOnBehindADeletedRecord) {
    fill();
    for (const Order& order : kOrders) {
        std::vector<std::int64_t> left = numbersBy(order.sql);
        CDaoRecordset records(database);
        records.Open("tblWalk");
        records.SetCurrentIndex(order.index);
        records.Move(50);
        for (int i = 0; i < 3; ++i) {
            ASSERT_EQ(number(records), left[50]) << order.index;
            records.Delete();
            EXPECT_EQ(failure([&] { records.record(); }), kDaoRecordDeleted);
            EXPECT_EQ(failure([&] { records.Delete(); }), kDaoRecordDeleted);
            left.erase(left.begin() + 50);
            records.MoveNext();
        }
        EXPECT_EQ(number(records), left[50]);
        records.Delete();
        records.MovePrev();
        EXPECT_EQ(number(records), left[49]) << order.index;
    }
}

TEST_F(DaoWalks, DeletingAllOfATableEndsBehindIt) {
    fill(30);
    CDaoRecordset records(database);
    records.Open("tblWalk");
    records.SetCurrentIndex("Down");
    int deleted = 0;
    for (records.MoveFirst(); !records.IsEOF(); records.MoveNext(), ++deleted) records.Delete();
    EXPECT_EQ(deleted, 30);
    EXPECT_EQ(records.GetRecordCount(), 0);
    EXPECT_EQ(failure([&] { records.MoveFirst(); }), kDaoNoCurrentRecord);
    EXPECT_TRUE(records.IsBOF());
}

} // namespace

} // namespace veldrin::testing
