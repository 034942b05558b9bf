// LAYER

#include "drawing/AcDbLayerTable.h"
#include "drawing/AcDbLinetypeTable.h"
#include "drawing/acdb.h"
#include "editor/command_names.h"
#include "editor/command_support.h"
#include "editor/command_tables.h"
#include "editor/standard_linetypes.h"

#include <cmath>
#include <fmt/format.h>

namespace veldrin {

namespace {

using LayerPointer = AcDbObjectPointer<AcDbLayerTableRecord>;

constexpr const char* layerKeywords =
    "? Make Set New ON OFF Color Colour Ltype LWeight Plot PStyle Freeze Thaw LOck Unlock TRuecolor";

std::vector<AcDbObjectId> layersNamed(const CommandContext& context, const std::string& patterns) {
    return recordsMatching(context.database.layerTableId(), patterns);
}

AcDbObjectId layerNamed(const CommandContext& context, const std::string& name) {
    return recordNamed(context.database.layerTableId(), name);
}

AcDbObjectId addLayer(const CommandContext& context, const std::string& name) {
    const AcDbObjectId existing = layerNamed(context, name);
    if (!existing.isNull()) return existing;
    const AcDbObjectPointer<AcDbLayerTable> table(context.database.layerTableId(), AcDb::kForWrite);
    LayerPointer layer;
    layer.create();
    Acad::ErrorStatus status = table ? layer->setName(name) : table.openStatus();
    AcDbObjectId id;
    if (status == Acad::eOk) status = table->add(id, layer.object());
    if (status == Acad::eOk) return id;
    say(context, fmt::format("Invalid layer name \"{}\".", name));
    return {};
}

void makeCurrent(const CommandContext& context, AcDbObjectId layer) {
    HeaderVariables header = context.database.header();
    header.clayer = layer;
    context.database.setHeader(header);
}

void setCurrent(const CommandContext& context, const std::string& name) {
    const AcDbObjectId id = layerNamed(context, name);
    const LayerPointer layer(id);
    if (!layer) return say(context, fmt::format("Cannot find layer \"{}\".", name));
    if (layer->isFrozen())
        return say(context, fmt::format("Cannot set layer \"{}\" current: it is frozen.", name));
    makeCurrent(context, id);
}

void make(const CommandContext& context, const std::string& name) {
    const AcDbObjectId id = addLayer(context, name);
    const LayerPointer layer(id, AcDb::kForWrite);
    if (!layer) return;
    layer->setIsOff(false);
    layer->setIsFrozen(false);
    makeCurrent(context, id);
}

// Does something to all layers that a list of patterns names; an empty one means the current layer.
template<class Change>
void changeLayers(const CommandContext& context, const std::string& patterns, const Change& change) {
    std::vector<AcDbObjectId> ids = layersNamed(context, patterns);
    if (patterns.empty()) ids = {context.database.header().clayer};
    if (ids.empty()) return say(context, fmt::format("No matching layer names found for \"{}\".", patterns));
    for (const AcDbObjectId id : ids) {
        const LayerPointer layer(id, AcDb::kForWrite);
        if (layer) change(*layer);
    }
}

void freeze(const CommandContext& context, const std::string& patterns) {
    changeLayers(context, patterns, [&](AcDbLayerTableRecord& layer) {
        if (layer.objectId() == context.database.header().clayer)
            return say(context,
                       fmt::format("Cannot freeze layer \"{}\": it is the current layer.", layer.getName()));
        layer.setIsFrozen(true);
    });
}

Task<void> turnOff(CommandContext& context, const std::string& patterns) {
    bool asks = false;
    changeLayers(context, patterns, [&](AcDbLayerTableRecord& layer) {
        if (layer.objectId() == context.database.header().clayer)
            asks = true;
        else
            layer.setIsOff(true);
    });
    if (!asks) co_return;
    const Answer sure = co_await context.input.keyword(
        "The current layer will be turned off; do you want that? [Yes/No] <N>:", "Yes No");
    const LayerPointer layer(context.database.header().clayer, AcDb::kForWrite);
    if (sure.isKeyword("Yes") && layer) layer->setIsOff(true);
}

Task<void> color(CommandContext& context, bool trueColor) {
    const Answer value =
        co_await context.input.string(trueColor ? "Red,Green,Blue:" : "New color [Truecolor]:");
    const bool rgb = trueColor || !matchKeyword(value.text, "Truecolor").empty();
    Answer triple = value;
    if (rgb && !trueColor) triple = co_await context.input.string("Red,Green,Blue:");
    const Answer names = co_await context.input.string("Enter name list of layer(s) for color <current>:");
    const auto parsed = rgb ? parseTrueColor(triple.text) : parseColor(value.text);
    if (!parsed || parsed->isByLayer() || parsed->isByBlock())
        co_return say(context, fmt::format("\"{}\" is no color.", triple.text));
    changeLayers(context, names.text, [&](AcDbLayerTableRecord& layer) { layer.setColor(*parsed); });
}

Task<void> linetype(CommandContext& context) {
    const Answer name = co_await context.input.string("Enter loaded linetype name or [?] <Continuous>:");
    const Answer names = co_await context.input.string("Enter name list of layer(s) for linetype <current>:");
    const AcDbObjectId id =
        findOrLoadLinetype(context.database, name.text.empty() ? std::string("Continuous") : name.text);
    if (id.isNull()) co_return say(context, fmt::format("Linetype \"{}\" not found.", name.text));
    changeLayers(context, names.text, [&](AcDbLayerTableRecord& layer) { layer.setLinetypeObjectId(id); });
}

Task<void> lineWeight(CommandContext& context) {
    const Answer value = co_await context.input.string("Enter lineweight (0.0mm - 2.11mm):");
    const Answer names =
        co_await context.input.string("Enter name list of layers(s) for lineweight <current>:");
    const auto weight = parseLineWeight(value.text);
    if (!weight) co_return say(context, fmt::format("\"{}\" is no lineweight.", value.text));
    changeLayers(context, names.text, [&](AcDbLayerTableRecord& layer) { layer.setLineWeight(*weight); });
}

Task<void> plotting(CommandContext& context) {
    const Answer how =
        co_await context.input.keyword("Enter a plotting preference [Plot/No plot] <Plot>:", "Plot No");
    const Answer names =
        co_await context.input.string("Enter layer name(s) for this plot preference <current>:");
    changeLayers(context, names.text,
                 [&](AcDbLayerTableRecord& layer) { layer.setIsPlottable(!how.isKeyword("No")); });
}

Task<void> plotStyle(CommandContext& context) {
    const Answer style = co_await context.input.string("Enter plot style name <Normal>:");
    const Answer names = co_await context.input.string("Enter layer name(s) for plot style <current>:");
    changeLayers(context, names.text,
                 [&](AcDbLayerTableRecord& layer) { layer.setPlotStyleName(style.text.c_str()); });
}

void listLayers(const CommandContext& context, const std::string& patterns) {
    for (const AcDbObjectId id : layersNamed(context, patterns.empty() ? "*" : patterns)) {
        const LayerPointer layer(id);
        if (!layer) continue;
        const AcDbObjectPointer<AcDbLinetypeTableRecord> type(layer->linetypeObjectId());
        say(context, fmt::format("{:<24} {:>3} {:<14}{}{}{}", layer->getName(), layer->color().colorIndex(),
                                 type ? type->getName() : "Continuous", layer->isOff() ? " off" : "",
                                 layer->isFrozen() ? " frozen" : "", layer->isLocked() ? " locked" : ""));
    }
}

Task<void> runOption(CommandContext& context, const std::string& option) {
    if (option == "Color" || option == "Colour") co_return co_await color(context, false);
    if (option == "TRuecolor") co_return co_await color(context, true);
    if (option == "Ltype") co_return co_await linetype(context);
    if (option == "LWeight") co_return co_await lineWeight(context);
    if (option == "Plot") co_return co_await plotting(context);
    if (option == "PStyle") co_return co_await plotStyle(context);

    const Answer names = co_await context.input.string("Enter layer name(s):");
    if (option == "?") co_return listLayers(context, names.text);
    if (names.text.empty() && (option == "Make" || option == "Set" || option == "New")) co_return;
    if (option == "OFF") co_return co_await turnOff(context, names.text);
    if (option == "Make")
        make(context, names.text);
    else if (option == "Set")
        setCurrent(context, names.text);
    else if (option == "New") {
        for (const std::string& name : namesOf(names.text)) addLayer(context, name);
    } else if (option == "Freeze")
        freeze(context, names.text);
    else
        changeLayers(context, names.text, [&](AcDbLayerTableRecord& layer) {
            if (option == "ON")
                layer.setIsOff(false);
            else if (option == "Thaw")
                layer.setIsFrozen(false);
            else
                layer.setIsLocked(option == "LOck");
        });
}

Task<void> layerCommand(CommandContext& context) {
    for (;;) {
        const Answer option = co_await context.input.keyword(
            "Enter an option "
            "[?/Make/Set/New/ON/OFF/Color/Ltype/LWeight/Plot/PStyle/Freeze/Thaw/LOck/Unlock]:",
            layerKeywords);
        if (option.isNone()) co_return;
        co_await runOption(context, option.text);
    }
}

constexpr CommandRow rows[] = {{"LAYER", "LA", layerCommand, 0}};

} // namespace

std::span<const CommandRow> layerCommands() {
    return rows;
}

} // namespace veldrin
