#include "editor/command_support.h"

#include "drawing/AcDbBlockTable.h"
#include "drawing/AcDbLayerTable.h"
#include "drawing/acdb.h"
#include "editor/CommandLine.h"
#include "editor/SystemVariables.h"
#include "runtime/CException.h"
#include "runtime/Host.h"

#include <cmath>
#include <fmt/format.h>
#include <numbers>

namespace veldrin {

void say(const CommandContext& context, const std::string& text) {
    CommandLine& line = context.host.commandLine();
    line.freshLine();
    line.print(text + "\n");
}

void inform(const CommandContext& context, const std::string& text) {
    if (context.host.variables().integer("CMDECHO") != 0) say(context, text);
}

void failCommand(const std::string& text) {
    throw CException(text);
}

bool moreIsSaid(const CommandContext& context) {
    const EditorInput::Session& session = context.input.session();
    return session.asksUser || !session.tokens.empty();
}

void failAsTold() {
    throw CException("");
}

void requireOk(Acad::ErrorStatus status, std::string_view what) {
    if (status != Acad::eOk) failCommand(fmt::format("{}: {}.", what, acadErrorStatusText(status)));
}

AcDbObjectId appendToCurrentSpace(AcDbDatabase& database, std::unique_ptr<AcDbEntity> entity) {
    const AcDbObjectPointer<AcDbBlockTableRecord> space(database.modelSpaceId(), AcDb::kForWrite);
    requireOk(space.openStatus(), "The drawing's space cannot be opened");
    AcDbObjectId id;
    requireOk(space->appendAcDbEntity(id, entity.get()), "The entity cannot be added");
    entity.release()->close();
    return id;
}

AcGeVector3d drawingNormal(const AcDbDatabase& database) {
    return database.header().ucsXDir.crossProduct(database.header().ucsYDir).normal();
}

double angleInPlane(const AcGeVector3d& normal, const AcGeVector3d& direction) {
    const AcGeVector3d xAxis = normal.perpVector();
    const AcGeVector3d yAxis = normal.crossProduct(xAxis);
    return AcGeVector2d(direction.dotProduct(xAxis), direction.dotProduct(yAxis)).angle();
}

double rotationInPlane(const AcDbDatabase& database, double userAngle) {
    const HeaderVariables& header = database.header();
    return angleInPlane(drawingNormal(database),
                        header.ucsXDir * std::cos(userAngle) + header.ucsYDir * std::sin(userAngle));
}

Task<AcGePoint3d> requirePoint(CommandContext& context, const char* prompt, const AcGePoint3d* base) {
    const Answer answer = co_await context.input.point(prompt, base);
    if (answer.kind != Answer::Kind::Point) throw InputCancelled();
    co_return answer.point;
}

Task<AcGeVector3d> displacementFrom(CommandContext& context, const Answer& base) {
    if (base.isKeyword("Displacement")) {
        const AcGePoint3d by = co_await requirePoint(context, "Specify displacement:");
        AcGePoint3d origin;
        co_return by - origin.transformBy(context.database.ucsToWorld());
    }
    const Answer second = co_await context.input.point(
        "Specify second point or <use first point as displacement>:", &base.point);
    if (second.kind == Answer::Kind::Point) co_return second.point - base.point;
    AcGePoint3d origin;
    co_return base.point - origin.transformBy(context.database.ucsToWorld());
}

Task<AcGeVector3d> askDisplacement(CommandContext& context) {
    const Answer base =
        co_await context.input.point("Specify base point or [Displacement]:", nullptr, "Displacement");
    if (base.isNone()) throw InputCancelled();
    co_return co_await displacementFrom(context, base);
}

void transform(CommandContext& context, const std::vector<AcDbObjectId>& ids, const AcGeMatrix3d& matrix) {
    for (const AcDbObjectId id : ids) {
        const AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForWrite);
        Acad::ErrorStatus status = entity.openStatus();
        if (entity) status = entity->transformBy(matrix);
        if (status != Acad::eOk)
            say(context, fmt::format("Object {} cannot be edited: {}.", id.handle().text(),
                                     acadErrorStatusText(status)));
    }
}

} // namespace veldrin
