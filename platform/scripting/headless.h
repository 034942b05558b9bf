#pragma once

#include "lisp/Error.h"
#include "runtime/Host.h"
#include "ui/UiBackend.h"

namespace veldrin::scripting {

// The windows that scripts drive; a Lisp error where they are shown to a user instead.
inline HeadlessUi& headlessUi() {
    auto* ui = dynamic_cast<HeadlessUi*>(&Host::current().ui());
    if (!ui) throw lisp::Error("windows are shown to the user here, not driven");
    return *ui;
}

} // namespace veldrin::scripting
