#pragma once

#include "dao/COleVariant.h"
#include "runtime/CString.h"
#include "runtime/VeldrinApi.h"

#include <vector>

// The result of a query: rows and columns, both from 0.
class VELDRIN_API RowArray {
public:
    RowArray() = default;
    explicit RowArray(std::vector<CString> names) : m_names(std::move(names)) {}

    bool IsEmpty() const { return m_values.empty(); }
    std::size_t rows() const { return m_names.empty() ? 0 : m_values.size() / m_names.size(); }
    std::size_t columns() const { return m_names.size(); }
    const CString& name(std::size_t column) const { return m_names[column]; }
    const COleVariant& at(std::size_t row, std::size_t column) const {
        return m_values[row * m_names.size() + column];
    }

    // One value as one array, as callers outside of the system know a result: empty without a row; the
    // values alone for one column; for more the text "*NewRecord*" before each row, and each value behind its
    // column's name.
    COleVariant flat() const;

    std::vector<COleVariant>& values() { return m_values; } // row by row

private:
    std::vector<CString> m_names;
    std::vector<COleVariant> m_values;
};
