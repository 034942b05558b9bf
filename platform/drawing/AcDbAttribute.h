#pragma once

#include "drawing/AcDbText.h"

namespace veldrin {

// What an attribute and its definition share: a text with a tag and flags.
class VELDRIN_API TaggedText : public AcDbText {
public:
    TaggedText();
    ~TaggedText() override;

    const std::string& tag() const { return m_tag; } // upper case, without blanks
    Acad::ErrorStatus setTag(const std::string& tag);
    bool isInvisible() const { return has(kInvisible); }
    Acad::ErrorStatus setInvisible(bool on) { return setFlag(kInvisible, on); }
    bool isConstant() const { return has(kConstant); } // the same text in every reference
    bool isVerifiable() const { return has(kVerify); }
    bool isPreset() const { return has(kPreset); } // taken without asking
    Adesk::Int16 fieldLength() const { return m_fieldLength; }

    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;

protected:
    enum Flag { kInvisible = 1, kConstant = 2, kVerify = 4, kPreset = 8 };
    static constexpr int kCodeVertical = 74;

    bool has(Flag flag) const { return (m_flags & flag) != 0; }
    Acad::ErrorStatus setFlag(Flag flag, bool on);
    // From the tag to the vertical mode, and back.
    void dxfOutTag(AcDbDxfFiler& filer) const;
    bool takeTagGroup(const AcDbDxfItem& item);

private:
    std::string m_tag;
    int m_flags = 0;
    Adesk::Int16 m_fieldLength = 0;
};

} // namespace veldrin

// What references to a block are asked for: shows its tag in the block itself, and nothing in references,
// which have attributes for it; a constant one shows its text there.
class VELDRIN_API AcDbAttributeDefinition : public veldrin::TaggedText {
public:
    ACRX_DECLARE_MEMBERS(AcDbAttributeDefinition);

    AcDbAttributeDefinition();
    ~AcDbAttributeDefinition() override;

    const std::string& prompt() const { return m_prompt; }
    Acad::ErrorStatus setPrompt(const std::string& prompt);
    Acad::ErrorStatus setConstant(bool on) { return setFlag(kConstant, on); }
    Acad::ErrorStatus setVerifiable(bool on) { return setFlag(kVerify, on); }
    Acad::ErrorStatus setPreset(bool on) { return setFlag(kPreset, on); }
    // As a constant one looks in a reference.
    void drawValue(AcGiWorldDraw& draw) const;

    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;
    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;

protected:
    void subList() const override;
    const std::string& shownText() const override { return tag(); }

private:
    std::string m_prompt;
};

// The text that one reference has for a definition of its block. It belongs to the reference and is erased
// with it, never alone.
class VELDRIN_API AcDbAttribute : public veldrin::TaggedText {
public:
    ACRX_DECLARE_MEMBERS(AcDbAttribute);

    AcDbAttribute();
    ~AcDbAttribute() override;

    // Everything of the definition but its place in the world, which `placing` gives.
    Acad::ErrorStatus setFromDefinition(const AcDbAttributeDefinition& definition,
                                        const AcGeMatrix3d& placing);

    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;

protected:
    bool subWorldDraw(AcGiWorldDraw* draw) override;
    Acad::ErrorStatus subErase(bool erasing) override;
    void subList() const override;
};
