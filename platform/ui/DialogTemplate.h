#pragma once

#include <span>

// What a dialog is made of, before any of it is shown. Positions are in dialog units: a quarter of the
// average width of a character across, an eighth of its height down, so that a dialog grows with its font.

enum class ControlKind { kText, kEdit, kButton, kCheck, kList, kCombo, kGrid, kImage, kFrame };

struct ControlTemplate {
    ControlKind kind;
    int id;
    const char* caption; // "&" stands before the letter that reaches the control; text of edits and lists: ""
    short x, y, width, height;
    unsigned flags = 0;
};
constexpr unsigned kDefaultButton = 0x1; // what Return presses
constexpr unsigned kCancelButton = 0x2;  // what Escape and the close box press
constexpr unsigned kSortedItems = 0x4;
constexpr unsigned kDisabled = 0x8;

// Ids of the buttons that end nearly every dialog.
constexpr int kDialogOk = 1023;
constexpr int kDialogCancel = 1024;

struct DialogTemplate {
    int id;
    const char* caption;
    short width, height;
    std::span<const ControlTemplate> controls; // in the order of the Tab key
};

// What a control does when the dialog's size changes: `percent` of the growth, in a way that is one of these
// or both stretches together.
struct ControlResize {
    int id;
    int how;
    int percent;
};
constexpr int kMoveAcross = 1;
constexpr int kMoveDown = 2;
constexpr int kStretchAcross = 16;
constexpr int kStretchDown = 32;
constexpr int kStretchBoth = kStretchAcross | kStretchDown;
