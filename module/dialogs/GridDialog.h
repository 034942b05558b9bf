#pragma once

#include "dialogs/DialogFrame.h"
#include "dialogs/DialogGrid.h"
#include "host/LispCall.h"

#include <cstdlib>
#include <vector>

namespace plumb {

class CDBConnection;

// What a dialog of one grid is made of.
struct GridDialogForm {
    const DialogTemplate& form;
    const char* savedName; // under which its place on the screen is kept
    std::span<const ControlResize> resize;
    int gridId;
    std::span<const GridColumnForm> columns;
};

// A dialog around a grid, on a project database that it borrows. A class of it hangs its rules on the grid
// and its handlers on the buttons in its constructor, fills everything in load(), and writes in OnOK.
class GridDialog : public CAcUiDialog {
protected:
    explicit GridDialog(const GridDialogForm& form);

    virtual void load() = 0;

    void setDatabase(CDBConnection* connection, bool isStandards);
    CDBConnection& connection() const { return *m_connection; }
    bool isStandards() const { return m_isStandards; }

    // Runs what writes to the database, all of it or nothing: false, and the user has been told, when it
    // cannot be written, or did not take everything and is as it was before. It is asked beforehand because a
    // connection that was closed behind the dialog's back takes everything without a word.
    bool store(const std::function<void()>& write);

    // Calls a function of the Lisp layer that may ask the user something: the dialog is disabled meanwhile.
    LispAnswer askLisp(ResbufChain call);
    LispAnswer askLisp(const char* name);

    // Stores and ends this dialog as OK does, and then runs what opens another one.
    void handOver(const std::function<void()>& openNext);

    DialogGrid m_grid{*this};

private:
    bool canStore();
    bool OnInitDialog() final;
    void OnDestroy() override;

    const GridDialogForm& m_dialogForm;
    CDBConnection* m_connection = nullptr;
    bool m_isStandards = false;
};

// Rows that exist in the grid alone say so in the column of their key.
inline constexpr const char* kNewRow = "NEW";

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

// Deletes what left the grid since it was filled.
template<class Record>
void deleteRecords(Record& record, const std::vector<long>& keys) {
    for (const long key : keys)
        if (record.Seek(static_cast<std::int32_t>(key))) record.Delete();
}

} // namespace plumb
