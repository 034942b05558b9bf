#include "editor/Document.h"

#include "editor/DocumentManager.h"
#include "files/DrawingHold.h"
#include "runtime/Host.h"
#include "ui/UiBackend.h"

#include <algorithm>
#include <filesystem>

AcApDocument::~AcApDocument() = default;

namespace veldrin {

namespace {

int strength(AcAp::DocLockMode mode) {
    switch (mode) {
    case AcAp::kNone:
    case AcAp::kNotLocked: return 0;
    case AcAp::kRead: return 1;
    case AcAp::kAutoWrite: return 2;
    case AcAp::kProtectedAutoWrite: return 3;
    case AcAp::kWrite: return 4;
    case AcAp::kXWrite: return 5;
    }
    return 0;
}

} // namespace

Document::Document(std::string fileName, bool readOnly) : m_readOnly(readOnly) {
    setName(std::move(fileName));
}

Document::~Document() = default;

void Document::setName(std::string fileName) {
    m_fileName = std::move(fileName);
    m_title = std::filesystem::path(m_fileName).filename().string();
    if (m_database) m_database->setFilename(m_fileName);
}

AcAp::DocLockMode Document::strongest(const std::vector<Lock>& locks) {
    AcAp::DocLockMode mode = AcAp::kNotLocked;
    for (const Lock& lock : locks)
        if (strength(lock.mode) > strength(mode)) mode = lock.mode;
    return mode;
}

AcAp::DocLockMode Document::myLockMode() const {
    return strongest(m_locks);
}

bool Document::isQuiescent() const {
    Host& host = Host::current();
    return host.documents().activities().isEmpty() && host.ui().openWindows() == 0;
}

bool Document::admits(AcAp::DocLockMode mode, std::uint32_t activity) const {
    return std::none_of(m_locks.begin(), m_locks.end(), [&](const Lock& lock) {
        if (lock.activity == activity) return false;
        if (lock.mode == AcAp::kXWrite) return true;
        return lock.mode == AcAp::kProtectedAutoWrite && mode != AcAp::kRead;
    });
}

} // namespace veldrin
