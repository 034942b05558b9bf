#include "database/LayerForKey.h"

#include "database/tables/tblLayer.h"
#include "database/tables/tblLayerKey.h"
#include "drawing/AcDbDatabase.h"
#include "drawing/AcDbLayerTable.h"
#include "drawing/AcDbLinetypeTable.h"
#include "editor/aced.h"
#include "host/vqContext.h"
#include "system/AsciiCase.h"
#include "util/DocumentLock.h"
#include "util/DrawingHelpers.h"

#include <cstdlib>
#include <memory>

namespace plumb {

namespace {

constexpr const char* kDefaultKey = "DEFAULT";

void tellMissing(const char* what, const CString& key, Adesk::Int32 layerSystem) {
    acutPrintf("\n%s %s:%d does not exist in the database.", what, key.c_str(), layerSystem);
}

// The standards' layer for the key; "" when there is none, and the user has been told.
CString layerName(const StandardsTables& standards, const CString& key, Adesk::Int32 layerSystem) {
    tblLayerKey& keys = *standards.layerKey;
    if (!keys.Seek(layerSystem, key) && !keys.Seek(layerSystem, kDefaultKey)) {
        tellMissing("Layer key", key, layerSystem);
        return {};
    }
    if (!standards.layer->Seek(keys.ixLayer)) {
        tellMissing("Layer corresponding to layer key", key, layerSystem);
        return {};
    }
    return standards.layer->sName;
}

bool unlockLayer(const AcDbLayerTable& layers, const CString& name, AcDbObjectId& id) {
    AcDbLayerTableRecord* record = nullptr;
    if (layers.getAt(name, record, AcDb::kForWrite) != Acad::eOk) return false;
    record->setIsLocked(false);
    id = record->objectId();
    record->close();
    return true;
}

// False when the drawing's linetypes cannot be read.
bool takeLinetype(AcDbDatabase& drawing, AcDbLayerTableRecord& layer, const CString& name) {
    if (veldrin::asciiEqual(name, "CONTINUOUS")) return true;
    AcDbLinetypeTable* linetypes = nullptr;
    if (drawing.getLinetypeTable(linetypes, AcDb::kForRead) != Acad::eOk) return false;
    AcDbObjectId linetype;
    if (linetypes->getAt(name, linetype) == Acad::eOk) layer.setLinetypeObjectId(linetype);
    linetypes->close();
    return true;
}

bool addLayer(AcDbDatabase& drawing, AcDbLayerTable& layers, const tblLayer& row, const CString& name) {
    auto layer = std::make_unique<AcDbLayerTableRecord>();
    if (!row.iColor.isNull()) {
        AcCmColor color = layer->color();
        color.setColorIndex(static_cast<std::int16_t>(row.iColor.get()));
        layer->setColor(color);
    }
    layer->setName(name); // an empty one is refused below
    layer->setIsPlottable(row.bPlot);
    if (!takeLinetype(drawing, *layer, row.sLinetype)) return false;
    if (!row.sLineweight.isNull() && !row.sLineweight.get().empty())
        layer->setLineWeight(static_cast<AcDb::LineWeight>(std::atoi(row.sLineweight.get().c_str())));

    const DocumentLock lock;
    if (layers.upgradeOpen() != Acad::eOk) return false;
    if (layers.add(layer.get()) == Acad::eOk) {
        AcDbLayerTableRecord* added = layer.release(); // the drawing's now
        if (!row.sPlotstyle.isNull()) added->setPlotStyleName(row.sPlotstyle.get().c_str());
        added->close();
    }
    layers.downgradeOpen();
    return true;
}

} // namespace

bool GetLayerForKey(const StandardsTables& standards, const CString& key, Adesk::Int32 layerSystem,
                    bool useSystem, AcDbObjectId& layer) {
    const CString name = layerName(standards, key, useSystem ? layerSystem : 0);
    AcDbDatabase* drawing = CurrentDatabase();
    AcDbLayerTable* layers = nullptr;
    if (!drawing || drawing->getLayerTable(layers, AcDb::kForRead) != Acad::eOk) return false;
    AcDbObjectPointer<AcDbLayerTable> table;
    table.acquire(layers);
    if (unlockLayer(*layers, name, layer)) return true;
    if (name.empty() || !addLayer(*drawing, *layers, *standards.layer, name)) return false;
    return unlockLayer(*layers, name, layer);
}

} // namespace plumb
