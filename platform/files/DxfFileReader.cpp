#include "files/DxfFileReader.h"

#include "drawing/AcDbObject.h"
#include "drawing/DxfListFiler.h"

#include <charconv>
#include <cmath>
#include <utility>

namespace veldrin {

namespace {

constexpr int kYStep = 10;
constexpr int kZStep = 20;

std::string_view trimmed(std::string_view text) {
    while (!text.empty() && (text.front() == ' ' || text.front() == '\t')) text.remove_prefix(1);
    while (!text.empty() && (text.back() == ' ' || text.back() == '\t')) text.remove_suffix(1);
    if (text.starts_with('+')) text.remove_prefix(1);
    return text;
}

int hexDigit(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    return 0;
}

} // namespace

std::uint64_t dxfHandle(std::string_view text) {
    std::uint64_t handle = 0;
    text = trimmed(text);
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), handle, 16);
    return error == std::errc() && end == text.data() + text.size() ? handle : 0;
}

std::string dxfBytes(std::string_view digits) {
    std::string bytes;
    for (std::size_t i = 0; i + 1 < digits.size(); i += 2)
        bytes += static_cast<char>(hexDigit(digits[i]) * 16 + hexDigit(digits[i + 1]));
    return bytes;
}

bool readDxfReal(std::string_view text, double& value) {
    text = trimmed(text);
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error == std::errc::result_out_of_range) value = 0.0;
    return error != std::errc::invalid_argument && end == text.data() + text.size() && std::isfinite(value);
}

bool readDxfInteger(std::string_view text, std::int64_t& value) {
    text = trimmed(text);
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error == std::errc() && end == text.data() + text.size()) return true;
    double real = 0.0; // some programs write whole numbers as reals
    if (!readDxfReal(text, real) || std::abs(real) > 9e15) return false;
    value = static_cast<std::int64_t>(real);
    return true;
}

DxfFileReader::DxfFileReader(AcDbDatabase& database, DxfTextDecoder& decoder, HandleMap handles)
    : m_database(database), m_decoder(decoder), m_handles(std::move(handles)) {}
DxfFileReader::~DxfFileReader() = default;

void DxfFileReader::start(const std::vector<DxfGroup>& groups) {
    m_groups = &groups;
    m_at = m_before = 0;
    m_expected.clear();
    m_hasMarkers = false;
    for (const DxfGroup& group : groups)
        m_hasMarkers = m_hasMarkers || (group.code == AcDb::kDxfSubclass && group.value != "AcDbEntity");
    resetFilerStatus();
}

void DxfFileReader::fail(const DxfGroup& group, const char* expected) {
    if (!m_expected.empty()) return;
    m_expected = expected;
    m_line = group.line;
    m_status = Acad::eInvalidInput;
}

double DxfFileReader::realOf(const DxfGroup& group) {
    double value = 0.0;
    if (!readDxfReal(group.value, value)) fail(group, "a number");
    return value;
}

std::int64_t DxfFileReader::integerOf(const DxfGroup& group) {
    std::int64_t value = 0;
    if (!readDxfInteger(group.value, value)) fail(group, "a whole number");
    return value;
}

// Y and Z stand right behind X, each with its own code; Z may be missing.
void DxfFileReader::readPoint(const DxfGroup& group, AcGePoint3d& point) {
    const std::vector<DxfGroup>& groups = *m_groups;
    point = {realOf(group), 0.0, 0.0};
    if (m_at < groups.size() && groups[m_at].code == group.code + kYStep) point.y = realOf(groups[m_at++]);
    if (m_at < groups.size() && groups[m_at].code == group.code + kZStep) point.z = realOf(groups[m_at++]);
}

Acad::ErrorStatus DxfFileReader::readItem(AcDbDxfItem& item) {
    if (m_at >= m_groups->size() || m_status != Acad::eOk) return Acad::eEndOfObject;
    m_before = m_at;
    const DxfGroup& group = (*m_groups)[m_at++];
    item.code = group.code;
    switch (acutGroupCodeKind(group.code)) {
    case RTREAL:
        item.kind = AcDbDxfItem::kReal;
        item.real = realOf(group);
        break;
    case RT3DPOINT:
        item.kind = AcDbDxfItem::kPoint;
        readPoint(group, item.point);
        break;
    case RTSHORT:
        item.kind = group.code >= 290 && group.code <= 299 ? AcDbDxfItem::kBool : AcDbDxfItem::kInt16;
        item.integer = integerOf(group);
        break;
    case RTLONG:
        item.kind = AcDbDxfItem::kInt32;
        item.integer = integerOf(group);
        break;
    case RTENAME:
        item.kind = AcDbDxfItem::kId;
        item.id = m_handles(dxfHandle(group.value));
        break;
    case RTNONE: item.kind = AcDbDxfItem::kNone; break; // there are no such groups
    default:
        item.kind = dxfTextKind(group.code);
        if (item.kind == AcDbDxfItem::kBytes)
            item.text = dxfBytes(group.value);
        else
            m_decoder.decode(group.value, item.text);
        break;
    }
    return Acad::eOk;
}

Acad::ErrorStatus DxfFileReader::pushBackItem() {
    m_at = m_before;
    return Acad::eOk;
}

// Files of old have no markers: what is asked for is then there, from the start.
bool DxfFileReader::atSubclassData(const char* className) {
    const std::string_view name(className);
    if (!m_hasMarkers) {
        m_at = 0;
        return true;
    }
    const std::vector<DxfGroup>& groups = *m_groups;
    if (m_at >= groups.size() || !groups[m_at].is(AcDb::kDxfSubclass, name)) return false;
    ++m_at;
    return true;
}

} // namespace veldrin
