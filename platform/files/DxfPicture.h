#pragma once

#include "drawing/AcDbObjectId.h"
#include "graphics/DisplayList.h"

#include <cstdint>
#include <string>
#include <unordered_map>

namespace veldrin {

// Where a layer or linetype stands in the tables of the file that is being written. Linetypes count without
// ByBlock and ByLayer.
struct DxfTablePlaces {
    std::unordered_map<AcDbObjectId, std::uint32_t> layers;
    std::unordered_map<AcDbObjectId, std::uint32_t> linetypes;
    AcDbObjectId byLayer;
    AcDbObjectId byBlock;
};

// A picture in the form in which exchange files carry it for programs that lack the class: commands of a
// size, a number and values, little endian. Arcs are counter-clockwise, what is curved otherwise is a row of
// arcs, text is text, a line at a time.
std::string dxfPicture(const DisplayList& list, const DxfTablePlaces& places);

} // namespace veldrin
