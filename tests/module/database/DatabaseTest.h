#pragma once

#include "database/CDBConnection.h"
#include "module/ModuleTest.h"

// A connection to a small database of its own: pipe types with two of their sizes.
class DatabaseTest : public ModuleTest {
protected:
    DatabaseTest() {
        EXPECT_TRUE(connection.CreateDatabase(path));
        EXPECT_EQ(connection.Open(path, false, false), path);
        run("create table tblPipeType(ixPipeType INTEGER PRIMARY KEY AUTOINCREMENT, sName TEXT(12) COLLATE "
            "NOCASE DEFAULT ' ', sShortName TEXT(4) COLLATE NOCASE DEFAULT ' ', iSortOrder INTEGER DEFAULT "
            "0, "
            "ixMasterDatabase INTEGER, iMasterDatabaseIndex INTEGER, bReversed YESNO DEFAULT 0, iElbow "
            "INTEGER "
            "DEFAULT 0, iTee INTEGER DEFAULT 0, bFittingTicks YESNO DEFAULT 0, iLabelLocation INTEGER "
            "DEFAULT 0, "
            "bHidePipe YESNO DEFAULT 0, sNote LONGTEXT)");
        run("create index [tblPipeType.iSortOrder] on tblPipeType(iSortOrder)");
        run("create table tblPipeSize(ixPipeSize INTEGER PRIMARY KEY AUTOINCREMENT, ixPipeType INTEGER, "
            "sLabel "
            "TEXT(20) COLLATE NOCASE, dInteriorDiameter DOUBLE, dExteriorDiameter DOUBLE)");
        run("create index [tblPipeSize.ixPipeType] on tblPipeSize(ixPipeType)");
        run("create unique index [tblPipeSize.ixPipeType_sLabel] on tblPipeSize(ixPipeType, sLabel)");
        run("insert into tblPipeType(sName, sShortName, iSortOrder, bReversed) values "
            "('Cold water', 'CW', 2, 0), ('Vent', 'V', 3, -1), ('Hot water', 'HW', 1, 0)");
        run("insert into tblPipeSize(ixPipeType, sLabel, dInteriorDiameter) values (1, '1/2\"', 0.545), "
            "(1, '3/4\"', 0.785)");
    }

    void run(const char* sql) { EXPECT_TRUE(connection.Execute(sql)) << sql << ": " << lastError(); }
    std::string lastError() const {
        int code = 0;
        CString text;
        connection.GetLastError(code, text);
        return std::to_string(code) + " " + text;
    }
    int errorCode() const {
        int code = 0;
        CString text;
        connection.GetLastError(code, text);
        return code;
    }
    // The rows of a query, fields between blanks and rows between bars.
    std::string rows(const char* sql) {
        RowArray result;
        EXPECT_TRUE(connection.Select(sql, result)) << lastError();
        std::string text;
        for (std::size_t row = 0; row < result.rows(); ++row) {
            text += row == 0 ? "" : "|";
            for (std::size_t column = 0; column < result.columns(); ++column) {
                const COleVariant& value = result.at(row, column);
                text += column == 0 ? "" : " ";
                text += value.isNull()          ? "null"
                        : value.vt() == VT_BSTR ? "'" + value.text() + "'"
                        : value.isReal()        ? numberText(value.real())
                                                : std::to_string(value.whole());
            }
        }
        return text;
    }

    const std::string path = folder.file("T vq_plumb.vq");
    plumb::CDBConnection connection;
};
