// ssget ssadd ssdel sslength ssname ssmemb ssnamex sssetfirst ssgetfirst

#include "drawing/AcDbBlockTable.h"
#include "editor/CommandRegistry.h"
#include "editor/command_pick.h"
#include "runtime/Host.h"
#include "scripting/SelectionFilter.h"
#include "scripting/drawing_values.h"
#include "scripting/tables.h"
#include "system/AsciiCase.h"

#include <algorithm>

namespace veldrin::scripting {

namespace {

using lisp::Args;
using lisp::Engine;
using lisp::Error;
using lisp::Kind;
using lisp::Value;

using Ids = std::vector<AcDbObjectId>;

SelectionSets& sets() {
    return Host::current().commands().selectionSets();
}

// "_X+.:E:S:L" taken apart.
struct Mode {
    std::string way; // "X", "W" ...; empty: the user selects
    bool single = false;
    bool unlockedOnly = false;
};

Mode modeOf(std::string_view text) {
    Mode mode;
    std::string rest = asciiUpperCase(text);
    std::erase_if(rest, [](char c) { return c == '_' || c == '+' || c == '.' || c == '-'; });
    while (!rest.empty()) {
        const std::size_t mark = rest.rfind(':');
        if (mark == rest.npos) break;
        const std::string flag = rest.substr(mark + 1);
        mode.single = mode.single || flag == "S";
        mode.unlockedOnly = mode.unlockedOnly || flag == "L";
        rest.erase(mark);
    }
    mode.way = rest;
    return mode;
}

Ids allEntities(AcDbDatabase& database) {
    Ids ids;
    for (const AcDbObjectId space : {database.modelSpaceId(), database.paperSpaceId()}) {
        const AcDbObjectPointer<AcDbBlockTableRecord> block(space);
        if (block) std::ranges::copy(block->entityIds(), std::back_inserter(ids));
    }
    std::erase_if(ids, [](AcDbObjectId id) { return id.isErased(); });
    std::ranges::reverse(ids); // the youngest first
    return ids;
}

std::vector<AcGePoint3d> pointsOf(const Value& list) {
    std::vector<AcGePoint3d> points;
    for (const Value& item : lisp::ListView(list))
        points.push_back(userToWorld(toPoint(lisp::pointOf(item))));
    return points;
}

// A filter is a list of groups, nil for none.
bool isFilter(const Value& value) {
    return value.isNil() || (value.isCons() && value.car().isCons() && value.car().car().isInteger());
}

// What the arguments behind the mode ask for; `next` moves behind those that were used.
Ids byWay(const std::string& way, Args args, std::size_t& next) {
    AcDbDatabase& database = currentDatabase();
    if (way == "X") return allEntities(database);
    if (way == "A") return visibleEntities(database);
    if (way == "I") return sets().implied();
    if (way == "P") {
        Ids ids = sets().previous();
        std::erase_if(ids, [&](AcDbObjectId id) { return id.isErased() || id.database() != &database; });
        return ids;
    }
    if (way == "L") {
        const AcDbObjectId last = lastEntity(database);
        return last.isNull() ? Ids() : Ids{last};
    }
    if (way == "W" || way == "C") {
        const AcGePoint3d from = userToWorld(pointOf(args, next)), to = userToWorld(pointOf(args, next + 1));
        next += 2;
        return entitiesInRegion(database, way == "W" ? RegionKind::Inside : RegionKind::Crossing,
                                boxCorners(database, from, to));
    }
    if (way == "WP" || way == "CP" || way == "F") {
        const std::vector<AcGePoint3d> polygon = pointsOf(args.list(next++));
        const RegionKind kind = way == "WP"   ? RegionKind::Inside
                                : way == "CP" ? RegionKind::Crossing
                                              : RegionKind::Fence;
        return entitiesInRegion(database, kind, polygon);
    }
    throw Error("bad SSGET mode: " + way);
}

Ids byUser(const Mode& mode) {
    try {
        return Host::current().commands().selectNow(mode.single);
    } catch (const InputCancelled&) {
        throw Error::breakRequested();
    }
}

Value ssget(Engine&, Args args) {
    AcDbDatabase& database = currentDatabase();
    std::size_t next = 0;
    Mode mode;
    if (args[0].isText()) {
        mode = modeOf(args.text(0));
        next = 1;
    }
    Ids ids;
    lisp::Point point;
    if (next == 0 && lisp::readPoint(args[0], point)) {
        const AcDbObjectId hit = entityAt(database, userToWorld(toPoint(point)));
        if (!hit.isNull()) ids = {hit};
        next = 1;
    } else if (!mode.way.empty())
        ids = byWay(mode.way, args, next);
    const Value& filterList = args[next];
    if (!isFilter(filterList)) args.wrong(next, "a filter list:");
    const SelectionFilter filter(filterList);
    if (next + 1 < args.size()) throw Error::tooManyArguments();

    const bool asksUser = mode.way.empty() && next == (args[0].isText() ? 1U : 0U);
    if (asksUser) ids = byUser(mode);
    if (!filterList.isNil()) std::erase_if(ids, [&](AcDbObjectId id) { return !filter.matches(id); });
    if (mode.unlockedOnly) std::erase_if(ids, [](AcDbObjectId id) { return isOnLockedLayer(id); });
    if (!ids.empty() && mode.way != "X" && mode.way != "I") sets().setPrevious(ids);
    return selectionSetValue(ids);
}

Value ssadd(Engine&, Args args) {
    if (args.size() == 0) return Value::pickSet(sets().make());
    const AcDbObjectId id = idOf(args, 0);
    if (args.size() == 1) return Value::pickSet(sets().make({id}));
    selectionSetOf(args, 1).add(id);
    return args[1];
}

Value ssdel(Engine&, Args args) {
    const AcDbObjectId id = idOf(args, 0);
    return selectionSetOf(args, 1).remove(id) ? args[1] : Value();
}

Value sslength(Engine&, Args args) {
    return Value::integer(static_cast<std::int32_t>(selectionSetOf(args, 0).ids().size()));
}

Value ssname(Engine&, Args args) {
    const Ids& ids = selectionSetOf(args, 0).ids();
    const double index = args.number(1);
    return index >= 0.0 && index < static_cast<double>(ids.size())
               ? enameOf(ids[static_cast<std::size_t>(index)])
               : Value();
}

Value ssmemb(Engine&, Args args) {
    const AcDbObjectId id = idOf(args, 0);
    return selectionSetOf(args, 1).contains(id) ? args[0] : Value();
}

// How each was selected is not kept: (0 NAME 0), as for entities that were not picked.
Value ssnamex(Engine&, Args args) {
    const Ids& ids = selectionSetOf(args, 0).ids();
    lisp::ListBuilder list;
    for (std::size_t i = 0; i < ids.size(); ++i)
        if (args.size() < 2 || args.integer(1) == static_cast<std::int32_t>(i))
            list.add(lisp::list(Value::integer(0), enameOf(ids[i]), Value::integer(0)));
    return list.finish();
}

// (sssetfirst GRIPS PICKED): both are the same set here.
Value sssetfirst(Engine&, Args args) {
    const std::size_t which = args.has(1) ? 1 : 0;
    sets().setImplied(args.has(which) ? selectionSetOf(args, which).ids() : Ids());
    return lisp::list(args[0], args[1]);
}

Value ssgetfirst(Engine&, Args) {
    return lisp::list(Value(), selectionSetValue(sets().implied()));
}

constexpr lisp::BuiltinRow rows[] = {
    {"ssget", 0, 4, ssget},       {"ssadd", 0, 2, ssadd},           {"ssdel", 2, 2, ssdel},
    {"sslength", 1, 1, sslength}, {"ssname", 2, 2, ssname},         {"ssmemb", 2, 2, ssmemb},
    {"ssnamex", 1, 2, ssnamex},   {"sssetfirst", 1, 2, sssetfirst}, {"ssgetfirst", 0, 0, ssgetfirst},
};

} // namespace

std::span<const lisp::BuiltinRow> selectionFunctions() {
    return rows;
}

} // namespace veldrin::scripting
