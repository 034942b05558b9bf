#include "host/LispArguments.h"

#include "editor/aced.h"

#include <limits>

namespace plumb {

LispArguments::LispArguments() : m_head(acedGetArgs()) {
    cursor = m_head;
}
LispArguments::~LispArguments() {
    acutRelRb(m_head);
}

namespace {

bool is(const resbuf* item, short type) {
    return item && item->restype == type;
}

bool step(const resbuf*& cursor) {
    cursor = cursor->rbnext;
    return true;
}

Adesk::Int32 cutToInteger(double value) {
    using Limits = std::numeric_limits<Adesk::Int32>;
    if (value != value) return 0;
    if (value <= static_cast<double>(Limits::min())) return Limits::min();
    if (value >= static_cast<double>(Limits::max())) return Limits::max();
    return static_cast<Adesk::Int32>(value);
}

} // namespace

bool argObjectId(const resbuf*& cursor, AcDbObjectId& id) {
    AcDbObjectId found;
    if (!is(cursor, RTENAME) || acdbGetObjectId(found, cursor->resval.rlname) != Acad::eOk) return false;
    id = found;
    return step(cursor);
}

bool argInt(const resbuf*& cursor, Adesk::Int32& value) {
    if (!cursor) return false;
    switch (cursor->restype) {
    case RTSHORT: value = cursor->resval.rint; break;
    case RTLONG: value = cursor->resval.rlong; break;
    case RTREAL: value = cutToInteger(cursor->resval.rreal); break;
    default: return false;
    }
    return step(cursor);
}

bool argRealStrict(const resbuf*& cursor, double& value) {
    if (!is(cursor, RTREAL)) return false;
    value = cursor->resval.rreal;
    return step(cursor);
}

bool argReal(const resbuf*& cursor, double& value) {
    if (argRealStrict(cursor, value)) return true;
    Adesk::Int32 integer = 0;
    if (!argInt(cursor, integer)) return false;
    value = integer;
    return true;
}

bool argText(const resbuf*& cursor, CString& value) {
    if (!is(cursor, RTSTR)) return false;
    value = cursor->resval.rstring ? cursor->resval.rstring : "";
    return step(cursor);
}

bool argBool(const resbuf*& cursor, bool& value) {
    if (!cursor || cursor->restype == RTLB) return false;
    value = cursor->restype != RTNIL && cursor->restype != RTLE;
    if (cursor->restype != RTLE) step(cursor);
    return true;
}

bool argPoint(const resbuf*& cursor, AcGePoint3d& value) {
    if (is(cursor, RT3DPOINT) || is(cursor, RTPOINT)) {
        const double* p = cursor->resval.rpoint;
        value.set(p[0], p[1], cursor->restype == RT3DPOINT ? p[2] : 0.0);
        return step(cursor);
    }
    const resbuf* at = cursor;
    AcGePoint3d read;
    if (!argReal(at, read.x) || !argReal(at, read.y)) return false;
    argReal(at, read.z);
    value = read;
    cursor = at;
    return true;
}

bool argPoint2d(const resbuf*& cursor, AcGePoint2d& value) {
    if (is(cursor, RT3DPOINT) || is(cursor, RTPOINT)) {
        value = {cursor->resval.rpoint[0], cursor->resval.rpoint[1]};
        return step(cursor);
    }
    const resbuf* at = cursor;
    AcGePoint2d read;
    if (!argRealStrict(at, read.x) || !argRealStrict(at, read.y)) return false;
    value = read;
    cursor = at;
    return true;
}

bool argListBegin(const resbuf*& cursor) {
    return is(cursor, RTLB) && step(cursor);
}
bool argListEnd(const resbuf*& cursor) {
    return is(cursor, RTLE) && step(cursor);
}

bool argPair(const resbuf*& cursor, CString& text, Adesk::Int32& value) {
    const resbuf* at = cursor;
    CString readText;
    Adesk::Int32 readValue = 0;
    if (!argListBegin(at) || !argText(at, readText) || !argInt(at, readValue) || !is(at, RTDOTE))
        return false;
    text = readText;
    value = readValue;
    cursor = at->rbnext;
    return true;
}

void argSkip(const resbuf*& cursor) {
    if (cursor) cursor = cursor->rbnext;
}

} // namespace plumb
