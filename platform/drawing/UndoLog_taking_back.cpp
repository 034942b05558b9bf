#include "drawing/AcDbDatabase.h"
#include "drawing/AcDbObjectAccess.h"
#include "drawing/SlotTable.h"
#include "drawing/UndoLog.h"

#include <algorithm>
#include <utility>

namespace veldrin {

// ---- Groups and marks

void UndoLog::beginGroup(const std::string& label) {
    endGroup();
    begin(label);
    m_isGroupOpen = true;
}

void UndoLog::endGroup() {
    if (std::exchange(m_isGroupOpen, false)) end();
}

void UndoLog::mark() {
    closeStep();
    m_steps.push_back({"Mark", {}, true});
    m_redo.clear();
}

bool UndoLog::hasMark() const {
    return std::ranges::any_of(m_steps, &Step::isMark);
}

void UndoLog::clear() {
    closeStep();
    m_steps.clear();
    m_redo.clear();
}

// ---- Taking back and doing again

bool UndoLog::isInUse(const Step& step, AcDbObjectId& culprit) const {
    const auto isOpen = [this](const Entry& entry) {
        return !entry.id.isNull() && m_database.slots()[entry.id.slot()].isOpen();
    };
    const auto found = std::ranges::find_if(step.entries, isOpen);
    if (found == step.entries.end()) return false;
    culprit = found->id;
    return true;
}

Acad::ErrorStatus UndoLog::swap(Entry& entry) {
    switch (entry.kind) {
    case Kind::kAppended:
    case Kind::kUnerased:
        AcDbObjectAccess::setErased(entry.id, true);
        entry.kind = Kind::kErased;
        return Acad::eOk;
    case Kind::kErased:
        AcDbObjectAccess::setErased(entry.id, false);
        entry.kind = Kind::kUnerased;
        return Acad::eOk;
    case Kind::kHeader: {
        auto now = std::make_shared<HeaderVariables>(m_database.header());
        m_database.setHeader(*entry.header);
        entry.header = std::move(now);
        return Acad::eOk;
    }
    case Kind::kState: break;
    }
    Slot& slot = m_database.slots()[entry.id.slot()];
    std::string now;
    Acad::ErrorStatus status = AcDbObjectAccess::record(*slot.object, AcDb::kUndoFiler, now);
    if (status != Acad::eOk) return status;
    slot.writer = slot.changed = true;
    status = restoreState(*slot.object, entry.record);
    if (status != Acad::eOk)
        restoreState(*slot.object, now);
    else
        entry.record = std::move(now);
    slot.writer = false;
    AcDbObjectAccess::touch(*slot.object);
    return status;
}

// Whole or not at all.
Acad::ErrorStatus UndoLog::swap(Step& step, AcDbObjectId& culprit) {
    if (isInUse(step, culprit)) return Acad::eWasOpenForWrite;
    std::ranges::reverse(step.entries);
    for (std::size_t i = 0; i < step.entries.size(); ++i) {
        const Acad::ErrorStatus status = swap(step.entries[i]);
        if (status == Acad::eOk) continue;
        culprit = step.entries[i].id;
        while (i-- > 0) swap(step.entries[i]);
        std::ranges::reverse(step.entries);
        return status;
    }
    return Acad::eOk;
}

UndoLog::Report UndoLog::undoSteps(std::size_t count) {
    Report report;
    closeStep();
    const bool wasRecording = std::exchange(m_recording, false);
    std::vector<Step> taken;
    while (report.steps.size() < count && !m_steps.empty()) {
        report.status = swap(m_steps.back(), report.culprit);
        if (report.status != Acad::eOk) break;
        report.steps.push_back({m_steps.back().label, {}, m_steps.back().isMark});
        taken.push_back(std::move(m_steps.back()));
        m_steps.pop_back();
    }
    m_recording = wasRecording;
    if (!taken.empty()) m_redo.push_back(std::move(taken));
    return report;
}

UndoLog::Report UndoLog::undo(std::size_t count) {
    return undoSteps(count);
}

UndoLog::Report UndoLog::undoToMark() {
    closeStep();
    const auto mark = std::ranges::find_if(m_steps.rbegin(), m_steps.rend(), &Step::isMark);
    return undoSteps(static_cast<std::size_t>(mark - m_steps.rbegin()) + 1);
}

UndoLog::Report UndoLog::redo() {
    Report report;
    if (m_redo.empty()) return report;
    closeStep();
    const bool wasRecording = std::exchange(m_recording, false);
    std::vector<Step>& taken = m_redo.back();
    while (!taken.empty()) {
        report.status = swap(taken.back(), report.culprit);
        if (report.status != Acad::eOk) break;
        report.steps.push_back({taken.back().label, {}, taken.back().isMark});
        m_steps.push_back(std::move(taken.back()));
        taken.pop_back();
    }
    m_recording = wasRecording;
    if (taken.empty()) m_redo.pop_back();
    return report;
}

} // namespace veldrin
