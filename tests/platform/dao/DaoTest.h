#pragma once

#include "dao/CDaoDatabase.h"
#include "dao/CDaoRecordset.h"
#include "dao/CDaoTableDef.h"

#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace veldrin::testing {

// An empty folder.
class DaoFolderTest : public ::testing::Test {
protected:
    DaoFolderTest() {
        std::string name = (std::filesystem::temp_directory_path() / "veldrin-dao-XXXXXX").string();
        folder = mkdtemp(name.data());
    }
    ~DaoFolderTest() override { std::filesystem::remove_all(folder); }

    std::string path(const std::string& name) const { return (folder / name).string(); }

    // The number of the failure; 0 when the action succeeds.
    template<class Action>
    static int failure(Action&& action) {
        try {
            action();
            return 0;
        } catch (const CDaoException& exception) {
            EXPECT_FALSE(exception.GetErrorMessage().empty());
            EXPECT_EQ(exception.GetErrorMessage().find('\n'), std::string::npos);
            return exception.number();
        }
    }

    // A value with its kind: "long 5", "yes", "'text'".
    static std::string shown(const COleVariant& value) {
        std::ostringstream text;
        switch (value.vt()) {
        case VT_EMPTY: return "empty";
        case VT_NULL: return "null";
        case VT_BOOL: return value.whole() == -1 ? "yes" : value.whole() == 0 ? "no" : "neither";
        case VT_BSTR: return "'" + value.text() + "'";
        case VT_I2: text << "integer " << value.whole(); break;
        case VT_I4: text << "long " << value.whole(); break;
        case VT_UI1: text << "byte " << value.whole(); break;
        case VT_R4: text << "single " << value.real(); break;
        case VT_R8: text << "double " << value.real(); break;
        case VT_DATE: text << "date " << value.real(); break;
        case VT_VARIANT:
            for (const COleVariant& item : value.items()) text << shown(item) << " ";
        }
        return text.str();
    }

    // The result of a query: its values with commas, its rows with semicolons between them.
    static std::string rows(CDaoDatabase& from, const std::string& sql) {
        const RowArray result = from.Select(sql);
        std::string text;
        for (std::size_t row = 0; row < result.rows(); ++row)
            for (std::size_t column = 0; column < result.columns(); ++column)
                text += (column ? ", " : row ? "; " : "") + shown(result.at(row, column));
        return text;
    }

    static bool seek(CDaoRecordset& records, const std::vector<COleVariant>& keys) {
        return records.Seek(keys);
    }

    std::filesystem::path folder;
};

// An empty database beside it, open.
class DaoTest : public DaoFolderTest {
protected:
    DaoTest() { database.Create(path("a.vq")); }

    std::int64_t run(const std::string& sql) { return database.Execute(sql); }
    std::string rows(const std::string& sql) { return DaoFolderTest::rows(database, sql); }

    // Field definitions in one expression.
    static CDaoFieldInfo field(const char* name, DaoFieldType type, long size = 0) {
        CDaoFieldInfo info;
        info.m_strName = name;
        info.m_nType = type;
        info.m_lSize = size;
        info.m_bAllowZeroLength = type == dbText || type == dbMemo;
        return info;
    }
    static CDaoFieldInfo counter(const char* name) {
        CDaoFieldInfo info = field(name, dbLong);
        info.m_lAttributes = dbAutoIncrField;
        return info;
    }
    void makeTable(const char* name, const std::vector<CDaoFieldInfo>& fields) {
        CDaoTableDef table(database);
        table.Create(name);
        for (const CDaoFieldInfo& info : fields) table.CreateField(info);
        table.Append();
    }

    CDaoDatabase database;
};

} // namespace veldrin::testing
