#pragma once

#include "dialogs/ProjectDialog.h"

namespace plumb::pipe_sum {

// What Query Pipe is made of.

enum Id {
    kFarthestLabel = 1029,
    kFarthestValue = 1026,
    kHeightLabel = 1034,
    kHeightValue = 1027,
    kFlows = 1052,
    kType = 1069,
    kLayerSystem = 1076,
    kOffsetZ = 1077,
    kEditCategories = 1078,
    kOffsetY = 1079,
    kHangerType = 1081,
    kPTrap = 1082,
    kHasLining = 1083,
    kTransparent = 1084,
    kSize = 2007,
    kLining = 2008,
    kSizingTable = 2009,
    kZ1 = 2011,
    kZ2 = 2012,
    kHangerSize = 2013,
    kHangerStartOffset = 2014,
    kHangerZ = 2015,
    kHangerEndOffset = 2016,
    kHangerSpacing = 2017,
    kHangerDepth = 2024,
    kHangerLeft = 2028,
    kHangerRight = 2030,
    // Captions and frames.
    kZ1Label = 3001,
    kZ2Label,
    kOffsetZLabel,
    kOffsetYLabel,
    kSizeLabel,
    kSizingTableLabel,
    kLayerSystemLabel,
    kHangerFrame,
    kHangerTypeLabel,
    kHangerSizeLabel,
    kHangerDepthLabel,
    kHangerStartLabel,
    kHangerEndLabel,
    kHangerSpacingLabel,
    kHangerLeftLabel,
    kHangerRightLabel,
    kHangerZLabel,
};

// Columns of the flow grid that the user sees.
enum Column { kName = 3, kValue = 4 };

inline constexpr const char* kFieldCategory = "ixPipeSumCategory";
inline constexpr const char* kFieldFixed = "bFixed";
inline constexpr const char* kFieldName = "sName";
inline constexpr const char* kFieldValue = "dValue";

extern const ProjectDialogForm kForm;
extern const GridForm kFlowGrid;

} // namespace plumb::pipe_sum
