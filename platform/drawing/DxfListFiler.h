#pragma once

#include "drawing/DxfFilerSides.h"
#include "runtime/ResbufChain.h"

#include <vector>

namespace veldrin {

// Exchange data as a chain of values whose types are group codes: what Lisp reads and changes. Points have
// three reals, bools are the integers 0 and 1, ids are names, bytes are a text of hexadecimal digits.
class VELDRIN_API DxfListWriter final : public DxfWritingFiler {
public:
    explicit DxfListWriter(AcDbDatabase* database);
    ~DxfListWriter() override;

    AcDbDatabase* database() const override { return m_database; }
    bool isEntityList() const override { return true; }
    ResbufPtr take() { return m_chain.take(); }

    // A value that does not go with its code makes the status eInvalidInput, which stays.
    Acad::ErrorStatus writeItem(int code, std::string_view text) override;
    Acad::ErrorStatus writeItem(int code, const AcDbObjectId& id) override;
    Acad::ErrorStatus writeDouble(int code, double value, int precision) override;
    Acad::ErrorStatus writePoint3d(int code, const AcGePoint3d& value, int precision) override;
    Acad::ErrorStatus writeInt16(int code, int value) override;
    Acad::ErrorStatus writeInt32(int code, std::int32_t value) override;
    Acad::ErrorStatus writeBool(int code, bool value) override;
    Acad::ErrorStatus writeBytes(int code, std::string_view value) override;

private:
    bool takes(int code, short kind);

    AcDbDatabase* m_database;
    ResbufBuilder m_chain;
};

// Reads a chain of groups, which outlives the reader. Common groups of an entity (layer, colour ...) are
// handed to the part of AcDbEntity wherever they stand, since people append them. A list without markers of
// classes is what people type: it goes to every class that asks, from the start each time. The end of the
// list is eEndOfObject and leaves the filer's status as it is.
class VELDRIN_API DxfListReader final : public DxfReadingFiler {
public:
    DxfListReader(AcDbDatabase* database, const resbuf* groups, bool isEntity);
    ~DxfListReader() override;

    AcDbDatabase* database() const override { return m_database; }
    bool isEntityList() const override { return true; }

    Acad::ErrorStatus readItem(AcDbDxfItem& item) override;
    Acad::ErrorStatus pushBackItem() override;
    bool atSubclassData(const char* className) override;

private:
    const resbuf* at(std::size_t position) const;

    AcDbDatabase* m_database;
    bool m_isEntity;
    bool m_hasMarkers = false;           // of classes behind AcDbEntity
    std::vector<const resbuf*> m_common; // an entity's common groups
    std::vector<const resbuf*> m_own;    // the classes' groups and markers
    std::size_t m_position = 0;          // over the common ones, then the own
};

// What the text of a code is: bytes as hexadecimal digits, a handle, or text.
VELDRIN_API AcDbDxfItem::Kind dxfTextKind(int code);

// One group in its two forms.
VELDRIN_API AcDbDxfItem dxfItemOf(const resbuf& group);
VELDRIN_API void addDxfItem(ResbufBuilder& chain, const AcDbDxfItem& item);
VELDRIN_API Acad::ErrorStatus writeDxfItem(AcDbDxfFiler& filer, const resbuf& group);

} // namespace veldrin
