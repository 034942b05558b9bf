#include "drawing/AcDb2dPolyline.h"
#include "drawing/AcDb3dPolyline.h"
#include "drawing/AcDbAttribute.h"
#include "drawing/AcDbBlockReference.h"
#include "drawing/AcDbBlockTable.h"
#include "drawing/AcDbForeignEntity.h"
#include "drawing/AcDbObjectAccess.h"
#include "drawing/AcDbProxyEntity.h"
#include "drawing/AcDbRegAppTable.h"
#include "drawing/DxfListFiler.h"
#include "drawing/RecordFiler.h"
#include "drawing/acdb.h"
#include "drawing/dxf_groups.h"
#include "files/DxfDrawingReader.h"
#include "files/dxf_records.h"
#include "runtime/AcRxClass.h"

#include <algorithm>
#include <cmath>
#include <fmt/format.h>

namespace veldrin {

namespace {

constexpr int kFlags = 70;
constexpr int kPolyline3d = 8;
constexpr int kMeshes = 16 | 64;
constexpr int kVertexByFit = 1;
constexpr int kVertexBySpline = 8;

bool isClose(double a, double b) {
    constexpr double kTolerance = 1e-9;
    return std::abs(a - b) <= kTolerance * std::max(1.0, std::abs(a));
}

bool isSameValue(const resbuf& own, const AcDbDxfItem& item) {
    const AcDbDxfItem mine = dxfItemOf(own);
    if (mine.kind != item.kind) return false;
    switch (item.kind) {
    case AcDbDxfItem::kReal: return isClose(mine.real, item.real);
    case AcDbDxfItem::kPoint:
        return isClose(mine.point.x, item.point.x) && isClose(mine.point.y, item.point.y) &&
               isClose(mine.point.z, item.point.z);
    case AcDbDxfItem::kId: return mine.id == item.id;
    case AcDbDxfItem::kInt16:
    case AcDbDxfItem::kInt32:
    case AcDbDxfItem::kBool: return mine.integer == item.integer;
    default: return mine.text == item.text;
    }
}

std::int64_t flagsOf(const std::vector<DxfGroup>& groups) {
    std::int64_t flags = 0;
    for (const DxfGroup& group : groups)
        if (group.code == kFlags) readDxfInteger(group.value, flags);
    return flags;
}

// "LINE", "3DFACE", "ACAD_TABLE".
bool isKind(std::string_view type) {
    const auto isLetter = [](char c) { return c >= 'A' && c <= 'Z'; };
    return std::ranges::any_of(type, isLetter) && std::ranges::all_of(type, [&](char c) {
               return isLetter(c) || (c >= '0' && c <= '9') || c == '_';
           });
}

} // namespace

std::unique_ptr<AcDbEntity> DxfDrawingReader::makeEntity(const Object& object) {
    const auto [entry, isNew] = m_classes.try_emplace(object.type, nullptr);
    if (isNew) {
        AcRxClass* const found = AcRxClassRegistry::instance().atDxfName(object.type);
        const bool isProxy = found == AcDbProxyEntity::desc(); // as others have them it is kept
        if (found && !isProxy && found->isDerivedFrom(AcDbEntity::desc())) entry->second = found;
    }
    if (!entry->second) return std::make_unique<AcDbForeignEntity>(object.type);
    std::unique_ptr<AcRxObject> made(entry->second->create());
    auto* const entity = AcDbEntity::cast(made.get());
    if (entity) made.release();
    return std::unique_ptr<AcDbEntity>(entity);
}

// False, and told, when the object does not take its groups.
bool DxfDrawingReader::fill(AcDbObject& object, const Object& from) {
    m_filer.start(from.groups);
    Acad::ErrorStatus status = Acad::eOk;
    std::string reason;
    try {
        status = object.dxfInFields(&m_filer);
        if (status == Acad::eOk) status = m_filer.filerStatus();
        if (status != Acad::eOk) reason = acadErrorStatusText(status);
    } catch (const std::exception& failure) { // what a module's class raises
        reason = failure.what();
    }
    if (!m_filer.expected().empty())
        problem(m_filer.line(), fmt::format("{} was expected in {}", m_filer.expected(), from.type));
    else if (!reason.empty())
        problem(from.line, fmt::format("{} cannot be read ({})", from.type, reason));
    return reason.empty();
}

void DxfDrawingReader::readEntity(Object& object, AcDbObjectId block) {
    if (!isKind(object.type)) return problem(object.line, "a kind of entity was expected");
    std::unique_ptr<AcDbEntity> entity = makeEntity(object);
    if (!entity) return leaveOut(object.type);
    if (object.type == "POLYLINE") {
        const std::int64_t flags = flagsOf(object.groups);
        if ((flags & kPolyline3d) != 0)
            entity = std::make_unique<AcDb3dPolyline>();
        else if ((flags & kMeshes) != 0)
            entity = std::make_unique<AcDbForeignEntity>(object.type);
        return readVertices(std::move(entity), object, block);
    }
    if (object.type == "SEQEND") return; // behind attributes that stood alone
    if (object.type == "ATTRIB" || object.type == "VERTEX" || object.type == "BLOCK" ||
        object.type == "ENDBLK") {
        problem(object.line, fmt::format("{} stands alone", object.type));
        return leaveOut(object.type);
    }
    if (!fill(*entity, object)) return leaveOut(object.type);
    if (!object.xdata.empty()) completeFromRecord(entity, object);
    const bool isReference = entity->isKindOf(AcDbBlockReference::desc());
    const bool isKept = entity->isA() == AcDbForeignEntity::desc();
    const AcDbObjectId id = append(std::move(entity), object, block);
    if (isKept && !id.isNull()) ++m_report.kept[object.type];
    if (isReference && object.isFollowed && !id.isNull()) readAttributes(id);
}

AcDbObjectId DxfDrawingReader::append(std::unique_ptr<AcDbEntity> entity, const Object& object,
                                      AcDbObjectId blockId) {
    openBlock(blockId);
    AcDbObjectId id;
    const Acad::ErrorStatus status =
        m_openBlock ? m_openBlock->appendAcDbEntity(id, entity.get()) : Acad::eNotOpenForWrite;
    if (status != Acad::eOk) {
        problem(object.line,
                fmt::format("{} cannot be taken in ({})", object.type, acadErrorStatusText(status)));
        leaveOut(object.type);
        return {};
    }
    AcDbEntity* const appended = entity.release();
    setXData(*appended, object);
    appended->close();
    m_handles.note(object.handle, id);
    noteExtension(object, id);
    ++m_report.entities;
    return id;
}

// It stays open until another one's turn comes: opening files its state.
void DxfDrawingReader::openBlock(AcDbObjectId block) {
    if (m_openBlock && m_openBlock->objectId() == block) return;
    closeBlock();
    if (acdbOpenObject(m_openBlock, block, AcDb::kForWrite) != Acad::eOk) m_openBlock = nullptr;
}

void DxfDrawingReader::closeBlock() {
    if (m_openBlock) m_openBlock->close();
    m_openBlock = nullptr;
}

// Points that a fit or a spline has put in between go; they come again.
void DxfDrawingReader::readVertices(std::unique_ptr<AcDbEntity> entity, const Object& head,
                                    AcDbObjectId block) {
    auto* const polyline = AcDb2dPolyline::cast(entity.get());
    const bool isFilled = fill(*entity, head);
    const AcGeVector3d normal = polyline ? polyline->normal() : AcGeVector3d::kZAxis;
    AcGePoint3dArray points;
    AcGeDoubleArray bulges;
    std::vector<AcDb3dPolyline::Vertex> vertices;
    Object vertex;
    while (nextObject(vertex)) {
        if (vertex.type == "SEQEND") break;
        if (vertex.type != "VERTEX") { // the end mark is missing
            m_object = std::move(vertex);
            m_hasObject = true;
            break;
        }
        const std::int64_t flags = flagsOf(vertex.groups);
        if (polyline && (flags & (kVertexByFit | kVertexBySpline)) != 0) continue;
        AcGePoint3d point;
        double bulge = 0.0;
        AcDbDxfItem item;
        m_filer.start(vertex.groups);
        while (m_filer.readItem(item) == Acad::eOk) {
            if (item.code == AcDb::kDxfXCoord) point = item.point;
            if (item.code == 42) bulge = item.real;
        }
        if (!m_filer.expected().empty())
            problem(m_filer.line(), m_filer.expected() + " was expected in VERTEX");
        vertices.push_back({point, static_cast<int>(flags & 0xFF)});
        if (polyline) point.z = polyline->elevation();
        points.push_back(planeToWorld(point, normal));
        bulges.push_back(bulge);
    }
    if (auto* const inSpace = AcDb3dPolyline::cast(entity.get()))
        inSpace->setVertices(vertices);
    else if (polyline)
        polyline->appendVertices(points, bulges);
    else
        return leaveOut("POLYLINE mesh");
    if (!isFilled) return leaveOut(head.type);
    append(std::move(entity), head, block);
}

void DxfDrawingReader::readAttributes(AcDbObjectId reference) {
    Object object;
    while (nextObject(object)) {
        if (object.type == "SEQEND") return;
        if (object.type != "ATTRIB") {
            m_object = std::move(object);
            m_hasObject = true;
            return;
        }
        auto attribute = std::make_unique<AcDbAttribute>();
        if (!fill(*attribute, object)) {
            leaveOut(object.type);
            continue;
        }
        const AcDbObjectPointer<AcDbBlockReference> owner(reference, AcDb::kForWrite);
        AcDbObjectId id;
        if (!owner || owner->appendAttribute(id, attribute.get()) != Acad::eOk) {
            leaveOut(object.type);
            continue;
        }
        AcDbAttribute* const appended = attribute.release();
        setXData(*appended, object);
        appended->close();
        m_handles.note(object.handle, id);
        ++m_report.entities;
    }
}

// Takes the record out of the extended data; empty when there is none for the class.
std::string DxfDrawingReader::takeRecord(Object& object, const std::string& className) const {
    std::string record;
    std::vector<DxfGroup> others;
    bool isRecord = false;
    bool isOfClass = false;
    for (const DxfGroup& group : object.xdata) {
        if (group.code == AcDb::kDxfRegAppName) isRecord = group.value == kDxfRecordApplication;
        if (!isRecord) {
            others.push_back(group);
            continue;
        }
        if (group.code == kDxfRecordClass) isOfClass = group.value == className;
        if (group.code == kDxfRecordBytes && isOfClass) record += dxfBytes(group.value);
    }
    object.xdata = std::move(others);
    return record;
}

// The groups were read before and count where another program has changed them.
void DxfDrawingReader::completeFromRecord(std::unique_ptr<AcDbEntity>& entity, Object& object) {
    const std::string items = takeRecord(object, entity->isA()->name());
    if (items.empty()) return;
    std::string translated;
    RecordReader translator(AcDb::kFileFiler, m_filer.handles(), items);
    if (translator.readItems(translated) != Acad::eOk) return;
    RecordWriter base(AcDb::kFileFiler);
    if (entity->dwgOutFields(&base) != Acad::eOk) return;
    std::unique_ptr<AcDbObject> whole = emptyLike(*entity);
    auto* const complete = AcDbEntity::cast(whole.get());
    if (!complete) return;
    const std::string record = base.record().substr(0, base.endOfBase()) + translated;
    RecordReader reader(AcDb::kFileFiler, &m_database, record);
    if (complete->dwgInFields(&reader) != Acad::eOk || reader.filerStatus() != Acad::eOk)
        return problem(object.line,
                       fmt::format("the record of {} cannot be read, its groups remain", object.type));
    whole.release();
    std::unique_ptr<AcDbEntity> completed(complete);
    Object changed;
    changed.type = object.type;
    changed.line = object.line;
    changed.groups = changedGroups(*completed, object);
    if (!changed.groups.empty()) fill(*completed, changed);
    entity = std::move(completed);
}

// What the file says otherwise than the entity does: groups that another program has changed, with the marker
// of the class in front of them.
std::vector<DxfGroup> DxfDrawingReader::changedGroups(const AcDbEntity& entity, const Object& object) {
    DxfListWriter writer(&m_database);
    entity.dxfOutFields(&writer);
    const ResbufPtr list = writer.take();
    const resbuf* own = list.get();
    const auto isMarker = [](int code, std::string_view text) {
        return code == AcDb::kDxfSubclass && text != "AcDbEntity";
    };
    while (own && !(own->restype == AcDb::kDxfSubclass && isMarker(own->restype, textOf(*own))))
        own = own->rbnext;
    std::vector<DxfGroup> changed;
    AcDbDxfItem item;
    m_filer.start(object.groups);
    bool isOwn = false;
    for (std::size_t before = 0; m_filer.readItem(item) == Acad::eOk; before = m_filer.position()) {
        isOwn = isOwn || isMarker(item.code, item.text);
        if (!isOwn || !own) continue;
        const bool isSame = own->restype == item.code && isSameValue(*own, item);
        if (isMarker(item.code, item.text) ? changed.empty() : !isSame)
            changed.insert(changed.end(), object.groups.begin() + static_cast<std::ptrdiff_t>(before),
                           object.groups.begin() + static_cast<std::ptrdiff_t>(m_filer.position()));
        own = own->rbnext;
    }
    return changed.size() > 1 ? changed : std::vector<DxfGroup>();
}

// An application that the file does not list is listed.
void DxfDrawingReader::setXData(AcDbObject& object, const Object& from) {
    if (from.xdata.empty()) return;
    m_filer.start(from.xdata);
    ResbufBuilder chain;
    AcDbDxfItem item;
    while (m_filer.readItem(item) == Acad::eOk) {
        if (item.code == AcDb::kDxfRegAppName &&
            AcDbObjectAccess::findRecord(m_database.regAppTableId(), item.text).isNull()) {
            const AcDbObjectPointer<AcDbSymbolTable> table(m_database.regAppTableId(), AcDb::kForWrite);
            AcDbObjectPointer<AcDbRegAppTableRecord> record;
            record.create();
            if (record->setName(item.text) == Acad::eOk) table->add(record.object());
        }
        addDxfItem(chain, item);
    }
    const ResbufPtr data = chain.take();
    const Acad::ErrorStatus status =
        m_filer.expected().empty() ? object.setXData(data.get()) : Acad::eInvalidInput;
    if (status != Acad::eOk)
        problem(from.xdata.front().line, fmt::format("extended data of {} cannot be read", from.type));
}

} // namespace veldrin
