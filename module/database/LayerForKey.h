#pragma once

#include "drawing/AcDbObjectId.h"
#include "runtime/CString.h"

namespace plumb {

struct StandardsTables;

// From the symbolic keys of the project's standards to what the current drawing has. What is not there yet is
// made as the standards say.

// The layer of a key in a layer system; with the flag clear, of the key without one. A layer that is there
// keeps its looks but is unlocked. False, with a message for a key that the standards do not know, when there
// is no such layer.
bool GetLayerForKey(const StandardsTables& standards, const CString& key, Adesk::Int32 layerSystem,
                    bool useSystem, AcDbObjectId& layer);

// The text style of a key, and the height of its texts in the drawing's units.
bool GetTextStyleForKey(const StandardsTables& standards, const CString& key, AcDbObjectId& style,
                        double& height);

} // namespace plumb
