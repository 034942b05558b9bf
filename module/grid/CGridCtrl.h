#pragma once

#include "grid/CGridCell.h"

#include <functional>

namespace plumb {

// The table of a dialog: text cells with rows and columns from 0, the first of each fixed. It holds what is
// shown and how it answers the user's hand; others show it. Places that there are not give false, an empty
// text or -1, and change nothing.
//
// What the dialog does makes no notification, but for StartEdit, and for an edit that it ends by putting the
// focus elsewhere.
class CGridCtrl : public veldrin::UiTable {
public:
    using Cell = veldrin::TableCell;

    CGridCtrl() = default;
    CGridCtrl(const CGridCtrl&) = delete;
    CGridCtrl& operator=(const CGridCtrl&) = delete;

    struct Range {
        int firstRow = -1, firstColumn = -1, lastRow = -1, lastColumn = -1;
    };

    // Shape.
    void SetColumnCount(int count);
    void SetRowCount(int count);
    int GetColumnCount() const { return static_cast<int>(m_columns.size()); }
    int GetRowCount() const { return static_cast<int>(m_rows.size()); }
    void SetFixedRowCount(int count) { m_fixedRows = count; }
    void SetFixedColumnCount(int count) { m_fixedColumns = count; }
    bool SetColumnWidth(int column, int width); // 0 hides it
    bool SetColumnField(int column, const CString& field);
    int FieldColumn(const CString& field) const;
    void SetListMode(bool wholeRows) { m_isListMode = wholeRows; }
    int AppendRow(const CString& text = {});
    int InsertRow(int position, const CString& text = {});
    int InsertTreeRow(int level, int position = -1); // -1: at the end
    bool DeleteRow(int row);                         // with the deeper rows under it
    bool DeleteTreeRow(int row) { return DeleteRow(row); }
    void DeleteNonFixedRows() { SetRowCount(m_fixedRows); }
    bool SwapRows(int first, int second); // with their looks; the focus follows

    // Kinds of cells.
    bool SetCheckColumn(int column);
    bool SetCheckColumn(const CString& field) { return SetCheckColumn(FieldColumn(field)); }
    bool SetComboColumn(int column, const CString& list); // as CGridCellCombo::fromText
    bool SetComboColumn(const CString& field, const CString& list) {
        return SetComboColumn(FieldColumn(field), list);
    }
    bool SetTreeColumn(int column);
    bool SetItemCombo(int row, int column, const CString& list); // of one cell
    bool SetItemKind(int row, int column, veldrin::CellKind kind);
    bool SetItemReadOnly(int row, int column, bool readOnly);

    // Texts.
    CString GetItemText(int row, int column) const;
    bool SetItemText(int row, int column, const CString& text);
    CString GetTextByField(int row, const CString& field) const {
        return GetItemText(row, FieldColumn(field));
    }
    bool SetTextByField(int row, const CString& field, const CString& text) {
        return SetItemText(row, FieldColumn(field), text);
    }

    // Looks.
    bool SetItemColors(int row, int column, std::optional<veldrin::Color> text,
                       std::optional<veldrin::Color> background);
    bool SetItemWeight(int row, int column, int weight); // kBoldWeight, kNormalWeight
    static constexpr int kNormalWeight = 400;
    static constexpr int kBoldWeight = 700;
    static veldrin::Color FixedTextColor() { return veldrin::kFixedCellText; }
    static veldrin::Color FixedBackgroundColor() { return veldrin::kFixedCellBackground; }
    bool MergeCells(int firstRow, int firstColumn, int lastRow, int lastColumn); // of one row
    bool UnmergeCells(int firstRow, int firstColumn, int lastRow, int lastColumn);
    void AutoSizeColumns();
    void SetRedraw(bool redraw);
    void Refresh() { changed(); }
    bool EnsureVisible(int row, int column); // opens the branches that it lies in

    // Tree.
    bool ExpandRow(int row);
    bool CollapseRow(int row); // false without deeper rows
    bool IsRowShown(int row) const { return positionOfRow(row) >= 0; }

    // Focus, selection, editing.
    int GetFocusRow() const { return m_focus.row; }
    int GetFocusColumn() const { return m_focus.column; }
    bool SetFocusCell(int row, int column);
    bool SetFocusCell(int row);
    Range GetSelectedRange() const;
    void StartEdit();
    bool EndEdit(); // stores what the editor holds; false when it was refused
    // Closes the open list with that text instead of the item that was picked in it.
    bool CloseListWith(const CString& text);

    // Notifications. Where they answer, false refuses.
    using Ask = std::function<bool(Cell)>;
    using AskStored = std::function<bool(Cell, const CString& old)>; // the cell holds the new text
    using Tell = std::function<void(Cell)>;
    using AskPicked = std::function<bool(Cell, const CString& picked)>;
    void OnBeginEdit(Ask handler) { m_onBeginEdit = std::move(handler); }
    void OnEndEdit(AskStored handler) { m_onEndEdit = std::move(handler); }
    void OnSelectionChanged(Tell handler) { m_onSelectionChanged = std::move(handler); }
    void OnClick(Tell handler) { m_onClick = std::move(handler); }
    void OnListSelection(AskPicked handler) { m_onListSelection = std::move(handler); }

    // UiTable
    void setView(veldrin::TableView* view) override;
    int rowCount() const override { return GetRowCount(); }
    int columnCount() const override { return GetColumnCount(); }
    int fixedRowCount() const override { return m_fixedRows; }
    int fixedColumnCount() const override { return m_fixedColumns; }
    int columnWidth(int column) const override;
    int rowLines(int row) const override;
    int shownRowCount() const override;
    int shownRow(int position) const override;
    int positionOfRow(int row) const override;
    CString cellText(int row, int column) const override { return GetItemText(row, column); }
    veldrin::CellLook cellLook(int row, int column) const override;
    veldrin::CellKind cellKind(int row, int column) const override;
    std::vector<CString> cellItems(int row, int column) const override;
    bool isChecked(int row, int column) const override;
    int fieldColumn(const CString& field) const override { return FieldColumn(field); }
    bool isTreeColumn(int column) const override;
    int rowLevel(int row) const override;
    bool hasBranch(int row) const override;
    bool isExpanded(int row) const override;
    Cell focusCell() const override { return m_focus; }
    bool isSelected(int row, int column) const override;
    const veldrin::CellEditor* editor() const override { return m_editor ? &*m_editor : nullptr; }
    void userPresses(Cell cell, bool extend) override;
    void userReleases(Cell cell, veldrin::CellPart part) override;
    void userDoubleClicks(Cell cell) override;
    bool userTypes(const CString& text) override;
    bool userKeys(veldrin::TableKey key, veldrin::HeldKeys held) override;
    bool userEdits(const CString& text, int first, int last) override;
    bool userPicks(int item) override;
    bool userEndsEdit() override;
    void userLeaves() override { EndEdit(); }
    void userSizesColumn(int column, int width) override;

private:
    enum class Begun { kByKeyboard, kByMouse };

    bool hasRow(int row) const { return row >= 0 && row < GetRowCount(); }
    bool hasColumn(int column) const { return column >= 0 && column < GetColumnCount(); }
    bool has(Cell cell) const { return hasRow(cell.row) && hasColumn(cell.column); }
    bool isFixed(Cell cell) const { return cell.row < m_fixedRows || cell.column < m_fixedColumns; }
    CGridRow& rowAt(int row) { return *m_rows[static_cast<std::size_t>(row)]; }
    const CGridRow& rowAt(int row) const { return *m_rows[static_cast<std::size_t>(row)]; }
    CGridColumn& columnAt(int column) { return m_columns[static_cast<std::size_t>(column)]; }
    const CGridColumn& columnAt(int column) const { return m_columns[static_cast<std::size_t>(column)]; }
    CGridCell& cellAt(Cell cell);
    const CGridCell& cellAt(Cell cell) const;
    const CGridCellCombo* listOf(Cell cell) const; // null for other kinds
    const CGridMerge* mergeAt(Cell cell) const;
    Cell originOf(Cell cell) const; // of the merge that it lies in, else itself

    int insertRow(int position, int level);
    void eraseRows(int first, int end);
    int branchEnd(int row) const; // behind its deeper rows
    void shapeChanged();          // rows have come, gone, opened or closed
    void changed();
    void editorChanged();
    void layOutShownRows() const;

    bool canEdit(Cell cell) const;
    bool beginEdit(Cell cell, Begun begun); // asks the dialog
    void openEditor(Cell cell, Begun begun);
    void dropEditor();
    bool editorKey(veldrin::TableKey key, veldrin::HeldKeys held);
    bool setEditorText(const CString& text);
    bool moveFocus(veldrin::TableKey key, veldrin::HeldKeys held);
    Cell nextCell(veldrin::TableKey key, veldrin::HeldKeys held) const;
    Cell besideFocus(int step, bool wrap) const;
    Cell rowsFromFocus(int rows) const;
    bool isShownColumn(int column) const;
    int edgeColumn(bool last) const;
    bool opensByKeys(int column) const;
    void focusByUser(Cell cell, bool extend);
    void endStrayEdit();
    bool toggleCheck(Cell cell);
    void toggleBranch(Cell cell);

    std::vector<std::unique_ptr<CGridRow>> m_rows;
    std::vector<CGridColumn> m_columns;
    int m_fixedRows = 0;
    int m_fixedColumns = 0;
    bool m_isListMode = false;
    bool m_isRedrawn = true;
    veldrin::TableView* m_view = nullptr;
    Cell m_wanted; // to be seen, when somebody shows the grid

    Cell m_focus;
    Cell m_anchor;         // where the selection began; its other end is the focus
    int m_wishColumn = -1; // that the focus would have without merged cells in its way
    std::optional<veldrin::CellEditor> m_editor;
    Begun m_begun = Begun::kByKeyboard;

    // Places of rows among those that are shown, laid out anew when asked for; not used while all are.
    mutable std::vector<int> m_shown;
    mutable std::vector<int> m_positions;
    mutable bool m_isLaidOut = false;
    int m_collapsed = 0; // rows that are

    Ask m_onBeginEdit;
    AskStored m_onEndEdit;
    Tell m_onSelectionChanged;
    Tell m_onClick;
    AskPicked m_onListSelection;
};

} // namespace plumb
