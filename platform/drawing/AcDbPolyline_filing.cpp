#include "drawing/AcDbDwgFiler.h"
#include "drawing/AcDbPolyline.h"
#include "drawing/dxf_groups.h"

namespace {

enum Flag { kClosed = 1, kLinetypeGoesOn = 128 };

} // namespace

Acad::ErrorStatus AcDbPolyline::dwgOutFields(AcDbDwgFiler* filer) const {
    const Acad::ErrorStatus status = AcDbCurve::dwgOutFields(filer);
    if (status != Acad::eOk) return status;
    filer->writeBool(m_closed);
    filer->writeBool(m_linetypeGoesOn);
    filer->writeDouble(m_elevation);
    filer->writeVector3d(m_normal);
    filer->writeInt32(static_cast<Adesk::Int32>(m_vertices.size()));
    for (const Vertex& vertex : m_vertices) {
        filer->writePoint2d(vertex.point);
        filer->writeDouble(vertex.bulge);
        filer->writeDouble(vertex.startWidth);
        filer->writeDouble(vertex.endWidth);
    }
    return filer->filerStatus();
}

Acad::ErrorStatus AcDbPolyline::dwgInFields(AcDbDwgFiler* filer) {
    const Acad::ErrorStatus status = AcDbCurve::dwgInFields(filer);
    if (status != Acad::eOk) return status;
    Adesk::Int32 count = 0;
    filer->readBool(m_closed);
    filer->readBool(m_linetypeGoesOn);
    filer->readDouble(m_elevation);
    filer->readVector3d(m_normal);
    filer->readInt32(count);
    m_vertices.clear();
    for (Adesk::Int32 i = 0; i < count && filer->filerStatus() == Acad::eOk; ++i) {
        Vertex& vertex = m_vertices.emplace_back();
        filer->readPoint2d(vertex.point);
        filer->readDouble(vertex.bulge);
        filer->readDouble(vertex.startWidth);
        filer->readDouble(vertex.endWidth);
    }
    m_path.reset();
    return filer->filerStatus();
}

Acad::ErrorStatus AcDbPolyline::dxfOutFields(AcDbDxfFiler* filer) const {
    const Acad::ErrorStatus status = AcDbCurve::dxfOutFields(filer);
    if (status != Acad::eOk) return status;
    const bool all = filer->isEntityList(); // a file leaves out what is as usual
    const auto width = constantWidth();
    filer->writeItem(AcDb::kDxfSubclass, "AcDbPolyline");
    filer->writeInt32(90, static_cast<std::int32_t>(m_vertices.size()));
    filer->writeInt16(70, (m_closed ? kClosed : 0) | (m_linetypeGoesOn ? kLinetypeGoesOn : 0));
    if (width && (all || *width != 0.0)) filer->writeDouble(43, *width);
    if (all || m_elevation != 0.0) filer->writeDouble(38, m_elevation);
    if (all) filer->writeDouble(39, 0.0);
    for (const Vertex& vertex : m_vertices) {
        filer->writePoint2d(10, vertex.point);
        if (all || !width) {
            filer->writeDouble(40, vertex.startWidth);
            filer->writeDouble(41, vertex.endWidth);
        }
        if (all || vertex.bulge != 0.0) filer->writeDouble(42, vertex.bulge);
    }
    veldrin::writeNormal(*filer, m_normal);
    return filer->filerStatus();
}

// Behind a vertex stand its own groups. One width for all counts where the vertices have none.
Acad::ErrorStatus AcDbPolyline::dxfInFields(AcDbDxfFiler* filer) {
    const Acad::ErrorStatus status = AcDbCurve::dxfInFields(filer);
    if (status != Acad::eOk) return status;
    std::vector<Vertex> vertices;
    std::optional<double> width;
    bool hasOwnWidths = false;
    const Acad::ErrorStatus read = dxfInGroups(filer, [&](const AcDbDxfItem& item) {
        switch (item.code) {
        case 10: vertices.emplace_back().point = item.point.convert2d(); return true;
        case 38: m_elevation = veldrin::realOf(item); return true;
        case 43: width = veldrin::realOf(item); return true;
        case 70:
            m_closed = (veldrin::integerOf(item) & kClosed) != 0;
            m_linetypeGoesOn = (veldrin::integerOf(item) & kLinetypeGoesOn) != 0;
            return true;
        case AcDb::kDxfNormalX: m_normal = veldrin::normalOf(item); return true;
        case 40:
        case 41:
        case 42: break;
        default: return false;
        }
        if (vertices.empty()) return true;
        const double value = veldrin::realOf(item);
        if (item.code == 42)
            vertices.back().bulge = value;
        else
            (item.code == 40 ? vertices.back().startWidth : vertices.back().endWidth) = value;
        hasOwnWidths = hasOwnWidths || (item.code != 42 && value != 0.0);
        return true;
    });
    if (!vertices.empty()) m_vertices = std::move(vertices);
    if (width && !hasOwnWidths) setConstantWidth(*width);
    m_path.reset();
    return read == Acad::eOk && m_vertices.empty() ? Acad::eInvalidInput : read;
}
