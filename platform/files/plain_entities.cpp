#include "files/plain_entities.h"

#include "drawing/AcDbArc.h"
#include "drawing/AcDbCircle.h"
#include "drawing/AcDbLine.h"
#include "drawing/AcDbMText.h"
#include "drawing/AcDbPathCurve.h"
#include "drawing/AcDbPolyline.h"
#include "drawing/AcDbText.h"

#include <cmath>

namespace veldrin {

namespace {

using Pieces = std::vector<std::unique_ptr<AcDbEntity>>;

bool isLevel(std::span<const AcGePoint3d> points) {
    for (const AcGePoint3d& p : points)
        if (p.z != points.front().z) return false;
    return true;
}

std::unique_ptr<AcDbEntity> flatPolyline(std::span<const AcGePoint3d> points, bool closed) {
    auto polyline = std::make_unique<AcDbPolyline>();
    for (std::size_t i = 0; i < points.size(); ++i)
        polyline->addVertexAt(static_cast<unsigned>(i), points[i].convert2d());
    polyline->setElevation(points.front().z);
    polyline->setClosed(closed);
    return polyline;
}

void addPoints(std::span<const AcGePoint3d> points, bool closed, Pieces& pieces) {
    if (points.size() > 2 && isLevel(points)) {
        pieces.push_back(flatPolyline(points, closed));
        return;
    }
    for (std::size_t i = 1; i < points.size(); ++i)
        pieces.push_back(std::make_unique<AcDbLine>(points[i - 1], points[i]));
    if (closed && points.size() > 2)
        pieces.push_back(std::make_unique<AcDbLine>(points.back(), points.front()));
}

// Angles of an arc count from the X axis of its own plane.
std::unique_ptr<AcDbEntity> arcOf(const RecordedArc& arc) {
    const AcGeVector3d x = arc.normal.perpVector();
    const AcGeVector3d y = arc.normal.crossProduct(x);
    const double start = std::atan2(arc.startVector.dotProduct(y), arc.startVector.dotProduct(x));
    const double end = start + arc.sweep;
    return std::make_unique<AcDbArc>(arc.center, arc.normal, arc.radius, arc.sweep < 0.0 ? end : start,
                                     arc.sweep < 0.0 ? start : end);
}

std::unique_ptr<AcDbEntity> multilineOf(const AcGiText& text) {
    auto mtext = std::make_unique<AcDbMText>();
    mtext->setLocation(text.location);
    mtext->setDirection(text.direction);
    mtext->setTextHeight(text.height);
    mtext->setWidth(text.width);
    mtext->setAttachment(static_cast<AcDbMText::AttachmentPoint>(text.attachment));
    mtext->setTextStyle(text.style);
    mtext->setContents(text.contents);
    return mtext;
}

std::unique_ptr<AcDbEntity> lineOfText(const AcGiText& text) {
    auto line = std::make_unique<AcDbText>();
    const AcGeVector3d x = text.normal.perpVector();
    const AcGeVector3d y = text.normal.crossProduct(x);
    line->setNormal(text.normal);
    line->setPosition(text.location);
    line->setRotation(std::atan2(text.direction.dotProduct(y), text.direction.dotProduct(x)));
    line->setTextStyle(text.style);
    line->setHeight(text.height);
    line->setWidthFactor(text.widthFactor);
    line->setOblique(text.oblique);
    line->mirrorInX(text.backwards);
    line->mirrorInY(text.upsideDown);
    line->setTextString(text.contents);
    return line;
}

void addCurve(const AcGiFittedCurve& curve, Pieces& pieces) {
    std::vector<AcDbEntity*> parts;
    const AcDbLine like;
    explodePath(pathOf(curve), like, parts);
    for (AcDbEntity* part : parts) pieces.emplace_back(part);
}

void addPrimitive(const DisplayList& list, std::size_t index, Pieces& pieces) {
    switch (list.kind(index)) {
    case PrimitiveKind::kPolyline: addPoints(list.points(index), false, pieces); break;
    case PrimitiveKind::kPolygon: addPoints(list.points(index), true, pieces); break;
    case PrimitiveKind::kCircle: {
        const RecordedCircle circle = list.circle(index);
        pieces.push_back(std::make_unique<AcDbCircle>(circle.center, circle.normal, circle.radius));
        break;
    }
    case PrimitiveKind::kArc: pieces.push_back(arcOf(list.arc(index))); break;
    case PrimitiveKind::kText:
        pieces.push_back(list.text(index).multiline ? multilineOf(list.text(index))
                                                    : lineOfText(list.text(index)));
        break;
    case PrimitiveKind::kFittedCurve: addCurve(list.fittedCurve(index), pieces); break;
    }
}

void setLook(AcDbEntity& entity, const DrawTraits& traits) {
    entity.setLayer(traits.layer);
    entity.setLinetype(traits.linetype);
    entity.setColor(traits.color);
    entity.setLineWeight(traits.lineWeight);
    entity.setLinetypeScale(traits.linetypeScale);
}

} // namespace

std::vector<std::unique_ptr<AcDbEntity>> plainEntities(const DisplayList& list) {
    Pieces pieces;
    for (std::size_t i = 0; i < list.size(); ++i) {
        const std::size_t begun = pieces.size();
        addPrimitive(list, i, pieces);
        for (std::size_t k = begun; k < pieces.size(); ++k) setLook(*pieces[k], list.traits(i));
    }
    return pieces;
}

} // namespace veldrin
