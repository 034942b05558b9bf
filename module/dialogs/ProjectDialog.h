#pragma once

#include "dialogs/DialogFrame.h"
#include "dialogs/DialogGrid.h"
#include "host/LispCall.h"

#include <cstdlib>
#include <vector>

namespace plumb {

class CDBConnection;

// What a dialog is made of, but for its grids.
struct ProjectDialogForm {
    const DialogTemplate& form;
    const char* savedName; // under which its place on the screen is kept
    std::span<const ControlResize> resize;
};

// A dialog on a project database that it borrows. A class of it has its grids as members, hangs its rules on
// them and its handlers on the buttons in its constructor, fills everything in load(), and writes in OnOK.
class ProjectDialog : public CAcUiDialog {
public:
    void adopt(DialogGrid& grid) { m_grids.push_back(&grid); } // each of its grids, which calls it itself

protected:
    explicit ProjectDialog(const ProjectDialogForm& form);

    virtual void load() = 0; // the grids have their columns and nothing else

    void setDatabase(CDBConnection* connection, bool isStandards);
    CDBConnection& connection() const { return *m_connection; }
    bool isStandards() const { return m_isStandards; }

    // Runs what writes to the database, all of it or nothing: false, and the user has been told, when it
    // cannot be written, or did not take everything and is as it was before. It is asked beforehand because a
    // connection that was closed behind the dialog's back takes everything without a word.
    bool store(const std::function<void()>& write);

    // Tells the user what is wrong with the text of an edit, which is there to be typed over then. False, so
    // that a check can end with it.
    bool refuseEdit(int id, const CString& message);

    // Calls a function of the Lisp layer that may ask the user something: the dialog is disabled meanwhile.
    LispAnswer askLisp(ResbufChain call);
    LispAnswer askLisp(const char* name);

    // Stores and ends this dialog as OK does, and then runs what opens another one.
    void handOver(const std::function<void()>& openNext);

private:
    bool canStore();
    bool OnInitDialog() final;
    void OnDestroy() override;

    const ProjectDialogForm& m_projectForm;
    std::vector<DialogGrid*> m_grids;
    CDBConnection* m_connection = nullptr;
    bool m_isStandards = false;
};

// Readies a record for what a row holds: a new one, or the one of that key. False for a key that is gone.
template<class Record>
bool openRecord(Record& record, const CString& key) {
    if (key == kNewRow) {
        record.AddNew();
        return true;
    }
    if (!record.Seek(std::atoi(key.c_str()))) return false;
    record.Edit();
    return true;
}

// Deletes what left a grid since it was filled.
template<class Record>
void deleteRecords(Record& record, const DialogGrid& grid) {
    for (const std::int32_t key : grid.removedKeys())
        if (record.Seek(key)) record.Delete();
}

} // namespace plumb
