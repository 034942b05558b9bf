#include "runtime/ResbufChain.h"

namespace veldrin {

resbuf& ResbufBuilder::add(int type) {
    resbuf* const item = acutNewRb(type);
    if (m_tail)
        m_tail->rbnext = item;
    else
        m_head.reset(item);
    m_tail = item;
    return *item;
}

void ResbufBuilder::addText(int type, const std::string& text) {
    add(type).resval.rstring = acutNewString(text.c_str());
}

void ResbufBuilder::addReal(int type, double value) {
    add(type).resval.rreal = value;
}

void ResbufBuilder::addPoint(int type, double x, double y, double z) {
    auto& point = add(type).resval.rpoint;
    point[0] = x;
    point[1] = y;
    point[2] = z;
}

void ResbufBuilder::addInteger(int type, std::int64_t value) {
    ads_u_val& stored = add(type).resval;
    if (type == RTLONG || acutGroupCodeKind(type) == RTLONG)
        stored.rlong = static_cast<std::int32_t>(value);
    else
        stored.rint = static_cast<short>(value);
}

void ResbufBuilder::addName(int type, const ads_name name) {
    auto& stored = add(type).resval.rlname;
    stored[0] = name[0];
    stored[1] = name[1];
}

void ResbufBuilder::addCopy(const resbuf& item) {
    resbuf& copy = add(item.restype);
    copy.resval = item.resval;
    const bool isText = item.restype == RTSTR || acutGroupCodeKind(item.restype) == RTSTR;
    if (isText) copy.resval.rstring = acutNewString(item.resval.rstring);
}

ResbufPtr ResbufBuilder::take() {
    m_tail = nullptr;
    return std::move(m_head);
}

ResbufPtr copyChain(const resbuf* chain) {
    ResbufBuilder builder;
    for (; chain; chain = chain->rbnext) builder.addCopy(*chain);
    return builder.take();
}

} // namespace veldrin
