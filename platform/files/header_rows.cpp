#include "files/header_rows.h"

#include "drawing/AcDbDatabase.h"
#include "drawing/SlotTable.h"
#include "files/header_members.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <limits>
#include <optional>
#include <utility>
#include <variant>

namespace veldrin {

namespace {

constexpr const char* kHandleSeed = "HANDSEED";

// Binds one value of each kind; texts live here until the statement has run.
class RowBinder {
public:
    explicit RowBinder(SqlStatement& statement) : m_statement(statement) {}

    void operator()(int value) { m_statement.bind(2, std::int64_t{value}); }
    void operator()(std::int16_t value) { m_statement.bind(2, std::int64_t{value}); }
    void operator()(double value) { m_statement.bind(2, value); }
    void operator()(AcDbObjectId id) {
        m_statement.bind(2, id.isErased() ? std::int64_t{0} : static_cast<std::int64_t>(id.handle().value()));
    }
    void operator()(const AcCmColor& color) {
        bindText(color.isByColor() ? fmt::format("{},{:#08x}", color.colorIndex(), color.rgb())
                                   : fmt::format("{}", color.colorIndex()));
    }
    void operator()(const AcGePoint3d& point) {
        bindText(fmt::format("{},{},{}", point.x, point.y, point.z));
    }
    void operator()(const AcGeVector3d& vector) {
        bindText(fmt::format("{},{},{}", vector.x, vector.y, vector.z));
    }

private:
    void bindText(std::string text) {
        m_text = std::move(text);
        m_statement.bind(2, std::string_view(m_text));
    }

    SqlStatement& m_statement;
    std::string m_text;
};

// The number up to the comma or the end, which is cut off.
template<class Number, class... Base>
std::optional<Number> takeNumber(std::string_view& text, Base... base) {
    Number number{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number, base...);
    if (error != std::errc()) return std::nullopt;
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    if (text.starts_with(',')) text.remove_prefix(1);
    return number;
}

template<class Triple>
void readTriple(std::string_view text, Triple& triple) {
    const auto x = takeNumber<double>(text);
    const auto y = takeNumber<double>(text);
    const auto z = takeNumber<double>(text);
    if (x && y && z) triple = Triple(*x, *y, *z);
}

class RowReader {
public:
    RowReader(const SqlStatement& row, const AcDbDatabase& database) : m_row(row), m_database(database) {}

    template<class Integer>
    requires std::is_integral_v<Integer>
    void operator()(Integer& value) const {
        if (m_row.isNumber(1) && std::in_range<Integer>(m_row.integer(1)))
            value = static_cast<Integer>(m_row.integer(1));
    }
    void operator()(double& value) const {
        if (m_row.isNumber(1)) value = m_row.real(1);
    }
    void operator()(AcDbObjectId& id) const {
        if (!m_row.isNumber(1)) return;
        const std::uint32_t slot =
            m_database.slots().findHandle(static_cast<std::uint64_t>(m_row.integer(1)));
        if (slot != 0) id = AcDbObjectId(m_database.generation(), slot);
    }
    void operator()(AcCmColor& color) const {
        std::string_view text = m_row.text(1);
        const auto index = takeNumber<std::int16_t>(text);
        if (!index) return;
        color = AcCmColor(*index);
        if (!text.starts_with("0x")) return;
        text.remove_prefix(2);
        if (const auto rgb = takeNumber<std::uint32_t>(text, 16)) color.setRGB(*rgb, *index);
    }
    void operator()(AcGePoint3d& point) const { readTriple(m_row.text(1), point); }
    void operator()(AcGeVector3d& vector) const { readTriple(m_row.text(1), vector); }

private:
    const SqlStatement& m_row;
    const AcDbDatabase& m_database;
};

} // namespace

bool writeHeaderRows(SqlFile& file, const AcDbDatabase& database) {
    const HeaderVariables& header = database.header();
    SqlStatement statement(file, "insert or replace into header values(?, ?)");
    for (const HeaderMember& row : headerMembers()) {
        RowBinder binder(statement.bind(1, std::string_view(row.name)));
        std::visit([&](auto member) { binder(header.*member); }, row.member);
        statement.execute();
    }
    return statement.bind(1, std::string_view(kHandleSeed))
        .bind(2, static_cast<std::int64_t>(database.handseed().value()))
        .execute();
}

bool readHeaderRows(SqlFile& file, AcDbDatabase& database) {
    HeaderVariables header = database.header();
    SqlStatement rows(file, "select name, value from header");
    while (rows.step()) {
        const std::string_view name = rows.text(0);
        if (name == kHandleSeed && rows.isNumber(1) && rows.integer(1) > 0)
            database.slots().reserveHandlesBelow(static_cast<std::uint64_t>(rows.integer(1)));
        const auto row = std::ranges::find(headerMembers(), name, &HeaderMember::name);
        if (row == headerMembers().end()) continue;
        const RowReader reader(rows, database);
        std::visit([&](auto member) { reader(header.*member); }, row->member);
    }
    database.setHeader(header);
    return file.ok();
}

} // namespace veldrin
