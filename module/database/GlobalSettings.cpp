#include "database/GlobalSettings.h"

#include "database/tables/tblGlobal.h"

namespace plumb {

namespace {

// The setting's row, ready for its value.
void beginSetting(tblGlobal& table, const CString& key) {
    if (table.Seek(key)) return table.Edit();
    table.AddNew();
    table.sKey = key;
}

} // namespace

double GetGlobalNumber(tblGlobal* table, const CString& key) {
    return table && table->Seek(key) && !table->dNumber.isNull() ? table->dNumber.get() : 0.0;
}

CString GetGlobalText(tblGlobal* table, const CString& key) {
    return table && table->Seek(key) && !table->sText.isNull() ? table->sText.get() : CString();
}

void SetGlobalNumber(tblGlobal* table, const CString& key, double number) {
    if (!table) return;
    beginSetting(*table, key);
    table->dNumber = number;
    table->bNumeric = true;
    table->Update();
}

void SetGlobalText(tblGlobal* table, const CString& key, const CString& text) {
    if (!table) return;
    beginSetting(*table, key);
    table->sText = text;
    table->bNumeric = false;
    table->Update();
}

} // namespace plumb
