#include "database/CDBConnection.h"
#include "database/WriteRetry.h"
#include "editor/aced.h"

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <iterator>
#include <thread>

namespace plumb {

namespace {

constexpr int kRetryable[] = {3009, 3046, 3158, 3164, 3186, 3187, 3188, 3189, 3202,
                              3211, 3212, 3218, 3225, 3260, 3261, 3262, 3624};
constexpr const char* kStoredEmptyText = " ";

bool isText(const CDaoFieldInfo& field) {
    return field.m_nType == dbText || field.m_nType == dbMemo;
}

COleVariant storedText(const CDaoFieldInfo& field, const CString& text) {
    if (text.empty()) return kStoredEmptyText;
    if (field.m_nType != dbText) return text;
    const CString cut(veldrin::dao::firstCharacters(text, static_cast<std::size_t>(field.m_lSize)));
    return cut.empty() ? COleVariant(kStoredEmptyText) : COleVariant(cut);
}

} // namespace

bool isRetryable(int errorNumber) {
    return std::find(std::begin(kRetryable), std::end(kRetryable), errorNumber) != std::end(kRetryable);
}

void pauseBeforeRetry() {
    constexpr int kShortest = 10;
    constexpr int kSpread = 490;
    std::this_thread::sleep_for(std::chrono::milliseconds(kShortest + std::rand() % kSpread));
}

bool CDBConnection::writeWithRetry(const std::function<Write()>& operation, OnFailure onFailure) {
    clearError();
    if (!hasTable() || !mayWrite()) return false;
    return retried(operation, onFailure);
}

bool CDBConnection::retried(const std::function<Write()>& operation, OnFailure onFailure) {
    for (int attempt = 1;; ++attempt) {
        try {
            return operation() == Write::kDone;
        } catch (const CDaoException& error) {
            const bool again = isRetryable(error.number());
            if (again && attempt < kWriteAttempts) {
                pauseBeforeRetry();
                continue;
            }
            spoilStore(error);
            if (again || onFailure == OnFailure::kRecord) record(error);
            return false;
        }
    }
}

bool CDBConnection::setFields(CDaoRecordset& table, const FieldArray& fields) {
    for (const FieldPair& field : fields) {
        try {
            const int at = table.findField(field.name);
            if (at < 0) throw CDaoException(kDaoItemNotFound, "There is no field " + field.name + ".");
            const CDaoFieldInfo& info = table.fields()[static_cast<std::size_t>(at)];
            if (info.m_lAttributes == dbAutoIncrField) continue;
            const bool becomesText = field.value.vt() == VT_BSTR && isText(info);
            table.SetFieldValue(field.name, becomesText ? storedText(info, field.value.text()) : field.value);
        } catch (const CDaoException& error) {
            spoilStore(error);
            acutPrintf("\nAppend error: %s", field.name.c_str());
            return false;
        }
    }
    return true;
}

void CDBConnection::fillDefaults(CDaoRecordset& table) {
    for (const CDaoFieldInfo& field : table.fields()) {
        if (!isText(field) || !field.m_bRequired) continue;
        if (!field.m_strDefaultValue.empty())
            table.SetFieldValue(field.m_strName, field.m_strDefaultValue);
        else
            table.SetFieldValue(field.m_strName, field.m_bAllowZeroLength ? "" : kStoredEmptyText);
    }
}

// What was begun is written, or taken back when a field cannot be set.
CDBConnection::Write CDBConnection::finishWrite(CDaoRecordset& table, const FieldArray& fields) {
    if (setFields(table, fields)) {
        table.Update();
        return Write::kDone;
    }
    table.CancelUpdate();
    return Write::kRefused;
}

bool CDBConnection::AddRecord(const FieldArray& fields, bool withDefaults, FieldArray* record) {
    const auto add = [&] {
        CDaoRecordset& table = *m_tables.GetHead();
        table.AddNew();
        if (withDefaults) fillDefaults(table);
        return finishWrite(table, fields);
    };
    if (!writeWithRetry(add, OnFailure::kRecord)) return false;
    // Behind the retry: the record is there now, and must not be added a second time.
    CDaoRecordset& table = *m_tables.GetHead();
    return attempt([&] { table.SetBookmark(table.GetLastModifiedBookmark()); }) && give(record);
}

bool CDBConnection::EditRecord(const FieldArray& fields, FieldArray* record) {
    const auto edit = [&] {
        CDaoRecordset& table = *m_tables.GetHead();
        table.Edit();
        return finishWrite(table, fields);
    };
    return writeWithRetry(edit, OnFailure::kRecord) && give(record);
}

bool CDBConnection::DeleteRecord() {
    return writeWithRetry(
        [&] {
            m_tables.GetHead()->Delete();
            return Write::kDone;
        },
        OnFailure::kStaySilent);
}

bool CDBConnection::StoreTogether(const std::function<void()>& write) {
    clearError();
    if (!IsOpen() || m_isStoring) {
        write();
        return true;
    }
    const auto begin = [&] {
        m_database.BeginTrans(true);
        return Write::kDone;
    };
    if (!retried(begin, OnFailure::kRecord)) return false;
    m_storeFailure.reset();
    m_isStoring = true;
    try {
        write();
    } catch (...) {
        endStore();
        throw;
    }
    if (!m_storeFailure) attempt([&] { m_database.CommitTrans(); });
    const std::optional<CDaoErrorInfo> failure = std::move(m_storeFailure);
    endStore();
    if (!failure) return true;
    m_hasError = true;
    m_lastError = *failure;
    return false;
}

// Takes back what is not committed.
void CDBConnection::endStore() {
    m_isStoring = false;
    m_storeFailure.reset();
    if (IsOpen()) m_database.Rollback();
}

} // namespace plumb
