#include "dao/TableWalk.h"

#include "dao/Connection.h"
#include "dao/DaoErrors.h"
#include "dao/SqlText.h"

#include <fmt/format.h>

#include <algorithm>

namespace veldrin::dao {

namespace {

// Pages grow while a walk goes on: whoever moves once or twice behind a seek should not pay for hundreds.
constexpr std::size_t kFirstPage = 4;
constexpr std::size_t kLargestPage = 256;
constexpr std::size_t kPageGrowth = 4;

const char* sortWord(bool descending) {
    return descending ? " desc" : "";
}

} // namespace

TableWalk::TableWalk(Connection& connection, std::shared_ptr<const TableInfo> table)
    : m_connection(connection), m_table(std::move(table)) {}
TableWalk::~TableWalk() = default;

void TableWalk::setIndex(const IndexInfo* index) {
    // The key that numbers the rows needs no index.
    m_index = index && index->engineName.empty() ? nullptr : index;
    m_count = std::min(m_count, m_at + 1);
    m_pageSize = kFirstPage;
}

TableWalk::Order& TableWalk::order() {
    for (const auto& order : m_orders)
        if (order->index == m_index) return *order;
    m_orders.push_back(std::make_unique<Order>());
    m_orders.back()->index = m_index;
    return *m_orders.back();
}

CString TableWalk::columns() const {
    CString text = "select rowid";
    for (const CDaoFieldInfo& field : m_table->fields) text += ", " + bracketed(field.m_strName);
    return text;
}

CString TableWalk::source() const {
    CString text = " from " + m_table->engineName;
    if (m_index) text += " indexed by " + bracketed(m_index->engineName);
    return text;
}

// By the keys from the given one on, then by the rows' numbers.
CString TableWalk::ordering(Direction direction, std::size_t from) const {
    const bool backward = direction == Direction::kBackward;
    CString text = " order by ";
    for (std::size_t n = from; n < keyCount(); ++n)
        text += keyName(n) + sortWord(m_index->keys[n].descending != backward) + ", ";
    return text + "rowid" + sortWord(backward);
}

Statement& TableWalk::seekStatement(std::size_t keys) {
    Order& statements = order();
    if (statements.seeks.size() <= keys) statements.seeks.resize(keys + 1);
    auto& statement = statements.seeks[keys];
    if (statement) return *statement;
    CString where = m_index ? "" : "rowid is ?";
    for (std::size_t n = 0; m_index && n < keys; ++n) where += (n ? " and " : "") + keyName(n) + " is ?";
    statement =
        std::make_unique<Statement>(m_connection, columns() + source() + " where " + where +
                                                      ordering(Direction::kForward, keys) + " limit 1");
    return *statement;
}

// Rows behind the place that share its first `equal` keys; with all keys equal, by the row's number.
Statement& TableWalk::stepStatement(Direction direction, std::size_t equal, Reach reach) {
    auto& kept = order().steps;
    const std::size_t at =
        (equal * 2 + static_cast<std::size_t>(direction)) * kReaches + static_cast<std::size_t>(reach);
    if (kept.size() <= at) kept.resize(at + 1);
    if (kept[at]) return *kept[at];
    CString where;
    for (std::size_t n = 0; n < equal; ++n) where += keyName(n) + " is ? and ";
    switch (reach) {
    case Reach::kNumber: where += direction == Direction::kBackward ? "rowid < ?" : "rowid > ?"; break;
    case Reach::kGreater: where += keyName(equal) + " > ?"; break;
    case Reach::kLess: where += keyName(equal) + " < ?"; break;
    case Reach::kNull: where += keyName(equal) + " is null"; break;
    case Reach::kNotNull: where += keyName(equal) + " is not null"; break;
    }
    kept[at] = std::make_unique<Statement>(m_connection, columns() + source() + " where " + where +
                                                             ordering(direction, equal) + " limit ?");
    return *kept[at];
}

std::vector<TableWalk::Reach> TableWalk::reaches(Direction direction, std::size_t equal,
                                                 const Row& from) const {
    if (equal == keyCount()) return {Reach::kNumber};
    const bool downwards = m_index->keys[equal].descending != (direction == Direction::kBackward);
    const bool atNull = key(from, equal).isNull();
    if (!downwards) return {atNull ? Reach::kNotNull : Reach::kGreater};
    if (atNull) return {};
    return {Reach::kLess, Reach::kNull};
}

const COleVariant& TableWalk::key(const Row& row, std::size_t n) const {
    return row.values[static_cast<std::size_t>(m_index->keys[n].column)];
}

CString TableWalk::keyName(std::size_t n) const {
    return bracketed(m_table->fields[static_cast<std::size_t>(m_index->keys[n].column)].m_strName);
}

void TableWalk::readRow(Statement& statement, Row& into) const {
    into.number = statement.integer(0);
    into.values.resize(m_table->fields.size());
    int column = 0;
    for (const CDaoFieldInfo& field : m_table->fields) {
        COleVariant& value = into.values[static_cast<std::size_t>(column)];
        readColumn(statement.handle(), ++column, field.m_nType, value);
    }
}

TableWalk::Row& TableWalk::slot(std::size_t at) {
    if (m_page.size() <= at) m_page.resize(at + 1);
    return m_page[at];
}

std::size_t TableWalk::take(Statement& statement, std::size_t room) {
    std::size_t taken = 0;
    while (taken < room && statement.step()) {
        readRow(statement, slot(m_count));
        ++m_count;
        ++taken;
    }
    statement.reset();
    return taken;
}

bool TableWalk::seek(std::span<const COleVariant> keys) {
    m_place = Place::kNowhere;
    m_stamp = m_connection.stamp();
    m_count = 0;
    m_at = 0;
    m_pageSize = kFirstPage;
    Statement& statement = seekStatement(keys.size());
    int parameter = 0;
    for (const COleVariant& key : keys) statement.bind(++parameter, key);
    if (take(statement, 1) == 0) return false;
    m_place = Place::kRow;
    return true;
}

bool TableWalk::goTo(std::int64_t row) {
    m_place = Place::kNowhere;
    m_stamp = m_connection.stamp();
    m_count = 0;
    m_at = 0;
    m_pageSize = kFirstPage;
    if (!m_byNumber)
        m_byNumber = std::make_unique<Statement>(m_connection, columns() + " from " + m_table->engineName +
                                                                   " where rowid = ?");
    m_byNumber->bind(1, row);
    if (take(*m_byNumber, 1) == 0) return false;
    m_place = Place::kRow;
    return true;
}

void TableWalk::readEnd(Direction direction) {
    m_stamp = m_connection.stamp();
    m_count = 0;
    m_at = 0;
    m_direction = direction;
    m_pageSize = kFirstPage;
    auto& statement = order().ends[static_cast<int>(direction)];
    if (!statement)
        statement = std::make_unique<Statement>(m_connection,
                                                columns() + source() + ordering(direction, 0) + " limit ?");
    statement->bind(1, static_cast<std::int64_t>(m_pageSize));
    m_place = Place::kNowhere;
    const bool any = take(*statement, m_pageSize) != 0;
    m_place = any ? Place::kRow : direction == Direction::kForward ? Place::kBehind : Place::kBefore;
}

void TableWalk::first() {
    readEnd(Direction::kForward);
}
void TableWalk::last() {
    readEnd(Direction::kBackward);
}

// The rows behind the current one, up to a page. It leaves the first slot to the current row.
void TableWalk::readPage(Direction direction) {
    if (m_at != 0) std::swap(m_page[0], m_page[m_at]);
    m_at = 0;
    m_count = 1;
    m_direction = direction;
    m_stamp = m_connection.stamp();
    m_pageSize = std::min(std::max(m_pageSize, kFirstPage) * kPageGrowth, kLargestPage);
    const Row current = m_page[0]; // a page that grows moves its rows
    std::size_t room = m_pageSize;
    for (std::size_t equal = keyCount() + 1; equal-- > 0;) {
        for (const Reach reach : reaches(direction, equal, current)) {
            if (room == 0) return;
            Statement& statement = stepStatement(direction, equal, reach);
            int parameter = 0;
            for (std::size_t n = 0; n < equal; ++n) statement.bind(++parameter, key(current, n));
            if (reach == Reach::kNumber)
                statement.bind(++parameter, current.number);
            else if (reach == Reach::kGreater || reach == Reach::kLess)
                statement.bind(++parameter, key(current, equal));
            statement.bind(++parameter, static_cast<std::int64_t>(room));
            room -= take(statement, room);
        }
    }
}

void TableWalk::start() {
    if (m_place == Place::kUnset) first();
}

void TableWalk::step(Direction direction) {
    start();
    const bool forward = direction == Direction::kForward;
    if (m_place == (forward ? Place::kBefore : Place::kBehind)) return readEnd(direction);
    if (m_place != Place::kRow && m_place != Place::kGone)
        throw CDaoException(kDaoNoCurrentRecord, "There is no current record.");
    const bool isAhead = m_direction == direction && m_at + 1 < m_count && m_stamp == m_connection.stamp();
    if (!isAhead) readPage(direction);
    if (m_at + 1 < m_count) {
        ++m_at;
        m_place = Place::kRow;
    } else {
        m_place = forward ? Place::kBehind : Place::kBefore;
    }
}

void TableWalk::next() {
    step(Direction::kForward);
}
void TableWalk::previous() {
    step(Direction::kBackward);
}

bool TableWalk::isBefore() {
    start();
    return m_place == Place::kBefore || (m_place == Place::kBehind && m_count == 0);
}

bool TableWalk::isBehind() {
    start();
    return m_place == Place::kBehind || (m_place == Place::kBefore && m_count == 0);
}

bool TableWalk::hasRow() {
    start();
    return m_place == Place::kRow;
}

void TableWalk::settle() {
    start();
    if (m_place == Place::kRow && m_stamp != m_connection.stamp()) readAgain();
    if (m_place == Place::kGone) throw CDaoException(kDaoRecordDeleted, "The record has been deleted.");
    if (m_place != Place::kRow) throw CDaoException(kDaoNoCurrentRecord, "There is no current record.");
}

void TableWalk::readAgain() {
    Row former = m_page[m_at];
    const std::int64_t number = former.number;
    if (goTo(number)) return;
    slot(0) = std::move(former); // its keys still say where the place is
    m_count = 1;
    m_place = Place::kGone;
}

std::int64_t TableWalk::row() {
    settle();
    return m_page[m_at].number;
}

std::span<const COleVariant> TableWalk::record() {
    settle();
    return m_page[m_at].values;
}

void TableWalk::forgetRow() {
    if (m_place == Place::kRow) m_place = Place::kGone;
}

} // namespace veldrin::dao
