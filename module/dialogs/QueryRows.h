#pragma once

#include "dao/RowArray.h"
#include "runtime/CString.h"

#include <cstddef>

class ListControl;

namespace plumb {

class CDBConnection;

// The rows of a query, as a dialog reads them: columns from 0, in the order of the select list. A query that
// fails has the rows read so far.
class QueryRows {
public:
    QueryRows(CDBConnection& connection, const CString& sql);

    class Row {
    public:
        Row(const RowArray& rows, std::size_t at) : m_rows(&rows), m_at(at) {}
        long integer(std::size_t column) const;
        double real(std::size_t column) const;
        CString text(std::size_t column) const; // a number without commas, so that it can be read back
        bool operator!=(const Row& other) const { return m_at != other.m_at; }
        Row& operator++() {
            ++m_at;
            return *this;
        }
        const Row& operator*() const { return *this; }

    private:
        const RowArray* m_rows;
        std::size_t m_at;
    };
    Row begin() const { return {m_rows, 0}; }
    Row end() const { return {m_rows, m_rows.rows()}; }
    bool hasFailed() const { return m_hasFailed; }
    bool isEmpty() const { return m_rows.IsEmpty(); }
    std::size_t size() const { return m_rows.rows(); }
    Row operator[](std::size_t at) const { return {m_rows, at}; }

private:
    RowArray m_rows;
    bool m_hasFailed;
};

// Adds the rows of a query for an id and a name to a list, the name as text and the id as item data.
void addItems(ListControl& list, CDBConnection& connection, const CString& sql);

// Selects the item with that data, or the first one.
void selectItem(ListControl& list, long data);

} // namespace plumb
