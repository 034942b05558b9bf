// ERASE, MOVE, COPY, ROTATE, SCALE, MIRROR, EXPLODE, LIST

#include "drawing/AcDbBlockReference.h"
#include "drawing/AcDbBlockTable.h"
#include "drawing/acdb.h"
#include "editor/SystemVariables.h"
#include "editor/command_support.h"
#include "editor/command_tables.h"
#include "runtime/Host.h"

#include <cmath>
#include <fmt/format.h>
#include <numbers>

namespace veldrin {

namespace {

// The selection; an empty one ends the command.
Task<std::vector<AcDbObjectId>> requireObjects(CommandContext& context) {
    std::vector<AcDbObjectId> ids = co_await selectObjects(context, SelectFor::Editing);
    if (ids.empty()) throw InputCancelled();
    co_return ids;
}

std::vector<AcDbObjectId> copies(CommandContext& context, const std::vector<AcDbObjectId>& ids) {
    AcDbIdMapping mapping;
    requireOk(context.database.deepCloneObjects(ids, context.database.modelSpaceId(), mapping),
              "The objects cannot be copied");
    std::vector<AcDbObjectId> result;
    for (const AcDbObjectId id : ids) {
        const AcDbObjectId copy = mapping.find(id);
        if (!copy.isNull()) result.push_back(copy);
    }
    return result;
}

void eraseAll(const std::vector<AcDbObjectId>& ids) {
    for (const AcDbObjectId id : ids) {
        const AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForWrite);
        if (entity) entity->erase();
    }
}

Task<void> eraseCommand(CommandContext& context) {
    const std::vector<AcDbObjectId> ids = co_await requireObjects(context);
    eraseAll(ids);
}

Task<void> moveCommand(CommandContext& context) {
    const std::vector<AcDbObjectId> ids = co_await requireObjects(context);
    const AcGeVector3d by = co_await askDisplacement(context);
    transform(context, ids, AcGeMatrix3d::translation(by));
}

Task<void> copyManyTimes(CommandContext& context, const std::vector<AcDbObjectId>& ids) {
    const AcGePoint3d base = co_await requirePoint(context, "Specify base point:");
    for (;;) {
        const Answer to = co_await context.input.point("Specify second point or <exit>:", &base);
        if (to.kind != Answer::Kind::Point) co_return;
        transform(context, copies(context, ids), AcGeMatrix3d::translation(to.point - base));
    }
}

Task<void> copyCommand(CommandContext& context) {
    const std::vector<AcDbObjectId> ids = co_await requireObjects(context);
    const Answer base = co_await context.input.point(
        "Specify base point or [Displacement/Multiple]:", nullptr, "Displacement Multiple");
    if (base.isNone()) throw InputCancelled();
    if (base.isKeyword("Multiple")) co_return co_await copyManyTimes(context, ids);
    const AcGeVector3d by = co_await displacementFrom(context, base);
    transform(context, copies(context, ids), AcGeMatrix3d::translation(by));
}

AcGeMatrix3d rotation(const CommandContext& context, const AcGePoint3d& base, double angle) {
    return AcGeMatrix3d::rotation(angle, drawingNormal(context.database), base);
}

Task<double> referenceAngle(CommandContext& context, const AcGePoint3d& base) {
    const Answer from = co_await context.input.angle("Specify the reference angle <0>:");
    const Answer to = co_await context.input.angle("Specify the new angle:", &base);
    co_return to.real - from.real;
}

Task<void> rotateCommand(CommandContext& context) {
    std::vector<AcDbObjectId> ids = co_await requireObjects(context);
    const AcGePoint3d base = co_await requirePoint(context, "Specify base point:");
    for (;;) {
        const Answer angle = co_await context.input.angle(
            "Specify rotation angle or [Copy/Reference]:", &base, "Copy Reference");
        if (angle.isNone()) throw InputCancelled();
        if (angle.isKeyword("Copy")) {
            ids = copies(context, ids);
            continue;
        }
        double turn = angle.real;
        if (angle.kind == Answer::Kind::Keyword) turn = co_await referenceAngle(context, base);
        co_return transform(context, ids, rotation(context, base, turn));
    }
}

Task<double> referenceFactor(CommandContext& context, const AcGePoint3d& base) {
    const Answer from = co_await context.input.distance("Specify reference length <1>:");
    const Answer to = co_await context.input.distance("Specify new length:", &base);
    const double length = from.isNone() ? 1.0 : from.real;
    if (to.isNone() || length == 0.0) throw InputCancelled();
    co_return to.real / length;
}

Task<void> scaleCommand(CommandContext& context) {
    std::vector<AcDbObjectId> ids = co_await requireObjects(context);
    const AcGePoint3d base = co_await requirePoint(context, "Specify base point:");
    for (;;) {
        const Question forFactor{Want::Distance,
                                 "Specify scale factor or [Copy/Reference]:", "Copy Reference",
                                 kRefuseZero | kRefuseNegative, &base};
        const Answer given = co_await context.input.ask(forFactor);
        if (given.isNone()) throw InputCancelled();
        if (given.isKeyword("Copy")) {
            ids = copies(context, ids);
            continue;
        }
        double factor = given.real;
        if (given.kind == Answer::Kind::Keyword) factor = co_await referenceFactor(context, base);
        if (!(factor > 0.0)) failCommand("Value must be positive and nonzero.");
        co_return transform(context, ids, AcGeMatrix3d::scaling(factor, base));
    }
}

Task<void> mirrorCommand(CommandContext& context) {
    std::vector<AcDbObjectId> ids = co_await requireObjects(context);
    const AcGePoint3d first = co_await requirePoint(context, "Specify first point of mirror line:");
    const AcGePoint3d second = co_await requirePoint(context, "Specify second point of mirror line:", &first);
    const AcGeVector3d across = drawingNormal(context.database).crossProduct(second - first);
    if (across.length() == 0.0) failCommand("The points of a mirror line must differ.");
    const Answer erase = co_await context.input.keyword("Erase source objects? [Yes/No] <N>:", "Yes No");
    if (!erase.isKeyword("Yes")) ids = copies(context, ids);
    transform(context, ids, AcGeMatrix3d::mirroring(first, across.normal()));
}

// Puts the pieces of an entity in its place. False when it does not come apart.
bool explode(AcDbObjectId id) {
    const AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForWrite);
    if (!entity) return false;
    if (const auto* reference = AcDbBlockReference::cast(entity.object()))
        return reference->explodeToOwnerSpace() == Acad::eOk && entity->erase() == Acad::eOk;
    std::vector<AcDbEntity*> raw;
    const Acad::ErrorStatus status = entity->explode(raw);
    std::vector<std::unique_ptr<AcDbEntity>> pieces(raw.begin(), raw.end());
    if (status != Acad::eOk) return false;
    const AcDbObjectPointer<AcDbBlockTableRecord> owner(entity->ownerId(), AcDb::kForWrite);
    if (!owner) return false;
    for (std::unique_ptr<AcDbEntity>& piece : pieces) {
        requireOk(owner->appendAcDbEntity(piece.get()), "A piece cannot be added");
        piece.release()->close();
    }
    entity->erase();
    return true;
}

Task<void> explodeCommand(CommandContext& context) {
    const std::vector<AcDbObjectId> ids = co_await selectObjectsAtOnce(context, SelectFor::Editing);
    int refused = 0;
    for (const AcDbObjectId id : ids) refused += explode(id) ? 0 : 1;
    if (refused > 0)
        say(context, fmt::format("{} {} not able to be exploded.", refused, refused == 1 ? "was" : "were"));
}

Task<void> listCommand(CommandContext& context) {
    const std::vector<AcDbObjectId> ids = co_await selectObjectsAtOnce(context, SelectFor::Looking);
    for (const AcDbObjectId id : ids) {
        const AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForRead);
        if (entity) entity->list();
    }
}

constexpr CommandRow rows[] = {
    {"ERASE", "E", eraseCommand, 0},     {"MOVE", "M", moveCommand, 0},
    {"COPY", "CO CP", copyCommand, 0},   {"ROTATE", "RO", rotateCommand, 0},
    {"SCALE", "SC", scaleCommand, 0},    {"MIRROR", "MI", mirrorCommand, 0},
    {"EXPLODE", "X", explodeCommand, 0}, {"LIST", "LI LS", listCommand, kCommandWithoutStep},
};

} // namespace

std::span<const CommandRow> editCommands() {
    return rows;
}

} // namespace veldrin
