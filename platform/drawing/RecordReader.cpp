#include "drawing/RecordFiler.h"

#include "drawing/AcDbDatabase.h"
#include "drawing/SlotTable.h"
#include "runtime/AcRxClass.h"

#include <memory>
#include <utility>

namespace veldrin {

namespace {

constexpr std::size_t kCountSize = sizeof(std::uint32_t);
constexpr std::size_t kVariable = static_cast<std::size_t>(-1);
constexpr std::size_t kUnknown = static_cast<std::size_t>(-2);

struct TypeRow {
    const char* name;
    std::size_t size;
};

// By the type's number.
constexpr TypeRow kTypes[] = {
    {"End", kUnknown},     {"Bool", 1},          {"Int8", 1},           {"Int16", 2},       {"Int32", 4},
    {"Int64", 8},          {"Double", 8},        {"Point2d", 16},       {"Point3d", 24},    {"Vector3d", 24},
    {"String", kVariable}, {"Bytes", kVariable}, {"HardPointer", 8},    {"SoftPointer", 8}, {"HardOwner", 8},
    {"SoftOwner", 8},      {"EndOfBase", 0},     {"Object", kVariable}, {"EndOfObject", 0},
};

bool isId(ItemType type) {
    return type >= ItemType::kHardPointer && type <= ItemType::kSoftOwner;
}

} // namespace

const char* itemTypeName(ItemType type) {
    const auto number = static_cast<std::size_t>(type);
    return number < std::size(kTypes) ? kTypes[number].name : "Unknown";
}

Acad::ErrorStatus RecordCursor::peek(Item& item, std::size_t& next) const {
    if (atEnd()) return Acad::eEndOfObject;
    const auto number = static_cast<unsigned char>(record[position]);
    const std::size_t size = number < std::size(kTypes) ? kTypes[number].size : kUnknown;
    if (size == kUnknown) return Acad::eBadRecord;
    std::string_view rest = record.substr(position + 1);
    std::uint32_t count = static_cast<std::uint32_t>(size);
    if (size == kVariable) {
        if (rest.size() < kCountSize) return Acad::eBadRecord;
        std::memcpy(&count, rest.data(), kCountSize);
        rest.remove_prefix(kCountSize);
    }
    if (rest.size() < count) return Acad::eBadRecord;
    item = {static_cast<ItemType>(number), rest.substr(0, count), position};
    next = static_cast<std::size_t>(rest.data() - record.data()) + count;
    return Acad::eOk;
}

Acad::ErrorStatus RecordCursor::next(Item& item) {
    return peek(item, position);
}

RecordReader::RecordReader(AcDb::FilerType type, AcDbDatabase* database, std::string_view record)
    : m_type(type), m_database(database), m_cursor{record} {}

RecordReader::RecordReader(AcDb::FilerType type, IdResolver resolver, std::string_view record)
    : m_type(type), m_resolver(std::move(resolver)), m_cursor{record} {}

RecordReader::~RecordReader() = default;

Acad::ErrorStatus RecordReader::take(ItemType type, std::string_view& payload) {
    if (m_status != Acad::eOk) return m_status;
    RecordCursor::Item item;
    std::size_t next = 0;
    m_status = m_cursor.peek(item, next);
    if (m_status != Acad::eOk) return m_status;
    if (item.type != type) {
        const bool atEndOfObject = m_depth > 0 && item.type == ItemType::kEndEmbedded;
        return m_status = atEndOfObject ? Acad::eEndOfObject : Acad::eBadRecord;
    }
    payload = item.payload;
    m_cursor.position = next;
    return Acad::eOk;
}

template<class T>
Acad::ErrorStatus RecordReader::takeValue(ItemType type, T& value) {
    // Nearly all that is read: the item that was asked for, whole.
    const std::string_view record = m_cursor.record;
    if (m_status == Acad::eOk && record.size() - m_cursor.position > sizeof value &&
        record[m_cursor.position] == static_cast<char>(type)) {
        std::memcpy(&value, record.data() + m_cursor.position + 1, sizeof value);
        m_cursor.position += 1 + sizeof value;
        return Acad::eOk;
    }
    std::string_view payload;
    value = T{};
    if (take(type, payload) == Acad::eOk) std::memcpy(&value, payload.data(), sizeof value);
    return m_status;
}

Acad::ErrorStatus RecordReader::takeText(ItemType type, std::string& text) {
    std::string_view payload;
    take(type, payload);
    text = payload;
    return m_status;
}

AcDbObjectId RecordReader::resolve(std::uint64_t handle) const {
    if (handle == 0) return {};
    if (m_resolver) return m_resolver(handle);
    const std::uint32_t slot = m_database ? m_database->slots().findHandle(handle) : 0;
    return slot == 0 ? AcDbObjectId() : AcDbObjectId(m_database->generation(), slot);
}

Acad::ErrorStatus RecordReader::takeId(ItemType type, AcDbObjectId& id) {
    std::uint64_t handle = 0;
    id.setNull();
    if (takeValue(type, handle) != Acad::eOk) return m_status;
    id = resolve(handle);
    return handle != 0 && id.isNull() ? Acad::eUnknownHandle : Acad::eOk;
}

Acad::ErrorStatus RecordReader::readItems(std::string& items) {
    items.clear();
    while (m_status == Acad::eOk && !m_cursor.atEnd()) {
        RecordCursor::Item item;
        m_status = m_cursor.next(item);
        if (m_status != Acad::eOk) break;
        items.append(m_cursor.record.substr(item.begin, m_cursor.position - item.begin));
        if (!isId(item.type) || !m_resolver) continue;
        std::uint64_t handle = 0;
        std::memcpy(&handle, item.payload.data(), sizeof handle);
        handle = resolve(handle).handle().value();
        std::memcpy(items.data() + items.size() - sizeof handle, &handle, sizeof handle);
    }
    return m_status;
}

Acad::ErrorStatus RecordReader::readBool(bool& value) {
    char byte = 0;
    if (takeValue(ItemType::kBool, byte) == Acad::eOk && byte != 0 && byte != 1) m_status = Acad::eBadRecord;
    value = m_status == Acad::eOk && byte == 1;
    return m_status;
}

Acad::ErrorStatus RecordReader::readInt8(Adesk::Int8& value) {
    return takeValue(ItemType::kInt8, value);
}
Acad::ErrorStatus RecordReader::readInt16(Adesk::Int16& value) {
    return takeValue(ItemType::kInt16, value);
}
Acad::ErrorStatus RecordReader::readInt32(Adesk::Int32& value) {
    return takeValue(ItemType::kInt32, value);
}
Acad::ErrorStatus RecordReader::readInt64(Adesk::Int64& value) {
    return takeValue(ItemType::kInt64, value);
}
Acad::ErrorStatus RecordReader::readDouble(double& value) {
    return takeValue(ItemType::kDouble, value);
}

Acad::ErrorStatus RecordReader::readPoint2d(AcGePoint2d& value) {
    struct {
        double x, y;
    } xy;
    takeValue(ItemType::kPoint2d, xy);
    value = {xy.x, xy.y};
    return m_status;
}

Acad::ErrorStatus RecordReader::readPoint3d(AcGePoint3d& value) {
    struct {
        double x, y, z;
    } xyz;
    takeValue(ItemType::kPoint3d, xyz);
    value = {xyz.x, xyz.y, xyz.z};
    return m_status;
}

Acad::ErrorStatus RecordReader::readVector3d(AcGeVector3d& value) {
    struct {
        double x, y, z;
    } xyz;
    takeValue(ItemType::kVector3d, xyz);
    value = {xyz.x, xyz.y, xyz.z};
    return m_status;
}

Acad::ErrorStatus RecordReader::readString(char*& value) {
    std::string text;
    value = takeText(ItemType::kString, text) == Acad::eOk ? acutNewString(text.c_str()) : nullptr;
    return m_status;
}

Acad::ErrorStatus RecordReader::readString(std::string& value) {
    return takeText(ItemType::kString, value);
}
Acad::ErrorStatus RecordReader::readBytes(std::string& value) {
    return takeText(ItemType::kBytes, value);
}

Acad::ErrorStatus RecordReader::readHardPointerId(AcDbObjectId& value) {
    return takeId(ItemType::kHardPointer, value);
}
Acad::ErrorStatus RecordReader::readSoftPointerId(AcDbObjectId& value) {
    return takeId(ItemType::kSoftPointer, value);
}
Acad::ErrorStatus RecordReader::readHardOwnershipId(AcDbObjectId& value) {
    return takeId(ItemType::kHardOwner, value);
}
Acad::ErrorStatus RecordReader::readSoftOwnershipId(AcDbObjectId& value) {
    return takeId(ItemType::kSoftOwner, value);
}

Acad::ErrorStatus RecordReader::endBasePart() {
    std::string_view none;
    take(ItemType::kEndOfBase, none);
    if (m_inDefaultBase) {
        m_cursor = m_suspended;
        m_inDefaultBase = false;
    }
    return m_status;
}

// An embedded object without a class name has no base part: it takes that of a fresh object.
Acad::ErrorStatus RecordReader::beginEmbedded(const char* className) {
    std::string_view name;
    if (take(ItemType::kBeginEmbedded, name) != Acad::eOk) return m_status;
    ++m_depth;
    if (name.empty()) return beginDefaultBase(className);
    if (name != className) m_status = Acad::eBadRecord;
    return m_status;
}

Acad::ErrorStatus RecordReader::beginDefaultBase(const char* className) {
    const AcRxClass* const aClass = AcRxClassRegistry::instance().at(className);
    const std::unique_ptr<AcRxObject> made(aClass ? aClass->create() : nullptr);
    const AcDbObject* const fresh = AcDbObject::cast(made.get());
    RecordWriter writer(m_type);
    if (!fresh || fresh->dwgOutFields(&writer) != Acad::eOk) return m_status = Acad::eBadRecord;
    m_defaultBase = writer.record().substr(0, writer.endOfBase());
    m_suspended = std::exchange(m_cursor, RecordCursor{m_defaultBase});
    m_inDefaultBase = true;
    return Acad::eOk;
}

Acad::ErrorStatus RecordReader::endEmbedded() {
    std::string_view none;
    if (m_depth == 0 && m_status == Acad::eOk) m_status = Acad::eBadRecord;
    if (take(ItemType::kEndEmbedded, none) == Acad::eOk) --m_depth;
    return m_status;
}

// A reader writes nothing.
Acad::ErrorStatus RecordReader::refuse() {
    return m_status = Acad::eNotApplicable;
}
Acad::ErrorStatus RecordReader::writeBool(bool) {
    return refuse();
}
Acad::ErrorStatus RecordReader::writeInt8(Adesk::Int8) {
    return refuse();
}
Acad::ErrorStatus RecordReader::writeInt16(Adesk::Int16) {
    return refuse();
}
Acad::ErrorStatus RecordReader::writeInt32(Adesk::Int32) {
    return refuse();
}
Acad::ErrorStatus RecordReader::writeInt64(Adesk::Int64) {
    return refuse();
}
Acad::ErrorStatus RecordReader::writeDouble(double) {
    return refuse();
}
Acad::ErrorStatus RecordReader::writePoint2d(const AcGePoint2d&) {
    return refuse();
}
Acad::ErrorStatus RecordReader::writePoint3d(const AcGePoint3d&) {
    return refuse();
}
Acad::ErrorStatus RecordReader::writeVector3d(const AcGeVector3d&) {
    return refuse();
}
Acad::ErrorStatus RecordReader::writeString(std::string_view) {
    return refuse();
}
Acad::ErrorStatus RecordReader::writeBytes(std::string_view) {
    return refuse();
}
Acad::ErrorStatus RecordReader::writeHardPointerId(const AcDbObjectId&) {
    return refuse();
}
Acad::ErrorStatus RecordReader::writeSoftPointerId(const AcDbObjectId&) {
    return refuse();
}
Acad::ErrorStatus RecordReader::writeHardOwnershipId(const AcDbObjectId&) {
    return refuse();
}
Acad::ErrorStatus RecordReader::writeSoftOwnershipId(const AcDbObjectId&) {
    return refuse();
}

} // namespace veldrin
