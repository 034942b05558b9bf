#include "dialogs/ProjectDialog.h"

#include "database/CDBConnection.h"
#include "editor/aced.h"

#include <utility>

namespace plumb {

ProjectDialog::ProjectDialog(const ProjectDialogForm& form) : CAcUiDialog(form.form), m_projectForm(form) {}

void ProjectDialog::setDatabase(CDBConnection* connection, bool isStandards) {
    m_connection = connection;
    m_isStandards = isStandards;
}

bool ProjectDialog::OnInitDialog() {
    SetDialogName(m_projectForm.savedName);
    const bool takesFocus = CAcUiDialog::OnInitDialog();
    SetControlProperty(m_projectForm.resize);
    for (DialogGrid* grid : m_grids) {
        table(grid->id()).SetTable(grid);
        grid->SetRedraw(false);
        grid->build();
    }
    load();
    for (DialogGrid* grid : m_grids) {
        grid->AutoSizeColumns();
        grid->SetRedraw(true);
    }
    return takesFocus;
}

void ProjectDialog::OnDestroy() {
    CAcUiDialog::OnOK(); // as for one that ends by OK; the result stays what it is
}

bool ProjectDialog::canStore() {
    if (connection().CanUpdate()) return true;
    warnUser(connection().IsOpen()
                 ? "The project database is read-only.\nNothing can be stored."
                 : "The project database was closed while this window was open.\nNothing can be stored.");
    SetActiveWindow();
    return false;
}

bool ProjectDialog::store(const std::function<void()>& write) {
    if (!canStore()) return false;
    if (connection().StoreTogether(write)) return true;
    int code = 0;
    CString description;
    connection().GetLastError(code, description);
    warnUser("The project database was not changed:\n" + description);
    SetActiveWindow();
    return false;
}

bool ProjectDialog::refuseEdit(int id, const CString& message) {
    tellUser(message);
    edit(id).SetFocus();
    edit(id).SelectAll();
    return false;
}

LispAnswer ProjectDialog::askLisp(ResbufChain call) {
    EnableWindow(false);
    LispAnswer answer = callLisp(std::move(call));
    EnableWindow(true);
    SetActiveWindow();
    return answer;
}

LispAnswer ProjectDialog::askLisp(const char* name) {
    return askLisp(ResbufChain(acutBuildList(RTSTR, name, 0)));
}

void ProjectDialog::handOver(const std::function<void()>& openNext) {
    OnOK();
    if (!isOpen()) openNext();
}

} // namespace plumb
