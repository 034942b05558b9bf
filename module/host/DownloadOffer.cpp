#include "host/DownloadOffer.h"

#include "editor/aced.h"
#include "runtime/CString.h"
#include "runtime/afx.h"

namespace plumb {

namespace {

constexpr const char* kTitle = "Veldrin Error";
constexpr const char* kContact = "support@veldrin.example";
constexpr int kLeastSuccess = 33; // of ShellExecute

} // namespace

void offerDownload(const MissingPart& part) {
    if (MessageBox(part.question, kTitle, MB_YESNO | MB_ICONSTOP) != IDYES) return;
    if (ShellExecute("OPEN", part.location) >= kLeastSuccess) {
        acutPrintf("\nDownloading %s", part.location);
        const CString next =
            CString("When the download is complete, close the program, run the installer "
                    "that was downloaded and start the program again. If that does not help, "
                    "write to ") +
            kContact + ".";
        MessageBox(next.c_str(), kTitle, MB_OK);
    } else {
        const CString failed = CString("The download failed. The ") + part.name + " can be found at " +
                               part.location + "; help is at " + kContact + ".";
        acutPrintf("\n%s", failed.c_str());
        MessageBox(failed.c_str(), kTitle, MB_OK | MB_ICONSTOP);
    }
}

} // namespace plumb
