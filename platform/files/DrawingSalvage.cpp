#include "files/DrawingSalvage.h"

#include "drawing/acdb.h"
#include "files/DrawingFormat.h"
#include "files/SalvageWalk.h"
#include "files/SqlFile.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdint>

namespace veldrin {

namespace {

std::string rangeText(const SalvageWalk::Gap& gap) {
    const auto text = [](std::int64_t n) { return AcDbHandle(static_cast<std::uint64_t>(n)).text(); };
    return gap.first == gap.last ? text(gap.first) : text(gap.first) + " to " + text(gap.last);
}

// The highest handle there may be: the file knows, unless that page is gone too.
std::int64_t highestHandle(const std::string& path) {
    constexpr std::int64_t kOtherwise = 1 << 20;
    SqlFile file(path, SqlFile::Mode::kExisting);
    const std::int64_t next = file.number("select value from header where name = 'HANDSEED'");
    SqlFile again(path, SqlFile::Mode::kExisting);
    const std::int64_t highest = again.number("select max(handle) from objects");
    return std::max({next, highest, next == 0 && highest == 0 ? kOtherwise : 0});
}

void copyNumbered(const std::string& damaged, SqlFile& into, const char* query, const char* insertion,
                  int columns, const char* what, std::vector<std::string>& told) {
    SqlStatement insert(into, insertion);
    SalvageWalk walk(damaged, query, [&](const SqlStatement& row) {
        for (int column = 0; column < columns; ++column) insert.bindValue(column + 1, row, column);
        return insert.execute();
    });
    walk.walk(1, highestHandle(damaged));
    for (const SalvageWalk::Gap& gap : walk.gaps())
        told.push_back(fmt::format("{} {} cannot be read, if there are such", what, rangeText(gap)));
}

// Small tables that are read in one go, as far as that goes.
void copyNamed(const std::string& damaged, SqlFile& into, const char* query, const char* insertion,
               int columns, const char* what, std::vector<std::string>& told) {
    SqlFile from(damaged, SqlFile::Mode::kExisting);
    SqlStatement insert(into, insertion);
    {
        SqlStatement rows(from, query);
        while (rows.step()) {
            for (int column = 0; column < columns; ++column) insert.bindValue(column + 1, rows, column);
            insert.execute();
        }
    }
    if (!from.ok()) told.push_back(fmt::format("{} cannot be read completely: {}", what, from.error()));
}

} // namespace

std::string salvageRows(const std::string& damaged, const std::string& into, std::vector<std::string>& told) {
    {
        SqlFile look(damaged, SqlFile::Mode::kExisting);
        if (!checkDrawingFormat(look)) return look.error();
    }
    SqlFile file(into, SqlFile::Mode::kCreate);
    SqlTransaction transaction(file);
    makeDrawingFormat(file);
    copyNamed(damaged, file, "select name, dxf_name, application, is_entity from classes",
              "insert or ignore into classes(name, dxf_name, application, is_entity) values(?, ?, ?, ?)", 4,
              "the classes", told);
    copyNumbered(
        damaged, file,
        "select handle, class, owner, record from objects where handle between ? and ? order by handle",
        "insert or ignore into objects values(?, ?, ?, ?)", 4, "objects", told);
    copyNumbered(damaged, file,
                 "select handle, picture from pictures where handle between ? and ? order by handle",
                 "insert or ignore into pictures values(?, ?)", 2, "pictures of objects", told);
    copyNamed(damaged, file, "select name, value from header", "insert or ignore into header values(?, ?)", 2,
              "the drawing's variables", told);
    transaction.commit();
    file.close();
    return file.error();
}

} // namespace veldrin
