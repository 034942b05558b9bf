// vd-record vd-from-record

#include "drawing/AcDbBlockTable.h"
#include "drawing/RecordFiler.h"
#include "runtime/AcRxClass.h"
#include "scripting/drawing_values.h"
#include "scripting/tables.h"

#include <cstring>
#include <fmt/format.h>

namespace veldrin::scripting {

namespace {

using lisp::Args;
using lisp::Engine;
using lisp::Error;
using lisp::ListBuilder;
using lisp::Value;

template<class T>
T valueOf(const RecordCursor::Item& item) {
    T value;
    std::memcpy(&value, item.payload.data(), sizeof value);
    return value;
}

Value numbersOf(const RecordCursor::Item& item, std::size_t count) {
    ListBuilder list;
    for (std::size_t i = 0; i < count; ++i) {
        double number = 0.0;
        std::memcpy(&number, item.payload.data() + i * sizeof number, sizeof number);
        list.add(Value::real(number));
    }
    return list.finish();
}

Value wideInteger(std::int64_t value) {
    const bool fits = value == static_cast<std::int32_t>(value);
    return fits ? Value::integer(static_cast<std::int32_t>(value)) : Value::real(static_cast<double>(value));
}

Value hexText(std::string_view bytes) {
    std::string text;
    for (const char byte : bytes) text += fmt::format("{:02X}", static_cast<unsigned char>(byte));
    return Value::text(text);
}

Value itemsOf(RecordCursor& cursor, AcDbDatabase* database);

Value itemValue(const RecordCursor::Item& item, RecordCursor& cursor, AcDbDatabase* database) {
    switch (item.type) {
    case ItemType::kBool: return Value::boolean(valueOf<char>(item) != 0);
    case ItemType::kInt8: return Value::integer(valueOf<std::int8_t>(item));
    case ItemType::kInt16: return Value::integer(valueOf<std::int16_t>(item));
    case ItemType::kInt32: return Value::integer(valueOf<std::int32_t>(item));
    case ItemType::kInt64: return wideInteger(valueOf<std::int64_t>(item));
    case ItemType::kDouble: return Value::real(valueOf<double>(item));
    case ItemType::kPoint2d: return numbersOf(item, 2);
    case ItemType::kPoint3d:
    case ItemType::kVector3d: return numbersOf(item, 3);
    case ItemType::kString: return Value::text(item.payload);
    case ItemType::kBytes: return hexText(item.payload);
    case ItemType::kHardPointer:
    case ItemType::kSoftPointer:
    case ItemType::kHardOwner:
    case ItemType::kSoftOwner: {
        AcDbObjectId id;
        database->getAcDbObjectId(id, AcDbHandle(valueOf<std::uint64_t>(item)));
        return enameOf(id);
    }
    case ItemType::kBeginEmbedded: return itemsOf(cursor, database);
    default: return {};
    }
}

// The items behind the base part, to the end of the record or of the embedded object.
Value itemsOf(RecordCursor& cursor, AcDbDatabase* database) {
    ListBuilder list;
    RecordCursor::Item item;
    while (cursor.next(item) == Acad::eOk && item.type != ItemType::kEndEmbedded) {
        if (item.type == ItemType::kEndOfBase) {
            list = ListBuilder(); // what came so far was the base part
            continue;
        }
        const char* type = itemTypeName(item.type);
        Value value = itemValue(item, cursor, database);
        list.add(lisp::pair(type, std::move(value)));
    }
    return list.finish();
}

Value record(Engine&, Args args) {
    const AcDbObjectPointer<AcDbEntity> entity = openEntity(args, 0);
    RecordWriter writer(AcDb::kFileFiler);
    const Acad::ErrorStatus status = entity->dwgOutFields(&writer);
    if (status != Acad::eOk) return Value::integer(status);
    RecordCursor cursor{writer.record(), writer.endOfBase()};
    return itemsOf(cursor, entity->database());
}

void writeItems(RecordWriter& writer, const Value& items);

AcDbObjectId itemId(const Value& value) {
    AcDbObjectId id;
    if (!value.isNil() && !idOf(value, id)) throw Error::badArgument("lentityp", value);
    return id;
}

std::string bytesOf(std::string_view hex) {
    std::string bytes;
    for (std::size_t i = 0; i + 1 < hex.size(); i += 2)
        bytes += static_cast<char>(std::stoi(std::string(hex.substr(i, 2)), nullptr, 16));
    return bytes;
}

AcGePoint3d itemPoint(const Value& value) {
    return toPoint(lisp::pointOf(value));
}

struct TypeWriter {
    ItemType type;
    void (*write)(RecordWriter& writer, const Value& value);
};

constexpr TypeWriter typeWriters[] = {
    {ItemType::kBool, [](RecordWriter& w, const Value& v) { w.writeBool(!v.isNil()); }},
    {ItemType::kInt8,
     [](RecordWriter& w, const Value& v) { w.writeInt8(static_cast<Adesk::Int8>(lisp::integerOf(v))); }},
    {ItemType::kInt16,
     [](RecordWriter& w, const Value& v) { w.writeInt16(static_cast<Adesk::Int16>(lisp::integerOf(v))); }},
    {ItemType::kInt32, [](RecordWriter& w, const Value& v) { w.writeInt32(lisp::integerOf(v)); }},
    {ItemType::kInt64,
     [](RecordWriter& w, const Value& v) { w.writeInt64(static_cast<Adesk::Int64>(lisp::numberOf(v))); }},
    {ItemType::kDouble, [](RecordWriter& w, const Value& v) { w.writeDouble(lisp::numberOf(v)); }},
    {ItemType::kPoint2d, [](RecordWriter& w, const Value& v) { w.writePoint2d(itemPoint(v).convert2d()); }},
    {ItemType::kPoint3d, [](RecordWriter& w, const Value& v) { w.writePoint3d(itemPoint(v)); }},
    {ItemType::kVector3d, [](RecordWriter& w, const Value& v) { w.writeVector3d(itemPoint(v).asVector()); }},
    {ItemType::kString, [](RecordWriter& w, const Value& v) { w.writeString(lisp::textOf(v)); }},
    {ItemType::kBytes, [](RecordWriter& w, const Value& v) { w.writeBytes(bytesOf(lisp::textOf(v))); }},
    {ItemType::kHardPointer, [](RecordWriter& w, const Value& v) { w.writeHardPointerId(itemId(v)); }},
    {ItemType::kSoftPointer, [](RecordWriter& w, const Value& v) { w.writeSoftPointerId(itemId(v)); }},
    {ItemType::kHardOwner, [](RecordWriter& w, const Value& v) { w.writeHardOwnershipId(itemId(v)); }},
    {ItemType::kSoftOwner, [](RecordWriter& w, const Value& v) { w.writeSoftOwnershipId(itemId(v)); }},
    // Without a class name: its base part is at its defaults.
    {ItemType::kBeginEmbedded,
     [](RecordWriter& w, const Value& v) {
         w.beginEmbedded("");
         writeItems(w, v);
         w.endEmbedded();
     }},
};

void writeItems(RecordWriter& writer, const Value& items) {
    if (!items.isList()) throw Error::badArgument("listp", items);
    for (const Value& item : lisp::ListView(items)) {
        const std::string_view name = lisp::textOf(item.car());
        const auto* row = std::begin(typeWriters);
        while (row != std::end(typeWriters) && name != itemTypeName(row->type)) ++row;
        if (row == std::end(typeWriters))
            throw Error(fmt::format("vd-from-record: unknown item type \"{}\"", name));
        row->write(writer, item.cdr());
    }
}

Value fromRecord(Engine&, Args args) {
    AcDbDatabase& database = currentDatabase();
    const AcRxClass* itsClass = acrxClassByName(args.string(0).c_str());
    std::unique_ptr<AcRxObject> made(itsClass ? itsClass->create() : nullptr);
    AcDbEntity* const entity = AcDbEntity::cast(made.get());
    if (!entity) throw Error(fmt::format("vd-from-record: no entity class \"{}\"", args.text(0)));

    RecordWriter base(AcDb::kFileFiler);
    entity->dwgOutFields(&base);
    RecordWriter items(AcDb::kFileFiler);
    writeItems(items, args.list(1));
    const std::string whole = base.record().substr(0, base.endOfBase()) + items.record();
    RecordReader reader(AcDb::kFileFiler, &database, whole);
    Acad::ErrorStatus status = entity->dwgInFields(&reader);
    if (status != Acad::eOk) return Value::integer(status);

    const UndoStep step("vd-from-record");
    const AcDbObjectPointer<AcDbBlockTableRecord> space(database.modelSpaceId(), AcDb::kForWrite);
    AcDbObjectId id;
    status = space ? space->appendAcDbEntity(id, entity) : space.openStatus();
    if (status != Acad::eOk) return Value::integer(status);
    made.release();
    entity->close();
    return enameOf(id);
}

constexpr lisp::BuiltinRow rows[] = {
    {"vd-record", 1, 1, record},
    {"vd-from-record", 2, 2, fromRecord},
};

} // namespace

std::span<const lisp::BuiltinRow> recordFunctions() {
    return rows;
}

} // namespace veldrin::scripting
