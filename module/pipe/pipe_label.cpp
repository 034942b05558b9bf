#include "pipe/PipePicture.h"
#include "pipe/PlumbPipe.h"

#include "editor/aced.h"
#include "geometry/AcGeLine2d.h"

#include <optional>

namespace plumb {

namespace {

std::optional<AcGePoint3d> ucsToWorld(const AcGePoint3d& p) {
    resbuf from{};
    resbuf to{};
    from.restype = RTSHORT;
    from.resval.rint = 1;
    to.restype = RTSHORT;
    to.resval.rint = 0;
    const ads_point given{p.x, p.y, p.z};
    ads_point result{};
    if (acedTrans(given, &from, &to, 0, result) != RTNORM) return std::nullopt;
    return AcGePoint3d(result[0], result[1], result[2]);
}

// From the origin along the pipe to the edge of a box around the text: half a text height free on each side.
double gapInBox(double width, double height, double rotation, double pipeAngle) {
    const double p = rotation + kQuarterTurn;
    const double boxWidth = width + height * 1.0;
    const double boxHeight = height + height * 1.0;
    AcGePoint2d lowerLeft = PolarPoint(AcGePoint2d(), rotation, -(width * 0.5 + height * 0.5));
    lowerLeft = PolarPoint(lowerLeft, p, -(height * 0.5 + height * 0.5));
    const AcGePoint2d lowerRight = PolarPoint(lowerLeft, rotation, boxWidth);
    const AcGePoint2d upperLeft = PolarPoint(lowerLeft, p, boxHeight);
    const AcGePoint2d upperRight = PolarPoint(upperLeft, rotation, boxWidth);

    const AcGeLine2d pipe(AcGePoint2d(), AcGeVector2d(std::cos(pipeAngle), std::sin(pipeAngle)));
    const AcGeLineSeg2d sides[] = {
        {upperLeft, upperRight}, {lowerLeft, lowerRight}, {lowerLeft, upperLeft}, {lowerRight, upperRight}};
    for (const AcGeLineSeg2d& side : sides) {
        AcGePoint2d hit;
        if (pipe.intersectWith(side, hit)) return hit.distanceTo(AcGePoint2d());
    }
    return height;
}

} // namespace

double angleToUcs(double angle) {
    const auto origin = ucsToWorld({0.0, 0.0, 0.0});
    const auto onAxis = ucsToWorld({1.0, 0.0, 0.0});
    return origin && onAxis ? angle - AngleBetween(*origin, *onAxis) : angle;
}

LabelFit fitLabel(const PlumbPipe& pipe) {
    const PipeData& d = pipe.data();
    if (d.sText.empty()) return {};
    const double pipeAngle = AngleBetween(d.ptStart, d.ptEnd);
    double angle = 0.0;
    if (!d.bTextAngleIs0) {
        angle = pipeAngle;
        if (angle > kUpsideDownFrom && angle < kUpsideDownTo) angle += kPi;
    }
    const AcDbMText& pattern = pipe.labelText();
    AcDbMText& text = pipe.drawnLabel();
    text.setTextStyle(pattern.textStyle());
    text.setTextHeight(pattern.textHeight());
    text.setWidth(pattern.width());
    text.setRotation(angleToUcs(angle));
    text.setContents(d.sText);
    text.setLayer(d.textLayerId.isNull() ? pipe.layerId() : d.textLayerId);

    LabelFit fit;
    fit.width = text.actualWidth();
    fit.height = text.actualHeight(nullptr);
    fit.rotation = text.worldRotation();
    fit.halfGap = gapInBox(fit.width, fit.height, fit.rotation, pipeAngle);
    return fit;
}

AcDbMText& PlumbPipe::drawnLabel() const {
    if (!m_drawnLabel) m_drawnLabel = std::make_unique<AcDbMText>();
    return *m_drawnLabel;
}

double PlumbPipe::labelHalfGap() const {
    return fitLabel(*this).halfGap;
}

void PipePicture::prepareLabel() {
    if (!m_data.sText.empty()) m_label = fitLabel(m_pipe);
}

namespace {
// How many labels a piece takes, at least one. A spacing of 0 gives one, and so does one that would cover the
// piece with more labels than anybody can mean.
int labelCount(double length, double spacing) {
    const double n = length / spacing;
    return n >= 1.0 && n <= kMostLabels ? static_cast<int>(n) : 1;
}
} // namespace

// Labels are centred on the piece and not tested against each other: with a spacing below the gap the lines
// between them run backwards.
void PipePicture::emitRunPiece(const AcGePoint3d& a, const AcGePoint3d& b) {
    if (m_data.sText.empty()) {
        emitLine(a, b);
        return;
    }
    const double length = planDistance(a, b);
    const double gap = m_label.halfGap;
    AcGePoint3d from = a;
    if (length > 2.0 * gap) {
        const int count = labelCount(length, m_data.dTextDistance);
        const double spacing = count > 1 ? m_data.dTextDistance : 0.0;
        const AcGePoint3d first = m_frame.along(a, (length - (count - 1) * spacing) * 0.5);
        for (int i = 0; i < count; ++i) {
            const AcGePoint3d center = m_frame.along(first, i * spacing);
            emitLabel(center);
            const AcGePoint3d stop = m_frame.along(center, -gap);
            emitLine(from, stop);
            from = m_frame.along(stop, gap * 2.0);
        }
    }
    emitLine(from, b, TwinLinetype::OfPipe);
}

void PipePicture::emitLabel(const AcGePoint3d& center) {
    const double r = m_label.rotation;
    AcGePoint3d location = PolarPoint(center, r, m_label.width * -0.5);
    location = PolarPoint(location, r + kQuarterTurn, m_label.height * 0.5);
    location.z = kHiddenElevation;

    const AcDbMText& pattern = m_pipe.drawnLabel();
    const bool hasLayer = m_data.textLayerId.isValid();
    const auto setUp = [&](AcDbMText& text) {
        text.setLayer(hasLayer ? m_data.textLayerId : m_pipe.layerId());
        text.setLinetype(m_pipe.linetypeId());
        text.setLocation(location);
        text.setWidth(pattern.width());
        text.setRotation(pattern.rotation());
        text.setContents(pattern.contents());
        text.setTextStyle(pattern.textStyle());
        text.setTextHeight(pattern.textHeight());
    };
    if (m_geometry) {
        AcDbMText text;
        setUp(text);
        text.setColorIndex(AcCmColor::kByLayer);
        if (hasLayer) m_traits->setLayer(m_data.textLayerId);
        const AcCmColor color = m_traits->trueColor();
        m_traits->setColor(AcCmColor::kByLayer);
        m_geometry->draw(&text);
        m_traits->setLayer(m_layer);
        m_traits->setTrueColor(color);
    } else if (m_sink.list) {
        auto text = std::make_unique<AcDbMText>();
        setUp(*text);
        append(text.release());
    }
}

} // namespace plumb
