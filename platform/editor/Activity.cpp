#include "editor/Activity.h"

#include "drawing/AcDbDatabase.h"
#include "drawing/DatabaseRegistry.h"
#include "drawing/UndoLog.h"
#include "editor/DocumentManager.h"
#include "runtime/Host.h"

#include <algorithm>

namespace veldrin {

std::vector<std::string> ActivityStack::commandNames() const {
    std::vector<std::string> names;
    for (const Entry& entry : m_entries)
        if (entry.kind == Kind::Command) names.push_back(entry.name);
    return names;
}

ActivityScope::ActivityScope(ActivityStack::Kind kind, std::string name)
    : m_stack(Host::current().documents().activities()), m_serial(++m_stack.m_lastSerial) {
    m_stack.m_entries.push_back({kind, m_serial, std::move(name)});
}

// Not always the innermost one: a command that waited for input may end while something else is at work.
ActivityScope::~ActivityScope() {
    std::erase_if(m_stack.m_entries, [this](const auto& entry) { return entry.serial == m_serial; });
    Host::current().documents().autoSaves().look();
}

UndoStep::UndoStep(const std::string& label) {
    AcDbDatabase* database = Host::current().databases().working();
    if (!database) return;
    m_generation = database->generation();
    database->undoLog().begin(label);
}

UndoStep::~UndoStep() {
    if (m_generation == 0) return;
    if (AcDbDatabase* database = Host::current().databases().find(m_generation)) database->undoLog().end();
    Host::current().documents().autoSaves().look();
}

} // namespace veldrin
