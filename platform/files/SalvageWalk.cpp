#include "files/SalvageWalk.h"

#include <utility>

namespace veldrin {

SalvageWalk::SalvageWalk(const std::string& path, std::string query, Take take, SqlFile::Mode mode)
    : m_path(path), m_query(std::move(query)), m_take(std::move(take)), m_mode(mode) {}

void SalvageWalk::lose(std::int64_t first, std::int64_t last) {
    if (!m_gaps.empty() && m_gaps.back().last + 1 == first)
        m_gaps.back().last = last;
    else
        m_gaps.push_back({first, last});
}

bool SalvageWalk::walk(std::int64_t first, std::int64_t last) {
    if (gaveUp()) {
        lose(first, last);
        return true;
    }
    SqlFile file(m_path, m_mode); // the last one failed for good
    {
        SqlStatement rows(file, m_query);
        rows.bind(1, first).bind(2, last);
        while (rows.step()) {
            if (!m_take(rows)) return false;
            first = rows.integer(0) + 1;
        }
    }
    if (file.ok() || first > last) return true;
    ++m_failures;
    if (first == last) {
        lose(first, last);
        return true;
    }
    const std::int64_t middle = first + (last - first) / 2;
    return walk(first, middle) && walk(middle + 1, last);
}

} // namespace veldrin
