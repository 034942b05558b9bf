#pragma once

#include "runtime/CString.h"

namespace plumb {

class tblGlobal;

// Settings of the project by key. Without a table, a row or a value a number is 0 and a text is empty.
double GetGlobalNumber(tblGlobal* table, const CString& key);
CString GetGlobalText(tblGlobal* table, const CString& key);
// Makes the row where there is none. A row of the other kind changes its kind and keeps its other value.
void SetGlobalNumber(tblGlobal* table, const CString& key, double number);
void SetGlobalText(tblGlobal* table, const CString& key, const CString& text);

} // namespace plumb
