#pragma once

#include "ui/CAcUiDialog.h"
#include "ui/UiTable.h"

// The keyboard of a dialog that is not on a display: what a window system does with keys before a dialog
// hears of them.

// Typed into the editor that is open in a table, or into the control with the focus. False when nothing takes
// it.
VELDRIN_API bool typeIntoDialog(CAcUiDialog& dialog, const CString& text);

// The same for a key: editor, table or control first, then the default and cancel buttons, and Tab goes to
// the next control.
VELDRIN_API bool pressDialogKey(CAcUiDialog& dialog, veldrin::TableKey key, veldrin::HeldKeys held = {});
