#include "dao/RowArray.h"

COleVariant RowArray::flat() const {
    constexpr const char* kRowBegins = "*NewRecord*";
    if (IsEmpty()) return {};
    if (columns() == 1) return m_values;
    std::vector<COleVariant> items;
    items.reserve(rows() * (1 + 2 * columns()));
    for (std::size_t row = 0; row < rows(); ++row) {
        items.emplace_back(kRowBegins);
        for (std::size_t column = 0; column < columns(); ++column) {
            items.emplace_back(m_names[column]);
            items.push_back(at(row, column));
        }
    }
    return items;
}
