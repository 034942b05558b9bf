#include "drawing/AcDb2dPolyline.h"
#include "drawing/AcDb3dPolyline.h"
#include "drawing/AcDbAttribute.h"
#include "drawing/AcDbBlockBegin.h"
#include "drawing/AcDbBlockReference.h"
#include "drawing/AcDbBlockTable.h"
#include "drawing/AcDbDatabase.h"
#include "drawing/AcDbDictionary.h"
#include "drawing/AcDbObjectAccess.h"
#include "drawing/AcDbProxyEntity.h"
#include "drawing/DxfListFiler.h"
#include "drawing/EntityList.h"
#include "drawing/RecordFiler.h"
#include "drawing/dxf_groups.h"
#include "files/DxfDrawingWriter.h"
#include "files/dxf_records.h"
#include "files/plain_entities.h"
#include "runtime/AcRxClass.h"

#include <fmt/format.h>

namespace veldrin {

namespace {

constexpr const char* kEntityMarker = "AcDbEntity";
constexpr int kPictureSize = 92;
constexpr int kPictureSizeSince2013 = 160;
constexpr int kPictureBytes = 310;
constexpr int kControl = 102;
constexpr int kVertexByFit = 1;
constexpr int kVertexOfFrame = 16;

} // namespace

void DxfDrawingWriter::writeBlocks() {
    section("BLOCKS");
    for (const AcDbObjectId id : m_blocks) writeBlock(id);
    m_out.symbol(0, "ENDSEC");
}

void DxfDrawingWriter::writeBlock(AcDbObjectId id) {
    const AcDbObjectPointer<AcDbBlockTableRecord> block(id);
    if (!block) return;
    const auto writeMark = [&](AcDbObjectId mark, const char* type) {
        if (const AcDbObjectPointer<AcDbEntity> entity(mark); entity) writeObject(*entity, type);
    };
    writeMark(block->beginId(), "BLOCK");
    if (!block->isLayout()) writeContents(id);
    writeMark(block->endId(), "ENDBLK");
}

void DxfDrawingWriter::writeContents(AcDbObjectId block) {
    const auto* record = AcDbBlockTableRecord::cast(AcDbObjectAccess::object(block));
    for (const AcDbObjectId id : record->entityIds())
        if (!id.isErased()) writeEntity(id);
}

void DxfDrawingWriter::writeEntity(AcDbObjectId id) {
    const AcDbObjectPointer<AcDbEntity> entity(id);
    if (!entity) {
        ++m_losses["entities are being changed and were left out."];
        return;
    }
    if (const auto* proxy = AcDbProxyEntity::cast(entity.object()))
        return m_explodes ? writeExploded(*entity) : writeProxy(*entity, proxy->content());
    const bool isHosts = entity->isA()->appName() == AcDbEntity::desc()->appName();
    if (isHosts)
        writePlain(*entity);
    else if (m_explodes)
        writeExploded(*entity);
    else {
        m_filer.setEntityTail([&] { writePicture(*entity); });
        writeObject(*entity, dxfNameOf(*entity));
        writeXData(*entity);
        writeRecord(*entity);
    }
}

void DxfDrawingWriter::writePlain(AcDbEntity& entity) {
    writeObject(entity, dxfNameOf(entity));
    writeXData(entity);
    if (const auto* polyline = AcDb2dPolyline::cast(&entity))
        writeVertices(*polyline);
    else if (const auto* inSpace = AcDb3dPolyline::cast(&entity))
        writeVertices(*inSpace);
    else if (const auto* reference = AcDbBlockReference::cast(&entity))
        writeAttributes(*reference);
}

// Handle and owner of an object that is in the drawing; one that stands in for another for this file alone
// has new ones, and the owner of that.
void DxfDrawingWriter::writeObject(const AcDbObject& object, const std::string& type) {
    m_out.symbol(0, type);
    const std::uint64_t handle = object.handle().value();
    m_out.handle(5, handle == 0 ? newHandle() : handle);
    writeExtensionMark(object);
    m_out.handle(330, object.ownerId().handle().value());
    if (object.dxfOutFields(&m_filer) != Acad::eOk)
        ++m_losses[fmt::format("{} give no groups of their own.", type)];
    m_filer.flushEntityTail();
    m_filer.resetFilerStatus();
}

void DxfDrawingWriter::writeExtensionMark(const AcDbObject& object) {
    const AcDbObjectId dictionary = AcDbObjectAccess::extensionDictionary(object);
    if (dictionary.isErased()) return;
    m_dictionaries.push_back(dictionary);
    m_out.symbol(kControl, "{ACAD_XDICTIONARY");
    m_out.handle(360, dictionary.handle().value());
    m_out.symbol(kControl, "}");
}

void DxfDrawingWriter::writeXData(const AcDbObject& object) {
    const ResbufPtr data(object.xData());
    for (const resbuf* item = data.get(); item; item = item->rbnext) writeDxfItem(m_filer, *item);
}

void DxfDrawingWriter::record(AcDbEntity& entity) {
    m_recorder.restart();
    drawEntity(entity, m_recorder);
}

void DxfDrawingWriter::writePicture(AcDbEntity& entity) {
    record(entity);
    const std::string picture = dxfPicture(m_list, m_places);
    if (picture.empty()) return;
    m_out.integer(m_out.version() == DxfVersion::kR2000 ? kPictureSize : kPictureSizeSince2013,
                  static_cast<std::int64_t>(picture.size()));
    m_out.bytes(kPictureBytes, picture);
}

// A class may tell less by its groups than it files. So that nothing is lost on the way back here, the whole
// record goes along as extended data, of which other programs keep what they do not know.
void DxfDrawingWriter::writeRecord(const AcDbEntity& entity) {
    RecordWriter writer(AcDb::kFileFiler);
    const bool isWhole = entity.dwgOutFields(&writer) == Acad::eOk && writer.filerStatus() == Acad::eOk;
    const std::string_view items = std::string_view(writer.record()).substr(isWhole ? writer.endOfBase() : 0);
    if (!isWhole || items.size() > kLargestDxfRecord) {
        ++m_losses[fmt::format("{}: too large to go along whole, the groups of its class remain.",
                               entity.isA()->name())];
        return;
    }
    m_out.symbol(AcDb::kDxfRegAppName, kDxfRecordApplication);
    m_out.text(kDxfRecordClass, entity.isA()->name());
    m_out.bytes(kDxfRecordBytes, items);
}

// The class is not here to tell its groups, and its record means nothing to others: the picture is what
// remains.
void DxfDrawingWriter::writeProxy(AcDbEntity& entity, const ProxyContent& content) {
    constexpr int kProxyClass = 498;
    ++m_losses[fmt::format("{}: the class is not loaded, others get the picture alone.", content.className)];
    const bool isOld = m_out.version() == DxfVersion::kR2000;
    begin("ACAD_PROXY_ENTITY", entity.handle().value(), entity.ownerId().handle().value());
    m_out.symbol(100, kEntityMarker);
    m_out.text(8, entity.layer());
    m_out.symbol(100, "AcDbProxyEntity");
    m_out.integer(90, kProxyClass);
    m_out.integer(91, m_proxyClasses[content.className]);
    if (isOld) {
        m_out.integer(95, 21); // as the version of the drawing counts
        m_out.integer(70, 1);
    } else {
        m_out.integer(71, 33);
        m_out.integer(97, 0);
        m_out.integer(70, 1);
    }
    writePicture(entity);
    m_out.integer(isOld ? 93 : 161, 0); // bits of data
    m_out.integer(94, 0);
    writeXData(entity);
}

void DxfDrawingWriter::writeSequenceEnd(const AcDbEntity& owner, std::uint64_t handle,
                                        std::uint64_t ownerHandle) {
    begin("SEQEND", handle, ownerHandle);
    m_out.symbol(100, kEntityMarker);
    m_out.text(8, owner.layer());
}

// Of a fitted one every second vertex is the fit's.
void DxfDrawingWriter::writeVertices(const AcDb2dPolyline& polyline) {
    const bool isFitted = polyline.polyType() == AcDb::k2dFitCurvePoly;
    const bool isFrame = !isFitted && polyline.polyType() != AcDb::k2dSimplePoly;
    const bool hasFit = isFitted && polyline.vertices().size() > polyline.definition().size();
    const std::uint64_t own = polyline.handle().value();
    const std::uint64_t owner = own == 0 ? m_nextHandle - 1 : own;
    const AcGePoint3dArray& points = isFrame ? polyline.definition() : polyline.vertices();
    for (std::size_t i = 0; i < points.size(); ++i) {
        begin("VERTEX", newHandle(), owner);
        m_out.symbol(100, kEntityMarker);
        m_out.text(8, polyline.layer());
        m_out.symbol(100, "AcDbVertex");
        m_out.symbol(100, "AcDb2dVertex");
        m_out.point(10, worldToPlane(points[i], polyline.normal()));
        const double bulge = isFrame || i >= polyline.bulges().size() ? 0.0 : polyline.bulges()[i];
        if (bulge != 0.0) m_out.real(42, bulge);
        m_out.integer(70, hasFit && i % 2 == 1 ? kVertexByFit : isFrame ? kVertexOfFrame : 0);
    }
    writeSequenceEnd(polyline, newHandle(), owner);
}

void DxfDrawingWriter::writeVertices(const AcDb3dPolyline& polyline) {
    const std::uint64_t owner = polyline.handle().value();
    for (const AcDb3dPolyline::Vertex& vertex : polyline.vertices()) {
        begin("VERTEX", newHandle(), owner);
        m_out.symbol(100, kEntityMarker);
        m_out.text(8, polyline.layer());
        m_out.symbol(100, "AcDbVertex");
        m_out.symbol(100, "AcDb3dPolylineVertex");
        m_out.point(10, vertex.point);
        m_out.integer(70, vertex.flags);
    }
    writeSequenceEnd(polyline, newHandle(), owner);
}

void DxfDrawingWriter::writeAttributes(const AcDbBlockReference& reference) {
    const std::vector<AcDbObjectId> attributes = reference.attributeIds();
    if (attributes.empty()) return;
    for (const AcDbObjectId id : attributes) {
        const AcDbObjectPointer<AcDbAttribute> attribute(id);
        if (!attribute) continue;
        writeObject(*attribute, "ATTRIB");
        writeXData(*attribute);
    }
    const AcDbObjectId end = reference.sequenceEndId();
    writeSequenceEnd(reference, end.isErased() ? newHandle() : end.handle().value(),
                     reference.handle().value());
}

void DxfDrawingWriter::writeExploded(AcDbEntity& entity) {
    record(entity);
    std::vector<std::unique_ptr<AcDbEntity>> pieces = plainEntities(m_list);
    for (const auto& piece : pieces) {
        AcDbObjectAccess::setOwner(*piece, entity.ownerId());
        writePlain(*piece);
    }
}

} // namespace veldrin
