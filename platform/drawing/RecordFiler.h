#pragma once

#include "drawing/AcDbDwgFiler.h"

#include <cstring>
#include <functional>
#include <string>
#include <string_view>

namespace veldrin {

// One item of a record: a type byte and a value, little endian. Ids are kept as handles, so that a record
// means the same in memory, in an undo entry and in a file.
enum class ItemType : std::uint8_t {
    kEnd = 0,
    kBool = 1,
    kInt8 = 2,
    kInt16 = 3,
    kInt32 = 4,
    kInt64 = 5,
    kDouble = 6,
    kPoint2d = 7,
    kPoint3d = 8,
    kVector3d = 9,
    kString = 10,
    kBytes = 11,
    kHardPointer = 12,
    kSoftPointer = 13,
    kHardOwner = 14,
    kSoftOwner = 15,
    kEndOfBase = 16,
    kBeginEmbedded = 17, // followed by the class name as a string's length and bytes
    kEndEmbedded = 18,
};

// Name of an item's type as scripts see it: "Int32", "Bool", "HardPointer" ...
VELDRIN_API const char* itemTypeName(ItemType type);

// Steps through the items of a record without a wild read.
struct VELDRIN_API RecordCursor {
    std::string_view record;
    std::size_t position = 0;

    struct Item {
        ItemType type = ItemType::kEnd;
        std::string_view payload; // behind the type byte; of texts and bytes, without their count
        std::size_t begin = 0;    // of the whole item in the record
    };

    bool atEnd() const { return position >= record.size(); }
    // The item at the position, or eEndOfObject, or eBadRecord for an unknown type or one that is cut off.
    Acad::ErrorStatus peek(Item& item, std::size_t& next) const;
    Acad::ErrorStatus next(Item& item); // peeks and steps behind it
};

// Writes a record. It puts down what it is given: whether an id of an erased object is written is up to the
// object that files.
class VELDRIN_API RecordWriter final : public AcDbDwgFiler {
public:
    explicit RecordWriter(AcDb::FilerType type);
    ~RecordWriter() override;

    AcDb::FilerType filerType() const override { return m_type; }
    const std::string& record() const { return m_record; }
    std::string takeRecord() { return std::move(m_record); }
    void clear(); // ready for the next record, in the same memory
    // Where the items behind the base part begin; 0 while there is no base part.
    std::size_t endOfBase() const { return m_endOfBase; }
    // That of the first id that was written; null while there was none.
    AcDbDatabase* database() const { return m_database; }
    // Items that were written before, as they are.
    Acad::ErrorStatus writeItems(std::string_view items);

    Acad::ErrorStatus readBool(bool& value) override;
    Acad::ErrorStatus readInt8(Adesk::Int8& value) override;
    Acad::ErrorStatus readInt16(Adesk::Int16& value) override;
    Acad::ErrorStatus readInt32(Adesk::Int32& value) override;
    Acad::ErrorStatus readInt64(Adesk::Int64& value) override;
    Acad::ErrorStatus readDouble(double& value) override;
    Acad::ErrorStatus readPoint2d(AcGePoint2d& value) override;
    Acad::ErrorStatus readPoint3d(AcGePoint3d& value) override;
    Acad::ErrorStatus readVector3d(AcGeVector3d& value) override;
    Acad::ErrorStatus readString(char*& value) override;
    Acad::ErrorStatus readString(std::string& value) override;
    Acad::ErrorStatus readBytes(std::string& value) override;
    Acad::ErrorStatus readHardPointerId(AcDbObjectId& value) override;
    Acad::ErrorStatus readSoftPointerId(AcDbObjectId& value) override;
    Acad::ErrorStatus readHardOwnershipId(AcDbObjectId& value) override;
    Acad::ErrorStatus readSoftOwnershipId(AcDbObjectId& value) override;

    Acad::ErrorStatus writeBool(bool value) override;
    Acad::ErrorStatus writeInt8(Adesk::Int8 value) override;
    Acad::ErrorStatus writeInt16(Adesk::Int16 value) override;
    Acad::ErrorStatus writeInt32(Adesk::Int32 value) override;
    Acad::ErrorStatus writeInt64(Adesk::Int64 value) override;
    Acad::ErrorStatus writeDouble(double value) override;
    Acad::ErrorStatus writePoint2d(const AcGePoint2d& value) override;
    Acad::ErrorStatus writePoint3d(const AcGePoint3d& value) override;
    Acad::ErrorStatus writeVector3d(const AcGeVector3d& value) override;
    Acad::ErrorStatus writeString(std::string_view value) override;
    Acad::ErrorStatus writeBytes(std::string_view value) override;
    Acad::ErrorStatus writeHardPointerId(const AcDbObjectId& value) override;
    Acad::ErrorStatus writeSoftPointerId(const AcDbObjectId& value) override;
    Acad::ErrorStatus writeHardOwnershipId(const AcDbObjectId& value) override;
    Acad::ErrorStatus writeSoftOwnershipId(const AcDbObjectId& value) override;

    Acad::ErrorStatus endBasePart() override;
    Acad::ErrorStatus beginEmbedded(const char* className) override;
    Acad::ErrorStatus endEmbedded() override;

private:
    Acad::ErrorStatus put(ItemType type, const void* bytes, std::size_t size);
    Acad::ErrorStatus putText(ItemType type, std::string_view text);
    Acad::ErrorStatus putId(ItemType type, const AcDbObjectId& id);
    Acad::ErrorStatus refuse();

    AcDb::FilerType m_type;
    std::string m_record;
    std::size_t m_endOfBase = 0;
    int m_depth = 0;
    AcDbDatabase* m_database = nullptr;
};

// Reads a record; the record outlives the reader. Asked for another type than comes next it answers
// eBadRecord, at the end of the object or of the embedded object eEndOfObject, and both stay. An id whose
// object is not there is null with eUnknownHandle, which does not stay: the caller goes on or gives up.
class VELDRIN_API RecordReader final : public AcDbDwgFiler {
public:
    // What an id of the record means here; null for one that is not here.
    using IdResolver = std::function<AcDbObjectId(std::uint64_t handle)>;

    RecordReader(AcDb::FilerType type, AcDbDatabase* database, std::string_view record);
    RecordReader(AcDb::FilerType type, IdResolver resolver, std::string_view record);
    ~RecordReader() override;

    AcDb::FilerType filerType() const override { return m_type; }
    bool atEnd() const { return m_cursor.atEnd(); }
    // All items that are left, with what their ids mean here.
    Acad::ErrorStatus readItems(std::string& items);

    Acad::ErrorStatus readBool(bool& value) override;
    Acad::ErrorStatus readInt8(Adesk::Int8& value) override;
    Acad::ErrorStatus readInt16(Adesk::Int16& value) override;
    Acad::ErrorStatus readInt32(Adesk::Int32& value) override;
    Acad::ErrorStatus readInt64(Adesk::Int64& value) override;
    Acad::ErrorStatus readDouble(double& value) override;
    Acad::ErrorStatus readPoint2d(AcGePoint2d& value) override;
    Acad::ErrorStatus readPoint3d(AcGePoint3d& value) override;
    Acad::ErrorStatus readVector3d(AcGeVector3d& value) override;
    Acad::ErrorStatus readString(char*& value) override;
    Acad::ErrorStatus readString(std::string& value) override;
    Acad::ErrorStatus readBytes(std::string& value) override;
    Acad::ErrorStatus readHardPointerId(AcDbObjectId& value) override;
    Acad::ErrorStatus readSoftPointerId(AcDbObjectId& value) override;
    Acad::ErrorStatus readHardOwnershipId(AcDbObjectId& value) override;
    Acad::ErrorStatus readSoftOwnershipId(AcDbObjectId& value) override;

    Acad::ErrorStatus writeBool(bool value) override;
    Acad::ErrorStatus writeInt8(Adesk::Int8 value) override;
    Acad::ErrorStatus writeInt16(Adesk::Int16 value) override;
    Acad::ErrorStatus writeInt32(Adesk::Int32 value) override;
    Acad::ErrorStatus writeInt64(Adesk::Int64 value) override;
    Acad::ErrorStatus writeDouble(double value) override;
    Acad::ErrorStatus writePoint2d(const AcGePoint2d& value) override;
    Acad::ErrorStatus writePoint3d(const AcGePoint3d& value) override;
    Acad::ErrorStatus writeVector3d(const AcGeVector3d& value) override;
    Acad::ErrorStatus writeString(std::string_view value) override;
    Acad::ErrorStatus writeBytes(std::string_view value) override;
    Acad::ErrorStatus writeHardPointerId(const AcDbObjectId& value) override;
    Acad::ErrorStatus writeSoftPointerId(const AcDbObjectId& value) override;
    Acad::ErrorStatus writeHardOwnershipId(const AcDbObjectId& value) override;
    Acad::ErrorStatus writeSoftOwnershipId(const AcDbObjectId& value) override;

    Acad::ErrorStatus endBasePart() override;
    Acad::ErrorStatus beginEmbedded(const char* className) override;
    Acad::ErrorStatus endEmbedded() override;

private:
    Acad::ErrorStatus take(ItemType type, std::string_view& payload);
    template<class T>
    Acad::ErrorStatus takeValue(ItemType type, T& value);
    Acad::ErrorStatus takeText(ItemType type, std::string& text);
    Acad::ErrorStatus takeId(ItemType type, AcDbObjectId& id);
    Acad::ErrorStatus beginDefaultBase(const char* className);
    AcDbObjectId resolve(std::uint64_t handle) const;
    Acad::ErrorStatus refuse();

    AcDb::FilerType m_type;
    AcDbDatabase* m_database = nullptr;
    IdResolver m_resolver;
    RecordCursor m_cursor;
    int m_depth = 0;
    // While the base part of an embedded object comes from elsewhere: that part, and where to go on.
    std::string m_defaultBase;
    RecordCursor m_suspended;
    bool m_inDefaultBase = false;
};

} // namespace veldrin
