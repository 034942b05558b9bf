#include "scripting/SelectionFilter.h"

#include "drawing/AcDbBlockTable.h"
#include "drawing/AcDbEntity.h"
#include "drawing/EntityList.h"
#include "lisp/Args.h"
#include "lisp/Error.h"
#include "lisp/Printer.h"
#include "lisp/WildMatch.h"
#include "runtime/AcRxClass.h"
#include "scripting/drawing_values.h"
#include "scripting/entity_lists.h"
#include "system/AsciiCase.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace veldrin::scripting {

namespace {

using lisp::Error;
using lisp::Value;

constexpr double kSameNumber = 1.0e-8;

bool matchesText(std::string_view text, std::string_view pattern) {
    return lisp::wildMatch(asciiUpperCase(text), asciiUpperCase(pattern));
}

// An entity under test; its list is made when a group asks for it.
class Candidate {
public:
    explicit Candidate(AcDbObjectId id) : m_entity(id) {}
    const AcDbEntity* entity() const { return m_entity.object(); }

    // nil when it has no such group.
    Value group(int code) const {
        switch (code) {
        case 0: return Value::text(veldrin::dxfNameOf(*m_entity));
        case 5: return Value::text(m_entity->handle().text());
        case 6: return Value::text(m_entity->linetype());
        case 8: return Value::text(m_entity->layer());
        case 48: return Value::real(m_entity->linetypeScale());
        case 60: return Value::integer(m_entity->visibility());
        case 62: return Value::integer(m_entity->color().colorIndex());
        case 67: return Value::integer(isInPaper() ? 1 : 0);
        case 370: return Value::integer(m_entity->lineWeight());
        case 410: return Value::text(isInPaper() ? "Layout1" : "Model");
        default: break;
        }
        const Value* found = groupOf(list(), code);
        return found ? *found : Value();
    }
    // All that have the code: a polyline has many points.
    const Value& list() const {
        if (!m_list) m_list = entityData(m_entity->objectId());
        return *m_list;
    }
    bool hasExtendedData(std::string_view application) const {
        const ResbufPtr data(m_entity->xData());
        for (const resbuf* item = data.get(); item; item = item->rbnext)
            if (item->restype == AcDb::kDxfRegAppName && matchesText(textOf(*item), application)) return true;
        return false;
    }

private:
    bool isInPaper() const { return m_entity->ownerId() == m_entity->database()->paperSpaceId(); }

    AcDbObjectPointer<AcDbEntity> m_entity;
    mutable std::optional<Value> m_list;
};

bool compareNumbers(double a, std::string_view sign, double b) {
    if (sign == "*") return true;
    if (sign == "=" || sign.empty()) return std::abs(a - b) <= kSameNumber;
    if (sign == "!=" || sign == "/=" || sign == "<>") return std::abs(a - b) > kSameNumber;
    if (sign == "<") return a < b;
    if (sign == "<=") return a <= b;
    if (sign == ">") return a > b;
    if (sign == ">=") return a >= b;
    const auto bits = static_cast<std::int64_t>(a), mask = static_cast<std::int64_t>(b);
    if (sign == "&") return (bits & mask) != 0;
    if (sign == "&=") return (bits & mask) == mask;
    return false;
}

// One sign for all coordinates, or one each: ">=,>=,*".
bool comparePoints(const lisp::Point& a, std::string_view signs, const lisp::Point& b) {
    const double left[] = {a.x, a.y, a.z}, right[] = {b.x, b.y, b.z};
    for (int i = 0; i < b.dimensions; ++i) {
        const std::size_t comma = signs.find(',');
        if (!compareNumbers(left[i], signs.substr(0, comma), right[i])) return false;
        if (comma != signs.npos) signs.remove_prefix(comma + 1);
    }
    return true;
}

bool compareValues(const Value& has, std::string_view sign, const Value& wanted) {
    lisp::Point a, b;
    if (wanted.isText()) {
        const bool equal = has.isText() && matchesText(has.asText(), wanted.asText());
        return sign == "!=" || sign == "/=" || sign == "<>" ? !equal : equal;
    }
    if (wanted.isNumber()) return has.isNumber() && compareNumbers(has.asNumber(), sign, wanted.asNumber());
    if (lisp::readPoint(wanted, b)) return lisp::readPoint(has, a) && comparePoints(a, sign, b);
    return has.isSame(wanted);
}

} // namespace

struct SelectionFilter::Node {
    enum class Kind { And, Or, Xor, Not, Group, Extended };
    Kind kind = Kind::And;
    std::vector<std::unique_ptr<Node>> parts;
    int code = 0;
    std::string sign;
    Value value;

    bool holds(const Candidate& candidate) const {
        const auto partHolds = [&](const std::unique_ptr<Node>& part) { return part->holds(candidate); };
        switch (kind) {
        case Kind::And: return std::ranges::all_of(parts, partHolds);
        case Kind::Or: return std::ranges::any_of(parts, partHolds);
        case Kind::Xor: return std::ranges::count_if(parts, partHolds) == 1;
        case Kind::Not: return !std::ranges::all_of(parts, partHolds);
        case Kind::Extended: return hasApplications(candidate);
        case Kind::Group: break;
        }
        if (code < 10 || code >= 60) return compareValues(candidate.group(code), sign, value);
        for (const Value& group : lisp::ListView(candidate.list()))
            if (group.car().isInteger() && group.car().asInteger() == code &&
                compareValues(group.cdr(), sign, value))
                return true;
        return false;
    }
    bool hasApplications(const Candidate& candidate) const {
        for (const Value& application : lisp::ListView(value)) {
            const Value& name = application.isCons() ? application.car() : application;
            if (!name.isText() || !candidate.hasExtendedData(name.asText())) return false;
        }
        return true;
    }
};

namespace {

using Node = SelectionFilter::Node;

struct Bracket {
    const char* open;
    const char* close;
    Node::Kind kind;
};
constexpr Bracket brackets[] = {
    {"<AND", "AND>", Node::Kind::And},
    {"<OR", "OR>", Node::Kind::Or},
    {"<XOR", "XOR>", Node::Kind::Xor},
    {"<NOT", "NOT>", Node::Kind::Not},
};
constexpr std::string_view comparisons[] = {"*", "=", "!=", "/=", "<>", "<", "<=", ">", ">=", "&", "&="};

[[noreturn]] void refuse(const Value& item) {
    throw Error("bad SSGET list: " + lisp::prin1Text(item));
}

void checkSigns(std::string_view signs, const Value& item) {
    for (std::size_t at = 0; at <= signs.size();) {
        const std::size_t comma = std::min(signs.find(',', at), signs.size());
        if (std::ranges::find(comparisons, signs.substr(at, comma - at)) == std::end(comparisons))
            refuse(item);
        at = comma + 1;
    }
}

constexpr int deepestNesting = 200;

// Groups up to the closing bracket, or to the end of the list without one.
void parse(Node& node, const Value*& rest, const Bracket* bracket, int depth) {
    std::string sign;
    for (; rest->isCons(); rest = &rest->cdr()) {
        const Value& item = rest->car();
        if (!item.isCons() || !item.car().isInteger()) refuse(item);
        auto part = std::make_unique<Node>();
        part->code = item.car().asInteger();
        part->value = item.cdr();
        if (part->code != -4) {
            part->kind = part->code == -3 ? Node::Kind::Extended : Node::Kind::Group;
            part->sign = std::exchange(sign, {});
            node.parts.push_back(std::move(part));
            continue;
        }
        if (!item.cdr().isText()) refuse(item);
        const std::string text = asciiUpperCase(item.cdr().asText());
        if (bracket && text == bracket->close) return;
        const auto* open = std::ranges::find_if(brackets, [&](const Bracket& b) { return text == b.open; });
        if (open == std::end(brackets)) {
            checkSigns(text, item);
            sign = text;
            continue;
        }
        part->kind = open->kind;
        rest = &rest->cdr();
        if (depth == deepestNesting) refuse(item);
        parse(*part, rest, open, depth + 1);
        if (!rest->isCons()) refuse(item); // never closed
        node.parts.push_back(std::move(part));
    }
}

} // namespace

SelectionFilter::SelectionFilter(const Value& list) : m_root(std::make_unique<Node>()) {
    const Value* rest = &list;
    parse(*m_root, rest, nullptr, 0);
    if (!rest->isNil()) refuse(list);
}

SelectionFilter::~SelectionFilter() = default;

bool SelectionFilter::matches(AcDbObjectId id) const {
    const Candidate candidate(id);
    return candidate.entity() && m_root->holds(candidate);
}

} // namespace veldrin::scripting
