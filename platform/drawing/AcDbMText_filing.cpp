#include "drawing/AcDbMText.h"

#include "drawing/AcDbDatabase.h"
#include "drawing/AcDbDwgFiler.h"
#include "drawing/AcDbTextStyleTable.h"
#include "drawing/dxf_groups.h"

#include <numbers>
#include <optional>

Acad::ErrorStatus AcDbMText::dwgOutFields(AcDbDwgFiler* filer) const {
    const Acad::ErrorStatus status = AcDbEntity::dwgOutFields(filer);
    if (status != Acad::eOk) return status;
    filer->writePoint3d(m_location);
    filer->writeVector3d(m_direction);
    filer->writeVector3d(m_normal);
    filer->writeDouble(m_width);
    filer->writeDouble(m_height);
    filer->writeHardPointerId(m_style);
    filer->writeInt16(m_attachment);
    filer->writeString(m_contents);
    return filer->filerStatus();
}

Acad::ErrorStatus AcDbMText::dwgInFields(AcDbDwgFiler* filer) {
    const Acad::ErrorStatus status = AcDbEntity::dwgInFields(filer);
    if (status != Acad::eOk) return status;
    Adesk::Int16 attachment = kTopLeft;
    filer->readPoint3d(m_location);
    filer->readVector3d(m_direction);
    filer->readVector3d(m_normal);
    filer->readDouble(m_width);
    filer->readDouble(m_height);
    filer->readHardPointerId(m_style);
    filer->readInt16(attachment);
    filer->readString(m_contents);
    if (attachment < kTopLeft || attachment > kBottomRight) return Acad::eBadRecord;
    m_attachment = static_cast<AttachmentPoint>(attachment);
    return filer->filerStatus();
}

namespace {

constexpr std::size_t kChunk = 250; // bytes that one text group may carry

// Length of the next chunk: no more than a group carries, and no character cut in two.
std::size_t chunkLength(const std::string& text, std::size_t from) {
    std::size_t length = std::min(kChunk, text.size() - from);
    if (from + length == text.size()) return length;
    while (length > 1 && (static_cast<unsigned char>(text[from + length]) & 0xC0) == 0x80) --length;
    return length;
}

void writeContents(AcDbDxfFiler& filer, const std::string& contents) {
    std::size_t at = 0;
    while (contents.size() - at > kChunk) {
        const std::size_t length = chunkLength(contents, at);
        filer.writeItem(3, contents.substr(at, length));
        at += length;
    }
    filer.writeItem(AcDb::kDxfText, contents.substr(at));
}

std::string styleName(AcDbObjectId style) {
    const AcDbObjectPointer<AcDbTextStyleTableRecord> record(style, AcDb::kForRead, true);
    return record ? record->getName() : "Standard";
}

} // namespace

Acad::ErrorStatus AcDbMText::dxfOutFields(AcDbDxfFiler* filer) const {
    const Acad::ErrorStatus status = AcDbEntity::dxfOutFields(filer);
    if (status != Acad::eOk) return status;
    constexpr int kByStyle = 5;
    filer->writeItem(AcDb::kDxfSubclass, "AcDbMText");
    filer->writePoint3d(10, m_location);
    filer->writeDouble(40, effectiveHeight());
    filer->writeDouble(41, m_width);
    filer->writeInt16(71, m_attachment);
    filer->writeInt16(72, kByStyle);
    writeContents(*filer, m_contents);
    filer->writeItem(AcDb::kDxfTextStyleName, styleName(m_style));
    veldrin::writeNormal(*filer, m_normal);
    filer->writeVector3d(11, m_direction);
    if (!filer->isEntityList()) return filer->filerStatus();
    filer->writeDouble(42, actualWidth());
    filer->writeDouble(43, actualHeight());
    filer->writeDouble(50, rotation());
    return filer->filerStatus();
}

Acad::ErrorStatus AcDbMText::dxfInFields(AcDbDxfFiler* filer) {
    Acad::ErrorStatus status = AcDbEntity::dxfInFields(filer);
    if (status != Acad::eOk) return status;
    std::string contents;
    bool hasContents = false;
    bool hasDirection = false;
    std::string style;
    std::optional<double> angle;
    int attachment = m_attachment;
    status = dxfInGroups(filer, [&](const AcDbDxfItem& item) {
        switch (item.code) {
        case 10: m_location = item.point; return true;
        case 11:
            m_direction = item.point.asVector().isZeroLength() ? m_direction : item.point.asVector().normal();
            hasDirection = true;
            return true;
        case 40: m_height = veldrin::realOf(item); return true;
        case 41: m_width = veldrin::realOf(item); return true;
        case 50: angle = veldrin::realOf(item); return true;
        case 71: attachment = static_cast<int>(veldrin::integerOf(item)); return true;
        case 1:
        case 3:
            contents += item.text;
            hasContents = true;
            return true;
        case AcDb::kDxfTextStyleName: style = item.text; return true;
        case AcDb::kDxfNormalX: m_normal = veldrin::normalOf(item); return true;
        default: return false;
        }
    });
    if (status != Acad::eOk) return status;
    if (hasContents) m_contents = contents;
    // A list that is given back has both; the direction is then what counts.
    if (angle && !hasDirection)
        setRotation(filer->isEntityList() ? *angle : *angle * std::numbers::pi / 180.0);
    if (attachment < kTopLeft || attachment > kBottomRight) return Acad::eInvalidInput;
    m_attachment = static_cast<AttachmentPoint>(attachment);
    if (style.empty() || !filer->database()) return Acad::eOk;
    const AcDbObjectPointer<AcDbTextStyleTable> table(filer->database()->textStyleTableId());
    return table ? table->getAt(style, m_style) : table.openStatus();
}
