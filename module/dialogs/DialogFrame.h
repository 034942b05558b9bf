#pragma once

#include "runtime/CString.h"
#include "ui/CAcUiDialog.h"

#include <functional>

namespace plumb {

// What all dialogs share around their own rules.

inline constexpr const char* kDialogTitle = "Veldrin Plumbing"; // of messages about what the user entered

// Runs a dialog, and tells the user when it could not be made or when it failed on the way. The result is
// DoModal's, of which 3 stands for one that could not be made; a failure goes on as what was thrown.
int showDialog(CAcUiDialog& dialog);

// A message about what the user entered, with one button.
void tellUser(const CString& text);
void warnUser(const CString& text);
bool askUser(const CString& question, bool defaultIsNo); // Yes or No

// A name that is not taken: what `make` gives for the first number from 1 upward.
CString firstFreeName(const std::function<CString(int)>& make,
                      const std::function<bool(const CString&)>& isTaken);

} // namespace plumb
