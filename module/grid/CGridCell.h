#pragma once

#include "runtime/CString.h"
#include "ui/UiTable.h"

#include <memory>
#include <optional>
#include <vector>

namespace plumb {

// Yes and no in a cell, as the database writes them. A check box holds one of them.
inline constexpr const char* kYesText = "-1";
inline constexpr const char* kNoText = "0";

// The list of a cell or column.
struct CGridCellCombo {
    std::vector<CString> items;
    bool isOpen = false; // other texts may be typed

    // Items with "|" between; one in front makes an open list.
    static std::shared_ptr<const CGridCellCombo> fromText(const CString& text);
    int find(const CString& text) const; // without regard to case; -1 without
    int findPrefix(const CString& text) const;
};

// How a cell differs from what its column and the grid give it.
struct CGridCellFormat {
    std::optional<veldrin::Color> text;
    std::optional<veldrin::Color> background;
    bool isBold = false;
    bool isReadOnly = false;
    std::optional<veldrin::CellKind> kind;
    std::shared_ptr<const CGridCellCombo> list;
};

struct CGridCell {
    CString text;
    std::unique_ptr<CGridCellFormat> format; // null for most

    CGridCellFormat& ownFormat() {
        if (!format) format = std::make_unique<CGridCellFormat>();
        return *format;
    }
};

// Cells of a row that are one, with the text of the first.
struct CGridMerge {
    int first;
    int last;
};

struct CGridRow {
    std::vector<CGridCell> cells;
    std::vector<CGridMerge> merges;
    int level = 0; // 0: in no tree
    bool isCollapsed = false;
};

struct CGridColumn {
    int width = 80; // pixels; 0: not shown
    CString field;
    veldrin::CellKind kind = veldrin::CellKind::kText;
    std::shared_ptr<const CGridCellCombo> list;
    bool isTree = false;
};

} // namespace plumb
