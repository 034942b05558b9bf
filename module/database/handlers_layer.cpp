#include "database/LayerForKey.h"
#include "drawing/AcDbLayerTable.h"
#include "editor/aced.h"
#include "host/LispArguments.h"
#include "host/LispFunctions.h"
#include "host/PlumbModule.h"
#include "host/vqPlumbContext.h"

namespace plumb::handlers {

// (key [layer system or nil]): whatever fails is a silent nil.
int getLayer() {
    acedRetNil();
    LispArguments args;
    CString key;
    if (!argText(args.cursor, key)) return kDone;
    Adesk::Int32 layerSystem = 0;
    const bool hasSystem = argInt(args.cursor, layerSystem);
    if (bool flag = false; !hasSystem && (!argBool(args.cursor, flag) || flag)) return kDone;
    const StandardsTables* standards = moduleState().theContext->currentStandards();
    AcDbObjectId id;
    if (!standards || !GetLayerForKey(*standards, key, layerSystem, hasSystem, id)) return kDone;
    const AcDbObjectPointer<AcDbLayerTableRecord> layer(id, AcDb::kForRead);
    if (layer) acedRetStr(layer->getName().c_str());
    return kDone;
}

} // namespace plumb::handlers
