#include "drawing/EntityList.h"

#include "drawing/AcDbDatabase.h"
#include "drawing/AcDbEntity.h"
#include "drawing/AcDbForeignEntity.h"
#include "drawing/AcDbLayerTable.h"
#include "drawing/AcDbObjectAccess.h"
#include "drawing/DxfListFiler.h"
#include "drawing/SymbolNames.h"
#include "runtime/AcRxClass.h"

#include <algorithm>

namespace veldrin {

namespace {

constexpr int kControl = 102; // around groups that belong to no class
constexpr const char* kDictionaryBegin = "{ACAD_XDICTIONARY";

bool fits(std::string_view text, std::string_view pattern) {
    if (pattern.empty()) return text.empty();
    if (pattern.front() == '*') {
        return fits(text, pattern.substr(1)) || (!text.empty() && fits(text.substr(1), pattern));
    }
    const bool first = !text.empty() && (pattern.front() == '?' || pattern.front() == text.front());
    return first && fits(text.substr(1), pattern.substr(1));
}

bool isWanted(const std::string& application, const std::vector<std::string>& wanted) {
    return std::ranges::any_of(wanted, [key = symbolKey(application)](const std::string& pattern) {
        return fits(key, symbolKey(pattern));
    });
}

void appendXData(const AcDbObject& object, const std::vector<std::string>& wanted, ResbufBuilder& list) {
    if (wanted.empty()) return;
    const ResbufPtr xdata(object.xData());
    bool taken = false, begun = false;
    for (const resbuf* item = xdata.get(); item; item = item->rbnext) {
        if (item->restype == AcDb::kDxfRegAppName) taken = isWanted(textOf(*item), wanted);
        if (!taken) continue;
        if (!begun) list.add(AcDb::kDxfXDataStart);
        begun = true;
        list.addCopy(*item);
    }
}

void appendName(ResbufBuilder& list, int code, AcDbObjectId id) {
    ads_name name;
    acdbGetAdsName(name, id);
    list.addName(code, name);
}

void appendHead(const AcDbObject& object, ResbufBuilder& list) {
    const bool isPlaced = !object.objectId().isNull();
    if (isPlaced) appendName(list, AcDb::kDxfEntityName, object.objectId());
    list.addText(AcDb::kDxfStart, dxfNameOf(object));
    if (!isPlaced) return;
    if (const AcDbObjectId dictionary = object.extensionDictionary(); !dictionary.isNull()) {
        list.addText(kControl, kDictionaryBegin);
        appendName(list, AcDb::kDxfHardOwnershipId, dictionary);
        list.addText(kControl, "}");
    }
    appendName(list, AcDb::kDxfSoftPointerId, object.ownerId());
    list.addText(AcDb::kDxfHandle, object.handle().text());
}

// What a list says beside the groups of the classes, sorted out.
struct SplitList {
    ResbufPtr groups;
    const resbuf* xdata = nullptr; // the first item behind -3
    std::string type;
};

bool isOfHead(const resbuf& item, bool beforeMarkers) {
    switch (item.restype) {
    case AcDb::kDxfEntityName: return true;
    case AcDb::kDxfSoftPointerId:
    case AcDb::kDxfHandle: return beforeMarkers;
    default: return false;
    }
}

SplitList split(const resbuf* list) {
    SplitList parts;
    ResbufBuilder groups;
    bool beforeMarkers = true, inControl = false;
    for (; list; list = list->rbnext) {
        if (list->restype == AcDb::kDxfXDataStart) {
            parts.xdata = list->rbnext;
            break;
        }
        beforeMarkers = beforeMarkers && list->restype != AcDb::kDxfSubclass;
        if (list->restype == kControl)
            inControl = *textOf(*list) == '{';
        else if (list->restype == AcDb::kDxfStart)
            parts.type = textOf(*list);
        else if (!inControl && !isOfHead(*list, beforeMarkers))
            groups.addCopy(*list);
    }
    parts.groups = groups.take();
    return parts;
}

bool applicationsAreKnown(const AcDbDatabase& database, const resbuf* xdata) {
    for (; xdata; xdata = xdata->rbnext) {
        if (xdata->restype != AcDb::kDxfRegAppName) continue;
        if (AcDbObjectAccess::findRecord(database.regAppTableId(), textOf(*xdata)).isNull()) return false;
    }
    return true;
}

bool isOnLockedLayer(const AcDbObject& object) {
    const auto* const entity = AcDbEntity::cast(&object);
    if (!entity) return false;
    const auto* layer = AcDbLayerTableRecord::cast(AcDbObjectAccess::object(entity->layerId()));
    return layer && layer->isLocked();
}

} // namespace

std::string dxfNameOf(const AcDbObject& object) {
    if (object.isKindOf(AcDbForeignEntity::desc())) {
        const std::string& own = static_cast<const AcDbForeignEntity&>(object).dxfName();
        if (!own.empty()) return own;
    }
    const std::string& name = object.isA()->dxfName();
    return name.empty() ? object.isA()->name() : name;
}

Acad::ErrorStatus entityListOut(const AcDbObject& object, const std::vector<std::string>& applications,
                                ResbufPtr& list) {
    ResbufBuilder whole;
    appendHead(object, whole);
    DxfListWriter writer(object.database());
    const Acad::ErrorStatus status = object.dxfOutFields(&writer);
    const ResbufPtr groups = writer.take();
    for (const resbuf* item = groups.get(); item; item = item->rbnext) whole.addCopy(*item);
    appendXData(object, applications, whole);
    list = whole.take();
    return status;
}

Acad::ErrorStatus entityListIn(AcDbObject& object, AcDbDatabase& database, const resbuf* list) {
    const SplitList parts = split(list);
    if (!parts.type.empty() && !sameSymbolName(parts.type, dxfNameOf(object))) return Acad::eInvalidInput;
    if (!applicationsAreKnown(database, parts.xdata)) return Acad::eKeyNotFound;
    DxfListReader reader(&database, parts.groups.get(), object.isKindOf(AcDbEntity::desc()));
    const Acad::ErrorStatus status = object.dxfInFields(&reader);
    if (status != Acad::eOk || !parts.xdata) return status;
    return object.setXData(parts.xdata);
}

} // namespace veldrin

resbuf* acdbEntGet(AcDbObjectId id, const std::vector<std::string>& applications) {
    const AcDbObjectPointer<AcDbObject> object(id, AcDb::kForRead);
    if (!object) return nullptr;
    veldrin::ResbufPtr list;
    const Acad::ErrorStatus status = veldrin::entityListOut(*object, applications, list);
    return status == Acad::eOk ? list.release() : nullptr;
}

Acad::ErrorStatus acdbEntMod(AcDbObjectId id, const resbuf* list) {
    AcDbObject* object = nullptr;
    const Acad::ErrorStatus opened = acdbOpenObject(object, id, AcDb::kForWrite);
    if (opened != Acad::eOk) return opened;
    const Acad::ErrorStatus status = veldrin::isOnLockedLayer(*object)
                                         ? Acad::eOnLockedLayer
                                         : veldrin::entityListIn(*object, *object->database(), list);
    if (status == Acad::eOk) return object->close();
    object->cancel();
    return status;
}
