// TEXT, ATTDEF, POINT

#include "drawing/AcDbAttribute.h"
#include "drawing/AcDbPoint.h"
#include "drawing/AcDbTextStyleTable.h"
#include "editor/command_names.h"
#include "editor/command_support.h"
#include "editor/command_tables.h"

#include <fmt/format.h>

namespace veldrin {

namespace {

struct Justification {
    const char* keyword;
    AcDb::TextHorzMode horizontal;
    AcDb::TextVertMode vertical;
};

constexpr Justification justifications[] = {
    {"Left", AcDb::kTextLeft, AcDb::kTextBase},    {"Align", AcDb::kTextAlign, AcDb::kTextBase},
    {"Fit", AcDb::kTextFit, AcDb::kTextBase},      {"Center", AcDb::kTextCenter, AcDb::kTextBase},
    {"Middle", AcDb::kTextMid, AcDb::kTextBase},   {"Right", AcDb::kTextRight, AcDb::kTextBase},
    {"TL", AcDb::kTextLeft, AcDb::kTextTop},       {"TC", AcDb::kTextCenter, AcDb::kTextTop},
    {"TR", AcDb::kTextRight, AcDb::kTextTop},      {"ML", AcDb::kTextLeft, AcDb::kTextVertMid},
    {"MC", AcDb::kTextCenter, AcDb::kTextVertMid}, {"MR", AcDb::kTextRight, AcDb::kTextVertMid},
    {"BL", AcDb::kTextLeft, AcDb::kTextBottom},    {"BC", AcDb::kTextCenter, AcDb::kTextBottom},
    {"BR", AcDb::kTextRight, AcDb::kTextBottom},
};

constexpr const char* justifyKeywords = "Left Align Fit Center Middle Right TL TC TR ML MC MR BL BC BR";
constexpr const char* startKeywords =
    "Justify Style Left Align Fit Center Middle Right TL TC TR ML MC MR BL BC BR";

const Justification* justificationNamed(const std::string& keyword) {
    for (const Justification& row : justifications)
        if (keyword == row.keyword) return &row;
    return nullptr;
}

// Where and how a text stands, as it was answered.
struct TextPlace {
    AcDbObjectId style;
    const Justification* justification = &justifications[0];
    AcGePoint3d point;
    AcGePoint3d end; // of a text between two points
    double height = 0.0;
    double rotation = 0.0;

    bool isAligned() const { return justification->horizontal == AcDb::kTextAlign; }
    bool isBetween() const { return isAligned() || justification->horizontal == AcDb::kTextFit; }
};

Task<void> askStyle(CommandContext& context, TextPlace& place) {
    const Answer name = co_await context.input.string("Enter style name:");
    if (name.isNone()) co_return;
    const AcDbObjectId style = recordNamed(context.database.textStyleTableId(), name.text);
    if (style.isNull()) failCommand(fmt::format("Text style \"{}\" not found.", name.text));
    place.style = style;
    HeaderVariables header = context.database.header();
    header.textstyle = style;
    context.database.setHeader(header);
}

// The points that hold the text.
Task<void> askPoints(CommandContext& context, TextPlace& place) {
    if (!place.isBetween()) {
        place.point = co_await requirePoint(context, "Specify point of text:");
        co_return;
    }
    place.point = co_await requirePoint(context, "Specify first endpoint of text baseline:");
    place.end = co_await requirePoint(context, "Specify second endpoint of text baseline:", &place.point);
}

Task<void> askStart(CommandContext& context, TextPlace& place) {
    for (;;) {
        const Answer start = co_await context.input.point(
            "Specify start point of text or [Justify/Style]:", nullptr, startKeywords);
        if (start.isNone()) throw InputCancelled();
        if (start.kind == Answer::Kind::Point) {
            place.point = start.point;
            co_return;
        }
        if (start.isKeyword("Style")) {
            co_await askStyle(context, place);
            continue;
        }
        std::string keyword = start.text;
        if (start.isKeyword("Justify")) {
            const Answer option = co_await context.input.keyword(
                "Enter an option [Left/Align/Fit/Center/Middle/Right/TL/TC/TR/ML/MC/MR/BL/BC/BR]:",
                justifyKeywords);
            if (option.isNone()) continue;
            keyword = option.text;
        }
        place.justification = justificationNamed(keyword);
        co_return co_await askPoints(context, place);
    }
}

// A style with a height of its own leaves none to ask for.
Task<void> askHeight(CommandContext& context, TextPlace& place) {
    const AcDbObjectPointer<AcDbTextStyleTableRecord> style(place.style, AcDb::kForRead, true);
    place.height = style ? style->textSize() : 0.0;
    if (place.height > 0.0 || place.isAligned()) co_return;
    HeaderVariables header = context.database.header();
    const std::string prompt = fmt::format("Specify height <{:.4f}>:", header.textsize);
    const Question question{Want::Distance, prompt, {}, kRefuseZero | kRefuseNegative, &place.point};
    const Answer height = co_await context.input.ask(question);
    place.height = height.isNone() ? header.textsize : height.real;
    if (place.height == header.textsize) co_return;
    header.textsize = place.height;
    context.database.setHeader(header);
}

Task<TextPlace> askPlace(CommandContext& context) {
    TextPlace place;
    place.style = context.database.header().textstyle;
    co_await askStart(context, place);
    co_await askHeight(context, place);
    if (!place.isBetween()) {
        const Question question{
            Want::Orientation, "Specify rotation angle of text <0>:", {}, 0, &place.point};
        const Answer angle = co_await context.input.ask(question);
        place.rotation = angle.isNone() ? 0.0 : angle.real;
    }
    co_return place;
}

void put(const CommandContext& context, const TextPlace& place, const std::string& contents, AcDbText& text) {
    text.setNormal(drawingNormal(context.database));
    text.setTextStyle(place.style);
    text.takeStyleLook();
    if (place.height > 0.0) text.setHeight(place.height);
    text.setRotation(rotationInPlane(context.database, place.rotation));
    text.setTextString(contents);
    text.setPosition(place.point);
    text.setModes(place.justification->horizontal, place.justification->vertical);
    if (place.isBetween()) text.setAlignmentPoint(place.end);
}

// A user goes on with further lines below; a script gives one.
Task<void> textCommand(CommandContext& context) {
    TextPlace place = co_await askPlace(context);
    constexpr double lineDistance = 5.0 / 3.0; // in heights
    for (;;) {
        const Question question{Want::Line, "Enter text:", {}, 0, nullptr};
        const Answer line = co_await context.input.ask(question);
        if (line.isNone() || line.text.empty()) co_return;
        auto text = std::make_unique<AcDbText>();
        put(context, place, line.text, *text);
        const double step = text->height() * lineDistance;
        appendToCurrentSpace(context.database, std::move(text));
        if (!context.input.session().asksUser) co_return;
        const AcGeVector3d normal = drawingNormal(context.database);
        const double angle = rotationInPlane(context.database, place.rotation);
        const AcGeVector3d x = normal.perpVector();
        const AcGeVector3d up = normal.crossProduct(x) * std::cos(angle) - x * std::sin(angle);
        place.point = place.point - up * step;
        place.end = place.end - up * step;
    }
}

struct AttributeModes {
    bool invisible = false;
    bool constant = false;
    bool verify = false;
    bool preset = false;
};

Task<AttributeModes> askModes(CommandContext& context) {
    AttributeModes modes;
    for (;;) {
        const auto shown = [](bool on) { return on ? "Y" : "N"; };
        inform(context, fmt::format("Current attribute modes: Invisible={} Constant={} Verify={} Preset={}",
                                    shown(modes.invisible), shown(modes.constant), shown(modes.verify),
                                    shown(modes.preset)));
        const Answer option = co_await context.input.keyword(
            "Enter an option to change [Invisible/Constant/Verify/Preset] <done>:",
            "Invisible Constant Verify Preset");
        if (option.isNone()) co_return modes;
        bool& mode = option.isKeyword("Invisible")  ? modes.invisible
                     : option.isKeyword("Constant") ? modes.constant
                     : option.isKeyword("Verify")   ? modes.verify
                                                    : modes.preset;
        mode = !mode;
    }
}

Task<std::string> askLine(CommandContext& context, const char* prompt) {
    const Question question{Want::Line, prompt, {}, 0, nullptr};
    const Answer line = co_await context.input.ask(question);
    co_return line.text;
}

Task<void> attdefCommand(CommandContext& context) {
    const AttributeModes modes = co_await askModes(context);
    const Answer tag = co_await context.input.string("Enter attribute tag name:");
    if (tag.isNone()) throw InputCancelled();
    auto definition = std::make_unique<AcDbAttributeDefinition>();
    requireOk(definition->setTag(tag.text), "A tag has no blanks");
    if (!modes.constant) {
        const std::string prompt = co_await askLine(context, "Enter attribute prompt:");
        definition->setPrompt(prompt);
    }
    const std::string value = co_await askLine(context, modes.constant ? "Enter attribute value:"
                                                                       : "Enter default attribute value:");
    const TextPlace place = co_await askPlace(context);
    definition->setInvisible(modes.invisible);
    definition->setConstant(modes.constant);
    definition->setVerifiable(modes.verify);
    definition->setPreset(modes.preset);
    put(context, place, value, *definition);
    appendToCurrentSpace(context.database, std::move(definition));
}

Task<void> pointCommand(CommandContext& context) {
    const AcGePoint3d at = co_await requirePoint(context, "POINT Specify a point:");
    auto point = std::make_unique<AcDbPoint>(at);
    point->setNormal(drawingNormal(context.database));
    appendToCurrentSpace(context.database, std::move(point));
}

constexpr CommandRow rows[] = {
    {"TEXT", "DTEXT DT", textCommand, 0},
    {"ATTDEF", "ATT", attdefCommand, 0},
    {"POINT", "PO", pointCommand, 0},
};

} // namespace

std::span<const CommandRow> textCommands() {
    return rows;
}

} // namespace veldrin
