#include "arrow/PlumbPipeArrow.h"
#include "drawing/AcDbDwgFiler.h"
#include "drawing/AcDbDxfFiler.h"
#include "pipe/PipeConstants.h"

#include <algorithm>

namespace plumb {

// Version 3 is what is written. 2 has no direction, 1 neither length, offsets nor hangers.

namespace {

constexpr Adesk::Int32 kCurrentVersion = 3;
constexpr const char* kSubclass = "PlumbPipeArrow";

enum Group { kStart = 10, kEnd = 11, kTailOffset = 41, kHeadOffset = 42, kIxPipe = 90 };

// A failing item ends the record.
Acad::ErrorStatus readHangers(AcDbDwgFiler& filer, std::vector<double>& hangers) {
    Adesk::Int32 count = 0;
    hangers.clear();
    if (const Acad::ErrorStatus status = filer.readInt32(count); status != Acad::eOk) return status;
    for (Adesk::Int32 i = 0; i < count; ++i) {
        double distance = 0.0;
        if (const Acad::ErrorStatus status = filer.readDouble(distance); status != Acad::eOk) return status;
        hangers.push_back(distance);
    }
    return Acad::eOk;
}

} // namespace

Acad::ErrorStatus PlumbPipeArrow::dwgOutFields(AcDbDwgFiler* filer) const {
    const ArrowData& d = data();
    if (const Acad::ErrorStatus status = AcDbEntity::dwgOutFields(filer); status != Acad::eOk) return status;
    filer->writeInt32(kCurrentVersion);
    filer->writePoint3d(d.ptStart);
    filer->writePoint3d(d.ptEnd);
    filer->writeDouble(d.dArrowLength);
    filer->writeDouble(d.dTailOffset);
    filer->writeDouble(d.dHeadOffset);
    filer->writeInt32(d.ixPipe);
    const std::size_t count = std::min<std::size_t>(d.hangerDistances.size(), kMostFiled);
    filer->writeInt32(static_cast<Adesk::Int32>(count));
    for (std::size_t i = 0; i < count; ++i) filer->writeDouble(d.hangerDistances[i]);
    filer->writeBool(d.bReverseArrows);
    return filer->filerStatus();
}

Acad::ErrorStatus PlumbPipeArrow::dwgInFields(AcDbDwgFiler* filer) {
    assertWriteEnabled();
    if (const Acad::ErrorStatus status = AcDbEntity::dwgInFields(filer); status != Acad::eOk) return status;
    Adesk::Int32 version = 0;
    if (const Acad::ErrorStatus status = filer->readInt32(version); status != Acad::eOk) return status;
    if (version > kCurrentVersion) return Acad::eMakeMeProxy;
    if (version <= 0) return filer->filerStatus();
    filer->readPoint3d(m_data.ptStart);
    filer->readPoint3d(m_data.ptEnd);
    if (version == 1) {
        m_data.dTailOffset = m_data.dHeadOffset = 0.0;
        filer->readInt32(m_data.ixPipe);
        return filer->filerStatus();
    }
    filer->readDouble(m_data.dArrowLength);
    filer->readDouble(m_data.dTailOffset);
    filer->readDouble(m_data.dHeadOffset);
    filer->readInt32(m_data.ixPipe);
    if (const Acad::ErrorStatus status = readHangers(*filer, m_data.hangerDistances); status != Acad::eOk)
        return status;
    if (version >= 3) filer->readBool(m_data.bReverseArrows);
    return filer->filerStatus();
}

Acad::ErrorStatus PlumbPipeArrow::dxfOutFields(AcDbDxfFiler* filer) const {
    const ArrowData& d = data();
    if (const Acad::ErrorStatus status = AcDbEntity::dxfOutFields(filer); status != Acad::eOk) return status;
    filer->writeItem(AcDb::kDxfSubclass, kSubclass);
    filer->writePoint3d(kStart, d.ptStart);
    filer->writePoint3d(kEnd, d.ptEnd);
    filer->writeInt32(kIxPipe, d.ixPipe);
    filer->writeDouble(kTailOffset, d.dTailOffset);
    filer->writeDouble(kHeadOffset, d.dHeadOffset);
    return filer->filerStatus();
}

Acad::ErrorStatus PlumbPipeArrow::dxfInFields(AcDbDxfFiler* filer) {
    assertWriteEnabled();
    if (const Acad::ErrorStatus status = AcDbEntity::dxfInFields(filer); status != Acad::eOk) return status;
    if (!filer->atSubclassData(kSubclass)) return Acad::eBadSubclassMarker;
    AcDbDxfItem item;
    while (filer->readItem(item) == Acad::eOk) {
        if (item.code == kStart) setStart(item.point);
        if (item.code == kEnd) setEnd(item.point);
    }
    return filer->filerStatus();
}

} // namespace plumb
