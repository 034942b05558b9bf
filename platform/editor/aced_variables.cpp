#include "drawing/AcDbDatabase.h"
#include "editor/DocumentManager.h"
#include "editor/SystemVariables.h"
#include "editor/aced.h"
#include "runtime/Host.h"

#include <limits>
#include <optional>

using veldrin::Host;
using veldrin::SystemVariables;
using veldrin::VariableValue;

namespace {

struct ToBuffer {
    resbuf& buffer;

    void operator()(std::int32_t value) const {
        using Short = std::numeric_limits<short>;
        if (value >= Short::min() && value <= Short::max()) {
            buffer.restype = RTSHORT;
            buffer.resval.rint = static_cast<short>(value);
        } else {
            buffer.restype = RTLONG;
            buffer.resval.rlong = value;
        }
    }
    void operator()(double value) const {
        buffer.restype = RTREAL;
        buffer.resval.rreal = value;
    }
    void operator()(const std::string& text) const {
        buffer.restype = RTSTR;
        buffer.resval.rstring = acutNewString(text.c_str());
    }
    void operator()(const AcGePoint2d& p) const { setPoint(RTPOINT, p.x, p.y, 0.0); }
    void operator()(const AcGePoint3d& p) const { setPoint(RT3DPOINT, p.x, p.y, p.z); }

    void setPoint(short type, double x, double y, double z) const {
        buffer.restype = type;
        buffer.resval.rpoint[0] = x;
        buffer.resval.rpoint[1] = y;
        buffer.resval.rpoint[2] = z;
    }
};

std::optional<VariableValue> readBuffer(const resbuf& buffer) {
    const ads_u_val& value = buffer.resval;
    switch (buffer.restype) {
    case RTSHORT: return std::int32_t{value.rint};
    case RTLONG: return value.rlong;
    case RTREAL:
    case RTANG:
    case RTORINT: return value.rreal;
    case RTSTR: return std::string(value.rstring ? value.rstring : "");
    case RTPOINT: return AcGePoint2d(value.rpoint[0], value.rpoint[1]);
    case RT3DPOINT: return AcGePoint3d(value.rpoint[0], value.rpoint[1], value.rpoint[2]);
    default: return std::nullopt;
    }
}

// To the world from a system that is named by number; nothing for another name.
std::optional<AcGeMatrix3d> toWorld(const resbuf* system) {
    if (!system || system->restype != RTSHORT) return std::nullopt;
    switch (system->resval.rint) {
    case 0:
    case 2: return AcGeMatrix3d::kIdentity; // a view looks down the world's Z axis
    case 1: {
        const AcApDocument* document = acDocManagerPtr()->curDocument();
        return document ? document->database()->ucsToWorld() : AcGeMatrix3d::kIdentity;
    }
    default: return std::nullopt;
    }
}

} // namespace

int acedGetVar(const char* name, resbuf* result) {
    if (!name || !result) return RTERROR;
    const std::optional<VariableValue> value = Host::current().variables().get(name);
    if (!value) return RTERROR;
    std::visit(ToBuffer{*result}, *value);
    return RTNORM;
}

int acedSetVar(const char* name, const resbuf* value) {
    if (!name || !value) return RTERROR;
    const std::optional<VariableValue> given = readBuffer(*value);
    if (!given) return RTERROR;
    return Host::current().variables().set(name, *given) == SystemVariables::Result::Ok ? RTNORM : RTERROR;
}

int acedTrans(const ads_point point, const resbuf* from, const resbuf* to, int isDisplacement,
              ads_point result) {
    const auto source = toWorld(from);
    const auto target = toWorld(to);
    if (!point || !result || !source || !target) return RTERROR;
    const AcGeMatrix3d map = target->inverse() * *source;
    if (isDisplacement) {
        AcGeVector3d moved(point[0], point[1], point[2]);
        moved.transformBy(map);
        result[0] = moved.x, result[1] = moved.y, result[2] = moved.z;
    } else {
        AcGePoint3d moved(point[0], point[1], point[2]);
        moved.transformBy(map);
        result[0] = moved.x, result[1] = moved.y, result[2] = moved.z;
    }
    return RTNORM;
}
