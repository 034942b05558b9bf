#pragma once

#include "grid/CGridCtrl.h"

#include <span>

class CAcUiDialog;

namespace plumb {

enum class GridColumnKind { kHidden, kText, kCheck, kList, kTree };

// A column of a dialog's grid.
struct GridColumnForm {
    const char* field;   // "" for none
    const char* caption; // hidden columns show their field name
    GridColumnKind kind = GridColumnKind::kText;
    const char* list = ""; // of a list: items with "|" between, one in front for an open list
};

// A dialog's grid. It has a row of captions, whole rows are selected, and it follows the rules that the
// dialog has set in its constructor. A rule that is missing allows everything.
class DialogGrid : public CGridCtrl {
public:
    explicit DialogGrid(CAcUiDialog& dialog);

    std::function<bool(Cell)> mayEdit;
    // The cell holds the new text, oldText() is what was there. False puts that back without a word; for a
    // word return refuse(...).
    std::function<bool(Cell)> accepts;
    std::function<void(Cell)> selected;
    std::function<void(Cell)> clicked;
    std::function<bool(Cell, const CString& item)> picked;

    // Makes the columns and the row of captions; no other row is left.
    void build(std::span<const GridColumnForm> columns, int fixedColumns = 0);

    const CString& oldText() const { return m_oldText; }
    // Puts the old text back, tells the user why, and lets the edit begin again: the user cannot leave the
    // cell by clicking elsewhere.
    bool refuse(const CString& message);

    // Names. Rows of which `belongs` is false do not count.
    using RowFilter = std::function<bool(int row)>;
    bool holdsName(int column, const CString& name, int exceptRow, const RowFilter& belongs = {}) const;
    // Refuses a name that another row has, without regard to case.
    bool acceptsUniqueName(Cell at, const RowFilter& belongs = {});
    // The word and the first number from 1 upward that no row has.
    CString freeName(int column, const CString& word, const RowFilter& belongs = {}) const;

    // Shows the cell, puts the focus on it and opens it for typing.
    void editCell(int row, int column);
    // After a row has been deleted: the same row number, or the row above when it was the last one.
    void focusAfterDelete(int row, int column);
    // A heading row: the background of the captions, or all of their look.
    void lookHeading(int row);
    void lookFixed(int row);

private:
    CAcUiDialog& m_dialog;
    Cell m_edited;
    CString m_oldText;
    bool m_isRefused = false;
    bool m_isRefusing = false;
};

} // namespace plumb
