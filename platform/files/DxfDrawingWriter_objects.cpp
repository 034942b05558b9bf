#include "drawing/AcDbDatabase.h"
#include "drawing/AcDbDictionary.h"
#include "drawing/EntityList.h"
#include "files/DxfDrawingWriter.h"
#include "files/dxf_dimension_styles.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>

namespace veldrin {

namespace {

// What is written otherwise; the first three are the file's own.
constexpr std::array<const char*, 4> kFrameEntries = {"ACAD_GROUP", "ACAD_LAYOUT", "ACAD_PLOTSTYLENAME",
                                                      kDimensionStyles};

void beginDictionary(DxfOutput& out) {
    out.symbol(100, "AcDbDictionary");
    out.integer(281, 1);
}

void entry(DxfOutput& out, const std::string& name, std::uint64_t handle) {
    out.text(3, name);
    out.handle(350, handle);
}

} // namespace

void DxfDrawingWriter::writeObjects() {
    section("OBJECTS");
    writeRootDictionary();
    const std::uint64_t root = m_database.namedObjectsDictionaryId().handle().value();
    begin("DICTIONARY", m_frame.groups, root);
    beginDictionary(m_out);
    begin("DICTIONARY", m_frame.layouts, root);
    beginDictionary(m_out);
    entry(m_out, "Layout1", m_frame.paperLayout);
    entry(m_out, "Model", m_frame.modelLayout);
    begin("ACDBDICTIONARYWDFLT", m_frame.plotStyles, root);
    beginDictionary(m_out);
    entry(m_out, "Normal", m_frame.placeholder);
    m_out.symbol(100, "AcDbDictionaryWithDefault");
    m_out.handle(340, m_frame.placeholder);
    begin("ACDBPLACEHOLDER", m_frame.placeholder, m_frame.plotStyles);
    writeLayout("Model", m_frame.modelLayout, true);
    writeLayout("Layout1", m_frame.paperLayout, false);
    for (std::size_t i = 0; i < m_dictionaries.size(); ++i) writeDictionary(m_dictionaries[i]); // it may grow
    m_out.symbol(0, "ENDSEC");
}

void DxfDrawingWriter::writeRootDictionary() {
    const AcDbObjectPointer<AcDbDictionary> named(m_database.namedObjectsDictionaryId());
    begin("DICTIONARY", m_database.namedObjectsDictionaryId().handle().value(), 0);
    beginDictionary(m_out);
    entry(m_out, kFrameEntries[0], m_frame.groups);
    entry(m_out, kFrameEntries[1], m_frame.layouts);
    entry(m_out, kFrameEntries[2], m_frame.plotStyles);
    if (!named) return;
    std::vector<AcDbObjectId> own;
    for (const auto& [name, id] : named->entries()) {
        if (id.isErased() ||
            std::find(kFrameEntries.begin(), kFrameEntries.end(), name) != kFrameEntries.end())
            continue;
        entry(m_out, name, id.handle().value());
        own.push_back(id);
    }
    for (const AcDbObjectId id : own) writeDictionaryObject(id);
}

// What hangs in a dictionary: another one, or data. The file's order of objects does not matter.
void DxfDrawingWriter::writeDictionaryObject(AcDbObjectId id) {
    const AcDbObjectPointer<AcDbObject> object(id);
    if (!object) return;
    if (AcDbDictionary::cast(object.object()))
        m_dictionaries.push_back(id);
    else if (object->isKindOf(AcDbXrecord::desc()))
        writeObject(*object, "XRECORD");
    else
        ++m_losses[fmt::format("{} in dictionaries cannot be written.", dxfNameOf(*object))];
}

void DxfDrawingWriter::writeDictionary(AcDbObjectId id) {
    const AcDbObjectPointer<AcDbDictionary> dictionary(id);
    if (!dictionary) return;
    writeObject(*dictionary, "DICTIONARY");
    for (const auto& [name, held] : dictionary->entries())
        if (!held.isErased()) writeDictionaryObject(held);
}

void DxfDrawingWriter::writeLayout(const char* name, std::uint64_t handle, bool isModel) {
    constexpr int kModelPlot = 1024;
    const AcDbExtents extents = isModel ? m_extents : AcDbExtents();
    const AcGePoint3d low = extents.isEmpty() ? AcGePoint3d() : extents.minPoint();
    const AcGePoint3d high = extents.isEmpty() ? AcGePoint3d() : extents.maxPoint();
    const AcDbObjectId block = isModel ? m_database.modelSpaceId() : m_database.paperSpaceId();
    begin("LAYOUT", handle, m_frame.layouts);
    m_out.symbol(100, "AcDbPlotSettings");
    m_out.text(1, "");
    m_out.symbol(2, "none_device");
    m_out.symbol(4, "");
    m_out.symbol(6, "");
    for (int code = 40; code <= 49; ++code) m_out.real(code, 0.0);
    m_out.real(140, 0.0);
    m_out.real(141, 0.0);
    m_out.real(142, 1.0);
    m_out.real(143, 1.0);
    m_out.integer(70, isModel ? kModelPlot : 0);
    m_out.integer(72, 1);
    m_out.integer(73, 0);
    m_out.integer(74, 5);
    m_out.symbol(7, "");
    m_out.integer(75, 16);
    m_out.real(147, 1.0);
    m_out.real(148, 0.0);
    m_out.real(149, 0.0);
    m_out.symbol(100, "AcDbLayout");
    m_out.symbol(1, name);
    m_out.integer(70, 1);
    m_out.integer(71, isModel ? 0 : 1);
    m_out.point(10, AcGePoint2d(0.0, 0.0)); // limits
    m_out.point(11, AcGePoint2d(420.0, 297.0));
    m_out.point(12, AcGePoint3d()); // base
    m_out.point(14, low);
    m_out.point(15, high);
    m_out.real(146, 0.0);
    m_out.point(13, AcGePoint3d()); // its coordinate system
    m_out.point(16, AcGePoint3d(1.0, 0.0, 0.0));
    m_out.point(17, AcGePoint3d(0.0, 1.0, 0.0));
    m_out.integer(76, 0);
    m_out.handle(330, block.handle().value());
}

} // namespace veldrin
