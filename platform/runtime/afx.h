#pragma once

#include "runtime/VeldrinApi.h"

#include <memory>

// State of the database engine while it runs in this process.
class VELDRIN_API _AFX_DAO_STATE {
public:
    virtual ~_AFX_DAO_STATE() = default;
};

// What the libraries of one process share.
struct VELDRIN_API AFX_MODULE_STATE {
    unsigned m_dwVersion = 0;              // engine generation that AfxDaoInit is to start
    _AFX_DAO_STATE* m_pDaoState = nullptr; // set while the engine runs; who started it owns it
};

VELDRIN_API AFX_MODULE_STATE* AfxGetModuleState();
// Starts the engine; throws CException when it cannot. AfxDaoTerm stops it and leaves the state object to its
// owner.
VELDRIN_API void AfxDaoInit();
VELDRIN_API void AfxDaoTerm();

enum MessageBoxType : unsigned {
    MB_OK = 0x0,
    MB_OKCANCEL = 0x1,
    MB_YESNOCANCEL = 0x3,
    MB_YESNO = 0x4,
    MB_ICONSTOP = 0x10,
    MB_ICONQUESTION = 0x20,
    MB_ICONWARNING = 0x30,
    MB_ICONINFORMATION = 0x40,
    MB_DEFBUTTON2 = 0x100,
};
enum MessageBoxAnswer : int { IDOK = 1, IDCANCEL = 2, IDYES = 6, IDNO = 7 };

// Shows a modal message and gives the button that ended it.
VELDRIN_API int MessageBox(const char* text, const char* caption, unsigned type = MB_OK);

// Last error of the system on this thread (errno).
VELDRIN_API unsigned GetLastError();
VELDRIN_API void SetLastError(unsigned code);

// Opens a file or address in the desktop's own program. Above 32 means success.
VELDRIN_API int ShellExecute(const char* verb, const char* target);
