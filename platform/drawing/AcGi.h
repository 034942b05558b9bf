#pragma once

#include "drawing/AcCmColor.h"
#include "drawing/AcDbObjectId.h"
#include "geometry/AcGeMatrix3d.h"

#include <span>
#include <string>

// The drawing interface. An entity draws itself once, through these interfaces, and knows no sink: screen,
// plotter, exchange picture and recorder all implement them.

enum AcGiArcType { kAcGiArcSimple = 0, kAcGiArcSector = 1, kAcGiArcChord = 2 };

enum AcGiFillType { kAcGiFillAlways = 1, kAcGiFillNever = 2 };

// What the primitives that follow are drawn with. Ids and colours are as entities carry them: by layer and
// by block are not resolved here.
class VELDRIN_API AcGiSubEntityTraits {
public:
    virtual ~AcGiSubEntityTraits() = default;

    virtual void setLayer(AcDbObjectId layer) = 0;
    virtual void setLineType(AcDbObjectId linetype) = 0;
    virtual void setColor(Adesk::UInt16 colorIndex) = 0;
    virtual void setTrueColor(const AcCmColor& color) = 0;
    virtual void setLineWeight(AcDb::LineWeight weight) = 0;
    virtual void setLineTypeScale(double scale) = 0;
    virtual void setFillType(AcGiFillType fill) = 0;

    virtual AcDbObjectId layerId() const = 0;
    virtual AcDbObjectId lineTypeId() const = 0;
    virtual Adesk::UInt16 color() const = 0;
    virtual AcCmColor trueColor() const = 0;
    virtual AcDb::LineWeight lineWeight() const = 0;
    virtual double lineTypeScale() const = 0;
    virtual AcGiFillType fillType() const = 0;
};

// A text with its inline codes as they are stored. Sinks that show it lay it out; others pass it on.
struct AcGiText {
    AcGePoint3d location;   // of the attachment point
    AcGeVector3d direction; // unit vector along the first line, in the world
    AcGeVector3d normal{0.0, 0.0, 1.0};
    double height = 0.0; // of a capital, drawing units
    double width = 0.0;  // set width at which lines break; 0 for none
    int attachment = 1;  // 1 top left ... 9 bottom right, row by row
    AcDbObjectId style;
    std::string contents;
    bool multiline = true;    // false: one line, attachment by baseline (single-line text)
    double widthFactor = 1.0; // of single-line text
    double oblique = 0.0;     // of single-line text, radians
    bool backwards = false;   // single-line text that runs back from its location
    bool upsideDown = false;  // single-line text that hangs from its location
};

// A smooth curve through points: as defined, and as the arcs that fit it.
struct AcGiFittedCurve {
    std::span<const AcGePoint3d> definition; // the points that it was built from
    std::span<const AcGePoint3d> vertices;   // ends of the fitting arcs
    std::span<const double> bulges;          // tan of a quarter of each arc's sweep, one a vertex
    AcGeVector3d normal{0.0, 0.0, 1.0};      // of the plane in which the arcs lie
    bool closed = false;
};

// The primitives. Points are in the world, or in the frame of the innermost pushed transform. Each call
// gives false to go on and true when the regeneration was stopped.
class VELDRIN_API AcGiWorldGeometry {
public:
    virtual ~AcGiWorldGeometry() = default;

    virtual bool polyline(Adesk::UInt32 count, const AcGePoint3d* points,
                          const AcGeVector3d* normal = nullptr, Adesk::GsMarker marker = -1) = 0;
    virtual bool polygon(Adesk::UInt32 count, const AcGePoint3d* points) = 0;
    virtual bool circle(const AcGePoint3d& center, double radius, const AcGeVector3d& normal) = 0;
    // From the start vector, counter-clockwise about the normal by the sweep (radians).
    virtual bool circularArc(const AcGePoint3d& center, double radius, const AcGeVector3d& normal,
                             const AcGeVector3d& startVector, double sweepAngle,
                             AcGiArcType type = kAcGiArcSimple) = 0;
    virtual bool text(const AcGiText& text) = 0;
    virtual bool fittedCurve(const AcGiFittedCurve& curve) = 0;
    // Draws another drawable with its own traits and puts the traits back. It enters no database.
    virtual bool draw(AcGiDrawable* drawable) = 0;

    virtual bool pushModelTransform(const AcGeMatrix3d& matrix) = 0;
    virtual bool popModelTransform() = 0;

    // Around the contents of a block where a reference places it. In between, layer 0 is the layer that is
    // set now, and what is by block is what is set now. False when the contents are not to be drawn, because
    // the block holds itself or references are nested beyond reason; then nothing was begun.
    virtual bool beginBlock(AcDbObjectId block, const AcGeMatrix3d& placing) = 0;
    virtual void endBlock() = 0;
};

class VELDRIN_API AcGiWorldDraw {
public:
    virtual ~AcGiWorldDraw() = default;

    virtual AcGiSubEntityTraits& subEntityTraits() const = 0;
    virtual AcGiWorldGeometry& geometry() const = 0;
    // True when the user has broken a long regeneration.
    virtual bool regenAbort() const { return false; }
};

// What can draw itself.
class VELDRIN_API AcGiDrawable {
public:
    virtual ~AcGiDrawable();

    // Sets the drawable's own layer, linetype, colour and so on; what it does not have stays as it is.
    virtual void setAttributes(AcGiSubEntityTraits* traits) = 0;
    // True when that was all of it, false to be asked per view (nothing here asks).
    virtual bool worldDraw(AcGiWorldDraw* draw) = 0;
};
