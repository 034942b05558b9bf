#pragma once

#include "runtime/CString.h"
#include "runtime/VeldrinApi.h"

#include <cstdint>
#include <optional>
#include <vector>

// A table as it is shown: what whoever shows it draws, and what the user's hand does to it. Cells, tree,
// focus, selection and the editor in a cell are the table's. Who shows it only knows how far it is scrolled.

namespace veldrin {

using Color = std::uint32_t; // 0xRRGGBB

// The looks that a table and those who fill it agree on.
constexpr Color kFixedCellText = 0x000000;
constexpr Color kFixedCellBackground = 0xF0F0F0;
constexpr Color kGrayedText = 0x6D6D6D;

// What goes beside the text of a cell, in pixels of the usual size.
constexpr int kCellMargin = 4;  // on either side
constexpr int kTreeIndent = 16; // for each level, its expand box among it
constexpr int kListArrow = 16;

struct TableCell {
    int row = -1;
    int column = -1;
    bool operator==(const TableCell&) const = default;
};
inline constexpr TableCell kNoCell{};

struct CellLook {
    std::optional<Color> text; // none: as usual
    std::optional<Color> background;
    bool isBold = false;
    int span = 1; // columns that it covers, itself among them; 0 for a cell that another one covers
};

enum class CellKind { kText, kCheck, kOpenList, kClosedList };
enum class CellPart { kCell, kCheckBox, kExpandBox };

enum class TableKey {
    kReturn,
    kEscape,
    kTab,
    kUp,
    kDown,
    kLeft,
    kRight,
    kHome,
    kEnd,
    kPageUp,
    kPageDown,
    kBackspace,
    kDelete,
    kSpace,
    kF2
};
struct HeldKeys {
    bool shift = false;
    bool control = false;
};

// The editor that is open over a cell.
struct CellEditor {
    TableCell cell;
    CellKind kind = CellKind::kText;
    CString text;
    int first = 0; // the selected characters, in bytes of the text; both the same: where the next one goes
    int last = 0;
    std::vector<CString> items; // of a list
};

// Who shows a table: told of what changes in it.
class VELDRIN_API TableView {
public:
    virtual ~TableView();
    virtual void tableChanged() = 0;             // anything that is drawn
    virtual void editorChanged() = 0;            // opened, closed, or another text or selection put into it
    virtual void cellWanted(TableCell cell) = 0; // is to be scrolled until it is seen
    virtual int pageRows() const = 0;            // how far the page keys go
};

class VELDRIN_API UiTable {
public:
    virtual ~UiTable();

    // Null when nobody shows it any more. A cell that was wanted to be seen before is told at once.
    virtual void setView(TableView* view) = 0;

    // Shape. The first rows and columns are fixed: they stay where they are when the others are scrolled.
    virtual int rowCount() const = 0;
    virtual int columnCount() const = 0;
    virtual int fixedRowCount() const = 0;
    virtual int fixedColumnCount() const = 0;
    virtual int columnWidth(int column) const = 0; // in pixels of the usual size; 0: not shown
    virtual int rowLines(int row) const = 0;       // lines of text; 1 for all but fixed rows
    // Rows that are not inside a collapsed branch, fixed ones among them, from the top.
    virtual int shownRowCount() const = 0;
    virtual int shownRow(int position) const = 0;
    virtual int positionOfRow(int row) const = 0; // -1 for one that is not shown

    // Cells.
    virtual CString cellText(int row, int column) const = 0; // "-1" or "0" of a check box as a rule
    virtual CellLook cellLook(int row, int column) const = 0;
    virtual CellKind cellKind(int row, int column) const = 0;
    virtual std::vector<CString> cellItems(int row, int column) const = 0; // of a list
    virtual bool isChecked(int row, int column) const = 0;
    virtual int fieldColumn(const CString& field) const = 0; // by a column's field name; -1 without

    // Tree. Level 0 belongs to none.
    virtual bool isTreeColumn(int column) const = 0;
    virtual int rowLevel(int row) const = 0;
    virtual bool hasBranch(int row) const = 0; // deeper rows below it
    virtual bool isExpanded(int row) const = 0;

    virtual TableCell focusCell() const = 0;
    virtual bool isSelected(int row, int column) const = 0;
    virtual const CellEditor* editor() const = 0; // null when none is open

    // The user's hand. The mouse button goes down and comes up on a cell; "extend" selects up to it.
    virtual void userPresses(TableCell cell, bool extend) = 0;
    virtual void userReleases(TableCell cell, CellPart part) = 0;
    virtual void userDoubleClicks(TableCell cell) = 0;
    virtual bool userTypes(const CString& text) = 0;        // false when nothing can take it
    virtual bool userKeys(TableKey key, HeldKeys held) = 0; // false when it means nothing here
    // All of the open editor's text; false for one that its closed list does not have.
    virtual bool userEdits(const CString& text, int first, int last) = 0;
    virtual bool userPicks(int item) = 0; // in the open list
    virtual bool userEndsEdit() = 0;      // as Return does; false when the new text was refused
    virtual void userLeaves() = 0;        // for another control
    virtual void userSizesColumn(int column, int width) = 0;
};

} // namespace veldrin
