#pragma once

#include "grid/CGridCtrl.h"

#include <cstdint>
#include <span>
#include <vector>

namespace plumb {

class ProjectDialog;

enum class GridColumnKind { kHidden, kText, kCheck, kList, kTree };

// A column of a dialog's grid.
struct GridColumnForm {
    const char* field;   // "" for none
    const char* caption; // hidden columns show their field name
    GridColumnKind kind = GridColumnKind::kText;
    const char* list = ""; // of a list: items with "|" between, one in front for an open list
};

// A grid of a dialog.
struct GridForm {
    int id; // of its control
    std::span<const GridColumnForm> columns;
    int fixedColumns = 0;
    int fixedRows = 1; // the first has the captions
};

// Rows that exist in the grid alone say so in the column of their key.
inline constexpr const char* kNewRow = "NEW";

// A dialog's grid. It has a row of captions, whole rows are selected, and it follows the rules that the
// dialog has set in its constructor. A rule that is missing allows everything.
class DialogGrid : public CGridCtrl {
public:
    DialogGrid(ProjectDialog& dialog, const GridForm& form);
    int id() const { return m_form.id; }

    std::function<bool(Cell)> mayEdit;
    // The cell holds the new text, oldText() is what was there. False puts that back without a word; for a
    // word return refuse(...).
    std::function<bool(Cell)> accepts;
    std::function<void(Cell)> selected;
    std::function<void(Cell)> clicked;
    std::function<bool(Cell, const CString& item)> picked;

    // Makes the columns and the fixed rows; nothing is left of what was there.
    void build();

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
    // Takes a row away and remembers the key in that column, unless the row is new. The focus goes to that
    // column of the same row number, or of the row above when it was the last one.
    void removeRow(int row, const CString& keyField, int focusColumn);
    const std::vector<std::int32_t>& removedKeys() const { return m_removedKeys; }
    // A heading row: the background of the captions, or all of their look.
    void lookHeading(int row);
    void lookFixed(int row);

    void userPresses(Cell cell, bool extend) override;
    void userReleases(Cell cell, veldrin::CellPart part) override;
    bool userKeys(veldrin::TableKey key, veldrin::HeldKeys held) override;

private:
    ProjectDialog& m_dialog;
    const GridForm& m_form;
    std::vector<std::int32_t> m_removedKeys;
    Cell m_edited;
    CString m_oldText;
    bool m_isRefused = false; // the edit that ended last
    bool m_isHeld = false;    // the press that was last did not get away from there
    bool m_isRefusing = false;
};

} // namespace plumb
