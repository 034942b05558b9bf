#include "files/DxfFileWriter.h"

#include "drawing/AcDbObject.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace veldrin {

DxfFileWriter::~DxfFileWriter() = default;

void DxfFileWriter::flushEntityTail() {
    if (!m_tail) return;
    const auto tail = std::exchange(m_tail, nullptr);
    tail();
}

Acad::ErrorStatus DxfFileWriter::writeItem(int code, std::string_view text) {
    if (code == AcDb::kDxfSubclass) {
        if (m_tail && text != "AcDbEntity") flushEntityTail();
        m_out.symbol(code, text);
        return m_status;
    }
    m_out.text(code, text);
    return m_status;
}

Acad::ErrorStatus DxfFileWriter::writeItem(int code, const AcDbObjectId& id) {
    m_out.handle(code, id.isErased() ? 0 : id.handle().value());
    return m_status;
}

// Angles are kept in radians: what was a round number of degrees is one again.
Acad::ErrorStatus DxfFileWriter::writeDouble(int code, double value, int) {
    constexpr int kFirstAngle = 50, kLastAngle = 58;
    constexpr double kGrid = 1e9, kNoise = 1e-12;
    if (code >= kFirstAngle && code <= kLastAngle) {
        const double rounded = std::round(value * kGrid) / kGrid;
        if (std::abs(value - rounded) <= kNoise * std::max(1.0, std::abs(value))) value = rounded;
    }
    m_out.real(code, value);
    return m_status;
}

Acad::ErrorStatus DxfFileWriter::writePoint3d(int code, const AcGePoint3d& value, int) {
    m_out.point(code, value);
    return m_status;
}

Acad::ErrorStatus DxfFileWriter::writePoint2d(int code, const AcGePoint2d& value) {
    m_out.point(code, value);
    return m_status;
}

Acad::ErrorStatus DxfFileWriter::writeInt16(int code, int value) {
    m_out.integer(code, value);
    return m_status;
}

Acad::ErrorStatus DxfFileWriter::writeInt32(int code, std::int32_t value) {
    m_out.integer(code, value);
    return m_status;
}

Acad::ErrorStatus DxfFileWriter::writeBool(int code, bool value) {
    m_out.integer(code, value ? 1 : 0);
    return m_status;
}

Acad::ErrorStatus DxfFileWriter::writeBytes(int code, std::string_view value) {
    m_out.bytes(code, value);
    return m_status;
}

} // namespace veldrin
