#include "scripting/entity_lists.h"

#include "drawing/EntityList.h"
#include "lisp/Args.h"
#include "lisp/Error.h"
#include "lisp/Printer.h"
#include "scripting/drawing_values.h"

#include <cmath>

namespace veldrin::scripting {

namespace {

using lisp::Error;
using lisp::ListBuilder;
using lisp::Value;

constexpr int kExtendedData = -3;
constexpr int kApplicationName = 1001;
constexpr int kFirstExtended = 1000;

Value groupValue(const resbuf& group) {
    switch (acutGroupCodeKind(group.restype)) {
    case RTSTR: return Value::text(textOf(group));
    case RTREAL: return Value::real(group.resval.rreal);
    case RT3DPOINT:
        return pointValue({group.resval.rpoint[0], group.resval.rpoint[1], group.resval.rpoint[2]});
    case RTSHORT: return Value::integer(group.resval.rint);
    case RTLONG: return Value::integer(group.resval.rlong);
    case RTENAME: {
        const bool isNull = group.resval.rlname[0] == 0 && group.resval.rlname[1] == 0;
        return isNull ? Value() : Value::ename({{group.resval.rlname[0], group.resval.rlname[1]}});
    }
    default: return {};
    }
}

Value pairOf(const resbuf& group) {
    return Value::cons(Value::integer(group.restype), groupValue(group));
}

// Points of a polyline that is flat by its nature have two coordinates.
Value flatPair(const resbuf& group) {
    const double* point = group.resval.rpoint;
    return lisp::list(Value::integer(group.restype), Value::real(point[0]), Value::real(point[1]));
}

// The groups of the applications from the cursor on, which moves behind them.
Value extendedOf(const resbuf*& cursor) {
    ListBuilder applications;
    while (cursor && cursor->restype == kApplicationName) {
        ListBuilder application;
        application.add(Value::text(textOf(*cursor)));
        for (cursor = cursor->rbnext;
             cursor && cursor->restype >= kFirstExtended && cursor->restype != kApplicationName;
             cursor = cursor->rbnext)
            application.add(pairOf(*cursor));
        applications.add(application.finish());
    }
    return Value::cons(Value::integer(kExtendedData), applications.finish());
}

[[noreturn]] void refuseGroup(const Value& group) {
    throw Error("bad DXF group: " + lisp::prin1Text(group));
}

void addName(ResbufBuilder& chain, int code, const Value& value, const Value& group) {
    AcDbObjectId id;
    if (!idOf(value, id)) refuseGroup(group);
    const lisp::Ename words = value.asEname();
    const ads_name name = {words.words[0], words.words[1]};
    chain.addName(code, name);
}

void addGroup(ResbufBuilder& chain, const Value& group) {
    if (!group.isCons() || !group.car().isInteger()) refuseGroup(group);
    const int code = group.car().asInteger();
    const Value& value = group.cdr();
    lisp::Point point;
    switch (code == static_cast<short>(code) ? acutGroupCodeKind(code) : static_cast<short>(RTNONE)) {
    case RTSTR:
        if (!value.isText()) refuseGroup(group);
        return chain.addText(code, std::string(value.asText()));
    case RTREAL:
        if (!value.isNumber()) refuseGroup(group);
        return chain.addReal(code, value.asNumber());
    case RT3DPOINT:
        if (!lisp::readPoint(value, point)) refuseGroup(group);
        return chain.addPoint(code, point.x, point.y, point.z);
    case RTSHORT:
    case RTLONG:
        if (!value.isNumber() || !(std::abs(value.asNumber()) < 2147483648.0)) refuseGroup(group);
        return chain.addInteger(code, static_cast<std::int64_t>(value.asNumber()));
    case RTENAME: return addName(chain, code, value, group);
    default: refuseGroup(group);
    }
}

void addExtended(ResbufBuilder& chain, const Value& group) {
    chain.add(kExtendedData);
    for (const Value& application : lisp::ListView(group.cdr())) {
        if (!application.car().isText()) refuseGroup(application);
        chain.addText(kApplicationName, std::string(application.car().asText()));
        for (const Value& item : lisp::ListView(application.cdr())) {
            if (!item.car().isInteger() || item.car().asInteger() < kFirstExtended) refuseGroup(item);
            addGroup(chain, item);
        }
    }
}

} // namespace

Value listOfGroups(const resbuf* cursor) {
    ListBuilder list;
    bool isFlat = false;
    while (cursor) {
        if (cursor->restype == kExtendedData || cursor->restype == kApplicationName) {
            if (cursor->restype == kExtendedData) cursor = cursor->rbnext;
            list.add(extendedOf(cursor));
            continue;
        }
        if (cursor->restype == AcDb::kDxfStart) isFlat = std::string_view(textOf(*cursor)) == "LWPOLYLINE";
        list.add(isFlat && cursor->restype == AcDb::kDxfXCoord ? flatPair(*cursor) : pairOf(*cursor));
        cursor = cursor->rbnext;
    }
    return list.finish();
}

ResbufPtr groupsOfList(const Value& list) {
    if (!list.isCons()) throw Error::badArgument("listp", list);
    ResbufBuilder chain;
    for (const Value& group : lisp::ListView(list)) {
        if (group.car().isInteger() && group.car().asInteger() == kExtendedData)
            addExtended(chain, group);
        else
            addGroup(chain, group);
    }
    return chain.take();
}

Value entityData(AcDbObjectId id, const std::vector<std::string>& applications) {
    const ResbufPtr groups(acdbEntGet(id, applications));
    return listOfGroups(groups.get());
}

const Value* groupOf(const Value& list, int code) {
    for (const Value& group : lisp::ListView(list))
        if (group.car().isInteger() && group.car().asInteger() == code) return &group.cdr();
    return nullptr;
}

} // namespace veldrin::scripting
