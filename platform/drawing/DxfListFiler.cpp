#include "drawing/DxfListFiler.h"

#include "drawing/AcDbObjectId.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>

namespace veldrin {

namespace {

// Layer, linetype, linetype scale, visibility, colour, space, weight, layout, true colour and its kin.
constexpr int kCommonCodes[] = {6, 8, 48, 60, 62, 67, 370, 410, 420, 430, 440};

bool isCommon(const resbuf& group) {
    return std::ranges::find(kCommonCodes, group.restype) != std::end(kCommonCodes);
}

bool isMarker(const resbuf& group) {
    return group.restype == AcDb::kDxfSubclass;
}

bool isMarkerOf(const resbuf& group, std::string_view className) {
    return isMarker(group) && textOf(group) == className;
}

bool isBytes(int code) {
    return (code >= 310 && code <= 319) || code == 1004;
}

bool isHandle(int code) {
    return code == AcDb::kDxfHandle || code == 105 || (code >= 320 && code <= 329) || code == 1005;
}

bool isBool(int code) {
    return code >= 290 && code <= 299;
}

std::string hexOf(std::string_view bytes) {
    std::string hex;
    for (const char byte : bytes) hex += fmt::format("{:02X}", static_cast<unsigned char>(byte));
    return hex;
}

std::string bytesOf(const std::string& hex) {
    std::string bytes;
    for (std::size_t i = 0; i + 1 < hex.size(); i += 2) {
        bytes.push_back(static_cast<char>(AcDbHandle::fromText(hex.substr(i, 2)).value()));
    }
    return bytes;
}

} // namespace

AcDbDxfItem::Kind dxfTextKind(int code) {
    if (isBytes(code)) return AcDbDxfItem::kBytes;
    return isHandle(code) ? AcDbDxfItem::kHandle : AcDbDxfItem::kText;
}

AcDbDxfItem dxfItemOf(const resbuf& group) {
    AcDbDxfItem item;
    item.code = group.restype;
    const ads_u_val& value = group.resval;
    switch (acutGroupCodeKind(item.code)) {
    case RTSTR:
        item.kind = dxfTextKind(item.code);
        item.text = item.kind == AcDbDxfItem::kBytes ? bytesOf(textOf(group)) : textOf(group);
        break;
    case RTREAL:
        item.kind = AcDbDxfItem::kReal;
        item.real = value.rreal;
        break;
    case RT3DPOINT:
        item.kind = AcDbDxfItem::kPoint;
        item.point = {value.rpoint[0], value.rpoint[1], value.rpoint[2]};
        break;
    case RTSHORT:
        item.kind = isBool(item.code) ? AcDbDxfItem::kBool : AcDbDxfItem::kInt16;
        item.integer = value.rint;
        break;
    case RTLONG:
        item.kind = AcDbDxfItem::kInt32;
        item.integer = value.rlong;
        break;
    case RTENAME:
        item.kind = AcDbDxfItem::kId;
        acdbGetObjectId(item.id, value.rlname);
        break;
    default: break;
    }
    return item;
}

void addDxfItem(ResbufBuilder& chain, const AcDbDxfItem& item) {
    switch (item.kind) {
    case AcDbDxfItem::kText:
    case AcDbDxfItem::kHandle: chain.addText(item.code, item.text); break;
    case AcDbDxfItem::kBytes: chain.addText(item.code, hexOf(item.text)); break;
    case AcDbDxfItem::kReal: chain.addReal(item.code, item.real); break;
    case AcDbDxfItem::kPoint: chain.addPoint(item.code, item.point.x, item.point.y, item.point.z); break;
    case AcDbDxfItem::kInt16:
    case AcDbDxfItem::kInt32:
    case AcDbDxfItem::kBool: chain.addInteger(item.code, item.integer); break;
    case AcDbDxfItem::kId: {
        ads_name name;
        acdbGetAdsName(name, item.id);
        chain.addName(item.code, name);
        break;
    }
    case AcDbDxfItem::kNone: break;
    }
}

Acad::ErrorStatus writeDxfItem(AcDbDxfFiler& filer, const resbuf& group) {
    const AcDbDxfItem item = dxfItemOf(group);
    switch (item.kind) {
    case AcDbDxfItem::kText:
    case AcDbDxfItem::kHandle: return filer.writeItem(item.code, item.text);
    case AcDbDxfItem::kBytes: return filer.writeBytes(item.code, item.text);
    case AcDbDxfItem::kReal: return filer.writeDouble(item.code, item.real);
    case AcDbDxfItem::kPoint: return filer.writePoint3d(item.code, item.point);
    case AcDbDxfItem::kInt16: return filer.writeInt16(item.code, static_cast<int>(item.integer));
    case AcDbDxfItem::kInt32: return filer.writeInt32(item.code, static_cast<std::int32_t>(item.integer));
    case AcDbDxfItem::kBool: return filer.writeBool(item.code, item.integer != 0);
    case AcDbDxfItem::kId: return filer.writeItem(item.code, item.id);
    case AcDbDxfItem::kNone: break;
    }
    return filer.filerStatus();
}

DxfListWriter::DxfListWriter(AcDbDatabase* database) : m_database(database) {}
DxfListWriter::~DxfListWriter() = default;

bool DxfListWriter::takes(int code, short kind) {
    if (m_status == Acad::eOk && acutGroupCodeKind(code) != kind) m_status = Acad::eInvalidInput;
    return m_status == Acad::eOk;
}

Acad::ErrorStatus DxfListWriter::writeItem(int code, std::string_view text) {
    if (takes(code, RTSTR)) m_chain.addText(code, std::string(text));
    return m_status;
}

Acad::ErrorStatus DxfListWriter::writeItem(int code, const AcDbObjectId& id) {
    if (!takes(code, RTENAME)) return m_status;
    ads_name name;
    acdbGetAdsName(name, id);
    m_chain.addName(code, name);
    return m_status;
}

Acad::ErrorStatus DxfListWriter::writeDouble(int code, double value, int) {
    if (takes(code, RTREAL)) m_chain.addReal(code, value);
    return m_status;
}

Acad::ErrorStatus DxfListWriter::writePoint3d(int code, const AcGePoint3d& value, int) {
    if (takes(code, RT3DPOINT)) m_chain.addPoint(code, value.x, value.y, value.z);
    return m_status;
}

Acad::ErrorStatus DxfListWriter::writeInt16(int code, int value) {
    return writeInt32(code, value);
}

Acad::ErrorStatus DxfListWriter::writeInt32(int code, std::int32_t value) {
    const short kind = acutGroupCodeKind(code) == RTLONG ? short{RTLONG} : short{RTSHORT};
    if (takes(code, kind)) m_chain.addInteger(code, value);
    return m_status;
}

Acad::ErrorStatus DxfListWriter::writeBool(int code, bool value) {
    return writeInt32(code, value ? 1 : 0);
}

Acad::ErrorStatus DxfListWriter::writeBytes(int code, std::string_view value) {
    return writeItem(code, hexOf(value));
}

DxfListReader::DxfListReader(AcDbDatabase* database, const resbuf* groups, bool isEntity)
    : m_database(database), m_isEntity(isEntity) {
    for (; groups; groups = groups->rbnext) {
        if (isEntity && isMarkerOf(*groups, "AcDbEntity")) continue;
        if (isMarker(*groups)) m_hasMarkers = true;
        (isEntity && isCommon(*groups) ? m_common : m_own).push_back(groups);
    }
}

DxfListReader::~DxfListReader() = default;

const resbuf* DxfListReader::at(std::size_t position) const {
    if (position < m_common.size()) return m_common[position];
    position -= m_common.size();
    return position < m_own.size() ? m_own[position] : nullptr;
}

Acad::ErrorStatus DxfListReader::readItem(AcDbDxfItem& item) {
    const resbuf* const group = at(m_position);
    if (!group) return Acad::eEndOfObject;
    item = dxfItemOf(*group);
    ++m_position;
    return Acad::eOk;
}

Acad::ErrorStatus DxfListReader::pushBackItem() {
    if (m_position == 0) return Acad::eInvalidInput;
    --m_position;
    return Acad::eOk;
}

bool DxfListReader::atSubclassData(const char* className) {
    if (m_isEntity && std::string_view(className) == "AcDbEntity") {
        m_position = 0;
        return true;
    }
    if (!m_hasMarkers) {
        m_position = m_common.size();
        return true;
    }
    const resbuf* const group = at(m_position);
    if (!group || !isMarkerOf(*group, className)) return false;
    ++m_position;
    return true;
}

} // namespace veldrin
