#pragma once

#include "files/SqlFile.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace veldrin {

// Rows of a table of a damaged file by their number, in ascending order. A page that cannot be read fails
// every query that meets it, so the numbers are halved around it until the rows on both sides are found.
class SalvageWalk {
public:
    using Take = std::function<bool(const SqlStatement& row)>; // false ends the walk

    // The query gives rows by number, their first column, between its two parameters, in order.
    SalvageWalk(const std::string& path, std::string query, Take take,
                SqlFile::Mode mode = SqlFile::Mode::kExisting);

    // False when the taker gave up.
    bool walk(std::int64_t first, std::int64_t last);

    struct Gap {
        std::int64_t first, last;
    };
    const std::vector<Gap>& gaps() const { return m_gaps; }
    bool gaveUp() const { return m_failures >= kMostFailures; }

private:
    static constexpr int kMostFailures = 20'000;
    void lose(std::int64_t first, std::int64_t last);

    const std::string& m_path;
    std::string m_query;
    Take m_take;
    SqlFile::Mode m_mode;
    std::vector<Gap> m_gaps;
    int m_failures = 0;
};

} // namespace veldrin
