#pragma once

#include "drawing/AcDbDatabase.h"
#include "drawing/AcDbEntity.h"
#include "editor/CommandRegistry.h"
#include "geometry/AcGeMatrix3d.h"

#include <memory>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

namespace veldrin {

// What several commands need.

// A line on the command line.
void say(const CommandContext& context, const std::string& text);
// The same, but not while CMDECHO is off: what a user at the prompt wants to know and a script does not.
void inform(const CommandContext& context, const std::string& text);
// Whether another question would be answered: by a person, or by what a script has left to say.
bool moreIsSaid(const CommandContext& context);
// Ends the command as failed, with this line.
[[noreturn]] void failCommand(const std::string& text);
// The same when the line was printed already.
[[noreturn]] void failAsTold();
void requireOk(Acad::ErrorStatus status, std::string_view what);

// Objects by the select-objects prompt, each once, without those on locked layers if they are to be edited.
// The selection is kept as the previous one. May be empty.
enum class SelectFor { Editing, Looking };
Task<std::vector<AcDbObjectId>> selectObjects(CommandContext& context, SelectFor purpose);
// The same, but a single entity or set at the end of a script's answers needs no empty one behind it.
Task<std::vector<AcDbObjectId>> selectObjectsAtOnce(CommandContext& context, SelectFor purpose);
// The first one or the first set that is given.
Task<std::vector<AcDbObjectId>> selectSingle(CommandContext& context);

// For STRETCH: objects, and the last crossing window among the answers; empty without one. Objects that were
// given otherwise go as a whole.
struct SelectionToStretch {
    std::vector<AcDbObjectId> ids;
    std::unordered_set<AcDbObjectId> whole;
    std::vector<AcGePoint3d> window;
};
Task<SelectionToStretch> selectToStretch(CommandContext& context);

// A point that has to be given: an empty answer cancels.
Task<AcGePoint3d> requirePoint(CommandContext& context, const char* prompt,
                               const AcGePoint3d* base = nullptr);

// Base point and second point, or a displacement given at once; the second asks only for what comes behind
// the base point.
Task<AcGeVector3d> askDisplacement(CommandContext& context);
Task<AcGeVector3d> displacementFrom(CommandContext& context, const Answer& base);
// Says which ones cannot be edited.
void transform(CommandContext& context, const std::vector<AcDbObjectId>& ids, const AcGeMatrix3d& matrix);

// Appends to the current space, with the drawing's current properties.
AcDbObjectId appendToCurrentSpace(AcDbDatabase& database, std::unique_ptr<AcDbEntity> entity);

// The plane in which flat entities are drawn: that of the user coordinate system, at the height of a point.
AcGeVector3d drawingNormal(const AcDbDatabase& database);
// Angle of a direction in the plane with that normal, from the plane's own X axis, radians.
double angleInPlane(const AcGeVector3d& normal, const AcGeVector3d& direction);
// The same of an angle that counts from the X axis of the user coordinate system.
double rotationInPlane(const AcDbDatabase& database, double userAngle);

} // namespace veldrin
