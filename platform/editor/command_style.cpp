// STYLE, LINETYPE

#include "drawing/AcDbTextStyleTable.h"
#include "drawing/acdb.h"
#include "editor/command_names.h"
#include "editor/command_support.h"
#include "editor/command_tables.h"
#include "editor/standard_linetypes.h"

#include <cmath>
#include <fmt/format.h>
#include <numbers>

namespace veldrin {

namespace {

using StylePointer = AcDbObjectPointer<AcDbTextStyleTableRecord>;

// What the answers make of a style; written at the end, so that a cancelled command changes nothing.
struct StyleValues {
    std::string font;
    double height = 0.0;
    double width = 1.0;
    double oblique = 0.0;
    bool backwards = false;
    bool upsideDown = false;
};

StyleValues valuesOf(AcDbObjectId id) {
    const StylePointer style(id);
    if (!style) return {"txt"};
    return {style->fileName(),       style->textSize(),    style->xScale(),
            style->obliquingAngle(), style->isBackwards(), style->isUpsideDown()};
}

AcDbObjectId addStyle(CommandContext& context, const std::string& name) {
    const AcDbObjectPointer<AcDbTextStyleTable> table(context.database.textStyleTableId(), AcDb::kForWrite);
    StylePointer style;
    style.create();
    requireOk(style->setName(name), "Invalid style name");
    AcDbObjectId id;
    requireOk(table ? table->add(id, style.object()) : table.openStatus(), "The style cannot be added");
    return id;
}

void store(CommandContext& context, AcDbObjectId id, const StyleValues& values) {
    const StylePointer style(id, AcDb::kForWrite);
    requireOk(style.openStatus(), "The style cannot be opened");
    style->setFileName(values.font.c_str());
    style->setTextSize(values.height);
    style->setXScale(values.width);
    style->setObliquingAngle(values.oblique);
    style->setIsBackwards(values.backwards);
    style->setIsUpsideDown(values.upsideDown);
    HeaderVariables header = context.database.header();
    header.textstyle = id;
    context.database.setHeader(header);
}

Task<bool> askYesNo(CommandContext& context, const char* prompt, bool proposal) {
    const Answer answer = co_await context.input.keyword(prompt, "Yes No");
    co_return answer.isNone() ? proposal : answer.isKeyword("Yes");
}

Task<void> styleCommand(CommandContext& context) {
    const Answer named = co_await context.input.string("Enter name of text style or [?] <current>:");
    const AcDbObjectId current = context.database.header().textstyle;
    AcDbObjectId id = named.isNone() ? current : recordNamed(context.database.textStyleTableId(), named.text);
    StyleValues values = valuesOf(id);

    const Answer font = co_await context.input.string("Specify full font name or font filename <proposal>:");
    if (!font.isNone()) values.font = font.text;
    const Question forHeight{
        Want::Distance, "Specify height of text <proposal>:", {}, kRefuseNegative, nullptr};
    const Answer height = co_await context.input.ask(forHeight);
    if (!height.isNone()) values.height = height.real;
    const Question forWidth{
        Want::Real, "Specify width factor <proposal>:", {}, kRefuseZero | kRefuseNegative, nullptr};
    const Answer width = co_await context.input.ask(forWidth);
    if (!width.isNone()) values.width = width.real;
    const Answer oblique = co_await context.input.angle("Specify obliquing angle <proposal>:");
    if (!oblique.isNone()) values.oblique = oblique.real;
    if (std::abs(values.oblique) > 85.0 * std::numbers::pi / 180.0)
        failCommand("The obliquing angle must lie between -85 and 85 degrees.");
    values.backwards =
        co_await askYesNo(context, "Display text backwards? [Yes/No] <proposal>:", values.backwards);
    values.upsideDown =
        co_await askYesNo(context, "Display text upside-down? [Yes/No] <proposal>:", values.upsideDown);

    if (id.isNull()) id = addStyle(context, named.text);
    store(context, id, values);
    say(context, fmt::format("\"{}\" is now the current text style.", StylePointer(id)->getName()));
}

Task<void> loadTypes(CommandContext& context) {
    const Answer names = co_await context.input.string("Enter linetype(s) to load:");
    co_await context.input.string("Enter name of linetype file to search <standard>:");
    for (const std::string& name : namesOf(names.text)) {
        const int loaded = loadLinetypes(context.database, name);
        if (loaded == 0)
            say(context, fmt::format("Linetype \"{}\" not found.", name));
        else
            say(context, fmt::format("{} linetype(s) loaded.", loaded));
    }
}

Task<void> setType(CommandContext& context) {
    const Answer name = co_await context.input.string("Specify linetype name <ByLayer>:");
    const AcDbObjectId id =
        findOrLoadLinetype(context.database, name.text.empty() ? std::string("ByLayer") : name.text);
    if (id.isNull()) co_return say(context, fmt::format("Linetype \"{}\" not found.", name.text));
    HeaderVariables header = context.database.header();
    header.celtype = id;
    context.database.setHeader(header);
}

void listTypes(CommandContext& context) {
    for (const AcDbObjectId id : recordsMatching(context.database.linetypeTableId(), "*")) {
        const AcDbObjectPointer<AcDbSymbolTableRecord> record(id);
        if (record) say(context, record->getName());
    }
}

Task<void> linetypeCommand(CommandContext& context) {
    for (;;) {
        const Answer option = co_await context.input.keyword("Enter an option [?/Load/Set]:", "? Load Set");
        if (option.isNone()) co_return;
        if (option.text == "Load")
            co_await loadTypes(context);
        else if (option.text == "Set")
            co_await setType(context);
        else
            listTypes(context);
    }
}

constexpr CommandRow rows[] = {
    {"STYLE", "ST", styleCommand, 0},
    {"LINETYPE", "LT", linetypeCommand, 0},
};

} // namespace

std::span<const CommandRow> styleCommands() {
    return rows;
}

} // namespace veldrin
