#include "graphics/DrawingExtents.h"

#include "drawing/AcDbBlockTable.h"
#include "drawing/AcDbDatabase.h"
#include "drawing/AcDbEntity.h"
#include "drawing/AcDbLayerTable.h"
#include "graphics/Recorder.h"

#include <unordered_map>

namespace veldrin {

namespace {

// Whether layers are shown, each looked up once.
class ShownLayers {
public:
    bool operator()(AcDbObjectId layer) {
        const auto [entry, isNew] = m_shown.try_emplace(layer, true);
        if (!isNew) return entry->second;
        const AcDbObjectPointer<AcDbLayerTableRecord> record(layer);
        return entry->second = !record || !(record->isOff() || record->isFrozen());
    }

private:
    std::unordered_map<AcDbObjectId, bool> m_shown;
};

} // namespace

AcDbExtents drawnExtents(AcDbDatabase& database) {
    AcDbExtents all;
    DisplayList list;
    Recorder recorder(list);
    ShownLayers isShown;
    const AcDbObjectPointer<AcDbBlockTableRecord> space(database.modelSpaceId());
    if (!space) return all;
    for (const AcDbObjectId id : space->entityIds()) {
        if (id.isErased()) continue;
        const AcDbObjectPointer<AcDbEntity> entity(id);
        if (!entity || entity->visibility() == AcDb::kInvisible) continue;
        recorder.restart();
        recorder.geometry().draw(entity.object());
        for (std::size_t i = 0; i < list.size(); ++i)
            if (isShown(list.traits(i).layer)) list.addExtents(i, all);
    }
    return all;
}

} // namespace veldrin
