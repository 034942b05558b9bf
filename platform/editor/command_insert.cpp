// INSERT

#include "drawing/AcDbAttribute.h"
#include "drawing/AcDbBlockReference.h"
#include "drawing/AcDbBlockTable.h"
#include "drawing/block_copies.h"
#include "editor/command_names.h"
#include "editor/command_support.h"
#include "editor/command_tables.h"
#include "files/DrawingFile.h"
#include "lisp/Engine.h"
#include "lisp/Services.h"
#include "runtime/Host.h"

#include <filesystem>
#include <fmt/format.h>

namespace veldrin {

namespace {

namespace fs = std::filesystem;

// Makes a drawing file a block, or defines the block anew.
AcDbObjectId blockFromFile(CommandContext& context, const std::string& name, const std::string& file) {
    lisp::Services& services = context.host.lisp().services();
    std::string path = services.findFile(file);
    std::error_code none;
    if (path.empty() || fs::is_directory(path, none)) path = services.findFile(file + ".vqd");
    if (path.empty()) failCommand(fmt::format("Block \"{}\" not found, neither here nor as a file.", file));
    auto opened = openDrawing(path);
    if (const auto* problem = std::get_if<std::string>(&opened)) failCommand(*problem);
    AcDbDatabase& source = *std::get<std::unique_ptr<AcDbDatabase>>(opened);
    AcDbObjectId block;
    const Acad::ErrorStatus status = insertDrawing(context.database, name, source, block);
    if (status == Acad::eInvalidInput) failCommand(fmt::format("Block {} references itself.", name));
    requireOk(status, fmt::format("{} cannot be inserted", path));
    return block;
}

// "name", "name=file", "name=" and "path": a block that is there already stands for a path of its name.
AcDbObjectId blockMeant(CommandContext& context, const std::string& answer) {
    const std::size_t equals = answer.find('=');
    if (equals != std::string::npos) {
        const std::string name = answer.substr(0, equals);
        const std::string file = answer.substr(equals + 1);
        return blockFromFile(context, name, file.empty() ? name : file);
    }
    const std::string name = fs::path(answer).stem().string();
    for (const std::string& known : {answer, name})
        if (const AcDbObjectId block = recordNamed(context.database.blockTableId(), known); !block.isNull())
            return block;
    return blockFromFile(context, name, answer);
}

void listBlocks(CommandContext& context) {
    for (const AcDbObjectId id : recordsMatching(context.database.blockTableId(), "*")) {
        const AcDbObjectPointer<AcDbBlockTableRecord> block(id);
        if (block && !block->isLayout() && !block->isAnonymous()) say(context, block->getName());
    }
}

// Where the reference stands. Factors that were given ahead are not asked for.
struct Placement {
    AcGePoint3d at;
    std::optional<AcGeScale3d> scale;
    std::optional<double> rotation;
};

Task<double> askFactor(CommandContext& context, const char* prompt, double proposal) {
    const Question question{Want::Real, prompt, {}, kRefuseZero, nullptr};
    const Answer factor = co_await context.input.ask(question);
    co_return factor.isNone() ? proposal : factor.real;
}

Task<AcGeScale3d> askThreeFactors(CommandContext& context) {
    const double x = co_await askFactor(context, "Specify X scale factor <1>:", 1.0);
    const double y = co_await askFactor(context, "Specify Y scale factor <use X scale factor>:", x);
    const double z = co_await askFactor(context, "Specify Z scale factor <use X scale factor>:", x);
    co_return AcGeScale3d{x, y, z};
}

Task<AcGeScale3d> askScale(CommandContext& context, const AcGePoint3d& at) {
    const Question question{Want::Real, "Enter X scale factor, specify opposite corner, or [Corner/XYZ] <1>:",
                            "Corner XYZ", kRefuseZero, &at};
    const Answer first = co_await context.input.ask(question);
    if (first.isKeyword("XYZ")) co_return co_await askThreeFactors(context);
    if (first.isKeyword("Corner")) {
        const AcGePoint3d corner = co_await requirePoint(context, "Specify opposite corner:", &at);
        AcGeVector3d across = corner - at;
        across.transformBy(context.database.ucsToWorld().inverse());
        if (across.x == 0.0 || across.y == 0.0) failCommand("Scale factors must not be zero.");
        co_return AcGeScale3d{across.x, across.y, across.x};
    }
    const double x = first.isNone() ? 1.0 : first.real;
    const double y = co_await askFactor(context, "Enter Y scale factor <use X scale factor>:", x);
    co_return AcGeScale3d{x, y, x};
}

Task<double> askRotation(CommandContext& context, const AcGePoint3d* at) {
    const Question question{Want::Orientation, "Specify rotation angle <0>:", {}, 0, at};
    const Answer angle = co_await context.input.ask(question);
    co_return angle.isNone() ? 0.0 : angle.real;
}

Task<Placement> askPlacement(CommandContext& context) {
    Placement place;
    for (;;) {
        const Answer point = co_await context.input.point(
            "Specify insertion point or [Scale/X/Y/Z/Rotate]:", nullptr, "Scale X Y Z Rotate");
        if (point.isNone()) throw InputCancelled();
        if (point.kind == Answer::Kind::Point) {
            place.at = point.point;
            break;
        }
        if (point.isKeyword("Rotate")) {
            place.rotation = co_await askRotation(context, nullptr);
            continue;
        }
        const double factor = co_await askFactor(context, "Specify scale factor <1>:", 1.0);
        AcGeScale3d scale = place.scale.value_or(AcGeScale3d());
        const bool all = point.isKeyword("Scale");
        if (all || point.isKeyword("X")) scale.sx = factor;
        if (all || point.isKeyword("Y")) scale.sy = factor;
        if (all || point.isKeyword("Z")) scale.sz = factor;
        place.scale = scale;
    }
    if (!place.scale) place.scale = co_await askScale(context, place.at);
    if (!place.rotation) place.rotation = co_await askRotation(context, &place.at);
    co_return place;
}

// What the block asks for, and the answers.
struct AttributeValue {
    AcDbObjectId definition;
    std::string prompt;
    std::string value;
    bool isPreset = false;
    bool isVerified = false;
};

std::vector<AttributeValue> attributesOf(AcDbObjectId block) {
    std::vector<AttributeValue> values;
    for (const AcDbObjectId id : livingEntities(block)) {
        const AcDbObjectPointer<AcDbAttributeDefinition> definition(id);
        if (!definition || definition->isConstant()) continue;
        values.push_back({id, definition->prompt().empty() ? definition->tag() : definition->prompt(),
                          definition->textString(), definition->isPreset(), definition->isVerifiable()});
    }
    return values;
}

Task<void> askValue(CommandContext& context, AttributeValue& attribute) {
    const std::string prompt = attribute.value.empty()
                                   ? fmt::format("{}:", attribute.prompt)
                                   : fmt::format("{} <{}>:", attribute.prompt, attribute.value);
    const Question question{Want::Line, prompt, {}, 0, nullptr};
    const Answer value = co_await context.input.ask(question);
    if (!value.isNone()) attribute.value = value.text;
}

Task<void> askAttributes(CommandContext& context, std::vector<AttributeValue>& values) {
    if (context.database.header().attreq == 0 || values.empty()) co_return;
    inform(context, "Enter attribute values");
    bool verifies = false;
    for (AttributeValue& value : values) {
        if (!value.isPreset) co_await askValue(context, value);
        verifies = verifies || (value.isVerified && !value.isPreset);
    }
    if (!verifies) co_return;
    inform(context, "Verify attribute values");
    for (AttributeValue& value : values)
        if (value.isVerified && !value.isPreset) co_await askValue(context, value);
}

void addAttributes(AcDbObjectId id, const std::vector<AttributeValue>& values) {
    const AcDbObjectPointer<AcDbBlockReference> reference(id, AcDb::kForWrite);
    requireOk(reference.openStatus(), "The reference cannot be opened");
    for (const AttributeValue& value : values) {
        const AcDbObjectPointer<AcDbAttributeDefinition> definition(value.definition);
        if (!definition) continue;
        auto attribute = std::make_unique<AcDbAttribute>();
        requireOk(attribute->setFromDefinition(*definition, reference->blockTransform()),
                  "An attribute cannot be placed");
        attribute->setTextString(value.value);
        requireOk(reference->appendAttribute(attribute.get()), "An attribute cannot be added");
        attribute.release()->close();
    }
}

AcDbObjectId place(CommandContext& context, AcDbObjectId block, const Placement& placement) {
    auto reference = std::make_unique<AcDbBlockReference>(placement.at, block);
    reference->setNormal(drawingNormal(context.database));
    requireOk(reference->setScaleFactors(*placement.scale), "Scale factors must not be zero");
    reference->setRotation(rotationInPlane(context.database, *placement.rotation));
    return appendToCurrentSpace(context.database, std::move(reference));
}

// With a star in front of the name, the block's parts are put there and no reference.
Task<void> insertCommand(CommandContext& context) {
    const Answer named = co_await context.input.string("INSERT Enter block name or [?]:");
    if (named.isNone()) throw InputCancelled();
    if (named.text == "?") co_return listBlocks(context);
    const bool inParts = named.text.starts_with('*') && named.text.size() > 1 &&
                         recordNamed(context.database.blockTableId(), named.text).isNull();
    const AcDbObjectId block = blockMeant(context, inParts ? named.text.substr(1) : named.text);
    const Placement placement = co_await askPlacement(context);
    std::vector<AttributeValue> values;
    if (!inParts) values = attributesOf(block);
    co_await askAttributes(context, values);
    const AcDbObjectId id = place(context, block, placement);
    if (!inParts) {
        if (!values.empty()) addAttributes(id, values);
        co_return;
    }
    const AcDbObjectPointer<AcDbBlockReference> reference(id, AcDb::kForWrite);
    requireOk(reference.openStatus(), "The reference cannot be opened");
    requireOk(reference->explodeToOwnerSpace(), "The block cannot be taken apart");
    reference->erase();
}

constexpr CommandRow rows[] = {{"INSERT", "I", insertCommand, 0}};

} // namespace

std::span<const CommandRow> insertCommands() {
    return rows;
}

} // namespace veldrin
