#pragma once

#include "drawing/AcDbCurvePath.h"
#include "geometry/AcDbExtents.h"
#include "graphics/SinkBase.h"

#include <cstdint>

namespace veldrin {

enum class PrimitiveKind : std::uint8_t { kPolyline, kPolygon, kCircle, kArc, kText, kFittedCurve };

struct RecordedCircle {
    AcGePoint3d center;
    double radius;
    AcGeVector3d normal;
};

struct RecordedArc {
    AcGePoint3d center;
    double radius;
    AcGeVector3d normal;
    AcGeVector3d startVector; // unit vector from the centre
    double sweep;             // radians about the normal, as it was given
    AcGiArcType type;

    AcGePoint3d startPoint() const { return center + startVector * radius; }
    // In the world, radians from the X axis, from 0 up to a full turn.
    double startAngle() const { return startVector.convert2d().angle(); }
};

// What was drawn, primitive by primitive in order, in a few growing buffers. Clearing keeps their memory, so
// that recording again allocates nothing. A Recorder fills it. Indexes must be below size(), and a primitive
// be asked for what its kind has.
class VELDRIN_API DisplayList {
public:
    std::size_t size() const { return m_primitives.size(); }
    bool isEmpty() const { return m_primitives.empty(); }
    void clear();

    PrimitiveKind kind(std::size_t index) const { return m_primitives[index].kind; }
    const DrawTraits& traits(std::size_t index) const { return m_traits[m_primitives[index].traits]; }
    // Corners of a polyline or polygon; the points that a fitted curve was built from.
    std::span<const AcGePoint3d> points(std::size_t index) const;
    RecordedCircle circle(std::size_t index) const;
    RecordedArc arc(std::size_t index) const;
    const AcGiText& text(std::size_t index) const;
    AcGiFittedCurve fittedCurve(std::size_t index) const;

    // Draws it all again. The draw's traits are then those of the last primitive.
    void replay(AcGiWorldDraw& draw) const;
    void replay(AcGiWorldDraw& draw, std::size_t index) const; // with the traits as they are
    AcDbExtents extents() const;
    // A primitive with coordinates that are no finite numbers has no extents, so it is shown nowhere.
    void addExtents(std::size_t index, AcDbExtents& extents) const;

private:
    friend class Recorder;
    AcDbExtents extentsOf(std::size_t index) const;

    struct Primitive {
        PrimitiveKind kind;
        std::uint32_t traits;
        std::uint32_t firstPoint;
        std::uint32_t pointCount;
        std::uint32_t firstNumber; // of a text: its place among the texts
    };

    std::vector<Primitive> m_primitives;
    std::vector<DrawTraits> m_traits;
    std::vector<AcGePoint3d> m_points;
    std::vector<double> m_numbers;
    std::vector<AcGiText> m_texts; // the first m_textCount are in use; the others keep their memory
    std::size_t m_textCount = 0;
};

// The path of a fitted curve, for sinks that follow it.
VELDRIN_API CurvePath pathOf(const AcGiFittedCurve& curve);

// A recorded picture that is drawn like an entity, with the traits that it was recorded with.
class VELDRIN_API RecordedPicture final : public AcGiDrawable {
public:
    explicit RecordedPicture(DisplayList list) : m_list(std::move(list)) {}
    ~RecordedPicture() override;

    const DisplayList& list() const { return m_list; }
    void setAttributes(AcGiSubEntityTraits* traits) override;
    bool worldDraw(AcGiWorldDraw* draw) override;

private:
    DisplayList m_list;
};

} // namespace veldrin
