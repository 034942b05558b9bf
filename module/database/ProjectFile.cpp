#include "database/ProjectFile.h"

#include "drawing/AcDbObject.h"
#include "host/LispCall.h"
#include "projects/ProjectFiles.h"
#include "system/AsciiCase.h"

namespace plumb {

namespace {

constexpr const char* kMarkApplication = "VELDRIN";
constexpr short kXDataText = 1000;

bool isText(const resbuf* item) {
    return item && item->restype == kXDataText && item->resval.rstring;
}

} // namespace

CString FindDatabaseByExtension(const CString& folder, const CString& moduleName, const CString& extension) {
    const std::vector<CString> found = veldrin::projectFilesIn(folder, moduleName, extension);
    return found.size() == 1 ? found.front() : CString();
}

CString FindDatabaseFile(const CString& folder, const CString& moduleName) {
    const CString path = FindDatabaseByExtension(folder, moduleName, "vq");
    return path.empty() ? FindDatabaseByExtension(folder, moduleName, "mdb") : path;
}

CString documentMarkKey(const CString& moduleName) {
    return veldrin::asciiUpperCase(moduleName);
}

CString GetDocumentMark(const AcDbObject& record, const CString& key) {
    const ResbufChain data(record.xData(kMarkApplication));
    for (const resbuf* item = data.get(); item; item = item->rbnext) {
        if (!isText(item)) continue;
        const resbuf* value = item->rbnext;
        if (item->resval.rstring == key) return isText(value) ? CString(value->resval.rstring) : CString();
        if (!value) break;
        item = value;
    }
    return {};
}

} // namespace plumb
