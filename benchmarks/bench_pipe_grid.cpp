// A grid of 100,000 rows and 10 columns: filling it, fitting its columns, scrolling through it as whoever
// shows it asks for cells, closing and opening its branches.
//
// The floor of filling and reading is a plain vector of vectors of texts in the same run.

#include "grid/CGridCtrl.h"
#include "require.h"
#include "runtime/Host.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <string>
#include <vector>

namespace {

constexpr int kRows = 100'000;
constexpr int kColumns = 10;
constexpr int kBranch = 100; // rows of one, its own among them
constexpr int kPage = 40;    // rows that a window shows

std::string cellText(int row, int column) {
    return "row " + std::to_string(row) + " cell " + std::to_string(column);
}

void make(plumb::CGridCtrl& grid) {
    grid.SetColumnCount(kColumns);
    grid.SetFixedRowCount(1);
    grid.SetRowCount(1);
    grid.SetTreeColumn(0);
    for (int column = 0; column < kColumns; ++column)
        grid.SetColumnField(column, "field" + std::to_string(column));
}

void fill(plumb::CGridCtrl& grid) {
    for (int row = 1; row <= kRows; ++row) {
        grid.InsertTreeRow(row % kBranch == 1 ? 1 : 2);
        for (int column = 0; column < kColumns; ++column)
            grid.SetItemText(row, column, cellText(row, column));
    }
}

plumb::CGridCtrl& filledGrid() {
    static plumb::CGridCtrl grid;
    if (grid.GetRowCount() == 0) {
        make(grid);
        fill(grid);
    }
    return grid;
}

using Texts = std::vector<std::vector<std::string>>;

Texts texts() {
    Texts rows;
    for (int row = 1; row <= kRows; ++row) {
        std::vector<std::string>& cells = rows.emplace_back(kColumns);
        for (int column = 0; column < kColumns; ++column)
            cells[static_cast<std::size_t>(column)] = cellText(row, column);
    }
    return rows;
}

void BM_Fill_Floor(benchmark::State& state) {
    for (auto _ : state) benchmark::DoNotOptimize(texts());
}
BENCHMARK(BM_Fill_Floor)->Unit(benchmark::kMillisecond);

void BM_Fill(benchmark::State& state) {
    for (auto _ : state) {
        plumb::CGridCtrl grid;
        make(grid);
        fill(grid);
        benchmark::DoNotOptimize(grid.GetRowCount());
    }
}
BENCHMARK(BM_Fill)->Unit(benchmark::kMillisecond);

void BM_FillByFields(benchmark::State& state) {
    std::vector<std::string> fields;
    for (int column = 0; column < kColumns; ++column) fields.push_back("field" + std::to_string(column));
    for (auto _ : state) {
        plumb::CGridCtrl grid;
        make(grid);
        for (int row = 1; row <= kRows; ++row) {
            grid.AppendRow();
            for (int column = 0; column < kColumns; ++column)
                grid.SetTextByField(row, fields[static_cast<std::size_t>(column)], cellText(row, column));
        }
        benchmark::DoNotOptimize(grid.GetRowCount());
    }
}
BENCHMARK(BM_FillByFields)->Unit(benchmark::kMillisecond);

void BM_FitColumns(benchmark::State& state) {
    const veldrin::Host host;
    for (auto _ : state) filledGrid().AutoSizeColumns();
    require(filledGrid().columnWidth(9) > 100, "the columns were not fitted");
}
BENCHMARK(BM_FitColumns)->Unit(benchmark::kMillisecond);

// All of it, a page at a time.
void BM_Scroll_Floor(benchmark::State& state) {
    static const Texts rows = texts();
    for (auto _ : state) {
        std::size_t letters = 0;
        for (const auto& row : rows)
            for (const std::string& cell : row) letters += std::string(cell).size();
        benchmark::DoNotOptimize(letters);
    }
}
BENCHMARK(BM_Scroll_Floor)->Unit(benchmark::kMillisecond);

void BM_Scroll(benchmark::State& state) {
    const veldrin::UiTable& table = filledGrid();
    for (auto _ : state) {
        std::size_t letters = 0;
        for (int top = 1; top < table.shownRowCount(); top += kPage)
            for (int at = top; at < std::min(top + kPage, table.shownRowCount()); ++at) {
                const int row = table.shownRow(at);
                for (int column = 0; column < kColumns; ++column) {
                    const veldrin::CellLook look = table.cellLook(row, column);
                    const bool isSelected = table.isSelected(row, column);
                    letters += table.cellText(row, column).size() + static_cast<std::size_t>(look.span) +
                               (isSelected ? 1 : 0);
                }
            }
        benchmark::DoNotOptimize(letters);
    }
}
BENCHMARK(BM_Scroll)->Unit(benchmark::kMillisecond);

// One branch, and what the window asks for afterwards.
void BM_CollapseAndExpand(benchmark::State& state) {
    plumb::CGridCtrl& grid = filledGrid();
    const int row = kRows / 2 / kBranch * kBranch + 1;
    for (auto _ : state) {
        require(grid.CollapseRow(row) && grid.positionOfRow(row + kBranch) == row + 1, "it did not close");
        require(grid.ExpandRow(row) && grid.shownRowCount() == kRows + 1, "it did not open");
    }
}
BENCHMARK(BM_CollapseAndExpand)->Unit(benchmark::kMicrosecond);

// All thousand of them.
void BM_CollapseAndExpandAll(benchmark::State& state) {
    plumb::CGridCtrl& grid = filledGrid();
    for (auto _ : state) {
        for (int row = 1; row <= kRows; row += kBranch) grid.CollapseRow(row);
        require(grid.shownRowCount() == 1 + kRows / kBranch, "some did not close");
        for (int row = 1; row <= kRows; row += kBranch) grid.ExpandRow(row);
        require(grid.shownRowCount() == 1 + kRows, "some did not open");
    }
}
BENCHMARK(BM_CollapseAndExpandAll)->Unit(benchmark::kMicrosecond);

} // namespace
