#pragma once

#include "dialogs/CodeCaptions.h"

namespace plumb::pipe_sum {

// What Query Pipe offers, and how it is kept.

inline constexpr CodeCaption kVerticalAlignments[] = {
    {"c", "Center of Pipe"}, {"t", "Top of Pipe"}, {"b", "Bottom of Pipe"}, {"h", "Bottom of Hanger"}};
inline constexpr CodeCaption kHorizontalAlignments[] = {
    {"c", "Centered"}, {"r", "Flat on Right"}, {"l", "Flat on Left"}};

// The database keeps a hanger type as its place here.
inline constexpr const char* kHangerTypes[] = {"None", "Wrap", "Trapeze"};
inline constexpr int kNoHanger = 0;

inline constexpr int kFirstFlowRow = 2; // behind the captions and the heading of the fixed values

// Items of lists that stand for no row.
inline constexpr int kSizedAutomatically = 0;
inline constexpr int kSameAsPrevious = 0;

} // namespace plumb::pipe_sum
