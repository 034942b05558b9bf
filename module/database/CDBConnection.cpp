#include "database/CDBConnection.h"

#include "database/WriteRetry.h"
#include "editor/aced.h"
#include "projects/LockTrust.h"
#include "projects/ProjectSchema.h"

#include <algorithm>

namespace plumb {

CDBConnection::~CDBConnection() {
    Close();
}

void CDBConnection::record(const CDaoException& error) {
    m_hasError = true;
    m_lastError = error.errorInfo();
    spoilStore(error);
}

void CDBConnection::spoilStore(const CDaoException& error) {
    if (m_isStoring && !m_storeFailure) m_storeFailure = error.errorInfo();
}

void CDBConnection::GetLastError(int& code, CString& description) const {
    code = m_lastError.m_lErrorCode;
    description = m_lastError.m_strDescription;
}

CString CDBConnection::Open(const CString& path, bool exclusive, bool readOnly) {
    constexpr const char* kRepair = "*REPAIR*";
    Close();
    clearError();
    try {
        m_database.Open(path, exclusive, readOnly);
        return m_database.GetName();
    } catch (const CDaoException& error) {
        if (error.number() != kDaoCannotOpen) {
            record(error);
            // What is merely busy, or of another engine, is not for repair.
            const bool isWhole = isRetryable(error.number()) || error.number() == kDaoFormerEngine;
            return isWhole ? CString() : CString(kRepair);
        }
    }
    return attempt([&] { m_database.Open(path, exclusive, true); }) ? m_database.GetName() : CString();
}

bool CDBConnection::OpenOrFlagReadOnly(const CString& path, bool& isReadOnly) {
    Close();
    clearError();
    isReadOnly = false;
    try {
        m_database.Open(path);
        return true;
    } catch (const CDaoException& error) {
        isReadOnly = error.number() == kDaoCannotOpen;
        if (!isReadOnly) record(error);
        return isReadOnly;
    }
}

bool CDBConnection::Close() {
    clearError();
    if (!IsOpen()) return true;
    CloseAllTables();
    m_database.Close();
    return true;
}

CString CDBConnection::GetName() const {
    return IsOpen() ? m_database.GetName() : CString();
}

std::vector<CString> CDBConnection::Doubts() {
    std::vector<CString> doubts;
    attempt([&] {
        doubts.push_back(veldrin::describeSchemaGaps(m_database));
        doubts.push_back(veldrin::describeLockDoubts(m_database.GetName()));
    });
    std::erase(doubts, CString());
    return doubts;
}

bool CDBConnection::CreateDatabase(const CString& path) {
    clearError();
    return attempt([&] { CDaoDatabase().Create(path); });
}

bool CDBConnection::CompactDatabase(const CString& source, const CString& destination) {
    clearError();
    return attempt([&] { CDaoWorkspace::CompactDatabase(source, destination); });
}

bool CDBConnection::hasTable() {
    return IsOpen() && !m_tables.IsEmpty() && m_tables.GetHead() && m_tables.GetHead()->IsOpen();
}

const CDaoRecordset* CDBConnection::currentTable() {
    return hasTable() ? m_tables.GetHead().get() : nullptr;
}

bool CDBConnection::ReadCurrent(std::span<const COleVariant>& values) {
    return hasTable() && attempt([&] { values = m_tables.GetHead()->record(); });
}

bool CDBConnection::OpenTable(const CString& table, const CString& index) {
    clearError();
    if (!IsOpen()) return true;
    return attempt([&] {
        const bool isCurrent = !m_tables.IsEmpty() && m_tables.GetHead()->GetName() == table;
        if (!isCurrent) {
            const auto found = std::find_if(m_tables.begin(), m_tables.end(),
                                            [&](const auto& open) { return open->GetName() == table; });
            if (found != m_tables.end()) {
                std::swap(*found, m_tables.GetHead());
            } else {
                auto opened = std::make_unique<CDaoRecordset>(m_database);
                opened->Open(table, !CanUpdate());
                m_tables.AddHead(std::move(opened));
            }
        }
        CDaoRecordset& head = *m_tables.GetHead();
        if (!index.empty() && head.GetCurrentIndex() != index) head.SetCurrentIndex(index);
    });
}

CString CDBConnection::GetCurrentTable() const {
    return IsOpen() && !m_tables.IsEmpty() ? m_tables.GetHead()->GetName() : CString();
}

CString CDBConnection::GetCurrentIndex() const {
    return IsOpen() && !m_tables.IsEmpty() ? m_tables.GetHead()->GetCurrentIndex() : CString();
}

void CDBConnection::CloseTable(const CString& table) {
    clearError();
    const auto found = std::find_if(m_tables.begin(), m_tables.end(),
                                    [&](const auto& open) { return open->GetName() == table; });
    if (found != m_tables.end()) m_tables.RemoveAt(found);
}

bool CDBConnection::CloseCurrentTable() {
    clearError();
    if (!IsOpen() || m_tables.IsEmpty()) return false;
    m_tables.RemoveHead();
    return true;
}

bool CDBConnection::CloseAllTables() {
    clearError();
    m_tables.RemoveAll();
    return true;
}

bool CDBConnection::GetIndexNames(std::vector<CString>& names) {
    clearError();
    names.clear();
    if (!hasTable()) return false;
    names = m_tables.GetHead()->GetIndexNames();
    return !names.empty();
}

bool CDBConnection::GetFieldCount(int& count) {
    clearError();
    if (!hasTable()) return false;
    count = static_cast<int>(m_tables.GetHead()->fields().size());
    return true;
}

bool CDBConnection::GetFieldName(int index, CString& name) {
    int count = 0;
    if (!GetFieldCount(count) || index < 0 || index >= count) return false;
    name = m_tables.GetHead()->fields()[static_cast<std::size_t>(index)].m_strName;
    return true;
}

bool CDBConnection::GetFieldInfo(const CString& field, FieldArray& info) {
    clearError();
    if (!hasTable()) return false;
    const CDaoRecordset& table = *m_tables.GetHead();
    const int at = table.findField(field);
    if (at < 0)
        return attempt([&] { throw CDaoException(kDaoItemNotFound, "There is no field " + field + "."); });
    const CDaoFieldInfo& f = table.fields()[static_cast<std::size_t>(at)];
    const auto flag = [](bool value) { return COleVariant(static_cast<std::int16_t>(value)); };
    info = {{"strName", f.m_strName},
            {"nType", static_cast<std::int16_t>(f.m_nType)},
            {"lSize", static_cast<std::int32_t>(f.m_lSize)},
            {"lAttributes", static_cast<std::int32_t>(f.m_lAttributes)},
            {"nOrdinalPosition", std::int16_t{f.m_nOrdinalPosition}},
            {"bRequired", flag(f.m_bRequired)},
            {"bAllowZeroLength", flag(f.m_bAllowZeroLength)},
            {"strDefaultValue", f.m_strDefaultValue}};
    return true;
}

bool CDBConnection::give(FieldArray* record) {
    return !record || GetRecord(*record);
}

bool CDBConnection::GetRecord(FieldArray& record) {
    clearError();
    if (!hasTable()) return false;
    return attempt([&] {
        CDaoRecordset& table = *m_tables.GetHead();
        const std::span<const COleVariant> values = table.record();
        record.clear();
        record.reserve(values.size());
        for (std::size_t i = 0; i < values.size(); ++i)
            record.push_back({table.fields()[i].m_strName, values[i]});
    });
}

bool CDBConnection::GetBlankRecord(FieldArray& record) {
    clearError();
    if (!hasTable()) return false;
    record.clear();
    for (const CDaoFieldInfo& field : m_tables.GetHead()->fields()) {
        COleVariant blank;
        switch (field.m_nType) {
        case dbBoolean:
        case dbByte:
        case dbInteger:
        case dbLong: blank = std::int32_t{0}; break;
        case dbSingle:
        case dbDouble: blank = 0.0; break;
        case dbDate:
        case dbText:
        case dbMemo: blank = ""; break;
        default: break;
        }
        record.push_back({field.m_strName, blank});
    }
    return true;
}

bool CDBConnection::SeekMany(std::span<const COleVariant> keys, FieldArray* record) {
    clearError();
    if (!hasTable()) return false;
    bool found = false;
    return attempt([&] { found = m_tables.GetHead()->Seek(keys); }) && found && give(record);
}

bool CDBConnection::Seek1(const COleVariant& key, FieldArray* record) {
    return SeekMany(std::span(&key, 1), record);
}

bool CDBConnection::Seek2(const COleVariant& first, const COleVariant& second, FieldArray* record) {
    const COleVariant keys[] = {first, second};
    return SeekMany(keys, record);
}

bool CDBConnection::Seek3(const COleVariant& first, const COleVariant& second, const COleVariant& third,
                          FieldArray* record) {
    const COleVariant keys[] = {first, second, third};
    return SeekMany(keys, record);
}

bool CDBConnection::MoveFirst(FieldArray* record) {
    clearError();
    return hasTable() && attempt([&] { m_tables.GetHead()->MoveFirst(); }) && give(record);
}

bool CDBConnection::MoveLast(FieldArray* record) {
    clearError();
    return hasTable() && attempt([&] { m_tables.GetHead()->MoveLast(); }) && give(record);
}

bool CDBConnection::Move(long rows, FieldArray* record) {
    clearError();
    if (rows == 0 || !hasTable()) return false;
    CDaoRecordset& table = *m_tables.GetHead();
    bool isOnRecord = false;
    return attempt([&] {
               table.Move(rows);
               isOnRecord = !table.IsEOF() && !table.IsBOF();
           }) &&
           isOnRecord && give(record);
}

bool CDBConnection::IsBOF() {
    clearError();
    bool answer = false;
    return hasTable() && attempt([&] { answer = m_tables.GetHead()->IsBOF(); }) && answer;
}

bool CDBConnection::IsEOF() {
    clearError();
    bool answer = false;
    return hasTable() && attempt([&] { answer = m_tables.GetHead()->IsEOF(); }) && answer;
}

bool CDBConnection::GetRecordCount(int& count) {
    clearError();
    count = 0;
    return hasTable() && attempt([&] { count = static_cast<int>(m_tables.GetHead()->GetRecordCount()); });
}

bool CDBConnection::GetFieldValue(const CString& field, COleVariant& value) {
    clearError();
    value = COleVariant::null();
    return hasTable() && attempt([&] { value = m_tables.GetHead()->GetFieldValue(field); });
}

bool CDBConnection::GetFieldValueAt(int index, COleVariant& value) {
    CString name;
    value = COleVariant::null();
    return GetFieldName(index, name) && GetFieldValue(name, value);
}

bool CDBConnection::Select(const CString& sql, RowArray& rows) {
    clearError();
    rows = {};
    return IsOpen() && attempt([&] { rows = m_database.Select(sql); });
}

bool CDBConnection::Execute(const CString& sql) {
    int ignored = 0;
    return ExecuteCount(sql, ignored);
}

bool CDBConnection::ExecuteCount(const CString& sql, int& count) {
    clearError();
    count = 0;
    if (!IsOpen()) return true;
    return mayWrite() && attempt([&] { count = static_cast<int>(m_database.Execute(sql)); });
}

bool CDBConnection::SelectQuery(const CString& query, const FieldArray& parameters, RowArray& rows) {
    clearError();
    rows = {};
    if (!IsOpen()) return true;
    return attempt([&] {
        CDaoQueryDef stored(m_database);
        stored.Open(query);
        for (const FieldPair& parameter : parameters) stored.SetParamValue(parameter.name, parameter.value);
        rows = stored.Snapshot();
    });
}

bool CDBConnection::SetQuerySql(const CString& query, const CString& sql) {
    clearError();
    if (!IsOpen()) return true;
    CDaoQueryDef stored(m_database);
    if (attempt([&] {
            stored.Open(query);
            stored.SetSQL(sql);
        }))
        return true;
    return attempt([&] {
        stored.Create(query, sql);
        stored.Append();
    });
}

bool ReportDatabaseError(const CDBConnection& connection) {
    acedRetNil();
    if (!connection.HasError()) return false;
    int code = 0;
    CString description;
    connection.GetLastError(code, description);
    switch (code) {
    case kDaoNoCurrentRecord: break;
    case kDaoDiskOrNetwork:
        acutPrintf("\nA disk or network error occurred while trying to access the database.");
        acutPrintf(
            "Try the command again. If it continues to not work, try restarting AutoCAD. If that does not "
            "fix the error, try restarting your computer.");
        break;
    default: acutPrintf("\nDatabase Error: %s", description.c_str());
    }
    return true;
}

} // namespace plumb
