#pragma once

#include "drawing/AcDbDatabase.h"
#include "geometry/AcGePoint3d.h"

#include <memory>
#include <string>
#include <vector>

// Blocks made from drawings, and drawings made from blocks. Where both drawings have a layer, linetype,
// style, application or block of a name, the one that is copied into keeps its own.
namespace veldrin {

// A name for a block without one: the beginning ("*U") and the first number that is free.
VELDRIN_API std::string freeBlockName(const AcDbDatabase& database, const std::string& beginning);

// The block of that name, emptied if it was there, else new; with that base point.
VELDRIN_API Acad::ErrorStatus startBlock(AcDbDatabase& database, const std::string& name,
                                         const AcGePoint3d& base, AcDbObjectId& block);

// Makes model space of a drawing a block of another one, or defines the block anew. eInvalidInput when the
// block would hold itself.
VELDRIN_API Acad::ErrorStatus insertDrawing(AcDbDatabase& target, const std::string& name,
                                            AcDbDatabase& source, AcDbObjectId& block);

// Copies entities into a block, moved by the matrix.
VELDRIN_API Acad::ErrorStatus copyInto(AcDbObjectId block, const std::vector<AcDbObjectId>& entities,
                                       const AcGeMatrix3d& placing);
// A drawing of its own with copies of these entities, moved by the matrix.
VELDRIN_API Acad::ErrorStatus drawingOf(AcDbDatabase& source, const std::vector<AcDbObjectId>& entities,
                                        const AcGeMatrix3d& placing, std::unique_ptr<AcDbDatabase>& drawing);
// Takes everything of another drawing in, model and paper space, blocks and tables; what is there by name
// stays.
VELDRIN_API Acad::ErrorStatus mergeDrawing(AcDbDatabase& target, AcDbDatabase& source);
// What is in a block and not erased, in drawing order.
VELDRIN_API std::vector<AcDbObjectId> livingEntities(AcDbObjectId block);

} // namespace veldrin
