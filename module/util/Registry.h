#pragma once

#include "runtime/CString.h"

namespace plumb {

// Settings of the user under "Software\Veldrin Software\" and a key's name.

// "" when there is no such text.
CString RegistryGetText(const CString& key, const CString& name);
// False when it could not be written, and for a key that does not exist: no key is made here.
bool RegistrySetText(const CString& key, const CString& name, const CString& text);

} // namespace plumb
