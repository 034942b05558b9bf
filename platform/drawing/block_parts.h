#pragma once

#include "drawing/AcDbEntity.h"

#include <memory>

class AcDbPolyline;
class AcDbCurve;
class AcDbBlockReference;

namespace veldrin {

// References nested beyond these are a mistake, or were made to stop programs.
inline constexpr std::size_t kDeepestBlock = 64;
inline constexpr std::size_t kMostBlocks = 100'000; // within one reference

// A copy in no drawing, moved by the matrix; a curve that cannot be scaled so becomes a polyline. Null for
// what cannot be copied or moved.
VELDRIN_API std::unique_ptr<AcDbEntity> placedCopy(const AcDbEntity& entity, const AcGeMatrix3d& placing);
// Chords of a plane curve, moved, with its properties; five degrees of an arc a chord. Null for a curve that
// shows no pieces.
VELDRIN_API std::unique_ptr<AcDbPolyline> flattened(const AcDbCurve& curve, const AcGeMatrix3d& placing);
// What is by block takes the reference's colour, linetype and lineweight.
VELDRIN_API void takeByBlock(AcDbEntity& part, const AcDbBlockReference& reference);
// Whether references to the first block, or ones in those, show the second one. A block shows itself.
VELDRIN_API bool blockShows(AcDbObjectId block, AcDbObjectId searched);

} // namespace veldrin
