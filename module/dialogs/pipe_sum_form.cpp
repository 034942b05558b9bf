#include "dialogs/pipe_sum_form.h"

namespace plumb::pipe_sum {

namespace {

constexpr ControlTemplate kControls[] = {
    {ControlKind::kList, kType, "", 7, 7, 118, 92, kSortedItems},
    {ControlKind::kCheck, kTransparent, "Transparent", 7, 104, 118, 10},
    {ControlKind::kCheck, kPTrap, "Include P-Trap", 7, 118, 118, 10},
    {ControlKind::kText, kZ1Label, "Starting Elevation (ft-in):", 134, 9, 92, 9},
    {ControlKind::kEdit, kZ1, "", 228, 7, 104, 13},
    {ControlKind::kText, kZ2Label, "Ending Elevation (ft-in):", 134, 25, 92, 9},
    {ControlKind::kEdit, kZ2, "", 228, 23, 104, 13},
    {ControlKind::kText, kOffsetZLabel, "Vertical Alignment:", 134, 41, 92, 9},
    {ControlKind::kCombo, kOffsetZ, "", 228, 39, 104, 13},
    {ControlKind::kText, kOffsetYLabel, "Horizontal Alignment:", 134, 57, 92, 9},
    {ControlKind::kCombo, kOffsetY, "", 228, 55, 104, 13},
    {ControlKind::kCheck, kHasLining, "Exterior Insulation (in):", 134, 73, 92, 10},
    {ControlKind::kEdit, kLining, "", 228, 71, 104, 13},
    {ControlKind::kText, kSizeLabel, "Size:", 134, 89, 92, 9},
    {ControlKind::kCombo, kSize, "", 228, 87, 104, 13},
    {ControlKind::kText, kSizingTableLabel, "Sizing Table:", 134, 105, 92, 9},
    {ControlKind::kCombo, kSizingTable, "", 228, 103, 104, 13},
    {ControlKind::kText, kLayerSystemLabel, "Layer System:", 134, 121, 92, 9},
    {ControlKind::kCombo, kLayerSystem, "", 228, 119, 104, 13},
    {ControlKind::kFrame, kHangerFrame, "Hanger", 342, 5, 160, 160},
    {ControlKind::kText, kHangerTypeLabel, "Hanger Type:", 349, 20, 84, 9},
    {ControlKind::kCombo, kHangerType, "", 435, 18, 60, 13},
    {ControlKind::kText, kHangerSizeLabel, "Size:", 349, 36, 84, 9},
    {ControlKind::kEdit, kHangerSize, "", 435, 34, 60, 13},
    {ControlKind::kText, kHangerDepthLabel, "Depth:", 349, 52, 84, 9},
    {ControlKind::kEdit, kHangerDepth, "", 435, 50, 60, 13},
    {ControlKind::kText, kHangerStartLabel, "Starting Offset:", 349, 68, 84, 9},
    {ControlKind::kEdit, kHangerStartOffset, "", 435, 66, 60, 13},
    {ControlKind::kText, kHangerEndLabel, "Ending Offset:", 349, 84, 84, 9},
    {ControlKind::kEdit, kHangerEndOffset, "", 435, 82, 60, 13},
    {ControlKind::kText, kHangerSpacingLabel, "Spacing:", 349, 100, 84, 9},
    {ControlKind::kEdit, kHangerSpacing, "", 435, 98, 60, 13},
    {ControlKind::kText, kHangerLeftLabel, "Left Width:", 349, 116, 84, 9},
    {ControlKind::kEdit, kHangerLeft, "", 435, 114, 60, 13},
    {ControlKind::kText, kHangerRightLabel, "Right Width:", 349, 132, 84, 9},
    {ControlKind::kEdit, kHangerRight, "", 435, 130, 60, 13},
    {ControlKind::kText, kHangerZLabel, "Ending Elevation (ft-in):", 349, 148, 84, 9},
    {ControlKind::kEdit, kHangerZ, "", 435, 146, 60, 13},
    {ControlKind::kGrid, kFlows, "", 7, 139, 325, 112},
    {ControlKind::kButton, kEditCategories, "&Edit. . .", 342, 178, 50, 14},
    {ControlKind::kText, kFarthestLabel, "Distance to Farthest Fixture: ", 342, 206, 102, 9},
    {ControlKind::kText, kFarthestValue, "", 446, 206, 56, 9},
    {ControlKind::kText, kHeightLabel, "Maximum Height: ", 342, 220, 102, 9},
    {ControlKind::kText, kHeightValue, "", 446, 220, 56, 9},
    {ControlKind::kButton, kDialogOk, "&OK", 200, 260, 50, 14, kDefaultButton},
    {ControlKind::kButton, kDialogCancel, "&Cancel", 258, 260, 50, 14, kCancelButton},
};
constexpr DialogTemplate kTemplate{2002, "Query Pipe", 509, 281, kControls};

// The lists in the middle and the flows take what the window grows by; what is right of them moves.
constexpr ControlResize kResize[] = {
    {kZ1, kStretchAcross, 100},
    {kZ2, kStretchAcross, 100},
    {kOffsetZ, kStretchAcross, 100},
    {kOffsetY, kStretchAcross, 100},
    {kLining, kStretchAcross, 100},
    {kSize, kStretchAcross, 100},
    {kSizingTable, kStretchAcross, 100},
    {kLayerSystem, kStretchAcross, 100},
    {kHangerFrame, kMoveAcross, 100},
    {kHangerTypeLabel, kMoveAcross, 100},
    {kHangerSizeLabel, kMoveAcross, 100},
    {kHangerDepthLabel, kMoveAcross, 100},
    {kHangerStartLabel, kMoveAcross, 100},
    {kHangerEndLabel, kMoveAcross, 100},
    {kHangerSpacingLabel, kMoveAcross, 100},
    {kHangerLeftLabel, kMoveAcross, 100},
    {kHangerRightLabel, kMoveAcross, 100},
    {kHangerZLabel, kMoveAcross, 100},
    {kHangerType, kMoveAcross, 100},
    {kHangerSize, kMoveAcross, 100},
    {kHangerDepth, kMoveAcross, 100},
    {kHangerStartOffset, kMoveAcross, 100},
    {kHangerEndOffset, kMoveAcross, 100},
    {kHangerSpacing, kMoveAcross, 100},
    {kHangerLeft, kMoveAcross, 100},
    {kHangerRight, kMoveAcross, 100},
    {kHangerZ, kMoveAcross, 100},
    {kEditCategories, kMoveAcross, 100},
    {kFarthestLabel, kMoveAcross, 100},
    {kFarthestValue, kMoveAcross, 100},
    {kHeightLabel, kMoveAcross, 100},
    {kHeightValue, kMoveAcross, 100},
    {kFlows, kStretchBoth, 100},
    {kDialogOk, kMoveAcross, 50},
    {kDialogOk, kMoveDown, 100},
    {kDialogCancel, kMoveAcross, 50},
    {kDialogCancel, kMoveDown, 100},
};

constexpr GridColumnForm kColumns[] = {
    {"", "", GridColumnKind::kHidden},
    {kFieldCategory, "", GridColumnKind::kHidden},
    {kFieldFixed, "", GridColumnKind::kHidden},
    {kFieldName, "Pipe Flow Category"},
    {kFieldValue, "Value"},
};
static_assert(kColumns[kName].field == kFieldName && kColumns[kValue].field == kFieldValue);

} // namespace

const ProjectDialogForm kForm{kTemplate, "vq_plumb:PipeSum", kResize};
const GridForm kFlowGrid{kFlows, kColumns};

} // namespace plumb::pipe_sum
