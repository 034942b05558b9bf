// Colours, merged cells and widths of a grid.

#include "grid/CGridCtrl.h"
#include "runtime/Host.h"
#include "ui/UiBackend.h"

#include <algorithm>
#include <array>

namespace plumb {

using veldrin::CellKind;

namespace {

constexpr int kLeastWidth = 20; // pixels of a column that is shown

} // namespace

// Widths of texts. Measuring a text costs much more than adding the widths of its letters up, which is near
// enough to tell that a text is not the widest.
class TextMeasure {
public:
    TextMeasure() : m_ui(veldrin::Host::current().ui()) {
        for (char letter = kFirst; letter <= kLast; ++letter)
            m_letters[at(letter)] = m_ui.textWidth({&letter, 1}, true);
    }

    // The width of the widest line, or of the widest so far.
    int widen(int widest, const CString& text, bool isBold) const {
        for (std::size_t from = 0; from <= text.size();) {
            const std::size_t end = std::min(text.find('\n', from), text.size());
            const std::string_view line(text.data() + from, end - from);
            if (mayExceed(widest, line)) widest = std::max(widest, m_ui.textWidth(line, isBold));
            from = end + 1;
        }
        return widest;
    }

private:
    static constexpr char kFirst = ' ';
    static constexpr char kLast = '~';
    static std::size_t at(char letter) { return static_cast<std::size_t>(letter - kFirst); }

    // Letters stand closer together than alone, or at most a little wider.
    bool mayExceed(int widest, std::string_view line) const {
        int sum = 0;
        for (const char letter : line) {
            if (letter < kFirst || letter > kLast) return true;
            sum += m_letters[at(letter)];
        }
        return sum + sum / 8 + 2 > widest;
    }

    veldrin::UiBackend& m_ui;
    std::array<int, kLast - kFirst + 1> m_letters{};
};

bool CGridCtrl::SetItemColors(int row, int column, std::optional<veldrin::Color> text,
                              std::optional<veldrin::Color> background) {
    if (!has({row, column})) return false;
    CGridCellFormat& format = cellAt({row, column}).ownFormat();
    format.text = text;
    format.background = background;
    changed();
    return true;
}

bool CGridCtrl::SetItemWeight(int row, int column, int weight) {
    if (!has({row, column})) return false;
    cellAt({row, column}).ownFormat().isBold = weight >= kBoldWeight;
    changed();
    return true;
}

veldrin::CellLook CGridCtrl::cellLook(int row, int column) const {
    veldrin::CellLook look;
    if (!has({row, column})) return look;
    if (const auto& format = cellAt({row, column}).format) {
        look.text = format->text;
        look.background = format->background;
        look.isBold = format->isBold;
    }
    if (const CGridMerge* merge = mergeAt({row, column}))
        look.span = merge->first == column ? merge->last - merge->first + 1 : 0;
    return look;
}

const CGridMerge* CGridCtrl::mergeAt(Cell cell) const {
    for (const CGridMerge& merge : rowAt(cell.row).merges)
        if (cell.column >= merge.first && cell.column <= merge.last) return &merge;
    return nullptr;
}

CGridCtrl::Cell CGridCtrl::originOf(Cell cell) const {
    if (!has(cell)) return cell;
    const CGridMerge* merge = mergeAt(cell);
    return merge ? Cell{cell.row, merge->first} : cell;
}

bool CGridCtrl::MergeCells(int firstRow, int firstColumn, int lastRow, int lastColumn) {
    if (firstRow != lastRow || firstColumn >= lastColumn) return false;
    if (!UnmergeCells(firstRow, firstColumn, lastRow, lastColumn)) return false;
    rowAt(firstRow).merges.push_back({firstColumn, lastColumn});
    return true;
}

bool CGridCtrl::UnmergeCells(int firstRow, int firstColumn, int lastRow, int lastColumn) {
    if (!has({firstRow, firstColumn}) || !has({lastRow, lastColumn})) return false;
    for (int row = firstRow; row <= lastRow; ++row)
        std::erase_if(rowAt(row).merges, [&](const CGridMerge& merge) {
            return merge.first <= lastColumn && merge.last >= firstColumn;
        });
    changed();
    return true;
}

int CGridCtrl::columnWidth(int column) const {
    return hasColumn(column) ? columnAt(column).width : 0;
}

void CGridCtrl::userSizesColumn(int column, int width) {
    if (columnWidth(column) > 0) SetColumnWidth(column, std::max(width, kLeastWidth));
}

int CGridCtrl::rowLines(int row) const {
    if (row >= m_fixedRows || !hasRow(row)) return 1;
    std::ptrdiff_t lines = 1;
    for (const CGridCell& cell : rowAt(row).cells)
        lines = std::max(lines, 1 + std::count(cell.text.begin(), cell.text.end(), '\n'));
    return static_cast<int>(lines);
}

// A merged cell has the room of all its columns, and widens none.
void CGridCtrl::AutoSizeColumns() {
    const TextMeasure measure;
    for (int column = 0; column < GetColumnCount(); ++column) {
        if (columnAt(column).width == 0) continue;
        int widest = kLeastWidth - 2 * veldrin::kCellMargin;
        for (int row = 0; row < GetRowCount(); ++row) {
            if (mergeAt({row, column})) continue;
            const CGridCell& cell = cellAt({row, column});
            const CellKind kind = cellKind(row, column);
            if (kind == CellKind::kCheck || cell.text.empty()) continue;
            const int indent = columnAt(column).isTree ? rowAt(row).level * veldrin::kTreeIndent : 0;
            const int arrow = kind == CellKind::kText ? 0 : veldrin::kListArrow;
            const bool isBold = row < m_fixedRows || (cell.format && cell.format->isBold);
            const int beside = indent + arrow;
            widest = measure.widen(widest - beside, cell.text, isBold) + beside;
        }
        columnAt(column).width = widest + 2 * veldrin::kCellMargin;
    }
    changed();
}

} // namespace plumb
