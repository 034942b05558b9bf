#include "drawing/AcDbDatabase.h"
#include "drawing/AcDbDwgFiler.h"
#include "drawing/AcDbObjectAccess.h"
#include "drawing/AcDbText.h"
#include "drawing/AcDbTextStyleTable.h"
#include "drawing/dxf_groups.h"
#include "geometry/angles.h"

namespace {

constexpr int kBackwards = 2;
constexpr int kUpsideDown = 4;
constexpr int kCodeVertical = 73;

bool areModes(int horizontal, int vertical) {
    return horizontal >= AcDb::kTextLeft && horizontal <= AcDb::kTextFit && vertical >= AcDb::kTextBase &&
           vertical <= AcDb::kTextTop;
}

} // namespace

Acad::ErrorStatus AcDbText::dwgOutFields(AcDbDwgFiler* filer) const {
    const Acad::ErrorStatus status = AcDbEntity::dwgOutFields(filer);
    if (status != Acad::eOk) return status;
    filer->writePoint3d(m_position);
    filer->writePoint3d(m_alignment);
    filer->writeVector3d(m_normal);
    filer->writeDouble(m_height);
    filer->writeDouble(m_widthFactor);
    filer->writeDouble(m_oblique);
    filer->writeDouble(m_rotation);
    filer->writeInt8(static_cast<Adesk::Int8>(m_horizontal));
    filer->writeInt8(static_cast<Adesk::Int8>(m_vertical));
    filer->writeBool(m_backwards);
    filer->writeBool(m_upsideDown);
    filer->writeHardPointerId(m_style);
    filer->writeString(m_text);
    return filer->filerStatus();
}

Acad::ErrorStatus AcDbText::dwgInFields(AcDbDwgFiler* filer) {
    const Acad::ErrorStatus status = AcDbEntity::dwgInFields(filer);
    if (status != Acad::eOk) return status;
    Adesk::Int8 horizontal = 0;
    Adesk::Int8 vertical = 0;
    filer->readPoint3d(m_position);
    filer->readPoint3d(m_alignment);
    filer->readVector3d(m_normal);
    filer->readDouble(m_height);
    filer->readDouble(m_widthFactor);
    filer->readDouble(m_oblique);
    filer->readDouble(m_rotation);
    filer->readInt8(horizontal);
    filer->readInt8(vertical);
    filer->readBool(m_backwards);
    filer->readBool(m_upsideDown);
    filer->readHardPointerId(m_style);
    filer->readString(m_text);
    if (!areModes(horizontal, vertical)) return Acad::eBadRecord;
    m_horizontal = static_cast<AcDb::TextHorzMode>(horizontal);
    m_vertical = static_cast<AcDb::TextVertMode>(vertical);
    return filer->filerStatus();
}

void AcDbText::dxfOutText(AcDbDxfFiler& filer) const {
    const bool all = filer.isEntityList(); // a file leaves out what is as usual
    const AcDbObjectPointer<AcDbTextStyleTableRecord> style(m_style, AcDb::kForRead, true);
    filer.writeItem(AcDb::kDxfSubclass, "AcDbText");
    filer.writePoint3d(10, veldrin::worldToPlane(m_position, m_normal));
    filer.writeDouble(40, m_height);
    filer.writeItem(AcDb::kDxfText, m_text);
    if (all || m_rotation != 0.0) filer.writeDouble(50, m_rotation / veldrin::angleUnit(filer));
    if (all || m_widthFactor != 1.0) filer.writeDouble(41, m_widthFactor);
    if (all || m_oblique != 0.0) filer.writeDouble(51, m_oblique / veldrin::angleUnit(filer));
    filer.writeItem(AcDb::kDxfTextStyleName, style ? style->getName() : "Standard");
    if (all || m_backwards || m_upsideDown)
        filer.writeInt16(71, (m_backwards ? kBackwards : 0) | (m_upsideDown ? kUpsideDown : 0));
    if (all || m_horizontal != AcDb::kTextLeft) filer.writeInt16(72, m_horizontal);
    if (all || !isDefaultAlignment())
        filer.writePoint3d(11,
                           isDefaultAlignment() ? m_alignment : veldrin::worldToPlane(m_alignment, m_normal));
    veldrin::writeNormal(filer, m_normal);
}

Acad::ErrorStatus AcDbText::dxfOutFields(AcDbDxfFiler* filer) const {
    const Acad::ErrorStatus status = AcDbEntity::dxfOutFields(filer);
    if (status != Acad::eOk) return status;
    dxfOutText(*filer);
    filer->writeItem(AcDb::kDxfSubclass, "AcDbText");
    if (filer->isEntityList() || m_vertical != AcDb::kTextBase) filer->writeInt16(kCodeVertical, m_vertical);
    return filer->filerStatus();
}

Acad::ErrorStatus AcDbText::dxfInFields(AcDbDxfFiler* filer) {
    const Acad::ErrorStatus status = AcDbEntity::dxfInFields(filer);
    return status == Acad::eOk ? dxfInText(filer, kCodeVertical, nullptr) : status;
}

Acad::ErrorStatus AcDbText::dxfInText(AcDbDxfFiler* filer, int verticalCode, const GroupTaker& take) {
    AcGePoint3d position = veldrin::worldToPlane(m_position, m_normal);
    AcGePoint3d alignment = isDefaultAlignment() ? m_alignment : veldrin::worldToPlane(m_alignment, m_normal);
    int horizontal = m_horizontal;
    int vertical = m_vertical;
    std::string style;
    const double unit = veldrin::angleUnit(*filer);
    const Acad::ErrorStatus status = dxfInGroups(filer, [&](const AcDbDxfItem& item) {
        if (take && take(item)) return true;
        if (item.code == verticalCode) {
            vertical = static_cast<int>(veldrin::integerOf(item));
            return true;
        }
        switch (item.code) {
        case 10: position = item.point; return true;
        case 11: alignment = item.point; return true;
        case 40: m_height = veldrin::realOf(item); return true;
        case 41: m_widthFactor = veldrin::realOf(item); return true;
        case 50: m_rotation = veldrin::withinTurn(veldrin::realOf(item) * unit); return true;
        case 51: m_oblique = veldrin::realOf(item) * unit; return true;
        case 71:
            m_backwards = (veldrin::integerOf(item) & kBackwards) != 0;
            m_upsideDown = (veldrin::integerOf(item) & kUpsideDown) != 0;
            return true;
        case 72: horizontal = static_cast<int>(veldrin::integerOf(item)); return true;
        case AcDb::kDxfText: m_text = item.text; return true;
        case AcDb::kDxfTextStyleName: style = item.text; return true;
        case AcDb::kDxfNormalX: m_normal = veldrin::normalOf(item); return true;
        default: return false;
        }
    });
    if (status != Acad::eOk) return status;
    if (!areModes(horizontal, vertical) || !(m_height >= 0.0) || !(m_widthFactor > 0.0))
        return Acad::eInvalidInput;
    m_horizontal = static_cast<AcDb::TextHorzMode>(horizontal);
    m_vertical = static_cast<AcDb::TextVertMode>(vertical);
    m_position = veldrin::planeToWorld(position, m_normal);
    m_alignment = isDefaultAlignment() ? alignment : veldrin::planeToWorld(alignment, m_normal);
    adjust();
    if (style.empty() || !filer->database()) return Acad::eOk;
    m_style = AcDbObjectAccess::findRecord(filer->database()->textStyleTableId(), style);
    return m_style.isNull() ? Acad::eKeyNotFound : Acad::eOk;
}
