#include "editor/VariableTable.h"

#include <fmt/format.h>

namespace veldrin {

namespace {

// A table reads as: name, home, what holds at first, least, greatest, who may set it.
enum class Access { Free, ReadOnly };

struct IntegerRow {
    const char* name;
    VariableHome home;
    std::int32_t initial;
    std::int32_t least, greatest;
    Access access = Access::Free;
};

struct RealRow {
    const char* name;
    VariableHome home;
    double initial;
    double least, greatest;
    Access access = Access::Free;
};

struct TextRow {
    const char* name;
    VariableHome home;
    const char* initial;
    Access access = Access::Free;
};

struct PointRow {
    const char* name;
    VariableKind kind;
    VariableHome home;
    AcGePoint3d initial;
    Access access = Access::Free;
};

constexpr auto S = VariableHome::Session;
constexpr auto D = VariableHome::Drawing;
constexpr auto kReadOnly = Access::ReadOnly;
constexpr double kFar = 1e99;

constexpr IntegerRow kIntegers[] = {
    {"ATTDIA", S, 0, 0, 1},    {"AUTOSNAP", S, 63, 0, 255}, {"BLIPMODE", S, 0, 0, 1},
    {"CMDDIA", S, 1, 0, 1},    {"CMDECHO", S, 1, 0, 1},     {"CVPORT", D, 2, 1, 32767},
    {"DELOBJ", S, 1, -3, 3},   {"DIMZIN", D, 0, 0, 15},     {"DRAGMODE", S, 2, 0, 2},
    {"ERRNO", S, 0, 0, 32767}, {"EXPERT", S, 0, 0, 5},      {"FILEDIA", S, 1, 0, 1},
    {"GRIDMODE", D, 0, 0, 1},  {"HIGHLIGHT", S, 1, 0, 1},   {"LIMCHECK", D, 0, 0, 1},
    {"MENUECHO", S, 0, 0, 15}, {"NOMUTT", S, 0, 0, 1},      {"OSMODE", S, 0, 0, 32767},
    {"PICKADD", S, 2, 0, 2},   {"PICKAUTO", S, 1, 0, 7},    {"PICKBOX", S, 3, 0, 50},
    {"PICKFIRST", S, 1, 0, 1}, {"PLINETYPE", S, 2, 0, 2},   {"QTEXTMODE", D, 0, 0, 1},
    {"REGENMODE", D, 1, 0, 1}, {"SAVETIME", S, 10, 0, 600}, {"SNAPMODE", D, 0, 0, 1},
    {"TEXTEVAL", S, 0, 0, 1},  {"TEXTFILL", S, 1, 0, 1},    {"TILEMODE", D, 1, 0, 1},
    {"UCSICON", D, 3, 0, 3},
};

constexpr RealRow kReals[] = {
    {"CHAMFERA", D, 0.5, 0.0, kFar},
    {"CHAMFERB", D, 0.5, 0.0, kFar},
    {"CIRCLERAD", S, 0.0, 0.0, kFar},
    {"DIMASZ", D, 0.18, 0.0, kFar},
    {"DIMSCALE", D, 1.0, 0.0, kFar},
    {"DIMTXT", D, 0.18, 0.0, kFar},
    {"FILLETRAD", D, 0.5, 0.0, kFar},
    {"OFFSETDIST", S, 1.0, -1.0, kFar},
    {"SNAPANG", D, 0.0, -kFar, kFar},
    {"THICKNESS", D, 0.0, -kFar, kFar},
    {"VIEWSIZE", D, 9.0, 0.0, kFar, kReadOnly},
    {"VIEWTWIST", D, 0.0, -kFar, kFar, kReadOnly},
};

constexpr TextRow kTexts[] = {
    {"CTAB", D, "Model"},          {"DIMSTYLE", D, "Standard", kReadOnly},
    {"MENUNAME", S, ""},           {"SAVEFILE", D, "", kReadOnly},
    {"SAVEFILEPATH", S, ""},       {"SHPNAME", S, ""},
    {"UCSNAME", D, "", kReadOnly},
};

// How many of each there are: USERI1 to USERI5 and so on.
constexpr int kUserVariables = 5;

std::vector<PointRow> points() {
    return {
        {"INSBASE", VariableKind::Point3d, D, {}},
        {"LASTPOINT", VariableKind::Point3d, D, {}},
        {"LIMMAX", VariableKind::Point2d, D, {12.0, 9.0, 0.0}},
        {"LIMMIN", VariableKind::Point2d, D, {}},
        {"SCREENSIZE", VariableKind::Point2d, S, {1024.0, 768.0, 0.0}, kReadOnly},
        {"SNAPBASE", VariableKind::Point2d, D, {}},
        {"SNAPUNIT", VariableKind::Point2d, D, {0.5, 0.5, 0.0}},
        {"VIEWCTR", VariableKind::Point3d, D, {6.0, 4.5, 0.0}, kReadOnly},
        {"VIEWDIR", VariableKind::Point3d, D, {0.0, 0.0, 1.0}, kReadOnly},
    };
}

VariableRow kept(std::string name, VariableKind kind, VariableHome home, VariableValue initial,
                 Access access) {
    VariableRow row;
    row.name = std::move(name);
    row.kind = kind;
    row.home = home;
    row.readOnly = access == Access::ReadOnly;
    row.initial = std::move(initial);
    return row;
}

template<class Number>
VariableRow keptNumber(std::string name, VariableKind kind, VariableHome home, Number initial, Number least,
                       Number greatest, Access access) {
    VariableRow row = kept(std::move(name), kind, home, initial, access);
    row.least = least;
    row.greatest = greatest;
    return row;
}

} // namespace

void addKeptVariables(std::vector<VariableRow>& rows) {
    for (const IntegerRow& r : kIntegers)
        rows.push_back(
            keptNumber(r.name, VariableKind::Integer, r.home, r.initial, r.least, r.greatest, r.access));
    for (const RealRow& r : kReals)
        rows.push_back(
            keptNumber(r.name, VariableKind::Real, r.home, r.initial, r.least, r.greatest, r.access));
    for (const TextRow& r : kTexts)
        rows.push_back(kept(r.name, VariableKind::Text, r.home, std::string(r.initial), r.access));
    for (const PointRow& r : points()) {
        const VariableValue initial =
            r.kind == VariableKind::Point2d ? VariableValue(r.initial.convert2d()) : VariableValue(r.initial);
        rows.push_back(kept(r.name, r.kind, r.home, initial, r.access));
    }
    for (int i = 1; i <= kUserVariables; ++i) {
        rows.push_back(keptNumber<std::int32_t>(fmt::format("USERI{}", i), VariableKind::Integer, D, 0,
                                                -32768, 32767, Access::Free));
        rows.push_back(kept(fmt::format("USERR{}", i), VariableKind::Real, D, 0.0, Access::Free));
        rows.push_back(kept(fmt::format("USERS{}", i), VariableKind::Text, D, std::string(), Access::Free));
    }
}

} // namespace veldrin
