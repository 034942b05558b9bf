#include "drawing/UndoLog.h"

#include "drawing/AcDbDatabase.h"
#include "drawing/AcDbObjectAccess.h"
#include "drawing/RecordFiler.h"
#include "drawing/SlotTable.h"

#include <algorithm>
#include <utility>

namespace veldrin {

UndoLog::UndoLog(AcDbDatabase& database) : m_database(database) {}
UndoLog::~UndoLog() = default;

void UndoLog::begin(const std::string& label) {
    if (m_depth++ > 0) return;
    closeStep();
    m_label = label;
}

void UndoLog::end() {
    if (m_depth == 0 || --m_depth > 0) return;
    closeStep();
    m_label.clear();
}

void UndoLog::closeStep() {
    if (m_stepStarted) ++m_serial;
    m_stepStarted = false;
}

UndoLog::Step& UndoLog::openStep() {
    if (!m_stepStarted) {
        m_steps.push_back({m_label, {}, false});
        m_redo.clear();
    }
    m_stepStarted = true;
    return m_steps.back();
}

void UndoLog::fileEntry(Entry entry) {
    if (m_recording) openStep().entries.push_back(std::move(entry));
}

Acad::ErrorStatus UndoLog::fileState(AcDbObjectId id) {
    Slot& slot = m_database.slots()[id.slot()];
    std::string record;
    const Acad::ErrorStatus status = AcDbObjectAccess::record(*slot.object, AcDb::kUndoFiler, record);
    if (status != Acad::eOk) return status;
    if (!m_recording || slot.undoStep == m_serial) {
        m_reopened[id.slot()] = std::move(record);
        return Acad::eOk;
    }
    fileEntry({Kind::kState, id, std::move(record), nullptr});
    slot.undoStep = m_serial;
    slot.appended = false;
    return Acad::eOk;
}

void UndoLog::fileAppended(AcDbObjectId id) {
    if (!m_recording) return;
    fileEntry({Kind::kAppended, id, {}, nullptr});
    Slot& slot = m_database.slots()[id.slot()];
    slot.undoStep = m_serial;
    slot.appended = true;
}

void UndoLog::fileErased(AcDbObjectId id, bool erased) {
    fileEntry({erased ? Kind::kErased : Kind::kUnerased, id, {}, nullptr});
}

void UndoLog::fileHeader(const HeaderVariables& before) {
    fileEntry({Kind::kHeader, {}, {}, std::make_shared<HeaderVariables>(before)});
}

std::string UndoLog::stateAtOpening(AcDbObjectId id) const {
    if (const auto reopened = m_reopened.find(id.slot()); reopened != m_reopened.end())
        return reopened->second;
    if (!m_stepStarted) return {};
    const std::vector<Entry>& entries = m_steps.back().entries;
    const auto filed = std::find_if(entries.rbegin(), entries.rend(), [id](const Entry& entry) {
        return entry.kind == Kind::kState && entry.id == id;
    });
    return filed == entries.rend() ? std::string() : filed->record;
}

void UndoLog::forgetOpening(AcDbObjectId id) {
    if (!m_reopened.empty()) m_reopened.erase(id.slot());
}

Acad::ErrorStatus restoreState(AcDbObject& object, const std::string& record) {
    return restoreInto(object, object.database(), record);
}

Acad::ErrorStatus restoreInto(AcDbObject& object, AcDbDatabase* database, const std::string& record) {
    RecordReader reader(AcDb::kUndoFiler, database, record);
    return object.dwgInFields(&reader);
}

} // namespace veldrin
