#include "drawing/AcDbBlockTable.h"
#include "drawing/AcDbDatabase.h"
#include "drawing/AcDbDictionary.h"
#include "drawing/AcDbObjectAccess.h"
#include "drawing/DxfListFiler.h"
#include "drawing/SymbolNames.h"
#include "files/DxfDrawingWriter.h"
#include "files/dxf_dimension_styles.h"
#include "files/dxf_records.h"

namespace veldrin {

namespace {

constexpr const char* kRecordMarker = "AcDbSymbolTableRecord";

} // namespace

void DxfDrawingWriter::writeTables() {
    section("TABLES");
    writeViewports();
    writeRecords("LTYPE", m_database.linetypeTableId(), m_linetypes);
    writeRecords("LAYER", m_database.layerTableId(), m_layers);
    writeRecords("STYLE", m_database.textStyleTableId(), m_styles);
    writeEmptyTable("VIEW");
    writeEmptyTable("UCS");
    writeApplications();
    writeDimensionStyles();
    writeBlockRecords();
    m_out.symbol(0, "ENDSEC");
}

void DxfDrawingWriter::beginTable(const char* name, std::uint64_t handle, std::size_t count) {
    m_out.symbol(0, "TABLE");
    m_out.symbol(2, name);
    m_out.handle(5, handle);
    m_out.handle(330, 0);
    m_out.symbol(100, "AcDbSymbolTable");
    m_out.integer(70, static_cast<std::int64_t>(count));
}

// One view, of all that there is.
void DxfDrawingWriter::writeViewports() {
    constexpr double kAspect = 1.5;
    const AcGePoint3d low = m_extents.isEmpty() ? AcGePoint3d() : m_extents.minPoint();
    const AcGePoint3d high = m_extents.isEmpty() ? AcGePoint3d(12.0, 9.0, 0.0) : m_extents.maxPoint();
    const std::uint64_t table = newHandle();
    beginTable("VPORT", table, 1);
    begin("VPORT", newHandle(), table);
    m_out.symbol(100, kRecordMarker);
    m_out.symbol(100, "AcDbViewportTableRecord");
    m_out.symbol(2, "*Active");
    m_out.integer(70, 0);
    m_out.point(10, AcGePoint2d(0.0, 0.0)); // the window
    m_out.point(11, AcGePoint2d(1.0, 1.0));
    m_out.point(12, AcGePoint2d((low.x + high.x) / 2.0, (low.y + high.y) / 2.0)); // centre of the view
    m_out.point(13, AcGePoint2d(0.0, 0.0));                                       // snap and grid
    m_out.point(14, AcGePoint2d(10.0, 10.0));
    m_out.point(15, AcGePoint2d(10.0, 10.0));
    m_out.point(16, AcGePoint3d(0.0, 0.0, 1.0)); // direction and target
    m_out.point(17, AcGePoint3d());
    m_out.real(40, std::max({high.y - low.y, (high.x - low.x) / kAspect, 1.0})); // height
    m_out.real(41, kAspect);
    m_out.real(42, 50.0); // lens, clipping, angles: of no meaning from above
    for (const int code : {43, 44, 50, 51}) m_out.real(code, 0.0);
    m_out.integer(71, 0);
    m_out.integer(72, 100);
    m_out.integer(73, 1);
    m_out.integer(74, 3);
    for (const int code : {75, 76, 77, 78}) m_out.integer(code, 0);
    m_out.symbol(0, "ENDTAB");
}

void DxfDrawingWriter::writeRecords(const char* name, AcDbObjectId table,
                                    const std::vector<AcDbObjectId>& records) {
    beginTable(name, table.handle().value(), records.size());
    for (const AcDbObjectId id : records) {
        const AcDbObjectPointer<AcDbSymbolTableRecord> record(id);
        if (!record) continue;
        writeObject(*record, name);
        if (table == m_database.layerTableId()) m_out.handle(390, m_frame.placeholder);
        writeXData(*record);
    }
    m_out.symbol(0, "ENDTAB");
}

// Among them that of the records that go along.
void DxfDrawingWriter::writeApplications() {
    const AcDbObjectId table = m_database.regAppTableId();
    if (m_explodes || !AcDbObjectAccess::findRecord(table, kDxfRecordApplication).isNull())
        return writeRecords("APPID", table, m_applications);
    beginTable("APPID", table.handle().value(), m_applications.size() + 1);
    for (const AcDbObjectId id : m_applications)
        if (const AcDbObjectPointer<AcDbSymbolTableRecord> record(id); record) writeObject(*record, "APPID");
    begin("APPID", newHandle(), table.handle().value());
    m_out.symbol(100, kRecordMarker);
    m_out.symbol(100, "AcDbRegAppTableRecord");
    m_out.symbol(2, kDxfRecordApplication);
    m_out.integer(70, 0);
    m_out.symbol(0, "ENDTAB");
}

void DxfDrawingWriter::writeEmptyTable(const char* name) {
    beginTable(name, newHandle(), 0);
    m_out.symbol(0, "ENDTAB");
}

// The usual one, and those that came from other programs.
void DxfDrawingWriter::writeDimensionStyles() {
    constexpr const char* kUsual = "Standard";
    std::map<std::string, AcDbObjectId> styles{{kUsual, AcDbObjectId()}};
    AcDbObjectId id;
    if (const AcDbObjectPointer<AcDbDictionary> named(m_database.namedObjectsDictionaryId());
        named && named->getAt(kDimensionStyles, id) == Acad::eOk)
        if (const AcDbObjectPointer<AcDbDictionary> kept(id); kept)
            for (const auto& [name, record] : kept->entries())
                styles[sameSymbolName(name, kUsual) ? kUsual : name] = record;
    const std::uint64_t table = newHandle();
    beginTable("DIMSTYLE", table, styles.size());
    m_out.symbol(100, "AcDbDimStyleTable");
    for (const auto& [name, record] : styles) writeDimensionStyle(name, record, table);
    m_out.symbol(0, "ENDTAB");
}

void DxfDrawingWriter::writeDimensionStyle(const std::string& name, AcDbObjectId kept, std::uint64_t table) {
    constexpr int kHandleCode = 105;
    begin("DIMSTYLE", newHandle(), table, kHandleCode);
    m_out.symbol(100, kRecordMarker);
    m_out.symbol(100, "AcDbDimStyleTableRecord");
    m_out.text(2, name);
    const AcDbObjectPointer<AcDbXrecord> record(kept);
    if (!record) return m_out.integer(70, 0);
    const ResbufPtr groups(record->rbChain());
    for (const resbuf* group = groups.get(); group; group = group->rbnext) writeDxfItem(m_filer, *group);
}

void DxfDrawingWriter::writeBlockRecords() {
    beginTable("BLOCK_RECORD", m_database.blockTableId().handle().value(), m_blocks.size());
    for (const AcDbObjectId id : m_blocks) {
        const AcDbObjectPointer<AcDbBlockTableRecord> record(id);
        if (!record) continue;
        writeObject(*record, "BLOCK_RECORD");
        const bool isModel = id == m_database.modelSpaceId();
        m_out.handle(340, isModel ? m_frame.modelLayout : record->isLayout() ? m_frame.paperLayout : 0);
        writeXData(*record);
    }
    m_out.symbol(0, "ENDTAB");
}

} // namespace veldrin
