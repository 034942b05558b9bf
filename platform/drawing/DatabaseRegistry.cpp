#include "drawing/DatabaseRegistry.h"

#include "drawing/AcDb2dPolyline.h"
#include "drawing/AcDb3dPolyline.h"
#include "drawing/AcDbArc.h"
#include "drawing/AcDbAttribute.h"
#include "drawing/AcDbBlockBegin.h"
#include "drawing/AcDbBlockReference.h"
#include "drawing/AcDbBlockTable.h"
#include "drawing/AcDbCircle.h"
#include "drawing/AcDbDatabase.h"
#include "drawing/AcDbDictionary.h"
#include "drawing/AcDbDimension.h"
#include "drawing/AcDbEllipse.h"
#include "drawing/AcDbHatch.h"
#include "drawing/AcDbLayerTable.h"
#include "drawing/AcDbLine.h"
#include "drawing/AcDbLinetypeTable.h"
#include "drawing/AcDbMText.h"
#include "drawing/AcDbObjectAccess.h"
#include "drawing/AcDbPoint.h"
#include "drawing/AcDbPolyline.h"
#include "drawing/AcDbProxyEntity.h"
#include "drawing/AcDbRegAppTable.h"
#include "drawing/AcDbSolid.h"
#include "drawing/AcDbSpline.h"
#include "drawing/AcDbText.h"
#include "drawing/AcDbTextStyleTable.h"
#include "runtime/AcRxClass.h"
#include "runtime/CException.h"

#include <string>
#include <utility>

namespace veldrin {

void registerDrawingClasses() {
    AcDbLayerTable::rxInit();
    AcDbLayerTableRecord::rxInit();
    AcDbLinetypeTable::rxInit();
    AcDbLinetypeTableRecord::rxInit();
    AcDbTextStyleTable::rxInit();
    AcDbTextStyleTableRecord::rxInit();
    AcDbRegAppTable::rxInit();
    AcDbRegAppTableRecord::rxInit();
    AcDbBlockTable::rxInit();
    AcDbBlockTableRecord::rxInit();
    AcDbDictionary::rxInit();
    AcDbXrecord::rxInit();
    AcDbProxyObject::rxInit();
    AcDbProxyEntity::rxInit();
    AcDbLine::rxInit();
    AcDbArc::rxInit();
    AcDbCircle::rxInit();
    AcDbMText::rxInit();
    AcDb2dPolyline::rxInit();
    AcDbSpline::rxInit();
    AcDbPolyline::rxInit();
    AcDbPoint::rxInit();
    AcDbForeignEntity::rxInit();
    AcDb3dPolyline::rxInit();
    AcDbEllipse::rxInit();
    AcDbSolid::rxInit();
    AcDbTrace::rxInit();
    AcDbFace::rxInit();
    AcDbHatch::rxInit();
    AcDbDimension::rxInit();
    AcDbText::rxInit();
    AcDbAttribute::rxInit();
    AcDbAttributeDefinition::rxInit();
    AcDbBlockReference::rxInit();
    AcDbBlockBegin::rxInit();
    AcDbBlockEnd::rxInit();
    AcDbSequenceEnd::rxInit();
}

DatabaseRegistry::DatabaseRegistry() : m_databases(1) {
    registerDrawingClasses();
    m_classListener = AcRxClassRegistry::instance().addListener(
        [this](AcRxClass& aClass) { classCame(aClass); }, [this](AcRxClass& aClass) { classGoes(aClass); });
}

DatabaseRegistry::~DatabaseRegistry() {
    AcRxClassRegistry::instance().removeListener(m_classListener);
}

std::uint32_t DatabaseRegistry::add(AcDbDatabase* database) {
    m_databases.push_back(database);
    return static_cast<std::uint32_t>(m_databases.size() - 1);
}

void DatabaseRegistry::remove(std::uint32_t generation) {
    if (AcDbDatabase* const database = find(generation); database && database == m_working)
        m_working = nullptr;
    if (generation < m_databases.size()) m_databases[generation] = nullptr;
}

namespace {

// Runs an action for each object of each database.
template<class Action>
void forEachObject(const std::vector<AcDbDatabase*>& databases, const Action& action) {
    for (AcDbDatabase* database : databases) {
        const std::uint32_t count = database ? database->slots().size() : 0;
        for (std::uint32_t number = 1; number < count; ++number) {
            const Slot& slot = database->slots()[number];
            if (slot.object) action(AcDbObjectId(database->generation(), number), slot);
        }
    }
}

} // namespace

void DatabaseRegistry::classCame(AcRxClass& aClass) {
    forEachObject(m_databases, [&](AcDbObjectId id, const Slot& slot) {
        const ProxyContent* const content = proxyContentOf(*slot.object);
        if (!content || content->className != aClass.name() || slot.isOpen()) return;
        if (std::unique_ptr<AcDbObject> object = reviveProxy(*slot.object)) {
            AcDbObjectAccess::replace(id, std::move(object));
        }
    });
}

// Either every object of the class is replaced or none is.
void DatabaseRegistry::classGoes(AcRxClass& aClass) {
    std::vector<std::pair<AcDbObjectId, std::unique_ptr<AcDbObject>>> proxies;
    forEachObject(m_databases, [&](AcDbObjectId id, const Slot& slot) {
        if (!slot.object->isKindOf(&aClass)) return;
        const std::string object = "object " + id.handle().text();
        if (slot.isOpen()) throw CException("Class " + aClass.name() + " is in use: " + object + " is open.");
        std::unique_ptr<AcDbObject> proxy = makeProxy(*slot.object);
        if (!proxy)
            throw CException("Class " + aClass.name() + " is in use: " + object + " cannot be filed.");
        auto* const picture = AcDbProxyEntity::cast(proxy.get());
        if (picture && m_pictureOf && !slot.erased) {
            const ReadAccess access(id);
            picture->setPicture(m_pictureOf(*static_cast<AcDbEntity*>(slot.object)));
        }
        proxies.emplace_back(id, std::move(proxy));
    });
    for (auto& [id, proxy] : proxies) AcDbObjectAccess::replace(id, std::move(proxy));
}

} // namespace veldrin
