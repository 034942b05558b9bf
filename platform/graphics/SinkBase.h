#pragma once

#include "drawing/AcGi.h"
#include "runtime/VeldrinApi.h"

#include <span>
#include <vector>

namespace veldrin {

// What a primitive is drawn with; ids and colours unresolved, as entities carry them.
struct DrawTraits {
    AcDbObjectId layer;
    AcDbObjectId linetype;
    AcCmColor color;
    double linetypeScale = 1.0;
    AcDb::LineWeight lineWeight = AcDb::kLnWtByLayer;
    AcGiFillType fill = kAcGiFillNever;

    bool operator==(const DrawTraits&) const = default;
};

// What things look like that are drawn as parts of a block: on layer 0 they are on the reference's layer, and
// what is by block is what the reference has, be it by its own layer.
VELDRIN_API DrawTraits traitsInBlock(const DrawTraits& own, const DrawTraits& reference);

// The traits of a sink, and whether they moved since somebody looked.
class VELDRIN_API TraitsState final : public AcGiSubEntityTraits {
public:
    DrawTraits value;
    bool moved = true;
    bool stale = true; // what was made of the value is out of date

    void touch() { moved = stale = true; }
    void setLayer(AcDbObjectId layer) override;
    void setLineType(AcDbObjectId linetype) override;
    void setColor(Adesk::UInt16 colorIndex) override;
    void setTrueColor(const AcCmColor& color) override;
    void setLineWeight(AcDb::LineWeight weight) override;
    void setLineTypeScale(double scale) override;
    void setFillType(AcGiFillType fill) override;
    AcDbObjectId layerId() const override { return value.layer; }
    AcDbObjectId lineTypeId() const override { return value.linetype; }
    Adesk::UInt16 color() const override { return static_cast<Adesk::UInt16>(value.color.colorIndex()); }
    AcCmColor trueColor() const override { return value.color; }
    AcDb::LineWeight lineWeight() const override { return value.lineWeight; }
    double lineTypeScale() const override { return value.linetypeScale; }
    AcGiFillType fillType() const override { return value.fill; }
};

// What all sinks share: the traits, drawables within drawables, pushed transforms. A sink overrides put...,
// which get every primitive in the world. Under a transform that stretches, circles and arcs arrive as
// polylines. Contents of blocks arrive as the reference makes them look.
class VELDRIN_API SinkBase : public AcGiWorldDraw, public AcGiWorldGeometry {
public:
    SinkBase();
    ~SinkBase() override;
    SinkBase(const SinkBase&) = delete;
    SinkBase& operator=(const SinkBase&) = delete;

    AcGiSubEntityTraits& subEntityTraits() const override { return *m_traitsDoor; }
    AcGiWorldGeometry& geometry() const override { return *m_geometryDoor; }
    bool regenAbort() const final { return m_stopped; }

    bool polyline(Adesk::UInt32 count, const AcGePoint3d* points, const AcGeVector3d* normal = nullptr,
                  Adesk::GsMarker marker = -1) override;
    bool polygon(Adesk::UInt32 count, const AcGePoint3d* points) override;
    bool circle(const AcGePoint3d& center, double radius, const AcGeVector3d& normal) override;
    bool circularArc(const AcGePoint3d& center, double radius, const AcGeVector3d& normal,
                     const AcGeVector3d& startVector, double sweepAngle,
                     AcGiArcType type = kAcGiArcSimple) override;
    bool text(const AcGiText& text) override;
    bool fittedCurve(const AcGiFittedCurve& curve) override;
    bool draw(AcGiDrawable* drawable) override;
    bool pushModelTransform(const AcGeMatrix3d& matrix) override;
    bool popModelTransform() override;
    bool beginBlock(AcDbObjectId block, const AcGeMatrix3d& placing) override;
    void endBlock() override;

protected:
    virtual void putPolyline(std::span<const AcGePoint3d> points) = 0;
    virtual void putPolygon(std::span<const AcGePoint3d> points) = 0;
    virtual void putCircle(const AcGePoint3d& center, double radius, const AcGeVector3d& normal) = 0;
    // The start vector has length 1; the sweep may be negative.
    virtual void putArc(const AcGePoint3d& center, double radius, const AcGeVector3d& normal,
                        const AcGeVector3d& startVector, double sweep, AcGiArcType type) = 0;
    virtual void putText(const AcGiText& text) = 0;
    virtual void putFittedCurve(const AcGiFittedCurve& curve) = 0;

    // Within a block, as the reference makes them.
    const DrawTraits& traits() const { return m_blocks.empty() ? m_traits.value : resolvedTraits(); }
    // True once after the traits were set.
    bool takeMoved() {
        const bool moved = m_traits.moved;
        m_traits.moved = false;
        return moved;
    }
    void resetTraits();
    // The user has had enough: every primitive answers so from now on.
    void stop() { m_stopped = true; }

private:
    // A block that is being drawn, and what the reference looks like.
    struct OpenBlock {
        AcDbObjectId block;
        DrawTraits reference;
        DrawTraits before;          // as they were set
        double linetypeScale = 1.0; // dashes grow with the block
    };

    const DrawTraits& resolvedTraits() const;
    const AcGeMatrix3d& transform() const { return m_transforms.back(); }
    std::span<const AcGePoint3d> placed(std::size_t count, const AcGePoint3d* points);
    void putStretched(const AcGePoint3d& center, double radius, const AcGeVector3d& normal,
                      const AcGeVector3d& startVector, double sweep);

    bool m_stopped = false;
    mutable TraitsState m_traits;
    mutable DrawTraits m_resolved;
    TraitsState* m_traitsDoor = &m_traits;
    AcGiWorldGeometry* m_geometryDoor = this;
    std::vector<AcGeMatrix3d> m_transforms; // each with those around it
    std::vector<AcGePoint3d> m_placed;      // reused
    std::vector<OpenBlock> m_blocks;        // the innermost last
    std::size_t m_begunBlocks = 0;          // since the outermost began
};

// Draws an entity with its own properties and leaves the traits as they were.
inline void drawEntity(AcGiDrawable& entity, AcGiWorldDraw& draw) {
    draw.geometry().draw(&entity);
}

} // namespace veldrin
