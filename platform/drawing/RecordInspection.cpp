#include "drawing/RecordInspection.h"

#include "drawing/AcDbDatabase.h"
#include "drawing/AcDbObjectAccess.h"
#include "drawing/RecordFiler.h"
#include "drawing/SlotTable.h"
#include "runtime/AcRxClass.h"

#include <cstring>
#include <limits>

namespace veldrin {

namespace {

constexpr int kDeepest = 32; // objects embedded in each other
constexpr auto kLastType = ItemType::kEndEmbedded;

template<class T>
T valueOf(std::string_view payload) {
    T value;
    std::memcpy(&value, payload.data(), sizeof value);
    return value;
}

AcGePoint3d pointOf(std::string_view payload) {
    double xyz[3] = {};
    std::memcpy(xyz, payload.data(), payload.size());
    return {xyz[0], xyz[1], xyz[2]};
}

AcDbObjectId idOf(std::string_view payload, const AcDbDatabase* database) {
    AcDbObjectId id;
    if (database) database->getAcDbObjectId(id, AcDbHandle(valueOf<std::uint64_t>(payload)));
    return id;
}

RecordItem::Value plainValue(const RecordCursor::Item& item, const AcDbDatabase* database) {
    switch (item.type) {
    case ItemType::kBool: return item.payload.front() != 0;
    case ItemType::kInt8: return std::int64_t{valueOf<std::int8_t>(item.payload)};
    case ItemType::kInt16: return std::int64_t{valueOf<std::int16_t>(item.payload)};
    case ItemType::kInt32: return std::int64_t{valueOf<std::int32_t>(item.payload)};
    case ItemType::kInt64: return valueOf<std::int64_t>(item.payload);
    case ItemType::kDouble: return valueOf<double>(item.payload);
    case ItemType::kPoint2d:
    case ItemType::kPoint3d:
    case ItemType::kVector3d: return pointOf(item.payload);
    case ItemType::kHardPointer:
    case ItemType::kSoftPointer:
    case ItemType::kHardOwner:
    case ItemType::kSoftOwner: return idOf(item.payload, database);
    default: return std::string(item.payload);
    }
}

// Lists the items up to the end of the object, the base part left out. The cursor then stands behind it.
Acad::ErrorStatus listObject(RecordCursor& cursor, const AcDbDatabase* database, int depth,
                             std::vector<RecordItem>& items) {
    if (depth > kDeepest) return Acad::eBadRecord;
    bool inBase = true;
    while (!cursor.atEnd()) {
        RecordCursor::Item item;
        if (const Acad::ErrorStatus status = cursor.next(item); status != Acad::eOk) return status;
        if (item.type == ItemType::kEndEmbedded) {
            if (depth == 0) return Acad::eBadRecord;
            return inBase ? Acad::eEndOfObject : Acad::eOk;
        }
        if (item.type == ItemType::kEndOfBase) {
            if (!inBase) return Acad::eBadRecord;
            inBase = false;
            continue;
        }
        RecordItem listed{itemTypeName(item.type), false};
        if (item.type == ItemType::kBeginEmbedded) {
            std::vector<RecordItem> inner;
            const Acad::ErrorStatus status = listObject(cursor, database, depth + 1, inner);
            if (status != Acad::eOk) return status;
            listed.value = std::move(inner);
        } else {
            listed.value = plainValue(item, database);
        }
        if (!inBase) items.push_back(std::move(listed));
    }
    return depth > 0 || inBase ? Acad::eEndOfObject : Acad::eOk;
}

ItemType typeNamed(const std::string& name) {
    for (auto type = ItemType::kBool; type < kLastType;
         type = static_cast<ItemType>(static_cast<int>(type) + 1)) {
        if (type != ItemType::kEndOfBase && name == itemTypeName(type)) return type;
    }
    return ItemType::kEnd;
}

template<class Int>
Acad::ErrorStatus writeInt(RecordWriter& writer, Acad::ErrorStatus (RecordWriter::*write)(Int),
                           const std::int64_t* value) {
    const bool fits =
        value && *value >= std::numeric_limits<Int>::min() && *value <= std::numeric_limits<Int>::max();
    return fits ? (writer.*write)(static_cast<Int>(*value)) : Acad::eInvalidInput;
}

Acad::ErrorStatus writeItem(RecordWriter& writer, const RecordItem& item, int depth);

// Without a class name and base part: who reads it knows the one and adds the other.
Acad::ErrorStatus writeObject(RecordWriter& writer, const std::vector<RecordItem>& items, int depth) {
    if (depth > kDeepest) return Acad::eInvalidInput;
    writer.beginEmbedded("");
    for (const RecordItem& item : items) {
        const Acad::ErrorStatus status = writeItem(writer, item, depth);
        if (status != Acad::eOk) return status;
    }
    return writer.endEmbedded();
}

Acad::ErrorStatus writeItem(RecordWriter& writer, const RecordItem& item, int depth) {
    const auto* flag = std::get_if<bool>(&item.value);
    const auto* whole = std::get_if<std::int64_t>(&item.value);
    const auto* real = std::get_if<double>(&item.value);
    const auto* point = std::get_if<AcGePoint3d>(&item.value);
    const auto* text = std::get_if<std::string>(&item.value);
    const auto* id = std::get_if<AcDbObjectId>(&item.value);
    const auto* object = std::get_if<std::vector<RecordItem>>(&item.value);
    constexpr auto wrong = Acad::eInvalidInput;
    switch (typeNamed(item.type)) {
    case ItemType::kBool: return flag ? writer.writeBool(*flag) : wrong;
    case ItemType::kInt8: return writeInt(writer, &RecordWriter::writeInt8, whole);
    case ItemType::kInt16: return writeInt(writer, &RecordWriter::writeInt16, whole);
    case ItemType::kInt32: return writeInt(writer, &RecordWriter::writeInt32, whole);
    case ItemType::kInt64: return writeInt(writer, &RecordWriter::writeInt64, whole);
    case ItemType::kDouble: return real ? writer.writeDouble(*real) : wrong;
    case ItemType::kPoint2d: return point ? writer.writePoint2d(point->convert2d()) : wrong;
    case ItemType::kPoint3d: return point ? writer.writePoint3d(*point) : wrong;
    case ItemType::kVector3d: return point ? writer.writeVector3d(point->asVector()) : wrong;
    case ItemType::kString: return text ? writer.writeString(*text) : wrong;
    case ItemType::kBytes: return text ? writer.writeBytes(*text) : wrong;
    case ItemType::kHardPointer: return id ? writer.writeHardPointerId(*id) : wrong;
    case ItemType::kSoftPointer: return id ? writer.writeSoftPointerId(*id) : wrong;
    case ItemType::kHardOwner: return id ? writer.writeHardOwnershipId(*id) : wrong;
    case ItemType::kSoftOwner: return id ? writer.writeSoftOwnershipId(*id) : wrong;
    case ItemType::kBeginEmbedded: return object ? writeObject(writer, *object, depth + 1) : wrong;
    default: return wrong;
    }
}

} // namespace

Acad::ErrorStatus inspectObject(const AcDbObject& object, std::vector<RecordItem>& items,
                                AcDb::FilerType type) {
    RecordWriter writer(type);
    const Acad::ErrorStatus status = object.dwgOutFields(&writer);
    return status == Acad::eOk ? listRecord(writer.record(), writer.database(), items) : status;
}

Acad::ErrorStatus listRecord(std::string_view record, AcDbDatabase* database,
                             std::vector<RecordItem>& items) {
    items.clear();
    RecordCursor cursor{record};
    return listObject(cursor, database, 0, items);
}

Acad::ErrorStatus buildItems(const std::vector<RecordItem>& items, std::string& record) {
    RecordWriter writer(AcDb::kFileFiler);
    for (const RecordItem& item : items) {
        const Acad::ErrorStatus status = writeItem(writer, item, 0);
        if (status != Acad::eOk) return status;
    }
    record = writer.takeRecord();
    return Acad::eOk;
}

std::unique_ptr<AcDbObject> objectFromItems(const AcRxClass& aClass, AcDbDatabase& database,
                                            const std::vector<RecordItem>& items, Acad::ErrorStatus& status) {
    std::unique_ptr<AcRxObject> made(aClass.create());
    AcDbObject* const object = AcDbObject::cast(made.get());
    status = Acad::eNotApplicable;
    if (!object) return nullptr;
    RecordWriter base(AcDb::kFileFiler);
    std::string own;
    status = object->dwgOutFields(&base);
    if (status == Acad::eOk) status = buildItems(items, own);
    if (status != Acad::eOk) return nullptr;
    const std::string record = base.record().substr(0, base.endOfBase()) + own;
    RecordReader reader(AcDb::kFileFiler, &database, record);
    status = object->dwgInFields(&reader);
    if (status != Acad::eOk) return nullptr;
    made.release();
    return std::unique_ptr<AcDbObject>(object);
}

} // namespace veldrin
