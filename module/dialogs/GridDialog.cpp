#include "dialogs/GridDialog.h"

#include "database/CDBConnection.h"
#include "editor/aced.h"

#include <utility>

namespace plumb {

GridDialog::GridDialog(const GridDialogForm& form) : CAcUiDialog(form.form), m_dialogForm(form) {}

void GridDialog::setDatabase(CDBConnection* connection, bool isStandards) {
    m_connection = connection;
    m_isStandards = isStandards;
}

bool GridDialog::OnInitDialog() {
    SetDialogName(m_dialogForm.savedName);
    const bool takesFocus = CAcUiDialog::OnInitDialog();
    SetControlProperty(m_dialogForm.resize);
    table(m_dialogForm.gridId).SetTable(&m_grid);
    m_grid.SetRedraw(false);
    m_grid.build(m_dialogForm.columns);
    load();
    m_grid.AutoSizeColumns();
    m_grid.SetRedraw(true);
    return takesFocus;
}

void GridDialog::OnDestroy() {
    CAcUiDialog::OnOK(); // too late to change the result; it keeps what the base keeps
}

bool GridDialog::canStore() {
    if (connection().CanUpdate()) return true;
    warnUser(connection().IsOpen()
                 ? "The project database is read-only.\nNothing can be stored."
                 : "The project database was closed while this window was open.\nNothing can be stored.");
    SetActiveWindow();
    return false;
}

bool GridDialog::store(const std::function<void()>& write) {
    if (!canStore()) return false;
    if (connection().StoreTogether(write)) return true;
    int code = 0;
    CString description;
    connection().GetLastError(code, description);
    warnUser("The project database was not changed:\n" + description);
    SetActiveWindow();
    return false;
}

LispAnswer GridDialog::askLisp(ResbufChain call) {
    EnableWindow(false);
    LispAnswer answer = callLisp(std::move(call));
    EnableWindow(true);
    SetActiveWindow();
    return answer;
}

LispAnswer GridDialog::askLisp(const char* name) {
    return askLisp(ResbufChain(acutBuildList(RTSTR, name, 0)));
}

void GridDialog::handOver(const std::function<void()>& openNext) {
    OnOK();
    if (!isOpen()) openNext();
}

} // namespace plumb
