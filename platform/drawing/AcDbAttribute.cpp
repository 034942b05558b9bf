#include "drawing/AcDbAttribute.h"

#include "drawing/AcDbBlockReference.h"
#include "drawing/AcDbDwgFiler.h"
#include "drawing/AcDbObjectAccess.h"
#include "drawing/dxf_groups.h"
#include "drawing/list_lines.h"
#include "runtime/AcRxMacros.h"
#include "system/AsciiCase.h"

#include <memory>

ACRX_DEFINE_MEMBERS(AcDbAttributeDefinition, AcDbText, "ATTDEF");
ACRX_DEFINE_MEMBERS(AcDbAttribute, AcDbText, "ATTRIB");

namespace veldrin {

TaggedText::TaggedText() = default;
TaggedText::~TaggedText() = default;

Acad::ErrorStatus TaggedText::setTag(const std::string& tag) {
    if (tag.empty() || tag.find(' ') != std::string::npos) return Acad::eInvalidInput;
    assertWriteEnabled();
    m_tag = veldrin::asciiUpperCase(tag);
    return Acad::eOk;
}

Acad::ErrorStatus TaggedText::setFlag(Flag flag, bool on) {
    assertWriteEnabled();
    m_flags = on ? m_flags | flag : m_flags & ~flag;
    return Acad::eOk;
}

Acad::ErrorStatus TaggedText::dwgOutFields(AcDbDwgFiler* filer) const {
    const Acad::ErrorStatus status = AcDbText::dwgOutFields(filer);
    if (status != Acad::eOk) return status;
    filer->writeString(m_tag);
    filer->writeInt16(static_cast<Adesk::Int16>(m_flags));
    return filer->writeInt16(m_fieldLength);
}

Acad::ErrorStatus TaggedText::dwgInFields(AcDbDwgFiler* filer) {
    const Acad::ErrorStatus status = AcDbText::dwgInFields(filer);
    if (status != Acad::eOk) return status;
    Adesk::Int16 flags = 0;
    filer->readString(m_tag);
    filer->readInt16(flags);
    filer->readInt16(m_fieldLength);
    m_flags = flags;
    return filer->filerStatus();
}

void TaggedText::dxfOutTag(AcDbDxfFiler& filer) const {
    const bool all = filer.isEntityList();
    filer.writeItem(2, m_tag);
    filer.writeInt16(70, m_flags);
    if (all || m_fieldLength != 0) filer.writeInt16(73, m_fieldLength);
    if (all || verticalMode() != AcDb::kTextBase) filer.writeInt16(kCodeVertical, verticalMode());
}

bool TaggedText::takeTagGroup(const AcDbDxfItem& item) {
    switch (item.code) {
    case 2: return setTag(item.text) == Acad::eOk;
    case 70: m_flags = static_cast<int>(integerOf(item)); return true;
    case 73: m_fieldLength = static_cast<Adesk::Int16>(integerOf(item)); return true;
    default: return false;
    }
}

} // namespace veldrin

AcDbAttributeDefinition::AcDbAttributeDefinition() = default;
AcDbAttributeDefinition::~AcDbAttributeDefinition() = default;

Acad::ErrorStatus AcDbAttributeDefinition::setPrompt(const std::string& prompt) {
    assertWriteEnabled();
    m_prompt = prompt;
    return Acad::eOk;
}

void AcDbAttributeDefinition::drawValue(AcGiWorldDraw& draw) const {
    if (!isInvisible()) draw.geometry().text(drawn(textString()));
}

void AcDbAttributeDefinition::subList() const {
    AcDbText::subList();
    veldrin::listValue("prompt", m_prompt);
    veldrin::listValue("default", textString());
}

Acad::ErrorStatus AcDbAttributeDefinition::dwgOutFields(AcDbDwgFiler* filer) const {
    const Acad::ErrorStatus status = TaggedText::dwgOutFields(filer);
    return status == Acad::eOk ? filer->writeString(m_prompt) : status;
}

Acad::ErrorStatus AcDbAttributeDefinition::dwgInFields(AcDbDwgFiler* filer) {
    const Acad::ErrorStatus status = TaggedText::dwgInFields(filer);
    return status == Acad::eOk ? filer->readString(m_prompt) : status;
}

Acad::ErrorStatus AcDbAttributeDefinition::dxfOutFields(AcDbDxfFiler* filer) const {
    const Acad::ErrorStatus status = AcDbEntity::dxfOutFields(filer);
    if (status != Acad::eOk) return status;
    dxfOutText(*filer);
    filer->writeItem(AcDb::kDxfSubclass, "AcDbAttributeDefinition");
    filer->writeItem(3, m_prompt);
    dxfOutTag(*filer);
    return filer->filerStatus();
}

Acad::ErrorStatus AcDbAttributeDefinition::dxfInFields(AcDbDxfFiler* filer) {
    const Acad::ErrorStatus status = AcDbEntity::dxfInFields(filer);
    if (status != Acad::eOk) return status;
    const Acad::ErrorStatus read = dxfInText(filer, kCodeVertical, [this](const AcDbDxfItem& item) {
        if (item.code != 3) return takeTagGroup(item);
        m_prompt = item.text;
        return true;
    });
    return read == Acad::eOk && tag().empty() ? Acad::eInvalidInput : read;
}

AcDbAttribute::AcDbAttribute() = default;
AcDbAttribute::~AcDbAttribute() = default;

Acad::ErrorStatus AcDbAttribute::setFromDefinition(const AcDbAttributeDefinition& definition,
                                                   const AcGeMatrix3d& placing) {
    assertWriteEnabled();
    setPropertiesFrom(&definition);
    setTextStyle(definition.textStyle());
    setNormal(definition.normal());
    setRotation(definition.rotation());
    if (definition.height() > 0.0) setHeight(definition.height());
    setWidthFactor(definition.widthFactor());
    setOblique(definition.oblique());
    mirrorInX(definition.isMirroredInX());
    mirrorInY(definition.isMirroredInY());
    setTextString(definition.textString());
    setPosition(definition.position());
    setModes(definition.horizontalMode(), definition.verticalMode());
    if (!isDefaultAlignment()) {
        // Of a text between two points the position counts, too.
        setAlignmentPoint(definition.alignmentPoint());
        setPosition(definition.position());
    }
    setTag(definition.tag());
    setFlag(kInvisible, definition.isInvisible());
    setFlag(kConstant, definition.isConstant());
    setFlag(kVerify, definition.isVerifiable());
    setFlag(kPreset, definition.isPreset());
    return transformBy(placing);
}

bool AcDbAttribute::subWorldDraw(AcGiWorldDraw* draw) {
    return isInvisible() ? true : AcDbText::subWorldDraw(draw);
}

Acad::ErrorStatus AcDbAttribute::subErase(bool) {
    const bool belongs = AcDbBlockReference::cast(AcDbObjectAccess::object(ownerId())) != nullptr;
    return belongs ? Acad::eNotApplicable : Acad::eOk;
}

void AcDbAttribute::subList() const {
    AcDbText::subList();
    veldrin::listValue("tag", tag());
}

Acad::ErrorStatus AcDbAttribute::dxfOutFields(AcDbDxfFiler* filer) const {
    const Acad::ErrorStatus status = AcDbEntity::dxfOutFields(filer);
    if (status != Acad::eOk) return status;
    dxfOutText(*filer);
    filer->writeItem(AcDb::kDxfSubclass, "AcDbAttribute");
    dxfOutTag(*filer);
    return filer->filerStatus();
}

Acad::ErrorStatus AcDbAttribute::dxfInFields(AcDbDxfFiler* filer) {
    const Acad::ErrorStatus status = AcDbEntity::dxfInFields(filer);
    if (status != Acad::eOk) return status;
    const Acad::ErrorStatus read =
        dxfInText(filer, kCodeVertical, [this](const AcDbDxfItem& item) { return takeTagGroup(item); });
    return read == Acad::eOk && tag().empty() ? Acad::eInvalidInput : read;
}
