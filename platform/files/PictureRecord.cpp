#include "files/PictureRecord.h"

#include "drawing/ColorFiling.h"
#include "graphics/DisplayList.h"
#include "graphics/Recorder.h"

#include <cstring>
#include <utility>
#include <vector>

namespace veldrin {

namespace {

enum Kind : Adesk::Int8 { kTraits, kPolyline, kPolygon, kCircle, kArc, kText, kFittedCurve };

template<class T>
std::string_view bytesOf(std::span<const T> values) {
    return {reinterpret_cast<const char*>(values.data()), values.size_bytes()};
}

// Values of eight-byte numbers that stand in a row.
template<class T>
std::vector<T> valuesOf(const std::string& bytes) {
    std::vector<T> values(bytes.size() / sizeof(T));
    if (!values.empty())
        std::memcpy(static_cast<void*>(values.data()), bytes.data(), values.size() * sizeof(T));
    return values;
}

static_assert(sizeof(AcGePoint3d) == 3 * sizeof(double));

} // namespace

std::string_view PictureWriter::write(AcGiDrawable& drawable) {
    m_record.clear();
    resetTraits();
    m_anyTraits = false;
    draw(&drawable);
    return m_record.record();
}

void PictureWriter::begin(int kind) {
    if (takeMoved() && !(m_anyTraits && m_written == traits())) {
        m_written = traits();
        m_anyTraits = true;
        m_record.writeInt8(kTraits);
        m_record.writeHardPointerId(m_written.layer);
        m_record.writeHardPointerId(m_written.linetype);
        writeColor(m_record, m_written.color);
        m_record.writeDouble(m_written.linetypeScale);
        m_record.writeInt16(m_written.lineWeight);
        m_record.writeInt8(static_cast<Adesk::Int8>(m_written.fill));
    }
    m_record.writeInt8(static_cast<Adesk::Int8>(kind));
}

void PictureWriter::putPoints(std::span<const AcGePoint3d> points) {
    m_record.writeBytes(bytesOf(points));
}

void PictureWriter::putPolyline(std::span<const AcGePoint3d> points) {
    begin(kPolyline);
    putPoints(points);
}

void PictureWriter::putPolygon(std::span<const AcGePoint3d> points) {
    begin(kPolygon);
    putPoints(points);
}

void PictureWriter::putCircle(const AcGePoint3d& center, double radius, const AcGeVector3d& normal) {
    begin(kCircle);
    m_record.writePoint3d(center);
    m_record.writeDouble(radius);
    m_record.writeVector3d(normal);
}

void PictureWriter::putArc(const AcGePoint3d& center, double radius, const AcGeVector3d& normal,
                           const AcGeVector3d& startVector, double sweep, AcGiArcType type) {
    begin(kArc);
    m_record.writePoint3d(center);
    m_record.writeDouble(radius);
    m_record.writeVector3d(normal);
    m_record.writeVector3d(startVector);
    m_record.writeDouble(sweep);
    m_record.writeInt8(static_cast<Adesk::Int8>(type));
}

void PictureWriter::putText(const AcGiText& text) {
    begin(kText);
    m_record.writePoint3d(text.location);
    m_record.writeVector3d(text.direction);
    m_record.writeVector3d(text.normal);
    m_record.writeDouble(text.height);
    m_record.writeDouble(text.width);
    m_record.writeInt32(text.attachment);
    m_record.writeHardPointerId(text.style);
    m_record.writeString(text.contents);
    m_record.writeBool(text.multiline);
    m_record.writeDouble(text.widthFactor);
    m_record.writeDouble(text.oblique);
    m_record.writeBool(text.backwards);
    m_record.writeBool(text.upsideDown);
}

void PictureWriter::putFittedCurve(const AcGiFittedCurve& curve) {
    begin(kFittedCurve);
    putPoints(curve.definition);
    putPoints(curve.vertices);
    m_record.writeBytes(bytesOf(curve.bulges));
    m_record.writeVector3d(curve.normal);
    m_record.writeBool(curve.closed);
}

namespace {

// Draws a record's items again.
class PictureReader {
public:
    PictureReader(std::string_view record, AcDbDatabase& database, AcGiWorldDraw& draw)
        : m_reader(AcDb::kFileFiler, &database, record), m_draw(draw) {}

    bool read() {
        Adesk::Int8 kind = 0;
        while (!m_reader.atEnd() && m_reader.readInt8(kind) == Acad::eOk && readItem(kind)) {
        }
        return m_reader.atEnd() && m_reader.filerStatus() == Acad::eOk;
    }

private:
    bool readItem(Adesk::Int8 kind) {
        switch (kind) {
        case kTraits: return readTraits();
        case kPolyline:
        case kPolygon: return readPoints(kind);
        case kCircle: return readCircle();
        case kArc: return readArc();
        case kText: return readText();
        case kFittedCurve: return readCurve();
        default: return false;
        }
    }

    bool ok() const { return m_reader.filerStatus() == Acad::eOk; }
    AcGiWorldGeometry& geometry() { return m_draw.geometry(); }

    bool readTraits() {
        DrawTraits traits;
        Adesk::Int8 fill = 0;
        m_reader.readHardPointerId(traits.layer);
        m_reader.readHardPointerId(traits.linetype);
        readColor(m_reader, traits.color);
        m_reader.readDouble(traits.linetypeScale);
        m_reader.readInt16(traits.lineWeight);
        m_reader.readInt8(fill);
        AcGiSubEntityTraits& target = m_draw.subEntityTraits();
        target.setLayer(traits.layer);
        target.setLineType(traits.linetype);
        target.setTrueColor(traits.color);
        target.setLineTypeScale(traits.linetypeScale);
        target.setLineWeight(traits.lineWeight);
        target.setFillType(fill == kAcGiFillAlways ? kAcGiFillAlways : kAcGiFillNever);
        return ok();
    }

    bool readPoints(Adesk::Int8 kind) {
        if (m_reader.readBytes(m_bytes) != Acad::eOk) return false;
        const std::vector<AcGePoint3d> points = valuesOf<AcGePoint3d>(m_bytes);
        const auto count = static_cast<Adesk::UInt32>(points.size());
        if (kind == kPolyline)
            geometry().polyline(count, points.data());
        else
            geometry().polygon(count, points.data());
        return true;
    }

    bool readCircle() {
        AcGePoint3d center;
        AcGeVector3d normal;
        double radius = 0.0;
        m_reader.readPoint3d(center);
        m_reader.readDouble(radius);
        if (m_reader.readVector3d(normal) != Acad::eOk) return false;
        geometry().circle(center, radius, normal);
        return true;
    }

    bool readArc() {
        AcGePoint3d center;
        AcGeVector3d normal, start;
        double radius = 0.0, sweep = 0.0;
        Adesk::Int8 type = 0;
        m_reader.readPoint3d(center);
        m_reader.readDouble(radius);
        m_reader.readVector3d(normal);
        m_reader.readVector3d(start);
        m_reader.readDouble(sweep);
        if (m_reader.readInt8(type) != Acad::eOk || type < kAcGiArcSimple || type > kAcGiArcChord)
            return false;
        geometry().circularArc(center, radius, normal, start, sweep, static_cast<AcGiArcType>(type));
        return true;
    }

    bool readText() {
        AcGiText text;
        Adesk::Int32 attachment = 1;
        m_reader.readPoint3d(text.location);
        m_reader.readVector3d(text.direction);
        m_reader.readVector3d(text.normal);
        m_reader.readDouble(text.height);
        m_reader.readDouble(text.width);
        m_reader.readInt32(attachment);
        m_reader.readHardPointerId(text.style);
        m_reader.readString(text.contents);
        m_reader.readBool(text.multiline);
        m_reader.readDouble(text.widthFactor);
        m_reader.readDouble(text.oblique);
        m_reader.readBool(text.backwards);
        if (m_reader.readBool(text.upsideDown) != Acad::eOk) return false;
        text.attachment = attachment;
        geometry().text(text);
        return true;
    }

    bool readCurve() {
        std::string definition, vertices, bulges;
        AcGiFittedCurve curve;
        m_reader.readBytes(definition);
        m_reader.readBytes(vertices);
        m_reader.readBytes(bulges);
        m_reader.readVector3d(curve.normal);
        if (m_reader.readBool(curve.closed) != Acad::eOk) return false;
        const auto points = valuesOf<AcGePoint3d>(definition);
        const auto ends = valuesOf<AcGePoint3d>(vertices);
        const auto turns = valuesOf<double>(bulges);
        if (ends.size() != turns.size()) return false;
        curve.definition = points;
        curve.vertices = ends;
        curve.bulges = turns;
        geometry().fittedCurve(curve);
        return true;
    }

    RecordReader m_reader;
    AcGiWorldDraw& m_draw;
    std::string m_bytes;
};

} // namespace

std::shared_ptr<AcGiDrawable> readPicture(std::string_view record, AcDbDatabase& database) {
    DisplayList list;
    Recorder recorder(list);
    if (!PictureReader(record, database, recorder).read()) return nullptr;
    return std::make_shared<RecordedPicture>(std::move(list));
}

} // namespace veldrin
