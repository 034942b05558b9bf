#include "files/DxfPicture.h"

#include "drawing/AcDbTextStyleTable.h"
#include "drawing/AcGiTextLook.h"
#include "text/TextLayout.h"

#include <array>
#include <cmath>
#include <cstring>
#include <optional>

namespace veldrin {

namespace {

enum Command : std::uint32_t {
    kCircle = 2,
    kArc = 4,
    kPolyline = 6,
    kPolygon = 7,
    kColor = 14,
    kLayer = 16,
    kLinetype = 18,
    kFill = 20,
    kTrueColor = 22,
    kLineWeight = 23,
    kLinetypeScale = 24,
    kText = 38,
};

constexpr std::uint32_t kLinetypeByLayer = 32767;
constexpr std::uint32_t kLinetypeByBlock = 32766;
constexpr std::uint32_t kRgb = 0xC2000000;
constexpr std::size_t kHeadSize = 8;
constexpr int kTextFlags = 9; // backwards ... pitch, all of them off

// Commands, and in front of them how many there are.
class Blob {
public:
    Blob() { m_bytes.resize(kHeadSize); }

    void begin(Command command) {
        m_begin = m_bytes.size();
        m_bytes.resize(m_begin + kHeadSize);
        store(m_begin + 4, command);
    }
    void end() {
        while (m_bytes.size() % 4 != 0) m_bytes += '\0';
        store(m_begin, static_cast<std::uint32_t>(m_bytes.size() - m_begin));
        ++m_count;
    }
    std::string take() {
        store(0, static_cast<std::uint32_t>(m_bytes.size()));
        store(4, m_count);
        return std::move(m_bytes);
    }
    bool isEmpty() const { return m_count == 0; }

    Blob& operator<<(std::uint32_t value) { return append(&value, sizeof value); }
    Blob& operator<<(double value) { return append(&value, sizeof value); }
    Blob& operator<<(const AcGePoint3d& p) { return *this << p.x << p.y << p.z; }
    Blob& operator<<(const AcGeVector3d& v) { return *this << v.x << v.y << v.z; }
    // UTF-16 with a zero behind it, filled up to four bytes.
    Blob& operator<<(std::u32string_view text) {
        for (char32_t c : text) {
            if (c >= 0x10000) {
                appendUnit(0xD800 + ((c - 0x10000) >> 10));
                c = 0xDC00 + (c & 0x3FF);
            }
            appendUnit(c);
        }
        appendUnit(0);
        while (m_bytes.size() % 4 != 0) m_bytes += '\0';
        return *this;
    }

private:
    void appendUnit(char32_t unit) {
        m_bytes += static_cast<char>(unit & 0xFF);
        m_bytes += static_cast<char>(unit >> 8);
    }
    Blob& append(const void* value, std::size_t size) {
        m_bytes.append(static_cast<const char*>(value), size);
        return *this;
    }
    void store(std::size_t at, std::uint32_t value) {
        std::memcpy(m_bytes.data() + at, &value, sizeof value);
    }

    std::string m_bytes;
    std::size_t m_begin = 0;
    std::uint32_t m_count = 0;
};

class PictureWriter {
public:
    explicit PictureWriter(const DxfTablePlaces& places) : m_places(places) {}

    void put(const DisplayList& list, std::size_t index) {
        setTraits(list.traits(index));
        switch (list.kind(index)) {
        case PrimitiveKind::kPolyline: putPoints(kPolyline, list.points(index)); break;
        case PrimitiveKind::kPolygon: putPolygon(list.points(index)); break;
        case PrimitiveKind::kCircle: {
            const RecordedCircle circle = list.circle(index);
            command(kCircle, circle.center, circle.radius, circle.normal);
            break;
        }
        case PrimitiveKind::kArc: {
            const RecordedArc arc = list.arc(index);
            putArc(arc.center, arc.radius, arc.normal, arc.startVector, arc.sweep);
            break;
        }
        case PrimitiveKind::kText: putText(list.text(index)); break;
        case PrimitiveKind::kFittedCurve: putCurve(pathOf(list.fittedCurve(index))); break;
        }
    }
    std::string take() { return m_blob.isEmpty() ? std::string() : m_blob.take(); }

private:
    template<class... Values>
    void command(Command command, const Values&... values) {
        m_blob.begin(command);
        (m_blob << ... << values);
        m_blob.end();
    }

    static std::uint32_t indexOf(const std::unordered_map<AcDbObjectId, std::uint32_t>& places,
                                 AcDbObjectId id) {
        const auto found = places.find(id);
        return found == places.end() ? 0 : found->second;
    }
    std::uint32_t linetypeOf(AcDbObjectId id) const {
        if (id.isNull() || id == m_places.byLayer) return kLinetypeByLayer;
        return id == m_places.byBlock ? kLinetypeByBlock : indexOf(m_places.linetypes, id);
    }

    // Readers begin with defaults of their own, so the first traits are written whole.
    void setTraits(const DrawTraits& traits) {
        const bool all = !m_traits;
        if (all || traits.layer != m_traits->layer) command(kLayer, indexOf(m_places.layers, traits.layer));
        if (all || traits.color != m_traits->color) {
            if (traits.color.isByColor())
                command(kTrueColor, kRgb | traits.color.rgb());
            else
                command(kColor, static_cast<std::uint32_t>(traits.color.colorIndex()));
        }
        if (all || traits.linetype != m_traits->linetype) command(kLinetype, linetypeOf(traits.linetype));
        if (all ? traits.lineWeight != AcDb::kLnWtByLayer : traits.lineWeight != m_traits->lineWeight)
            command(kLineWeight, static_cast<std::uint32_t>(std::int32_t{traits.lineWeight}));
        if (all ? traits.linetypeScale != 1.0 : traits.linetypeScale != m_traits->linetypeScale)
            command(kLinetypeScale, traits.linetypeScale);
        m_traits = traits;
    }

    void putPoints(Command command, std::span<const AcGePoint3d> points) {
        m_blob.begin(command);
        m_blob << static_cast<std::uint32_t>(points.size());
        for (const AcGePoint3d& p : points) m_blob << p;
        m_blob.end();
    }
    void putPolygon(std::span<const AcGePoint3d> points) {
        const bool isFilled = m_traits->fill == kAcGiFillAlways;
        if (isFilled) command(kFill, std::uint32_t{1});
        putPoints(kPolygon, points);
        if (isFilled) command(kFill, std::uint32_t{0});
    }
    // A clockwise arc is written from its other end.
    void putArc(const AcGePoint3d& center, double radius, const AcGeVector3d& normal, AcGeVector3d start,
                double sweep) {
        if (sweep < 0.0) start = start * std::cos(sweep) + normal.crossProduct(start) * std::sin(sweep);
        command(kArc, center, radius, normal, start, std::abs(sweep), std::uint32_t{0});
    }
    void putCurve(const CurvePath& path) {
        for (const CurvePiece& piece : path.pieces()) {
            if (piece.isArc())
                putArc(piece.center, piece.radius, piece.normal(), (piece.start - piece.center).normal(),
                       piece.sweep);
            else
                putPoints(kPolyline, std::array{piece.start, piece.end});
        }
    }
    void putText(const AcGiText& text) {
        const TextLayout layout = layoutOf(text);
        layout.rows(
            [&](std::u32string_view letters, const AcGePoint2d& at, double height, double width,
                double oblique) {
                m_blob.begin(kText);
                m_blob << placeOf(text, at) << text.normal << text.direction << letters;
                m_blob << static_cast<std::uint32_t>(letters.size()) << std::uint32_t{1};
                m_blob << height << width << oblique << 1.0;
                for (int i = 0; i < kTextFlags; ++i) m_blob << std::uint32_t{0};
                m_blob << std::u32string_view() << std::u32string_view(fontOf(text.style))
                       << std::u32string_view();
                m_blob.end();
            },
            [&](const AcGePoint2d& from, const AcGePoint2d& to) {
                putPoints(kPolyline, std::array{placeOf(text, from), placeOf(text, to)});
            });
    }
    static std::u32string fontOf(AcDbObjectId style) {
        const AcDbObjectPointer<AcDbTextStyleTableRecord> record(style, AcDb::kForRead, true);
        std::string name = record ? record->fileName() : "";
        if (name.empty()) name = "simplex";
        if (name.find('.') == std::string::npos) name += ".shx";
        return {name.begin(), name.end()};
    }

    const DxfTablePlaces& m_places;
    Blob m_blob;
    std::optional<DrawTraits> m_traits;
};

} // namespace

std::string dxfPicture(const DisplayList& list, const DxfTablePlaces& places) {
    PictureWriter writer(places);
    for (std::size_t i = 0; i < list.size(); ++i) writer.put(list, i);
    return writer.take();
}

} // namespace veldrin
