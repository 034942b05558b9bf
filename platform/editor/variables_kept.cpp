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
    {"ATTDIA", S, 0, 0, 1},         {"AUTOSNAP", S, 63, 0, 255},    {"BLIPMODE", S, 0, 0, 1},
    {"CMDDIA", S, 1, 0, 1},         {"CMDECHO", S, 1, 0, 1},        {"CVPORT", D, 2, 1, 32767},
    {"DELOBJ", S, 1, -3, 3},        {"DIMZIN", D, 0, 0, 15},        {"DRAGMODE", S, 2, 0, 2},
    {"ERRNO", S, 0, 0, 32767},      {"EXPERT", S, 0, 0, 5},         {"FILEDIA", S, 1, 0, 1},
    {"GRIDMODE", D, 0, 0, 1},       {"HIGHLIGHT", S, 1, 0, 1},      {"LIMCHECK", D, 0, 0, 1},
    {"MENUECHO", S, 0, 0, 15},      {"NOMUTT", S, 0, 0, 1},         {"OSMODE", S, 0, 0, 32767},
    {"PICKADD", S, 2, 0, 2},        {"PICKAUTO", S, 1, 0, 7},       {"PICKBOX", S, 3, 0, 50},
    {"PICKFIRST", S, 1, 0, 1},      {"PLINETYPE", S, 2, 0, 2},      {"QTEXTMODE", D, 0, 0, 1},
    {"REGENMODE", D, 1, 0, 1},      {"SAVETIME", S, 10, 0, 600},    {"SNAPMODE", D, 0, 0, 1},
    {"TEXTEVAL", S, 0, 0, 1},       {"TEXTFILL", S, 1, 0, 1},       {"TILEMODE", D, 1, 0, 1},
    {"UCSICON", D, 3, 0, 3},        {"APERTURE", S, 10, 1, 50},     {"ATTMODE", D, 1, 0, 2},
    {"COORDS", S, 1, 0, 2},         {"CHAMMODE", S, 0, 0, 1},       {"DIMASSOC", D, 2, 0, 2},
    {"DIMCLRD", D, 0, 0, 256},      {"DIMDEC", D, 4, 0, 8},         {"DIMLUNIT", D, 2, 1, 6},
    {"DIMTAD", D, 0, 0, 4},         {"DWGCHECK", S, 1, 0, 3},       {"EDGEMODE", S, 0, 0, 1},
    {"FACETRES", D, 0, 0, 10},      {"GRIPS", S, 1, 0, 2},          {"GRIPSIZE", S, 5, 1, 255},
    {"HPASSOC", S, 1, 0, 1},        {"ISOLINES", D, 4, 0, 2047},    {"LAYLOCKFADECTL", S, 50, -90, 90},
    {"LWDEFAULT", S, 25, 0, 211},   {"LWDISPLAY", D, 0, 0, 1},      {"LWUNITS", S, 1, 0, 1},
    {"MAXACTVP", D, 64, 2, 64},     {"MAXSORT", S, 1000, 0, 32767}, {"OSNAPCOORD", S, 2, 0, 2},
    {"PEDITACCEPT", S, 0, 0, 1},    {"PICKSTYLE", S, 1, 0, 3},      {"POLARMODE", S, 0, 0, 15},
    {"PROJMODE", S, 1, 0, 2},       {"PROXYNOTICE", S, 1, 0, 1},    {"PROXYSHOW", S, 1, 0, 2},
    {"PSLTSCALE", D, 1, 0, 1},      {"RASTERPREVIEW", S, 1, 0, 1},  {"SDI", S, 0, 0, 4},
    {"SHORTCUTMENU", S, 11, 0, 31}, {"SORTENTS", D, 127, 0, 127},   {"SPLFRAME", D, 0, 0, 1},
    {"SURFTAB1", D, 6, 2, 32766},   {"SURFTAB2", D, 6, 2, 32766},   {"TRIMMODE", S, 1, 0, 1},
    {"TOOLTIPS", S, 1, 0, 1},       {"UNITMODE", D, 0, 0, 1},       {"VISRETAIN", D, 1, 0, 1},
    {"XLOADCTL", S, 2, 0, 2},       {"ZOOMFACTOR", S, 60, 3, 100},
};

constexpr RealRow kReals[] = {
    {"CHAMFERA", D, 0.5, 0.0, kFar},
    {"CHAMFERB", D, 0.5, 0.0, kFar},
    {"CIRCLERAD", S, 0.0, 0.0, kFar},
    {"DIMASZ", D, 0.18, 0.0, kFar},
    {"DIMSCALE", D, 1.0, 0.0, kFar},
    {"DIMTXT", D, 0.18, 0.0, kFar},
    {"CMLSCALE", D, 1.0, -kFar, kFar},
    {"DIMEXE", D, 0.18, 0.0, kFar},
    {"DIMEXO", D, 0.0625, 0.0, kFar},
    {"DIMGAP", D, 0.09, -kFar, kFar},
    {"DIMLFAC", D, 1.0, -kFar, kFar},
    {"FILLETRAD", D, 0.5, 0.0, kFar},
    {"HPANG", S, 0.0, -kFar, kFar},
    {"HPSCALE", S, 1.0, 1e-99, kFar},
    {"LENSLENGTH", D, 50.0, 0.0, kFar, kReadOnly},
    {"PLINEWID", D, 0.0, 0.0, kFar},
    {"POLARANG", S, 1.5707963267948966, 0.0, kFar},
    {"SKETCHINC", D, 0.1, 0.0, kFar},
    {"TRACEWID", D, 0.05, 0.0, kFar},
    {"OFFSETDIST", S, 1.0, -1.0, kFar},
    {"SNAPANG", D, 0.0, -kFar, kFar},
    {"THICKNESS", D, 0.0, -kFar, kFar},
    {"VIEWSIZE", D, 9.0, 0.0, kFar, kReadOnly},
    {"VIEWTWIST", D, 0.0, -kFar, kFar, kReadOnly},
};

constexpr TextRow kTexts[] = {
    {"CANNOSCALE", D, "1:1"},
    {"DIMBLK", D, ""},
    {"DIMTXSTY", D, "Standard"},
    {"HPNAME", S, "ANSI31"},
    {"INSNAME", S, ""},
    {"REFEDITNAME", S, "", kReadOnly},
    {"DWGCODEPAGE", D, "UTF-8", kReadOnly},
    {"SYSCODEPAGE", S, "UTF-8", kReadOnly},
    {"PRODUCT", S, "Veldrin", kReadOnly},
    {"CTAB", D, "Model"},
    {"DIMSTYLE", D, "Standard", kReadOnly},
    {"MENUNAME", S, ""},
    {"SAVEFILE", D, "", kReadOnly},
    {"SAVEFILEPATH", S, ""},
    {"SHPNAME", S, ""},
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
