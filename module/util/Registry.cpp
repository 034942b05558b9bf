#include "util/Registry.h"

#include "runtime/Host.h"
#include "system/UserSettings.h"

namespace plumb {

namespace {
CString fullKey(const CString& key) {
    return "Software\\Veldrin Software\\" + key;
}
} // namespace

CString RegistryGetText(const CString& key, const CString& name) {
    return veldrin::Host::current().settings().readText(fullKey(key), name).value_or(CString());
}

bool RegistrySetText(const CString& key, const CString& name, const CString& text) {
    return veldrin::Host::current().settings().write(fullKey(key), name, text);
}

} // namespace plumb
