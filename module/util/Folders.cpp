#include "util/Folders.h"

namespace plumb {

namespace {
std::size_t lastSeparator(std::string_view path) {
    const std::size_t at = path.rfind('\\');
    return at != std::string_view::npos ? at : path.rfind('/');
}
} // namespace

CString GetFolder(std::string_view path) {
    const std::size_t at = lastSeparator(path);
    return at == std::string_view::npos ? CString() : CString(path.substr(0, at));
}

CString GetShortName(std::string_view path) {
    const std::size_t at = lastSeparator(path);
    return at == std::string_view::npos ? CString() : CString(path.substr(at + 1));
}

} // namespace plumb
