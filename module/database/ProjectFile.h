#pragma once

#include "runtime/CString.h"

class AcDbObject;

namespace plumb {

// The database file of a project folder, and the mark of the drawings that open it by themselves.

// The one file of the folder whose name holds the module's and ends so, without regard to case. Names that
// begin with "52-VQ" or hold "_MASTER" or "_STANDARDS" do not count. "" with none, and with more than one.
CString FindDatabaseByExtension(const CString& folder, const CString& moduleName, const CString& extension);
// Of the present form, else of the older one.
CString FindDatabaseFile(const CString& folder, const CString& moduleName);

CString documentMarkKey(const CString& moduleName);
// The text behind the key in the record's extended data, which come in pairs of key and value; "" without it.
CString GetDocumentMark(const AcDbObject& record, const CString& key);

} // namespace plumb
