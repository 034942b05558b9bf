#include "drawing/RecordFiler.h"

#include <bit>

namespace veldrin {

static_assert(std::endian::native == std::endian::little, "records are little endian");

RecordWriter::RecordWriter(AcDb::FilerType type) : m_type(type) {}
RecordWriter::~RecordWriter() = default;

void RecordWriter::clear() {
    m_record.clear();
    m_endOfBase = 0;
    m_depth = 0;
    m_database = nullptr;
    m_status = Acad::eOk;
}

Acad::ErrorStatus RecordWriter::put(ItemType type, const void* bytes, std::size_t size) {
    if (m_status != Acad::eOk) return m_status;
    m_record.push_back(static_cast<char>(type));
    m_record.append(static_cast<const char*>(bytes), size);
    return Acad::eOk;
}

Acad::ErrorStatus RecordWriter::putText(ItemType type, std::string_view text) {
    const auto count = static_cast<std::uint32_t>(text.size());
    if (count != text.size()) return m_status = Acad::eInvalidInput;
    if (put(type, &count, sizeof count) == Acad::eOk) m_record.append(text);
    return m_status;
}

Acad::ErrorStatus RecordWriter::putId(ItemType type, const AcDbObjectId& id) {
    if (!m_database) m_database = id.database();
    const std::uint64_t handle = id.handle().value();
    return put(type, &handle, sizeof handle);
}

Acad::ErrorStatus RecordWriter::writeItems(std::string_view items) {
    if (m_status == Acad::eOk) m_record.append(items);
    return m_status;
}

Acad::ErrorStatus RecordWriter::writeBool(bool value) {
    const char byte = value ? 1 : 0;
    return put(ItemType::kBool, &byte, 1);
}

Acad::ErrorStatus RecordWriter::writeInt8(Adesk::Int8 value) {
    return put(ItemType::kInt8, &value, sizeof value);
}
Acad::ErrorStatus RecordWriter::writeInt16(Adesk::Int16 value) {
    return put(ItemType::kInt16, &value, sizeof value);
}
Acad::ErrorStatus RecordWriter::writeInt32(Adesk::Int32 value) {
    return put(ItemType::kInt32, &value, sizeof value);
}
Acad::ErrorStatus RecordWriter::writeInt64(Adesk::Int64 value) {
    return put(ItemType::kInt64, &value, sizeof value);
}
Acad::ErrorStatus RecordWriter::writeDouble(double value) {
    return put(ItemType::kDouble, &value, sizeof value);
}

Acad::ErrorStatus RecordWriter::writePoint2d(const AcGePoint2d& value) {
    const double xy[] = {value.x, value.y};
    return put(ItemType::kPoint2d, xy, sizeof xy);
}

Acad::ErrorStatus RecordWriter::writePoint3d(const AcGePoint3d& value) {
    const double xyz[] = {value.x, value.y, value.z};
    return put(ItemType::kPoint3d, xyz, sizeof xyz);
}

Acad::ErrorStatus RecordWriter::writeVector3d(const AcGeVector3d& value) {
    const double xyz[] = {value.x, value.y, value.z};
    return put(ItemType::kVector3d, xyz, sizeof xyz);
}

Acad::ErrorStatus RecordWriter::writeString(std::string_view value) {
    return putText(ItemType::kString, value);
}
Acad::ErrorStatus RecordWriter::writeBytes(std::string_view value) {
    return putText(ItemType::kBytes, value);
}

Acad::ErrorStatus RecordWriter::writeHardPointerId(const AcDbObjectId& value) {
    return putId(ItemType::kHardPointer, value);
}
Acad::ErrorStatus RecordWriter::writeSoftPointerId(const AcDbObjectId& value) {
    return putId(ItemType::kSoftPointer, value);
}
Acad::ErrorStatus RecordWriter::writeHardOwnershipId(const AcDbObjectId& value) {
    return putId(ItemType::kHardOwner, value);
}
Acad::ErrorStatus RecordWriter::writeSoftOwnershipId(const AcDbObjectId& value) {
    return putId(ItemType::kSoftOwner, value);
}

Acad::ErrorStatus RecordWriter::endBasePart() {
    const Acad::ErrorStatus status = put(ItemType::kEndOfBase, "", 0);
    if (m_depth == 0) m_endOfBase = m_record.size();
    return status;
}

Acad::ErrorStatus RecordWriter::beginEmbedded(const char* className) {
    ++m_depth;
    return putText(ItemType::kBeginEmbedded, className);
}

Acad::ErrorStatus RecordWriter::endEmbedded() {
    if (m_depth == 0) return m_status = Acad::eInvalidInput;
    --m_depth;
    return put(ItemType::kEndEmbedded, "", 0);
}

// A writer reads nothing.
Acad::ErrorStatus RecordWriter::refuse() {
    return m_status = Acad::eNotApplicable;
}
Acad::ErrorStatus RecordWriter::readBool(bool&) {
    return refuse();
}
Acad::ErrorStatus RecordWriter::readInt8(Adesk::Int8&) {
    return refuse();
}
Acad::ErrorStatus RecordWriter::readInt16(Adesk::Int16&) {
    return refuse();
}
Acad::ErrorStatus RecordWriter::readInt32(Adesk::Int32&) {
    return refuse();
}
Acad::ErrorStatus RecordWriter::readInt64(Adesk::Int64&) {
    return refuse();
}
Acad::ErrorStatus RecordWriter::readDouble(double&) {
    return refuse();
}
Acad::ErrorStatus RecordWriter::readPoint2d(AcGePoint2d&) {
    return refuse();
}
Acad::ErrorStatus RecordWriter::readPoint3d(AcGePoint3d&) {
    return refuse();
}
Acad::ErrorStatus RecordWriter::readVector3d(AcGeVector3d&) {
    return refuse();
}
Acad::ErrorStatus RecordWriter::readString(char*&) {
    return refuse();
}
Acad::ErrorStatus RecordWriter::readString(std::string&) {
    return refuse();
}
Acad::ErrorStatus RecordWriter::readBytes(std::string&) {
    return refuse();
}
Acad::ErrorStatus RecordWriter::readHardPointerId(AcDbObjectId&) {
    return refuse();
}
Acad::ErrorStatus RecordWriter::readSoftPointerId(AcDbObjectId&) {
    return refuse();
}
Acad::ErrorStatus RecordWriter::readHardOwnershipId(AcDbObjectId&) {
    return refuse();
}
Acad::ErrorStatus RecordWriter::readSoftOwnershipId(AcDbObjectId&) {
    return refuse();
}

} // namespace veldrin
