#include "editor/SystemVariables.h"

#include "drawing/AcDbDatabase.h"
#include "editor/DocumentManager.h"
#include "editor/VariableTable.h"
#include "lisp/Args.h"
#include "runtime/Host.h"
#include "system/AsciiCase.h"

#include <algorithm>
#include <cmath>
#include <fmt/format.h>

namespace veldrin {

namespace {

Document* currentDocument() {
    return Host::current().documents().current();
}

bool isWhole(double value) {
    return std::floor(value) == value && std::abs(value) <= 2147483647.0;
}

// The value as the variable keeps it; nothing when it is of another type.
std::optional<VariableValue> convert(const VariableRow& row, const VariableValue& value) {
    const auto* integer = std::get_if<std::int32_t>(&value);
    const auto* real = std::get_if<double>(&value);
    const auto* flat = std::get_if<AcGePoint2d>(&value);
    const auto* point = std::get_if<AcGePoint3d>(&value);
    switch (row.kind) {
    case VariableKind::Integer:
        if (integer) return value;
        if (real && isWhole(*real)) return static_cast<std::int32_t>(*real);
        return {};
    case VariableKind::Real:
        if (integer) return static_cast<double>(*integer);
        if (real && std::isfinite(*real)) return value;
        return {};
    case VariableKind::Text:
        if (std::holds_alternative<std::string>(value)) return value;
        return {};
    case VariableKind::Point2d:
        if (point) return point->convert2d();
        if (flat) return value;
        return {};
    case VariableKind::Point3d:
        if (flat) return AcGePoint3d(flat->x, flat->y, 0.0);
        if (point) return value;
        return {};
    }
    return {};
}

bool isInRange(const VariableRow& row, const VariableValue& value) {
    if (row.least == 0.0 && row.greatest == 0.0) return true;
    double number = 0.0;
    if (const auto* integer = std::get_if<std::int32_t>(&value))
        number = *integer;
    else if (const auto* real = std::get_if<double>(&value))
        number = *real;
    else
        return true;
    return number >= row.least && number <= row.greatest;
}

SystemVariables::Result setHeaderValue(const VariableRow& row, const VariableValue& value,
                                       AcDbDatabase& database) {
    HeaderVariables header = database.header();
    const SystemVariables::Result result = row.set(header, value, database);
    if (result == SystemVariables::Result::Ok) database.setHeader(header);
    return result;
}

} // namespace

std::span<const VariableRow> variableTable() {
    static const std::vector<VariableRow> rows = [] {
        std::vector<VariableRow> all;
        addHeaderVariables(all);
        addKeptVariables(all);
        addComputedVariables(all);
        std::sort(all.begin(), all.end(), [](const auto& a, const auto& b) { return a.name < b.name; });
        return all;
    }();
    return rows;
}

const VariableRow* findVariable(std::string_view name) {
    const std::span<const VariableRow> rows = variableTable();
    const std::string upper = asciiUpperCase(name);
    const auto row = std::lower_bound(rows.begin(), rows.end(), upper,
                                      [](const VariableRow& a, const std::string& b) { return a.name < b; });
    return row != rows.end() && row->name == upper ? &*row : nullptr;
}

SystemVariables::SystemVariables() = default;

// Null when the drawing that it belongs to is not there.
VariableStore* SystemVariables::storeOf(const VariableRow& row) const {
    if (row.home == VariableHome::Session) return &m_session;
    Document* document = currentDocument();
    return document ? &document->variables() : nullptr;
}

std::optional<VariableValue> SystemVariables::get(std::string_view name) const {
    const VariableRow* row = findVariable(name);
    if (!row) return {};
    Document* document = currentDocument();
    switch (row->home) {
    case VariableHome::Header:
        if (!document) return {};
        return row->get(document->database()->header());
    case VariableHome::Computed:
        if (row->needsDrawing && !document) return {};
        return row->compute(Host::current(), document);
    default: break;
    }
    const VariableStore* store = storeOf(*row);
    if (!store) return {};
    const auto kept = store->find(row->name);
    return kept == store->end() ? row->initial : kept->second;
}

SystemVariables::Result SystemVariables::set(std::string_view name, const VariableValue& given) {
    const VariableRow* row = findVariable(name);
    if (!row) return Result::Unknown;
    if (row->readOnly) return Result::ReadOnly;
    const std::optional<VariableValue> value = convert(*row, given);
    if (!value) return Result::WrongType;
    if (!isInRange(*row, *value)) return Result::OutOfRange;
    if (row->home == VariableHome::Header) {
        Document* document = currentDocument();
        return document ? setHeaderValue(*row, *value, *document->database()) : Result::Unknown;
    }
    VariableStore* store = storeOf(*row);
    if (!store) return Result::Unknown;
    store->insert_or_assign(row->name, *value);
    return Result::Ok;
}

void SystemVariables::put(std::string_view name, VariableValue value) {
    const VariableRow* row = findVariable(name);
    if (!row || row->home == VariableHome::Computed || row->home == VariableHome::Header) return;
    const std::optional<VariableValue> converted = convert(*row, value);
    VariableStore* store = storeOf(*row);
    if (converted && store) store->insert_or_assign(row->name, *converted);
}

lisp::Value SystemVariables::getLisp(std::string_view name) const {
    using lisp::Value;
    const std::optional<VariableValue> value = get(name);
    if (!value) return {};
    struct ToLisp {
        Value operator()(std::int32_t i) const { return Value::integer(i); }
        Value operator()(double d) const { return Value::real(d); }
        Value operator()(const std::string& text) const { return Value::text(text); }
        Value operator()(const AcGePoint2d& p) const {
            return lisp::list(Value::real(p.x), Value::real(p.y));
        }
        Value operator()(const AcGePoint3d& p) const {
            return lisp::list(Value::real(p.x), Value::real(p.y), Value::real(p.z));
        }
    };
    return std::visit(ToLisp{}, *value);
}

SystemVariables::Result SystemVariables::setLisp(std::string_view name, const lisp::Value& value) {
    if (value.isInteger()) return set(name, value.asInteger());
    if (value.isReal()) return set(name, value.asReal());
    if (value.isText()) return set(name, std::string(value.asText()));
    lisp::Point point;
    if (lisp::readPoint(value, point)) {
        if (point.dimensions == 2) return set(name, AcGePoint2d(point.x, point.y));
        return set(name, AcGePoint3d(point.x, point.y, point.z));
    }
    return findVariable(name) ? Result::WrongType : Result::Unknown;
}

std::int32_t SystemVariables::integer(std::string_view name) const {
    const auto value = get(name);
    const auto* integer = value ? std::get_if<std::int32_t>(&*value) : nullptr;
    return integer ? *integer : 0;
}

double SystemVariables::real(std::string_view name) const {
    const auto value = get(name);
    const auto* real = value ? std::get_if<double>(&*value) : nullptr;
    return real ? *real : 0.0;
}

std::string SystemVariables::text(std::string_view name) const {
    const auto value = get(name);
    const auto* text = value ? std::get_if<std::string>(&*value) : nullptr;
    return text ? *text : std::string();
}

bool SystemVariables::exists(std::string_view name) const {
    return findVariable(name) != nullptr;
}

std::vector<std::string> SystemVariables::names() const {
    std::vector<std::string> names;
    for (const VariableRow& row : variableTable()) names.push_back(row.name);
    return names;
}

SystemVariables::Scope::Scope(std::string_view name, VariableValue value) : m_name(name) {
    SystemVariables& variables = Host::current().variables();
    m_before = variables.get(name);
    variables.set(name, value);
}

SystemVariables::Scope::~Scope() {
    if (m_before) Host::current().variables().set(m_name, *m_before);
}

std::string describeRefusal(std::string_view name, const VariableValue& value,
                            SystemVariables::Result result) {
    using Result = SystemVariables::Result;
    struct Show {
        std::string operator()(std::int32_t i) const { return std::to_string(i); }
        std::string operator()(double d) const { return fmt::format("{}", d); }
        std::string operator()(const std::string& text) const { return fmt::format("\"{}\"", text); }
        std::string operator()(const AcGePoint2d& p) const { return fmt::format("({} {})", p.x, p.y); }
        std::string operator()(const AcGePoint3d& p) const {
            return fmt::format("({} {} {})", p.x, p.y, p.z);
        }
    };
    const std::string head = fmt::format("Variable \"{}\" rejected", asciiUpperCase(name));
    const std::string shown = std::visit(Show{}, value);
    switch (result) {
    case Result::Unknown: return head + ": there is no such variable";
    case Result::ReadOnly: return head + ": it is read-only";
    case Result::WrongType: return fmt::format("{}: {} is of the wrong type", head, shown);
    case Result::OutOfRange: return fmt::format("{}: {} is out of range", head, shown);
    case Result::NotFound: return fmt::format("{}: {} is not in the drawing", head, shown);
    case Result::Ok: break;
    }
    return {};
}

} // namespace veldrin
