#include "dialogs/DialogFrame.h"

#include "editor/aced.h"
#include "host/DownloadOffer.h"
#include "runtime/afx.h"

#include <exception>

namespace plumb {

namespace {

constexpr int kComponentMissing = 3;
constexpr MissingPart kComponents{"Dialog box could not be created.\n"
                                  "Components need to be installed.\n"
                                  "Would you like to download a fix to this error?",
                                  "components", "https://veldrin.example/dialog-components"};

} // namespace

int showDialog(CAcUiDialog& dialog) {
    int result = 0;
    try {
        result = dialog.DoModal();
    } catch (const std::exception& failure) {
        acutPrintf("\n%s was closed: %s", dialog.caption().c_str(), failure.what());
        throw;
    }
    if (result == CAcUiDialog::kNotCreated || result == kComponentMissing) offerDownload(kComponents);
    return result;
}

void tellUser(const CString& text) {
    MessageBox(text.c_str(), kDialogTitle, MB_OK);
}

void warnUser(const CString& text) {
    MessageBox(text.c_str(), kDialogTitle, MB_OK | MB_ICONWARNING);
}

bool askUser(const CString& question, bool defaultIsNo) {
    const unsigned type = defaultIsNo ? MB_YESNO | MB_DEFBUTTON2 : MB_YESNO;
    return MessageBox(question.c_str(), kDialogTitle, type) == IDYES;
}

CString firstFreeName(const std::function<CString(int)>& make,
                      const std::function<bool(const CString&)>& isTaken) {
    for (int number = 1;; ++number) {
        CString name = make(number);
        if (!isTaken(name)) return name;
    }
}

} // namespace plumb
