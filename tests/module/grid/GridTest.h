#pragma once

#include "grid/CGridCtrl.h"
#include "runtime/Host.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <string>

// A grid with a row of captions and a column of headers, which tells of its notifications.
class GridTest : public testing::Test {
protected:
    using Cell = plumb::CGridCtrl::Cell;
    using Key = veldrin::TableKey;

    void make(int columns, int rows) {
        grid.SetColumnCount(columns);
        grid.SetFixedRowCount(1);
        grid.SetFixedColumnCount(1);
        grid.SetRowCount(rows + 1);
        for (int row = 0; row <= rows; ++row)
            for (int column = 0; column < columns; ++column)
                grid.SetItemText(row, column, std::to_string(row) + "," + std::to_string(column));
        grid.OnBeginEdit([this](Cell at) { return tell("begin", at), mayBegin; });
        grid.OnEndEdit([this](Cell at, const std::string&) {
            return tell("end", at), told += grid.GetItemText(at.row, at.column) + ";", mayEnd;
        });
        grid.OnSelectionChanged([this](Cell at) { tell("focus", at); });
        grid.OnClick([this](Cell at) { tell("click", at); });
        grid.OnListSelection([this](Cell at, const std::string& picked) {
            return tell("pick", at), told += picked + ";", mayPick;
        });
    }
    void tell(const char* what, Cell at) {
        told += std::string(what) + " " + std::to_string(at.row) + "," + std::to_string(at.column) + ";";
    }
    std::string taken() { return std::exchange(told, {}); }
    std::string column(int at) const {
        std::string texts;
        for (int row = 1; row < grid.GetRowCount(); ++row) texts += grid.GetItemText(row, at) + " ";
        return texts;
    }
    std::string focus() const {
        return std::to_string(grid.GetFocusRow()) + "," + std::to_string(grid.GetFocusColumn());
    }
    std::string editing() const { return grid.editor() ? grid.editor()->text : "-"; }
    void press(Key key, bool control = false, bool shift = false) { grid.userKeys(key, {shift, control}); }
    void click(int row, int column, veldrin::CellPart part = veldrin::CellPart::kCell) {
        grid.userPresses({row, column}, false);
        grid.userReleases({row, column}, part);
    }
    void doubleClick(int row, int column) {
        click(row, column);
        grid.userDoubleClicks({row, column});
    }

    veldrin::Host host;
    plumb::CGridCtrl grid;
    std::string told;
    bool mayBegin = true;
    bool mayEnd = true;
    bool mayPick = true;
};
