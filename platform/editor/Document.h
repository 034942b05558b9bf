#pragma once

#include "drawing/AcDbDatabase.h"
#include "editor/AutoSaves.h"
#include "editor/SystemVariables.h"
#include "editor/acDocManager.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace veldrin {

class DrawingHold;

// An open drawing: its database, its name, its locks, and the system variables that belong to it without
// being kept in its file.
class VELDRIN_API Document : public AcApDocument {
public:
    Document(std::string fileName, bool readOnly);
    ~Document() override;

    const char* fileName() const override { return m_fileName.c_str(); }
    const char* docTitle() const override { return m_title.c_str(); }
    AcDbDatabase* database() const override { return m_database.get(); }
    AcAp::DocLockMode myLockMode() const override;
    bool isQuiescent() const override;
    bool isReadOnly() const override { return m_readOnly; }

    const std::string& path() const { return m_fileName; }
    // It has a file: its name is an absolute path.
    bool isTitled() const { return !m_fileName.empty() && m_fileName.front() == '/'; }
    bool isLocked() const { return !m_locks.empty(); }
    VariableStore& variables() { return m_variables; }
    AutoSaveState& autoSave() { return m_autoSave; }
    const AutoSaveState& autoSave() const { return m_autoSave; }

private:
    friend class DocumentManager;
    struct Lock {
        AcAp::DocLockMode mode;
        std::uint32_t activity; // who took it
    };

    static AcAp::DocLockMode strongest(const std::vector<Lock>& locks);
    void setName(std::string fileName);
    // An exclusive lock shuts out what another command or handler asks for, a protected one its writing.
    bool admits(AcAp::DocLockMode mode, std::uint32_t activity) const;

    std::string m_fileName;
    std::string m_title;
    std::unique_ptr<AcDbDatabase> m_database;
    std::vector<Lock> m_locks;
    VariableStore m_variables;
    AutoSaveState m_autoSave;
    std::unique_ptr<DrawingHold> m_hold; // of its file, if nobody else has it
    bool m_readOnly;
};

} // namespace veldrin
