#pragma once

#include "drawing/AcDbObjectId.h"
#include "runtime/VeldrinApi.h"
#include "runtime/acut.h"
#include "runtime/resbuf.h"

// The doors between a module, the command line and Lisp.

// A modal message with an OK button, captioned with the program's name.
VELDRIN_API int acedAlert(const char* text);
VELDRIN_API int acedTextScr();
VELDRIN_API int acedGraphScr();

// Functions of a module for Lisp. Defining names a function and gives it a code; registering says what runs
// for the code. A handler takes no parameters and answers RSRSLT or RSERR.
VELDRIN_API int acedDefun(const char* name, short code);
VELDRIN_API int acedUndef(const char* name, short code);
VELDRIN_API int acedRegFunc(int (*handler)(), short code);

// Arguments of the call that runs now: a chain that the caller owns, null without arguments. Each call has
// its own, to any depth.
VELDRIN_API resbuf* acedGetArgs();

// The result of the call that runs now; the last one set counts, none gives nil.
VELDRIN_API int acedRetNil();
VELDRIN_API int acedRetT();
VELDRIN_API int acedRetVoid();
VELDRIN_API int acedRetInt(int value);
VELDRIN_API int acedRetReal(double value);
VELDRIN_API int acedRetStr(const char* text);
VELDRIN_API int acedRetPoint(const double point[3]);
VELDRIN_API int acedRetName(const ads_name name, int type); // RTENAME or RTPICKS
VELDRIN_API int acedRetList(const resbuf* items);           // copied
VELDRIN_API int acedRetVal(const resbuf* item);             // one item, copied

// Calls a Lisp function: the chain begins with its name (RTSTR), its arguments follow. RTNORM and a result
// that the caller frees (null for nil); a failure code when there is no such function (nothing is printed)
// or when it ended in an error. A list comes without its outermost RTLB and RTLE.
VELDRIN_API int acedInvoke(const resbuf* call, resbuf** result);

// System variables. The buffer's type and value are set; a text is to be freed by acdbFree.
VELDRIN_API int acedGetVar(const char* name, resbuf* result);
VELDRIN_API int acedSetVar(const char* name, const resbuf* value);

// Carries a point, or a displacement, from one coordinate system to another. A system is given by a buffer
// of type RTSHORT: 0 world, 1 current user system, 2 display.
VELDRIN_API int acedTrans(const ads_point point, const resbuf* from, const resbuf* to, int isDisplacement,
                          ads_point result);

// Runs a command with its answers, like Lisp's (command ...): types and values up to 0.
VELDRIN_API int acedCommand(int type, ...);
