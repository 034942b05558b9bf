#include "drawing/AcDbForeignEntity.h"

#include "drawing/AcDbDwgFiler.h"
#include "drawing/AcDbLine.h"
#include "drawing/AcDbObjectExtras.h"
#include "drawing/DxfListFiler.h"
#include "drawing/dxf_groups.h"
#include "drawing/list_lines.h"
#include "runtime/AcRxMacros.h"

#include <algorithm>
#include <utility>

ACRX_DEFINE_MEMBERS(AcDbForeignEntity, AcDbEntity, "");

using veldrin::pointOf;

AcDbForeignEntity::AcDbForeignEntity() = default;
AcDbForeignEntity::AcDbForeignEntity(std::string dxfName) : m_dxfName(std::move(dxfName)) {}
AcDbForeignEntity::~AcDbForeignEntity() = default;

Acad::ErrorStatus AcDbForeignEntity::dwgOutFields(AcDbDwgFiler* filer) const {
    const Acad::ErrorStatus status = AcDbEntity::dwgOutFields(filer);
    if (status != Acad::eOk) return status;
    filer->writeString(m_dxfName);
    veldrin::writeChain(*filer, m_groups.get());
    return filer->filerStatus();
}

Acad::ErrorStatus AcDbForeignEntity::dwgInFields(AcDbDwgFiler* filer) {
    const Acad::ErrorStatus status = AcDbEntity::dwgInFields(filer);
    if (status != Acad::eOk) return status;
    filer->readString(m_dxfName);
    m_groups.reset();
    const Acad::ErrorStatus read = veldrin::readChain(*filer, m_groups);
    groupsChanged();
    return read;
}

bool AcDbForeignEntity::isOwnGroup(const resbuf&, const AcDbDxfFiler&) const {
    return true;
}

bool AcDbForeignEntity::isFlat(const resbuf&, int) const {
    return false;
}

Acad::ErrorStatus AcDbForeignEntity::dxfOutFields(AcDbDxfFiler* filer) const {
    const Acad::ErrorStatus status = AcDbEntity::dxfOutFields(filer);
    if (status != Acad::eOk) return status;
    int index = 0;
    for (const resbuf* group = m_groups.get(); group && isOwnGroup(*group, *filer);
         group = group->rbnext, ++index) {
        if (acutGroupCodeKind(group->restype) == RT3DPOINT && !filer->isEntityList() && isFlat(*group, index))
            filer->writePoint2d(group->restype, pointOf(*group).convert2d());
        else if (acutGroupCodeKind(group->restype) == RTSTR)
            filer->writeItem(group->restype, textOfGroup(*group));
        else
            veldrin::writeDxfItem(*filer, *group);
    }
    return filer->filerStatus();
}

Acad::ErrorStatus AcDbForeignEntity::dxfInFields(AcDbDxfFiler* filer) {
    const Acad::ErrorStatus status = AcDbEntity::dxfInFields(filer);
    if (status != Acad::eOk) return status;
    veldrin::ResbufBuilder groups;
    const Acad::ErrorStatus read = dxfInGroups(filer, [&](const AcDbDxfItem& item) {
        const bool isMarker = item.code == AcDb::kDxfSubclass;
        if (isMarker && item.text == "AcDbEntity") return true;
        if (isCommonGroup(item.code) || item.code < 0) return false;
        veldrin::addDxfItem(groups, item);
        return true;
    });
    veldrin::ResbufPtr taken = groups.take();
    if (read != Acad::eOk || !taken) return read;
    m_groups = std::move(taken);
    if (!find(AcDb::kDxfSubclass)) addMarkers();
    groupsChanged();
    return Acad::eOk;
}

std::vector<AcDbForeignEntity::Outline> AcDbForeignEntity::outlines() const {
    return {};
}

std::string AcDbForeignEntity::textOfGroup(const resbuf& group) const {
    return veldrin::textOf(group);
}

AcDbForeignEntity::Markers AcDbForeignEntity::markersFor(const resbuf*) const {
    return {};
}

void AcDbForeignEntity::addMarkers() {
    const Markers markers = markersFor(m_groups.get());
    veldrin::ResbufBuilder marked;
    const auto add = [&](const std::vector<std::string>& names) {
        for (const std::string& name : names) marked.addText(AcDb::kDxfSubclass, name);
    };
    const auto isBehind = [&](const resbuf& group) {
        return std::ranges::find(markers.behindSecond, group.restype) != markers.behindSecond.end();
    };
    add(markers.first);
    for (const resbuf* group = m_groups.get(); group; group = group->rbnext)
        if (!isBehind(*group)) marked.addCopy(*group);
    add(markers.second);
    for (const resbuf* group = m_groups.get(); group; group = group->rbnext)
        if (isBehind(*group)) marked.addCopy(*group);
    add(markers.last);
    m_groups = marked.take();
}

bool AcDbForeignEntity::subWorldDraw(AcGiWorldDraw* draw) {
    for (const Outline& outline : outlines()) {
        const auto count = static_cast<Adesk::UInt32>(outline.points.size());
        if (outline.isFilled) {
            draw->subEntityTraits().setFillType(kAcGiFillAlways);
            draw->geometry().polygon(count, outline.points.data());
        } else {
            draw->geometry().polyline(count, outline.points.data());
        }
    }
    return true;
}

Acad::ErrorStatus AcDbForeignEntity::subExplode(std::vector<AcDbEntity*>& pieces) const {
    const std::vector<Outline> shown = outlines();
    if (shown.empty()) return Acad::eNotApplicable;
    for (const Outline& outline : shown)
        for (std::size_t i = 1; i < outline.points.size(); ++i) {
            auto line = std::make_unique<AcDbLine>(outline.points[i - 1], outline.points[i]);
            line->setPropertiesFrom(this);
            pieces.push_back(line.release());
        }
    return Acad::eOk;
}

void AcDbForeignEntity::subList() const {
    AcDbEntity::subList();
    int count = 0;
    for (const resbuf* group = m_groups.get(); group; group = group->rbnext) ++count;
    veldrin::listValue("Kept as it came,", std::to_string(count) + " groups");
}

Acad::ErrorStatus AcDbForeignEntity::subTransformBy(const AcGeMatrix3d&) {
    return Acad::eNotApplicable;
}

Acad::ErrorStatus AcDbForeignEntity::subGetGeomExtents(AcDbExtents& extents) const {
    AcDbExtents all;
    for (const Outline& outline : outlines())
        for (const AcGePoint3d& p : outline.points) all.addPoint(p);
    if (all.isEmpty()) return Acad::eNullExtents;
    extents = all;
    return Acad::eOk;
}

const resbuf* AcDbForeignEntity::find(int code) const {
    for (const resbuf* group = m_groups.get(); group; group = group->rbnext)
        if (group->restype == code) return group;
    return nullptr;
}

double AcDbForeignEntity::realGroup(int code, double missing) const {
    const resbuf* const group = find(code);
    return group && acutGroupCodeKind(code) == RTREAL ? group->resval.rreal : missing;
}

int AcDbForeignEntity::integerGroup(int code, int missing) const {
    const resbuf* const group = find(code);
    if (!group) return missing;
    return acutGroupCodeKind(code) == RTLONG ? group->resval.rlong : group->resval.rint;
}

std::string AcDbForeignEntity::textGroup(int code) const {
    const resbuf* const group = find(code);
    return group ? veldrin::textOf(*group) : std::string();
}

bool AcDbForeignEntity::pointGroup(int code, AcGePoint3d& point) const {
    const resbuf* const group = find(code);
    if (group) point = pointOf(*group);
    return group != nullptr;
}

AcGeVector3d AcDbForeignEntity::normalGroup() const {
    AcGePoint3d point(0.0, 0.0, 1.0);
    pointGroup(AcDb::kDxfNormalX, point);
    const AcGeVector3d v = point.asVector();
    return v.isZeroLength() ? AcGeVector3d::kZAxis : v.normal();
}
