#include "drawing/AcDbArc.h"
#include "host/LispFunctions.h"
#include "pipe/OpenPipe.h"
#include "pipe/PipeConstants.h"
#include "pipe/TrapCrossings.h"
#include "util/PlaneGeometry.h"

namespace plumb {

namespace {

// What the three queries share: the extension, which may be missing, and the pipe. Whatever is wrong gives
// nil, and so does a pipe without a trap. The work is done with the cursor behind the pipe.
template<class Work>
int askTrap(Work&& work) {
    LispArguments args;
    double extension = 0.0;
    argReal(args.cursor, extension);
    AcDbObjectId id;
    if (!argObjectId(args.cursor, id)) return kDone;
    const AcDbObjectPointer<PlumbPipe> pipe(id, AcDb::kForWrite);
    if (!pipe) return kDone;
    ResultList result;
    result.listBegin();
    if (!work(*pipe, extension, args.cursor, result)) return kDone;
    result.listFinish();
    return kDone;
}

AcGePoint3d flat(const AcGePoint3d& p) {
    return {p.x, p.y, 0.0};
}

// Told by its own start: where a lead line or an arc is crossed, counted from an origin on it.
auto along(const AcDbCurve& curve, double origin, double sense) {
    return [&curve, origin, sense](const AcGePoint3d& point, double& distance) {
        if (!distanceAlong(curve, point, distance)) return false;
        distance = origin + sense * distance;
        return true;
    };
}

struct ArcAsked {
    AcGePoint3d point;
    double angle = 0.0;
    Adesk::Int32 iNormal = 0;
    double radius = 0.0;
    double sweep = 0.0;

    bool read(const resbuf*& cursor) {
        if (!argPoint(cursor, point) || !argReal(cursor, angle) || !argInt(cursor, iNormal) ||
            !argReal(cursor, radius) || !argReal(cursor, sweep))
            return false;
        point = flat(point);
        return true;
    }

    AcDbArc arc() const {
        const AcGePoint3d center = PolarPoint(point, iNormal * kQuarterTurn + angle, radius);
        const double start = AngleBetween(center, point);
        return iNormal == 1 ? AcDbArc(center, radius, start, start + sweep)
                            : AcDbArc(center, radius, start - sweep, start);
    }
};

void tellArc(const TrapCrossings& trap, const ArcAsked& asked, double extension, ResultList& result) {
    const AcDbArc arc = asked.arc();
    if (extension != 0.0) {
        const AcDbLine lead(asked.point, PolarPoint(asked.point, asked.angle, -extension));
        trap.tellAcross(lead, result, along(lead, 0.0, -1.0));
    }
    trap.tellAcross(arc, result, along(arc, 0.0, 1.0));
    AcGePoint3d end;
    AcGeVector3d tangent;
    double length = 0.0;
    if (extension == 0.0 || arc.getEndPoint(end) != Acad::eOk ||
        arc.getFirstDeriv(end, tangent) != Acad::eOk || !lengthOf(arc, length))
        return;
    const AcDbLine lead(end, end + tangent.normal() * extension);
    trap.tellAcross(lead, result, along(lead, length, 1.0));
}

} // namespace

namespace handlers {

int intersectPtrapLine() {
    return askTrap([](const PlumbPipe& pipe, double extension, const resbuf*& cursor, ResultList& result) {
        AcGePoint3d from;
        AcGePoint3d to;
        if (!argPoint(cursor, from) || !argPoint(cursor, to)) return false;
        if (!pipe.data().bPtrap) return false;
        from = flat(from);
        to = flat(to);
        if (extension != 0.0) {
            from = PolarPoint(from, AngleBetween(to, from), extension);
            to = PolarPoint(to, AngleBetween(from, to), extension);
        }
        const AcDbLine line(from, to);
        TrapCrossings(pipe.data(), extension).tellAcross(line, result, along(line, -extension, 1.0));
        return true;
    });
}

int intersectPtrapArc() {
    return askTrap([](const PlumbPipe& pipe, double extension, const resbuf*& cursor, ResultList& result) {
        ArcAsked asked;
        if (!asked.read(cursor) || !pipe.data().bPtrap) return false;
        tellArc(TrapCrossings(pipe.data(), extension), asked, extension, result);
        return true;
    });
}

int intersectPtrapPtrap() {
    return askTrap([](const PlumbPipe& pipe, double extension, const resbuf*& cursor, ResultList& result) {
        AcDbObjectId id;
        if (!argObjectId(cursor, id)) return false;
        const AcDbObjectPointer<PlumbPipe> other(id, AcDb::kForWrite);
        if (!other || !pipe.data().bPtrap) return false;
        TrapCrossings(pipe.data(), extension).tellTrap(TrapCrossings(other->data(), extension), result);
        return true;
    });
}

} // namespace handlers

} // namespace plumb
