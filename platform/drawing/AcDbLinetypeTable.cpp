#include "drawing/AcDbLinetypeTable.h"

#include "drawing/AcDbDwgFiler.h"
#include "drawing/AcDbDxfFiler.h"
#include "runtime/AcRxMacros.h"

#include <cmath>
#include <utility>

ACRX_DEFINE_MEMBERS(AcDbLinetypeTableRecord, AcDbSymbolTableRecord, "LTYPE");
ACRX_DEFINE_MEMBERS(AcDbLinetypeTable, AcDbSymbolTable, "");

AcDbLinetypeTableRecord::AcDbLinetypeTableRecord() = default;
AcDbLinetypeTableRecord::~AcDbLinetypeTableRecord() = default;

Acad::ErrorStatus AcDbLinetypeTableRecord::setComments(const std::string& comments) {
    assertWriteEnabled();
    m_comments = comments;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbLinetypeTableRecord::setDashes(std::vector<double> dashes) {
    assertWriteEnabled();
    for (const double dash : dashes) {
        if (!std::isfinite(dash)) return Acad::eInvalidInput;
    }
    m_dashes = std::move(dashes);
    return Acad::eOk;
}

double AcDbLinetypeTableRecord::patternLength() const {
    double length = 0.0;
    for (const double dash : m_dashes) length += std::abs(dash);
    return length;
}

Acad::ErrorStatus AcDbLinetypeTableRecord::dwgInFields(AcDbDwgFiler* filer) {
    const Acad::ErrorStatus status = AcDbSymbolTableRecord::dwgInFields(filer);
    if (status != Acad::eOk) return status;
    filer->readString(m_comments);
    Adesk::Int32 count = 0;
    filer->readInt32(count);
    std::vector<double> dashes;
    for (Adesk::Int32 i = 0; i < count && filer->filerStatus() == Acad::eOk; ++i) {
        double dash = 0.0;
        if (filer->readDouble(dash) == Acad::eOk) dashes.push_back(dash);
    }
    if (filer->filerStatus() == Acad::eOk) m_dashes = std::move(dashes);
    return filer->filerStatus();
}

Acad::ErrorStatus AcDbLinetypeTableRecord::dwgOutFields(AcDbDwgFiler* filer) const {
    AcDbSymbolTableRecord::dwgOutFields(filer);
    filer->writeString(m_comments);
    filer->writeInt32(static_cast<Adesk::Int32>(m_dashes.size()));
    for (const double dash : m_dashes) filer->writeDouble(dash);
    return filer->filerStatus();
}

Acad::ErrorStatus AcDbLinetypeTableRecord::dxfInFields(AcDbDxfFiler* filer) {
    std::vector<double> dashes;
    bool hasDashes = false;
    const Acad::ErrorStatus status =
        dxfInItems(*filer, "AcDbLinetypeTableRecord", [&](const AcDbDxfItem& item) {
            if (item.code == 3) m_comments = item.text;
            if (item.code == 49) dashes.push_back(item.real);
            // The count stands before the dashes; it tells a list without any from one that says nothing.
            hasDashes = hasDashes || item.code == 49 || item.code == 73;
            return Acad::eOk;
        });
    if (status == Acad::eOk && hasDashes) return setDashes(std::move(dashes));
    return status;
}

Acad::ErrorStatus AcDbLinetypeTableRecord::dxfOutFields(AcDbDxfFiler* filer) const {
    constexpr int kAlignment = 65;
    AcDbObject::dxfOutFields(filer);
    dxfOutHead(*filer, "AcDbLinetypeTableRecord", 0);
    filer->writeItem(3, m_comments);
    filer->writeInt16(72, kAlignment);
    filer->writeInt16(73, static_cast<int>(m_dashes.size()));
    filer->writeDouble(40, patternLength());
    for (const double dash : m_dashes) {
        filer->writeDouble(49, dash);
        filer->writeInt16(74, 0);
    }
    return filer->filerStatus();
}

AcDbLinetypeTable::AcDbLinetypeTable() = default;
AcDbLinetypeTable::~AcDbLinetypeTable() = default;

AcRxClass* AcDbLinetypeTable::recordClass() const {
    return AcDbLinetypeTableRecord::desc();
}
