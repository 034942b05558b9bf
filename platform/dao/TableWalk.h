#pragma once

#include "dao/COleVariant.h"
#include "dao/TableInfo.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <vector>

namespace veldrin::dao {

class Connection;
class Statement;

// A place in a table, in the order of an index or of the rows' numbers, and the rows read ahead from there.
// A place is known by the keys and the number of its row, so that it outlives changes around it.
class TableWalk {
public:
    TableWalk(Connection& connection, std::shared_ptr<const TableInfo> table);
    ~TableWalk();

    void setIndex(const IndexInfo* index); // null for the rows' numbers; the place stays
    const IndexInfo* index() const { return m_index; }

    bool seek(std::span<const COleVariant> keys);
    bool goTo(std::int64_t row); // false: there is none, and no place
    void first();
    void last();
    void next();
    void previous();

    bool isBefore();
    bool isBehind();
    bool hasRow();      // as far as is known
    std::int64_t row(); // its number; throws 3021 without a place, 3167 when its row is gone
    std::span<const COleVariant> record();
    void forgetRow(); // it has been deleted; the place stays
    void readAgain(); // after a change of the row
    Connection& connection() const { return m_connection; }

private:
    enum class Place { kUnset, kNowhere, kBefore, kBehind, kRow, kGone };
    enum class Direction { kForward, kBackward };

    struct Row {
        std::int64_t number = 0;
        std::vector<COleVariant> values;
    };
    // Statements for one index, made when they are first asked for.
    struct Order {
        const IndexInfo* index = nullptr;
        std::vector<std::unique_ptr<Statement>> seeks; // by number of keys
        std::vector<std::unique_ptr<Statement>> steps; // by equal keys, direction and reach
        std::unique_ptr<Statement> ends[2];
    };
    // Where rows lie that come behind the place and share its first keys: in the next key. Nulls sort first.
    enum class Reach { kNumber, kGreater, kLess, kNull, kNotNull };
    static constexpr std::size_t kReaches = 5;

    Order& order();
    Statement& seekStatement(std::size_t keys);
    Statement& stepStatement(Direction direction, std::size_t equal, Reach reach);
    std::vector<Reach> reaches(Direction direction, std::size_t equal, const Row& from) const;
    const COleVariant& key(const Row& row, std::size_t n) const;
    CString keyName(std::size_t n) const;
    CString columns() const;
    CString source() const;
    CString ordering(Direction direction, std::size_t from) const;
    std::size_t keyCount() const { return m_index ? m_index->keys.size() : 0; }

    void start();
    void settle(); // the present state of the current row
    void step(Direction direction);
    void readEnd(Direction direction);
    void readPage(Direction direction);
    std::size_t take(Statement& statement, std::size_t room);
    void readRow(Statement& statement, Row& into) const;
    Row& slot(std::size_t at);

    Connection& m_connection;
    std::shared_ptr<const TableInfo> m_table;
    const IndexInfo* m_index = nullptr;
    std::vector<std::unique_ptr<Order>> m_orders;
    std::unique_ptr<Statement> m_byNumber;

    Place m_place = Place::kUnset;
    Direction m_direction = Direction::kForward; // of the page
    std::vector<Row> m_page;
    std::size_t m_count = 0;
    std::size_t m_at = 0;
    std::size_t m_pageSize = 0; // rows to read ahead next
    std::int64_t m_stamp = 0;   // of the connection when the page was read
};

} // namespace veldrin::dao
