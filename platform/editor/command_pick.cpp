#include "editor/command_pick.h"

#include "drawing/AcDbBlockTable.h"
#include "drawing/AcDbEntity.h"
#include "drawing/AcDbLayerTable.h"
#include "editor/SystemVariables.h"
#include "graphics/DisplayList.h"
#include "graphics/Recorder.h"
#include "runtime/Host.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <unordered_map>

namespace veldrin {

namespace {

struct LayerState {
    bool shown = true;
    bool thawed = true;
    bool locked = false;
};

LayerState stateOf(AcDbObjectId layerId) {
    const AcDbObjectPointer<AcDbLayerTableRecord> layer(layerId);
    if (!layer) return {};
    return {!layer->isOff() && !layer->isFrozen(), !layer->isFrozen(), layer->isLocked()};
}

// Layers are asked for once in a search, not once for each entity.
class LayerStates {
public:
    const LayerState& of(AcDbObjectId layer) {
        const auto [found, isNew] = m_states.try_emplace(layer);
        if (isNew) found->second = stateOf(layer);
        return found->second;
    }

private:
    std::unordered_map<AcDbObjectId, LayerState> m_states;
};

std::vector<AcDbObjectId> entitiesOfSpace(AcDbDatabase& database) {
    const AcDbObjectPointer<AcDbBlockTableRecord> space(database.modelSpaceId());
    return space ? space->entityIds() : std::vector<AcDbObjectId>();
}

// What an entity draws, as straight lines in plan.
class Outline {
public:
    const std::vector<std::vector<AcGePoint2d>>& of(AcDbEntity& entity) {
        m_lines.clear();
        m_recorder.restart();
        drawEntity(entity, m_recorder);
        for (std::size_t i = 0; i < m_list.size(); ++i)
            if (m_states.of(m_list.traits(i).layer).shown) add(i);
        return m_lines;
    }

private:
    static constexpr int chordsOfTurn = 72;

    void addPath(const CurvePath& path) {
        std::vector<AcGePoint2d> line;
        for (const CurvePiece& piece : path.pieces()) {
            const int chords =
                piece.isArc() ? std::max(1, static_cast<int>(std::abs(piece.sweep) * chordsOfTurn / 6.2831))
                              : 1;
            for (int i = line.empty() ? 0 : 1; i <= chords; ++i)
                line.push_back(piece.pointAt(static_cast<double>(i) / chords).convert2d());
        }
        if (!line.empty()) m_lines.push_back(std::move(line));
    }
    void addBox(std::size_t index) {
        AcDbExtents box;
        m_list.addExtents(index, box);
        if (box.isEmpty()) return;
        const AcGePoint2d low = box.minPoint().convert2d(), high = box.maxPoint().convert2d();
        m_lines.push_back({low, {high.x, low.y}, high, {low.x, high.y}, low});
    }
    void add(std::size_t index) {
        switch (m_list.kind(index)) {
        case PrimitiveKind::kPolyline:
        case PrimitiveKind::kPolygon: {
            std::vector<AcGePoint2d> line;
            for (const AcGePoint3d& point : m_list.points(index)) line.push_back(point.convert2d());
            if (m_list.kind(index) == PrimitiveKind::kPolygon && !line.empty()) line.push_back(line.front());
            if (!line.empty()) m_lines.push_back(std::move(line));
            break;
        }
        case PrimitiveKind::kCircle: {
            const RecordedCircle c = m_list.circle(index);
            const AcGeVector3d normal = c.normal.normal();
            addPath({{CurvePiece::arc(c.center, c.radius, normal, normal.perpVector(), 6.283185307179586)},
                     true});
            break;
        }
        case PrimitiveKind::kArc: {
            const RecordedArc a = m_list.arc(index);
            addPath({{CurvePiece::arc(a.center, a.radius, a.normal, a.startVector, a.sweep)}, false});
            break;
        }
        case PrimitiveKind::kText: addBox(index); break;
        case PrimitiveKind::kFittedCurve: addPath(pathOf(m_list.fittedCurve(index))); break;
        }
    }

    DisplayList m_list;
    Recorder m_recorder{m_list};
    LayerStates m_states;
    std::vector<std::vector<AcGePoint2d>> m_lines;
};

double distanceToSegment(const AcGePoint2d& point, const AcGePoint2d& from, const AcGePoint2d& to) {
    const AcGeVector2d along = to - from;
    const double length = along.lengthSqrd();
    const double at = length == 0.0 ? 0.0 : std::clamp((point - from).dotProduct(along) / length, 0.0, 1.0);
    return point.distanceTo(from + along * at);
}

int sideOf(const AcGePoint2d& a, const AcGePoint2d& b, const AcGePoint2d& p) {
    const double cross = (b - a).crossProduct(p - a);
    return (cross > 0.0) - (cross < 0.0);
}

bool segmentsMeet(const AcGePoint2d& a, const AcGePoint2d& b, const AcGePoint2d& c, const AcGePoint2d& d) {
    if (std::max(a.x, b.x) < std::min(c.x, d.x) || std::max(c.x, d.x) < std::min(a.x, b.x)) return false;
    if (std::max(a.y, b.y) < std::min(c.y, d.y) || std::max(c.y, d.y) < std::min(a.y, b.y)) return false;
    return sideOf(a, b, c) * sideOf(a, b, d) <= 0 && sideOf(c, d, a) * sideOf(c, d, b) <= 0;
}

bool isInside(const AcGePoint2d& point, const std::vector<AcGePoint2d>& polygon) {
    bool inside = false;
    for (std::size_t i = 0, j = polygon.size() - 1; i < polygon.size(); j = i++) {
        const AcGePoint2d &a = polygon[i], &b = polygon[j];
        if ((a.y > point.y) != (b.y > point.y) && point.x < (b.x - a.x) * (point.y - a.y) / (b.y - a.y) + a.x)
            inside = !inside;
    }
    return inside;
}

bool crosses(const std::vector<AcGePoint2d>& line, const std::vector<AcGePoint2d>& border, bool isClosed) {
    const std::size_t edges = isClosed ? border.size() : border.size() - 1;
    for (std::size_t i = 0; i < line.size(); ++i)
        for (std::size_t j = 0; j < edges; ++j)
            if (segmentsMeet(line[i > 0 ? i - 1 : 0], line[i], border[j], border[(j + 1) % border.size()]))
                return true;
    return false;
}

bool belongs(const std::vector<std::vector<AcGePoint2d>>& lines, RegionKind kind,
             const std::vector<AcGePoint2d>& region) {
    if (lines.empty()) return false;
    const auto touches = [&](const std::vector<AcGePoint2d>& line) {
        return crosses(line, region, true) || isInside(line.front(), region);
    };
    const auto lies = [&](const std::vector<AcGePoint2d>& line) {
        return isInside(line.front(), region) && !crosses(line, region, true);
    };
    switch (kind) {
    case RegionKind::Inside: return std::ranges::all_of(lines, lies);
    case RegionKind::Crossing: return std::ranges::any_of(lines, touches);
    case RegionKind::Fence:
        return std::ranges::any_of(lines, [&](const auto& line) { return crosses(line, region, false); });
    }
    return false;
}

// Half the side of the pick box, in drawing units.
double pickDistance() {
    const SystemVariables& variables = Host::current().variables();
    double screenHeight = 600.0;
    if (const auto size = variables.get("SCREENSIZE"))
        if (const auto* pixels = std::get_if<AcGePoint2d>(&*size))
            if (pixels->y > 0.0) screenHeight = pixels->y;
    return std::max(1, variables.integer("PICKBOX")) * variables.real("VIEWSIZE") / screenHeight;
}

} // namespace

AcDbObjectId entityAt(AcDbDatabase& database, const AcGePoint3d& point) {
    const double reach = pickDistance();
    const std::vector<AcDbObjectId> ids = entitiesOfSpace(database);
    Outline outline;
    for (auto id = ids.rbegin(); id != ids.rend(); ++id) {
        const AcDbObjectPointer<AcDbEntity> entity(*id);
        if (!entity || entity->visibility() != AcDb::kVisible) continue;
        for (const std::vector<AcGePoint2d>& line : outline.of(*entity))
            for (std::size_t i = 0; i < line.size(); ++i)
                if (distanceToSegment(point.convert2d(), line[i > 0 ? i - 1 : 0], line[i]) <= reach)
                    return *id;
    }
    return {};
}

std::vector<AcDbObjectId> entitiesInRegion(AcDbDatabase& database, RegionKind kind,
                                           const std::vector<AcGePoint3d>& polygon) {
    std::vector<AcDbObjectId> found;
    std::vector<AcGePoint2d> region;
    for (const AcGePoint3d& point : polygon) region.push_back(point.convert2d());
    if (region.size() < 2) return found;
    Outline outline;
    for (const AcDbObjectId id : entitiesOfSpace(database)) {
        const AcDbObjectPointer<AcDbEntity> entity(id);
        if (entity && entity->visibility() == AcDb::kVisible && belongs(outline.of(*entity), kind, region))
            found.push_back(id);
    }
    return found;
}

std::vector<AcGePoint3d> boxCorners(const AcDbDatabase& database, const AcGePoint3d& from,
                                    const AcGePoint3d& to) {
    const AcGeMatrix3d toWorld = database.ucsToWorld(), toUser = toWorld.inverse();
    AcGePoint3d a = from, b = to;
    a.transformBy(toUser);
    b.transformBy(toUser);
    std::vector<AcGePoint3d> corners = {a, {b.x, a.y, a.z}, {b.x, b.y, a.z}, {a.x, b.y, a.z}};
    for (AcGePoint3d& corner : corners) corner.transformBy(toWorld);
    return corners;
}

bool isInRegion(const std::vector<AcGePoint3d>& polygon, const AcGePoint3d& point) {
    constexpr double onBorder = 1.0e-9;
    std::vector<AcGePoint2d> region;
    for (const AcGePoint3d& corner : polygon) region.push_back(corner.convert2d());
    for (std::size_t i = 0; i < region.size(); ++i)
        if (distanceToSegment(point.convert2d(), region[i], region[(i + 1) % region.size()]) <= onBorder)
            return true;
    return !region.empty() && isInside(point.convert2d(), region);
}

std::vector<AcDbObjectId> visibleEntities(AcDbDatabase& database) {
    std::vector<AcDbObjectId> found;
    LayerStates states;
    for (const AcDbObjectId id : entitiesOfSpace(database)) {
        const AcDbObjectPointer<AcDbEntity> entity(id);
        if (entity && states.of(entity->layerId()).thawed) found.push_back(id);
    }
    return found;
}

AcDbObjectId lastEntity(AcDbDatabase& database) {
    const AcDbObjectPointer<AcDbBlockTableRecord> space(database.modelSpaceId());
    if (!space) return {};
    const std::vector<AcDbObjectId>& ids = space->entityIds(); // asked for after every command: not copied
    const auto last = std::find_if(ids.rbegin(), ids.rend(), [](AcDbObjectId id) { return !id.isErased(); });
    return last == ids.rend() ? AcDbObjectId() : *last;
}

bool isOnLockedLayer(AcDbObjectId id) {
    const AcDbObjectPointer<AcDbEntity> entity(id);
    return entity && stateOf(entity->layerId()).locked;
}

} // namespace veldrin
