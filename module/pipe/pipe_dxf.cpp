#include "pipe/PlumbPipe.h"

#include "drawing/AcDbDxfFiler.h"

namespace plumb {

// Exchange groups. They are also how Lisp reads a pipe, and what little it may change by hand; the label goes
// out under group 1, and a group 1 that comes in is the drawing text.

namespace {
constexpr const char* kSubclass = "PlumbPipe";

enum Group {
    kLabel = 1,
    kDwg = 1,
    kStart = 10,
    kEnd = 11,
    kOffsetDistance = 40,
    kTailOffset = 41,
    kHeadOffset = 42,
    kLabelGap = 43,
    kElbow45Offset = 44,
    kArcRadius = 45,
    kPtrapWidth = 46,
    kIxPipe = 90,
    kDwgStart = 91,
    kDwgEnd = 92,
    kElbow45 = 290,
    kTee45 = 291,
    kElbowArc = 292,
    kTeeArc = 293,
    kIsometric = 294,
    kPtrap = 295,
};
} // namespace

Acad::ErrorStatus PlumbPipe::dxfOutFields(AcDbDxfFiler* filer) const {
    const PipeData& d = data();
    if (const Acad::ErrorStatus status = AcDbEntity::dxfOutFields(filer); status != Acad::eOk) return status;
    filer->writeItem(AcDb::kDxfSubclass, kSubclass);
    filer->writeItem(kLabel, d.sText);
    filer->writePoint3d(kStart, d.ptStart);
    filer->writePoint3d(kEnd, d.ptEnd);
    filer->writeDouble(kOffsetDistance, d.dOffsetDistance);
    filer->writeDouble(kTailOffset, d.dTailOffset);
    filer->writeDouble(kHeadOffset, d.dHeadOffset);
    filer->writeDouble(kLabelGap, labelHalfGap());
    filer->writeDouble(kElbow45Offset, d.dElbow45Offset);
    filer->writeDouble(kArcRadius, d.dArcRadius);
    filer->writeDouble(kPtrapWidth, d.dPtrapWidth);
    filer->writeInt32(kIxPipe, d.ixPipe);
    filer->writeInt32(kDwgStart, d.bDwgStart ? 1 : 0);
    filer->writeInt32(kDwgEnd, d.bDwgEnd ? 1 : 0);
    filer->writeBool(kElbow45, d.bElbow45);
    filer->writeBool(kTee45, d.bTee45);
    filer->writeBool(kElbowArc, d.bElbowArc);
    filer->writeBool(kTeeArc, d.bTeeArc);
    filer->writeBool(kIsometric, d.bIsometric);
    filer->writeBool(kPtrap, d.bPtrap);
    return filer->filerStatus();
}

Acad::ErrorStatus PlumbPipe::dxfInFields(AcDbDxfFiler* filer) {
    assertWriteEnabled();
    if (const Acad::ErrorStatus status = AcDbEntity::dxfInFields(filer); status != Acad::eOk) return status;
    if (!filer->atSubclassData(kSubclass)) return Acad::eBadSubclassMarker;

    AcDbDxfItem item;
    while (filer->readItem(item) == Acad::eOk) {
        switch (item.code) {
        case kDwg: m_data.sDwg = item.text; break;
        case kStart: setStart(item.point, true); break;
        case kEnd: setEnd(item.point, true); break;
        case kIxPipe: m_data.ixPipe = static_cast<Adesk::Int32>(item.integer); break;
        case kDwgStart: m_data.bDwgStart = item.integer != 0; break;
        case kDwgEnd: m_data.bDwgEnd = item.integer != 0; break;
        default: break;
        }
    }
    return filer->filerStatus();
}

} // namespace plumb
