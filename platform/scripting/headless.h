#pragma once

#include "lisp/Args.h"
#include "lisp/Error.h"
#include "runtime/Host.h"
#include "ui/CAcUiDialog.h"
#include "ui/UiBackend.h"

namespace veldrin::scripting {

// The windows that scripts drive; a Lisp error where they are shown to a user instead.
inline HeadlessUi& headlessUi() {
    auto* ui = dynamic_cast<HeadlessUi*>(&Host::current().ui());
    if (!ui) throw lisp::Error("windows are shown to the user here, not driven");
    return *ui;
}

// The dialog that the user's hand would reach.
inline CAcUiDialog& openDialog() {
    CAcUiDialog* dialog = headlessUi().dialog();
    if (!dialog) throw lisp::Error("no dialog is open");
    return *dialog;
}

// The control whose id is the first argument.
inline DialogControl& controlOf(lisp::Args args) {
    DialogControl* control = openDialog().control(args.integer(0));
    if (!control) throw lisp::Error("the dialog has no control " + std::to_string(args.integer(0)));
    return *control;
}

} // namespace veldrin::scripting
