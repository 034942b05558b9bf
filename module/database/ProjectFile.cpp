#include "database/ProjectFile.h"

#include "drawing/AcDbObject.h"
#include "host/LispCall.h"

#include <filesystem>

namespace plumb {

namespace {

constexpr const char* kMarkApplication = "VELDRIN";
constexpr short kXDataText = 1000;

// A to Z alone, so that a name means the same in every locale.
CString upperCase(CString text) {
    for (char& c : text)
        if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
    return text;
}

bool isCandidate(const CString& upperName, const CString& module, const CString& ending) {
    if (upperName.size() < module.size() + ending.size() || !upperName.ends_with(ending)) return false;
    const auto at = upperName.find(module);
    if (at == CString::npos || at + module.size() + ending.size() > upperName.size()) return false;
    return !upperName.starts_with("52-VQ") && upperName.find("_MASTER") == CString::npos &&
           upperName.find("_STANDARDS") == CString::npos;
}

bool isText(const resbuf* item) {
    return item && item->restype == kXDataText && item->resval.rstring;
}

} // namespace

CString FindDatabaseByExtension(const CString& folder, const CString& moduleName, const CString& extension) {
    const CString module = upperCase(moduleName);
    const CString ending = "." + upperCase(extension);
    CString found;
    std::error_code error;
    for (std::filesystem::directory_iterator file(folder, error), end; !error && file != end;
         file.increment(error)) {
        const CString name = file->path().filename().string();
        std::error_code unreadable;
        if (!isCandidate(upperCase(name), module, ending) || file->is_directory(unreadable)) continue;
        if (!found.empty()) return {};
        found = file->path().string();
    }
    return found;
}

CString FindDatabaseFile(const CString& folder, const CString& moduleName) {
    const CString path = FindDatabaseByExtension(folder, moduleName, "vq");
    return path.empty() ? FindDatabaseByExtension(folder, moduleName, "mdb") : path;
}

CString documentMarkKey(const CString& moduleName) {
    return upperCase(moduleName);
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
