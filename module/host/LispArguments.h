#pragma once

#include "drawing/AcDbObjectId.h"
#include "geometry/AcGePoint3d.h"
#include "runtime/CString.h"
#include "runtime/resbuf.h"

namespace plumb {

// The arguments of the Lisp call that runs now, and how far they have been read.
class LispArguments {
public:
    LispArguments();
    ~LispArguments();
    LispArguments(const LispArguments&) = delete;
    LispArguments& operator=(const LispArguments&) = delete;

    const resbuf* cursor;

private:
    resbuf* m_head;
};

// Readers. Each looks at the item under the cursor, and with success gives its value and moves on; else it is
// false, and cursor and value stay. A null cursor is the end of the list.

bool argObjectId(const resbuf*& cursor, AcDbObjectId& id);
// A real is cut towards zero; one that 32 bits do not hold becomes the nearest that they do.
bool argInt(const resbuf*& cursor, Adesk::Int32& value);
bool argRealStrict(const resbuf*& cursor, double& value);
bool argReal(const resbuf*& cursor, double& value); // integers too
bool argText(const resbuf*& cursor, CString& value);
// nil is false; the end of an inner list is false too and stays; a list fails; all else is true.
bool argBool(const resbuf*& cursor, bool& value);
// A point, or two or three numbers in a row.
bool argPoint(const resbuf*& cursor, AcGePoint3d& value);
// A point, or two reals in a row.
bool argPoint2d(const resbuf*& cursor, AcGePoint2d& value);
bool argListBegin(const resbuf*& cursor);
bool argListEnd(const resbuf*& cursor);
// A pair of a text and an integer, (text . integer).
bool argPair(const resbuf*& cursor, CString& text, Adesk::Int32& value);
// One item, whatever it is.
void argSkip(const resbuf*& cursor);

} // namespace plumb
