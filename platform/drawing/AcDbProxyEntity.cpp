#include "drawing/AcDbProxyEntity.h"

#include "drawing/AcDbDatabase.h"
#include "drawing/AcDbDxfFiler.h"
#include "drawing/AcDbObjectAccess.h"
#include "drawing/RecordFiler.h"
#include "drawing/UndoLog.h"
#include "runtime/AcRxMacros.h"

#include <utility>

ACRX_DEFINE_MEMBERS_WITH(AcDbProxyEntity, AcDbEntity, "ACAD_PROXY_ENTITY", nullptr);
ACRX_DEFINE_MEMBERS_WITH(AcDbProxyObject, AcDbObject, "ACAD_PROXY_OBJECT", nullptr);

namespace {

using veldrin::ProxyContent;

// The items of a proxy pass through as they are, so that only filers of records can carry them.
Acad::ErrorStatus writeItems(AcDbDwgFiler* filer, const ProxyContent& content) {
    auto* const writer = dynamic_cast<veldrin::RecordWriter*>(filer);
    return writer ? writer->writeItems(content.items) : Acad::eNotApplicable;
}

Acad::ErrorStatus readItems(AcDbDwgFiler* filer, ProxyContent& content) {
    auto* const reader = dynamic_cast<veldrin::RecordReader*>(filer);
    if (!reader) return Acad::eNotApplicable;
    std::string items;
    const Acad::ErrorStatus status = reader->readItems(items);
    if (status == Acad::eOk) content.items = std::move(items);
    return status;
}

} // namespace

AcDbProxyEntity::AcDbProxyEntity() = default;

AcDbProxyEntity::AcDbProxyEntity(std::string className, std::string dxfName, std::string appName,
                                 std::string record)
    : m_content{std::move(className), std::move(dxfName), std::move(appName), std::move(record)} {}

AcDbProxyEntity::AcDbProxyEntity(ProxyContent content) : m_content(std::move(content)) {}

AcDbProxyEntity::~AcDbProxyEntity() = default;

Acad::ErrorStatus AcDbProxyEntity::dwgInFields(AcDbDwgFiler* filer) {
    const Acad::ErrorStatus status = AcDbEntity::dwgInFields(filer);
    return status == Acad::eOk ? readItems(filer, m_content) : status;
}

Acad::ErrorStatus AcDbProxyEntity::dwgOutFields(AcDbDwgFiler* filer) const {
    const Acad::ErrorStatus status = AcDbEntity::dwgOutFields(filer);
    return status == Acad::eOk ? writeItems(filer, m_content) : status;
}

Acad::ErrorStatus AcDbProxyEntity::dxfOutFields(AcDbDxfFiler* filer) const {
    constexpr std::int32_t kProxyClass = 498;
    constexpr std::int32_t kUnknownClass = 499;
    AcDbEntity::dxfOutFields(filer);
    filer->writeItem(AcDb::kDxfSubclass, "AcDbProxyEntity");
    filer->writeInt32(90, kProxyClass);
    return filer->writeInt32(91, kUnknownClass);
}

bool AcDbProxyEntity::subWorldDraw(AcGiWorldDraw* draw) {
    return !m_picture || m_picture->worldDraw(draw);
}

Acad::ErrorStatus AcDbProxyEntity::subTransformBy(const AcGeMatrix3d&) {
    return Acad::eNotApplicable;
}

AcDbProxyObject::AcDbProxyObject() = default;
AcDbProxyObject::AcDbProxyObject(ProxyContent content) : m_content(std::move(content)) {}
AcDbProxyObject::~AcDbProxyObject() = default;

Acad::ErrorStatus AcDbProxyObject::dwgInFields(AcDbDwgFiler* filer) {
    const Acad::ErrorStatus status = AcDbObject::dwgInFields(filer);
    return status == Acad::eOk ? readItems(filer, m_content) : status;
}

Acad::ErrorStatus AcDbProxyObject::dwgOutFields(AcDbDwgFiler* filer) const {
    const Acad::ErrorStatus status = AcDbObject::dwgOutFields(filer);
    return status == Acad::eOk ? writeItems(filer, m_content) : status;
}

namespace veldrin {

namespace {

std::unique_ptr<AcDbObject> emptyProxy(const ProxyContent& names, bool isEntity) {
    ProxyContent content = names;
    content.items.clear();
    if (isEntity) return std::make_unique<AcDbProxyEntity>(std::move(content));
    return std::make_unique<AcDbProxyObject>(std::move(content));
}

std::unique_ptr<AcDbObject> made(const AcRxClass* aClass) {
    std::unique_ptr<AcRxObject> object(aClass ? aClass->create() : nullptr);
    if (!AcDbObject::cast(object.get())) return nullptr;
    return std::unique_ptr<AcDbObject>(static_cast<AcDbObject*>(object.release()));
}

// Moves the whole state of one object into another, within a database.
Acad::ErrorStatus pour(const AcDbObject& from, AcDbObject& into) {
    std::string record;
    const Acad::ErrorStatus status = AcDbObjectAccess::record(from, AcDb::kUndoFiler, record);
    return status == Acad::eOk ? restoreInto(into, from.database(), record) : status;
}

} // namespace

const ProxyContent* proxyContentOf(const AcDbObject& object) {
    if (const auto* entity = AcDbProxyEntity::cast(&object)) return &entity->content();
    if (const auto* other = AcDbProxyObject::cast(&object)) return &other->content();
    return nullptr;
}

std::unique_ptr<AcDbObject> emptyLike(const AcDbObject& object) {
    const ProxyContent* const content = proxyContentOf(object);
    return content ? emptyProxy(*content, object.isKindOf(AcDbEntity::desc())) : made(object.isA());
}

std::unique_ptr<AcDbObject> makeProxy(const AcDbObject& object) {
    const AcRxClass& aClass = *object.isA();
    std::unique_ptr<AcDbObject> proxy = emptyProxy({aClass.name(), aClass.dxfName(), aClass.appName(), ""},
                                                   object.isKindOf(AcDbEntity::desc()));
    return pour(object, *proxy) == Acad::eOk ? std::move(proxy) : nullptr;
}

std::unique_ptr<AcDbObject> reviveProxy(const AcDbObject& proxy) {
    const ProxyContent* const content = proxyContentOf(proxy);
    if (!content) return nullptr;
    std::unique_ptr<AcDbObject> object = made(AcRxClassRegistry::instance().at(content->className));
    return object && pour(proxy, *object) == Acad::eOk ? std::move(object) : nullptr;
}

std::unique_ptr<AcDbObject> objectFromRecord(const ProxyContent& names, bool isEntity, AcDbDatabase& database,
                                             std::string_view record, Acad::ErrorStatus& status) {
    std::unique_ptr<AcDbObject> object = made(AcRxClassRegistry::instance().at(names.className));
    status = Acad::eMakeMeProxy;
    if (object) {
        RecordReader reader(AcDb::kFileFiler, &database, record);
        status = object->dwgInFields(&reader);
    }
    if (status == Acad::eMakeMeProxy) {
        object = emptyProxy(names, isEntity);
        RecordReader reader(AcDb::kFileFiler, &database, record);
        status = object->dwgInFields(&reader);
    }
    if (status != Acad::eOk) object.reset();
    return object;
}

} // namespace veldrin
