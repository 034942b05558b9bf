#include "editor/standard_linetypes.h"

#include "drawing/AcDbLinetypeTable.h"
#include "editor/command_names.h"
#include "lisp/WildMatch.h"
#include "system/AsciiCase.h"

#include <cctype>
#include <vector>

namespace veldrin {

namespace {

struct StandardLinetype {
    const char* name;
    const char* comments;
    std::vector<double> dashes; // inches: dash above 0, gap below, dot 0
};

const std::vector<StandardLinetype>& standardLinetypes() {
    static const std::vector<StandardLinetype> types = {
        {"BORDER", "Border __ __ . __ __ .", {0.5, -0.25, 0.5, -0.25, 0.0, -0.25}},
        {"CENTER", "Center ____ _ ____ _ ____", {1.25, -0.25, 0.25, -0.25}},
        {"DASHDOT", "Dash dot __ . __ . __", {0.5, -0.25, 0.0, -0.25}},
        {"DASHED", "Dashed __ __ __ __ __", {0.5, -0.25}},
        {"DIVIDE", "Divide __ . . __ . .", {0.5, -0.25, 0.0, -0.25, 0.0, -0.25}},
        {"DOT", "Dot . . . . . . . . .", {0.0, -0.25}},
        {"HIDDEN", "Hidden _ _ _ _ _ _ _", {0.25, -0.125}},
        {"PHANTOM", "Phantom ______ __ __ ______", {1.25, -0.25, 0.25, -0.25, 0.25, -0.25}},
    };
    return types;
}

struct Size {
    const char* suffix;
    const char* comment;
    double factor;
};
constexpr Size sizes[] = {{"", "", 1.0}, {"2", " (half size)", 0.5}, {"X2", " (double size)", 2.0}};

AcDbObjectId add(AcDbDatabase& database, const StandardLinetype& type, const Size& size) {
    const AcDbObjectPointer<AcDbLinetypeTable> table(database.linetypeTableId(), AcDb::kForWrite);
    AcDbObjectPointer<AcDbLinetypeTableRecord> record;
    record.create();
    record->setName(std::string(type.name) + size.suffix);
    record->setComments(std::string(type.comments) + size.comment);
    std::vector<double> dashes = type.dashes;
    for (double& dash : dashes) dash *= size.factor;
    record->setDashes(std::move(dashes));
    AcDbObjectId id;
    if (!table || table->add(id, record.object()) != Acad::eOk) return {};
    return id;
}

} // namespace

AcDbObjectId findOrLoadLinetype(AcDbDatabase& database, const std::string& name) {
    const AcDbObjectId existing = recordNamed(database.linetypeTableId(), name);
    if (!existing.isNull()) return existing;
    std::string literal; // no character of the name is a wild card
    for (const char c : name)
        literal += std::isalnum(static_cast<unsigned char>(c)) ? std::string(1, c) : '`' + std::string(1, c);
    return loadLinetypes(database, literal) > 0 ? recordNamed(database.linetypeTableId(), name)
                                                : AcDbObjectId();
}

int loadLinetypes(AcDbDatabase& database, std::string_view patterns) {
    const std::string wanted = asciiUpperCase(patterns);
    int loaded = 0;
    for (const StandardLinetype& type : standardLinetypes())
        for (const Size& size : sizes) {
            const std::string name = std::string(type.name) + size.suffix;
            if (!lisp::wildMatch(name, wanted)) continue;
            if (!recordNamed(database.linetypeTableId(), name).isNull() ||
                !add(database, type, size).isNull())
                ++loaded;
        }
    return loaded;
}

} // namespace veldrin
