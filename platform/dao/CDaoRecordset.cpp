#include "dao/CDaoRecordset.h"

#include "dao/Connection.h"
#include "dao/SqlText.h"
#include "dao/TableInfo.h"
#include "dao/TableWalk.h"

#include <fmt/format.h>
#include <sqlite3.h>

#include <algorithm>

namespace dao = veldrin::dao;

namespace {

constexpr std::size_t kMostKeys = 10;

[[noreturn]] void throwDeleted() {
    throw CDaoException(kDaoRecordDeleted, "The record has been deleted.");
}

} // namespace

CDaoRecordset::CDaoRecordset(CDaoDatabase& database) : m_database(database) {}
CDaoRecordset::~CDaoRecordset() {
    endEdit();
}

void CDaoRecordset::Open(const CString& table, bool readOnly) {
    Close();
    m_table = dao::readTableInfo(m_database.connection(), table);
    m_walk = std::make_unique<dao::TableWalk>(m_database.connection(), m_table);
    m_name = table;
    m_readOnly = readOnly;
}

void CDaoRecordset::Close() {
    endEdit();
    m_walk.reset();
    m_table.reset();
    m_index.clear();
}

bool CDaoRecordset::CanUpdate() const {
    return m_table && !m_readOnly && m_database.CanUpdate();
}

void CDaoRecordset::requireUpdatable() const {
    if (!CanUpdate()) throw CDaoException(kDaoReadOnly, fmt::format("{} cannot be written.", m_name));
}

void CDaoRecordset::SetCurrentIndex(const CString& index) {
    const dao::IndexInfo* found = index.empty() ? nullptr : m_table->findIndex(index);
    if (!found && !index.empty())
        throw CDaoException(kDaoNotAnIndex, fmt::format("{} is no index of {}.", index, m_name));
    m_walk->setIndex(found);
    m_index = index;
}

bool CDaoRecordset::Seek(std::span<const COleVariant> keys) {
    endEdit();
    if (m_index.empty()) throw CDaoException(kDaoNoCurrentIndex, "A seek needs a current index.");
    const std::size_t most = m_walk->index() ? m_walk->index()->keys.size() : 1;
    if (keys.empty() || keys.size() > std::min(most, kMostKeys))
        throw CDaoException(kDaoWrongParameters, fmt::format("The index {} of {} has {} keys, not {}.",
                                                             m_index, m_name, most, keys.size()));
    return m_walk->seek(keys);
}

void CDaoRecordset::MoveFirst() {
    endEdit();
    m_walk->first();
    if (!m_walk->hasRow())
        throw CDaoException(kDaoNoCurrentRecord, fmt::format("{} has no records.", m_name));
}

void CDaoRecordset::MoveLast() {
    endEdit();
    m_walk->last();
    if (!m_walk->hasRow())
        throw CDaoException(kDaoNoCurrentRecord, fmt::format("{} has no records.", m_name));
}

void CDaoRecordset::MoveNext() {
    endEdit();
    m_walk->next();
}

void CDaoRecordset::MovePrev() {
    endEdit();
    m_walk->previous();
}

void CDaoRecordset::Move(long rows) {
    endEdit();
    for (; rows > 0; --rows) m_walk->next();
    for (; rows < 0; ++rows) m_walk->previous();
}

bool CDaoRecordset::IsBOF() {
    return m_walk->isBefore();
}
bool CDaoRecordset::IsEOF() {
    return m_walk->isBehind();
}

std::int64_t CDaoRecordset::GetRecordCount() {
    return m_database.connection().number("select count(*) from " + m_table->engineName);
}

void CDaoRecordset::AddNew() {
    requireUpdatable();
    endEdit();
    m_pending = Pending::kAdd;
}

void CDaoRecordset::Edit() {
    requireUpdatable();
    endEdit();
    dao::Connection& connection = m_database.connection();
    const std::int64_t row = m_walk->row();
    if (m_pessimistic && !connection.isInTransaction()) {
        connection.begin(true);
        m_holdsLock = true;
    }
    m_pending = Pending::kEdit;
    m_walk->readAgain();
    if (m_walk->hasRow() && m_walk->row() == row) return;
    endEdit();
    throwDeleted();
}

void CDaoRecordset::SetFieldValue(std::string_view field, const COleVariant& value) {
    if (m_pending == Pending::kNothing)
        throw CDaoException(kDaoNotEditing, "A field can be set between AddNew or Edit and Update only.");
    const int at = findField(field);
    if (at < 0) throw CDaoException(kDaoItemNotFound, fmt::format("{} has no field {}.", m_name, field));
    const CDaoFieldInfo& info = m_table->fields[static_cast<std::size_t>(at)];
    if (info.m_lAttributes & dbAutoIncrField)
        throw CDaoException(kDaoReadOnly, fmt::format("{} is given by the database.", field));
    COleVariant stored = dao::fieldValue(info, value);
    if (stored.isNull() && info.m_bRequired)
        throw CDaoException(kDaoRequired, fmt::format("{} needs a value.", field));
    std::erase_if(m_changes, [at](const auto& change) { return change.first == at; });
    m_changes.emplace_back(at, std::move(stored));
}

void CDaoRecordset::Update() {
    if (m_pending == Pending::kNothing) throw CDaoException(kDaoNotEditing, "Update without AddNew or Edit.");
    try {
        if (m_pending == Pending::kAdd)
            insertRecord();
        else
            updateRecord();
    } catch (const CDaoException&) {
        endEdit();
        throw;
    }
    m_pending = Pending::kNothing;
    m_changes.clear();
}

void CDaoRecordset::insertRecord() {
    CString names;
    CString places;
    for (const auto& [field, value] : m_changes) {
        names += (names.empty() ? "" : ", ") +
                 dao::bracketed(m_table->fields[static_cast<std::size_t>(field)].m_strName);
        places += places.empty() ? "?" : ", ?";
    }
    const CString values = names.empty() ? " default values" : fmt::format("({}) values({})", names, places);
    dao::Connection& connection = m_database.connection();
    dao::Transaction transaction(connection);
    const auto statement = connection.prepare("insert into " + m_table->engineName + values);
    int parameter = 0;
    for (const auto& [field, value] : m_changes) statement->bind(++parameter, value);
    statement->runToEnd();
    const std::int64_t row = sqlite3_last_insert_rowid(connection.handle());
    transaction.commit();
    m_lastModified = row;
}

void CDaoRecordset::updateRecord() {
    const std::int64_t row = m_walk->row();
    dao::Connection& connection = m_database.connection();
    if (!m_changes.empty()) {
        CString assignments;
        for (const auto& [field, value] : m_changes)
            assignments += (assignments.empty() ? "" : ", ") +
                           dao::bracketed(m_table->fields[static_cast<std::size_t>(field)].m_strName) +
                           " = ?";
        dao::Transaction transaction(connection);
        const auto statement =
            connection.prepare("update " + m_table->engineName + " set " + assignments + " where rowid = ?");
        int parameter = 0;
        for (const auto& [field, value] : m_changes) statement->bind(++parameter, value);
        statement->bind(++parameter, row);
        statement->runToEnd();
        if (sqlite3_changes64(connection.handle()) == 0) throwDeleted();
        m_walk->readAgain();
        transaction.commit();
    }
    if (m_holdsLock) {
        m_walk->row(); // reads the record as it is now stored, while nobody else writes
        connection.commit();
        m_holdsLock = false;
    }
    m_lastModified = row;
}

void CDaoRecordset::CancelUpdate() {
    endEdit();
}

void CDaoRecordset::endEdit() {
    m_pending = Pending::kNothing;
    m_changes.clear();
    if (!m_holdsLock) return;
    m_holdsLock = false;
    if (!m_database.IsOpen()) return;
    // The edit itself has written nothing yet; what others wrote on this connection meanwhile stays.
    try {
        m_database.connection().commit();
    } catch (const CDaoException&) {
        m_database.connection().rollback();
    }
}

void CDaoRecordset::Delete() {
    requireUpdatable();
    endEdit();
    dao::Connection& connection = m_database.connection();
    const std::int64_t row = m_walk->row();
    dao::Transaction transaction(connection);
    const auto statement = connection.prepare("delete from " + m_table->engineName + " where rowid = ?");
    statement->bind(1, row);
    statement->runToEnd();
    const bool wasThere = sqlite3_changes64(connection.handle()) != 0;
    transaction.commit();
    m_walk->forgetRow();
    if (!wasThere) throwDeleted();
}

CDaoRecordset::Bookmark CDaoRecordset::GetBookmark() {
    return m_walk->row();
}

void CDaoRecordset::SetBookmark(Bookmark bookmark) {
    endEdit();
    if (!m_walk->goTo(bookmark)) throwDeleted();
}

std::span<const CDaoFieldInfo> CDaoRecordset::fields() const {
    return m_table->fields;
}

int CDaoRecordset::findField(std::string_view field) const {
    return m_table->findField(field);
}

std::span<const COleVariant> CDaoRecordset::record() {
    return m_walk->record();
}

const COleVariant& CDaoRecordset::GetFieldValue(std::string_view field) {
    const int at = findField(field);
    if (at < 0) throw CDaoException(kDaoItemNotFound, fmt::format("{} has no field {}.", m_name, field));
    return m_walk->record()[static_cast<std::size_t>(at)];
}

std::vector<CString> CDaoRecordset::GetIndexNames() const {
    std::vector<CString> names;
    for (const dao::IndexInfo& index : m_table->indexes) names.push_back(index.name);
    return names;
}
