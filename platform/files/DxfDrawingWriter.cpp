#include "files/DxfDrawingWriter.h"

#include "drawing/AcDbBlockTable.h"
#include "drawing/AcDbDatabase.h"
#include "drawing/AcDbLayerTable.h"
#include "drawing/AcDbLinetypeTable.h"
#include "drawing/AcDbObjectAccess.h"
#include "drawing/AcDbProxyEntity.h"
#include "drawing/SlotTable.h"
#include "files/header_members.h"
#include "graphics/DrawingExtents.h"
#include "runtime/AcRxClass.h"

#include <fmt/format.h>

#include <algorithm>
#include <numbers>
#include <set>

namespace veldrin {

namespace {

std::vector<AcDbObjectId> recordsOf(AcDbObjectId table) {
    const AcDbObjectPointer<AcDbSymbolTable> records(table);
    return records ? records->recordIds() : std::vector<AcDbObjectId>();
}

// Puts some records in front, in this order.
void moveToFront(std::vector<AcDbObjectId>& records, std::initializer_list<AcDbObjectId> first) {
    auto place = records.begin();
    for (const AcDbObjectId id : first) {
        const auto found = std::find(place, records.end(), id);
        if (found == records.end()) continue;
        std::rotate(place, found, found + 1);
        ++place;
    }
}

// A header variable's group, where its kind does not say it.
int headerCode(std::string_view name, int usual) {
    if (name == "ANGBASE") return 50;
    if (name == "CELWEIGHT") return 370;
    if (name == "CLAYER") return 8;
    if (name == "CELTYPE") return 6;
    if (name == "TEXTSTYLE") return 7;
    return usual;
}

} // namespace

DxfDrawingWriter::DxfDrawingWriter(DxfOutput& out, AcDbDatabase& database, bool explodes)
    : m_out(out)
    , m_database(database)
    , m_filer(out, &database)
    , m_explodes(explodes)
    , m_nextHandle(database.handseed().value()) {
    m_frame = {newHandle(), newHandle(), newHandle(), newHandle(), newHandle(), newHandle()};
}

void DxfDrawingWriter::write() {
    findPlaces();
    m_extents = drawnExtents(m_database);
    writeHeader();
    const std::size_t seed = m_out.openHandle(5);
    m_out.symbol(0, "ENDSEC");
    writeClasses();
    writeTables();
    writeBlocks();
    section("ENTITIES");
    writeContents(m_database.modelSpaceId());
    writeContents(m_database.paperSpaceId());
    m_out.symbol(0, "ENDSEC");
    writeObjects();
    m_out.symbol(0, "EOF");
    m_out.setHandle(seed, m_nextHandle);
}

std::vector<std::string> DxfDrawingWriter::losses() const {
    std::vector<std::string> lines;
    for (const auto& [what, count] : m_losses) lines.push_back(fmt::format("{} {}", count, what));
    return lines;
}

// The tables in the order in which they are written: what every drawing has comes first.
void DxfDrawingWriter::findPlaces() {
    m_linetypes = recordsOf(m_database.linetypeTableId());
    moveToFront(m_linetypes, {m_database.byBlockLinetype(), m_database.byLayerLinetype(),
                              m_database.continuousLinetype()});
    m_layers = recordsOf(m_database.layerTableId());
    moveToFront(m_layers, {m_database.layerZero()});
    m_styles = recordsOf(m_database.textStyleTableId());
    moveToFront(m_styles, {m_database.standardTextStyle()});
    m_applications = recordsOf(m_database.regAppTableId());
    m_blocks = recordsOf(m_database.blockTableId());
    moveToFront(m_blocks, {m_database.modelSpaceId(), m_database.paperSpaceId()});
    m_places.byLayer = m_database.byLayerLinetype();
    m_places.byBlock = m_database.byBlockLinetype();
    for (const AcDbObjectId id : m_layers)
        m_places.layers.emplace(id, static_cast<std::uint32_t>(m_places.layers.size()));
    for (const AcDbObjectId id : m_linetypes)
        if (id != m_places.byLayer && id != m_places.byBlock)
            m_places.linetypes.emplace(id, static_cast<std::uint32_t>(m_places.linetypes.size()));
}

void DxfDrawingWriter::section(const char* name) {
    m_out.symbol(0, "SECTION");
    m_out.symbol(2, name);
}

void DxfDrawingWriter::begin(const char* type, std::uint64_t handle, std::uint64_t owner, int handleCode) {
    m_out.symbol(0, type);
    m_out.handle(handleCode, handle);
    m_out.handle(330, owner);
}

void DxfDrawingWriter::writeHeader() {
    const bool isOld = m_out.version() == DxfVersion::kR2000;
    section("HEADER");
    m_out.symbol(9, "$ACADVER");
    m_out.symbol(1, isOld ? "AC1015" : "AC1032");
    m_out.symbol(9, "$DWGCODEPAGE");
    m_out.symbol(3, "ANSI_1252");
    m_out.symbol(9, "$EXTMIN");
    m_out.point(10, m_extents.isEmpty() ? AcGePoint3d(1e20, 1e20, 1e20) : m_extents.minPoint());
    m_out.symbol(9, "$EXTMAX");
    m_out.point(10, m_extents.isEmpty() ? AcGePoint3d(-1e20, -1e20, -1e20) : m_extents.maxPoint());
    writeHeaderMembers();
    m_out.symbol(9, "$HANDSEED");
}

void DxfDrawingWriter::writeHeaderMembers() {
    struct Writer {
        DxfOutput& out;
        std::string_view name;
        void operator()(int value) const { out.integer(70, value); }
        void operator()(std::int16_t value) const { out.integer(headerCode(name, 70), value); }
        void operator()(double value) const {
            const bool isAngle = name == "ANGBASE";
            out.real(headerCode(name, 40), isAngle ? value * 180.0 / std::numbers::pi : value);
        }
        void operator()(AcDbObjectId id) const {
            const auto* record = AcDbSymbolTableRecord::cast(AcDbObjectAccess::object(id));
            out.text(headerCode(name, 2), record && !id.isErased() ? record->getName() : "");
        }
        void operator()(const AcCmColor& color) const { out.integer(62, color.colorIndex()); }
        void operator()(const AcGePoint3d& point) const { out.point(10, point); }
        void operator()(const AcGeVector3d& v) const { out.point(10, AcGePoint3d(v.x, v.y, v.z)); }
    };
    const HeaderVariables& header = m_database.header();
    for (const HeaderMember& row : headerMembers()) {
        m_out.symbol(9, std::string("$") + row.name);
        std::visit([&](auto member) { Writer{m_out, row.name}(header.*member); }, row.member);
    }
}

void DxfDrawingWriter::writeClass(const std::string& dxfName, const std::string& name,
                                  const std::string& application, int flags, bool isEntity) {
    m_out.symbol(0, "CLASS");
    m_out.text(1, dxfName);
    m_out.text(2, name);
    m_out.text(3, application);
    m_out.integer(90, flags);
    if (m_out.version() != DxfVersion::kR2000) m_out.integer(91, 0);
    m_out.integer(280, 0);
    m_out.integer(281, isEntity ? 1 : 0);
}

// The classes of modules, and those of the file's own frame that its version does not take for granted.
void DxfDrawingWriter::writeClasses() {
    constexpr int kFirstClass = 500;
    section("CLASSES");
    int number = kFirstClass;
    if (m_out.version() == DxfVersion::kR2000) {
        constexpr const char* kFrame = "ObjectDBX Classes";
        writeClass("ACDBDICTIONARYWDFLT", "AcDbDictionaryWithDefault", kFrame, 0, false);
        writeClass("ACDBPLACEHOLDER", "AcDbPlaceHolder", kFrame, 0, false);
        writeClass("LAYOUT", "AcDbLayout", kFrame, 0, false);
        number += 3;
    }
    std::set<const AcRxClass*> written;
    const AcRxClass* last = nullptr;
    const SlotTable& slots = m_database.slots();
    for (std::uint32_t slot = 1; slot < slots.size(); ++slot) {
        if (!slots.holds(slot) || slots[slot].erased) continue;
        const AcDbObject& object = *slots[slot].object;
        if (object.isA() == last) continue;
        if (const ProxyContent* proxy = proxyContentOf(object)) {
            if (!m_proxyClasses.try_emplace(proxy->className, number).second) continue;
            writeClass(proxy->dxfName, proxy->className, proxy->appName, 0,
                       object.isKindOf(AcDbEntity::desc()));
            ++number;
            continue;
        }
        const AcRxClass* const rxClass = object.isA();
        last = rxClass;
        const bool isHosts = rxClass->appName() == AcDbEntity::desc()->appName();
        const bool isEntity = rxClass->isDerivedFrom(AcDbEntity::desc());
        if (isHosts || (isEntity && m_explodes) || !written.insert(rxClass).second) continue;
        writeClass(rxClass->dxfName(), rxClass->name(), rxClass->appName(), rxClass->proxyFlags(), isEntity);
        ++number;
    }
    m_out.symbol(0, "ENDSEC");
}

} // namespace veldrin
