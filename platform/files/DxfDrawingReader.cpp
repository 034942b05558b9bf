#include "files/DxfDrawingReader.h"

#include "drawing/AcDbBlockTable.h"
#include "drawing/AcDbDictionary.h"
#include "drawing/AcDbObjectAccess.h"
#include "drawing/AcDbSymbolTable.h"
#include "drawing/DxfListFiler.h"
#include "drawing/SymbolNames.h"
#include "drawing/acdb.h"
#include "drawing/block_copies.h"
#include "files/dxf_dimension_styles.h"
#include "runtime/AcRxClass.h"

#include <algorithm>
#include <array>
#include <fmt/format.h>
#include <utility>

namespace veldrin {

namespace {

constexpr int kControl = 102;
constexpr int kExtendedData = 1000;
constexpr std::size_t kMostProblems = 100;

} // namespace

std::string_view DxfDrawingReader::Object::text(int code) const {
    for (const DxfGroup& group : groups)
        if (group.code == code) return group.value;
    return {};
}

DxfDrawingReader::DxfDrawingReader(DxfInput& input, AcDbDatabase& database, DxfImportReport& report)
    : m_input(input)
    , m_database(database)
    , m_report(report)
    , m_filer(database, m_decoder, [this](std::uint64_t handle) { return m_handles.find(handle); }) {}

void DxfDrawingReader::HandleTable::note(std::uint64_t handle, AcDbObjectId id) {
    if (handle == 0) return;
    if (m_ascending.empty() || handle > m_ascending.back().first)
        m_ascending.emplace_back(handle, id);
    else
        m_others.try_emplace(handle, id);
}

AcDbObjectId DxfDrawingReader::HandleTable::find(std::uint64_t handle) const {
    const auto found =
        std::ranges::lower_bound(m_ascending, handle, {}, [](const auto& pair) { return pair.first; });
    if (found != m_ascending.end() && found->first == handle) return found->second;
    const auto other = m_others.find(handle);
    return other == m_others.end() ? AcDbObjectId() : other->second;
}

DxfDrawingReader::~DxfDrawingReader() = default;

void DxfDrawingReader::problem(std::uint32_t line, const std::string& what) {
    if (m_report.problems.size() < kMostProblems)
        m_report.problems.push_back(fmt::format("{}: {}", m_input.describe(line), what));
}

bool DxfDrawingReader::nextGroup(DxfGroup& group) {
    if (m_hasAhead) {
        m_hasAhead = false;
        group = m_ahead;
        return true;
    }
    return m_input.next(group);
}

// The groups of an object end where the next one's type stands.
bool DxfDrawingReader::nextObject(Object& object) {
    DxfGroup group;
    do {
        if (!nextGroup(group)) return false;
    } while (group.code != AcDb::kDxfStart);
    object.type = group.value;
    object.line = group.line;
    object.groups.clear();
    object.xdata.clear();
    object.handle = object.dictionary = 0;
    object.isInPaper = object.isFollowed = false;
    int controls = 0;
    bool inEntity = false;
    bool inExtension = false;
    while (nextGroup(group)) {
        if (group.code == AcDb::kDxfStart) {
            m_ahead = group;
            m_hasAhead = true;
            break;
        }
        sortGroup(object, group, controls, inEntity, inExtension);
    }
    return true;
}

// What is between braces belongs to applications; an entity's picture is for those who lack its class.
void DxfDrawingReader::sortGroup(Object& object, const DxfGroup& group, int& controls, bool& inEntity,
                                 bool& inExtension) {
    constexpr int kPictureSizes[] = {92, 160};
    constexpr int kPicture = 310;
    const bool beforeMarkers =
        object.groups.empty() ||
        (object.groups.size() == 1 && object.groups[0].code == AcDb::kDxfSubclass && inEntity);
    const bool isData = object.type == "XRECORD" && !object.groups.empty(); // whatever it is
    if (isData) return object.groups.push_back(group);
    switch (group.code) {
    case kControl:
        controls += group.value.starts_with('{') ? 1 : -1;
        inExtension = group.value == "{ACAD_XDICTIONARY";
        return;
    case AcDb::kDxfHardOwnershipId:
        if (inExtension) object.dictionary = dxfHandle(group.value);
        break;
    case AcDb::kDxfHandle:
    case 105:
        if (object.handle == 0 && (group.code == AcDb::kDxfHandle || object.type == "DIMSTYLE")) {
            object.handle = dxfHandle(group.value);
            return;
        }
        break;
    case AcDb::kDxfSoftPointerId:
        if (beforeMarkers && !inEntity) return;
        break;
    case 67: object.isInPaper = group.value.find('1') != std::string_view::npos; break;
    case 66: object.isFollowed = group.value.find('1') != std::string_view::npos; break;
    case AcDb::kDxfSubclass: inEntity = group.value == "AcDbEntity"; break;
    default: break;
    }
    if (controls > 0) return;
    const bool isPicture = inEntity && (group.code == kPicture || group.code == kPictureSizes[0] ||
                                        group.code == kPictureSizes[1]);
    if (isPicture) return;
    (group.code >= kExtendedData ? object.xdata : object.groups).push_back(group);
}

void DxfDrawingReader::read() {
    DxfGroup group;
    bool hasEnd = false;
    while (nextGroup(group)) {
        if (group.is(0, "EOF")) {
            hasEnd = true;
            break;
        }
        if (!group.is(0, "SECTION")) continue;
        if (!nextGroup(group)) break;
        if (group.is(2, "HEADER"))
            readHeader();
        else if (group.is(2, "TABLES"))
            readTables();
        else if (group.is(2, "BLOCKS"))
            readBlocks();
        else if (group.is(2, "ENTITIES"))
            readEntities();
        else if (group.is(2, "OBJECTS"))
            readObjects();
        else
            skipToSection();
    }
    if (!hasEnd) m_report.problems.push_back("the file ends before its end mark (EOF was expected)");
    closeBlock();
    fillDictionaries();
    for (const std::string& text : m_input.problems()) m_report.problems.push_back(text);
    applyHeader();
}

void DxfDrawingReader::skipToSection() {
    DxfGroup group;
    while (nextGroup(group))
        if (group.is(0, "ENDSEC")) return;
}

bool DxfDrawingReader::atEnd(const Object& object, const char* end) const {
    return object.type == end || object.type == "ENDSEC" || object.type == "EOF";
}

void DxfDrawingReader::readTables() {
    Object object;
    while (nextObject(object)) {
        if (atEnd(object, "ENDSEC")) break;
        if (object.type == "TABLE" || object.type == "ENDTAB") continue;
        AcDbObjectId table;
        if (object.type == "LTYPE") table = m_database.linetypeTableId();
        if (object.type == "LAYER") table = m_database.layerTableId();
        if (object.type == "STYLE") table = m_database.textStyleTableId();
        if (object.type == "APPID") table = m_database.regAppTableId();
        if (!table.isNull())
            readRecord(object, table);
        else if (object.type == "BLOCK_RECORD")
            noteBlockRecord(object);
        else if (object.type == "DIMSTYLE")
            keepDimensionStyle(object);
        else if (object.type == "VIEW" || object.type == "UCS")
            leaveOut(object.type);
    }
}

// A record that is there by its name takes the file's values.
void DxfDrawingReader::readRecord(const Object& object, AcDbObjectId table) {
    std::string name;
    m_decoder.decode(object.text(2), name);
    // The style of a shape file has no name.
    if (name.empty())
        return object.type == "STYLE" ? leaveOut("shape file") : problem(object.line, "a name was expected");
    AcDbObjectId id = AcDbObjectAccess::findRecord(table, name);
    if (id.isNull()) {
        std::unique_ptr<AcRxObject> made(AcRxClassRegistry::instance().atDxfName(object.type)->create());
        auto* const record = AcDbSymbolTableRecord::cast(made.get());
        const AcDbObjectPointer<AcDbSymbolTable> records(table, AcDb::kForWrite);
        if (record->setName(name) != Acad::eOk || records->add(id, record) != Acad::eOk)
            return problem(object.line, fmt::format("\"{}\" is no name for a {}", name, object.type));
        made.release();
        record->close();
    }
    m_handles.note(object.handle, id);
    noteExtension(object, id);
    const AcDbObjectPointer<AcDbSymbolTableRecord> record(id, AcDb::kForWrite);
    if (!record) return;
    fill(*record, object);
    setXData(*record, object);
}

// Without what refers to objects by handle; markers are written anew.
void DxfDrawingReader::keepDimensionStyle(const Object& object) {
    std::string name;
    m_decoder.decode(object.text(2), name);
    if (name.empty()) return;
    ResbufBuilder groups;
    AcDbDxfItem item;
    m_filer.start(object.groups);
    while (m_filer.readItem(item) == Acad::eOk)
        if (item.code != AcDb::kDxfSubclass && item.code != 2 && item.kind != AcDbDxfItem::kId &&
            item.kind != AcDbDxfItem::kHandle)
            addDxfItem(groups, item);
    const ResbufPtr chain = groups.take();
    auto record = std::make_unique<AcDbXrecord>();
    record->setFromRbChain(chain.get());
    AcDbObjectId id;
    if (const AcDbObjectPointer<AcDbDictionary> styles(dimensionStyles(), AcDb::kForWrite);
        styles && styles->setAt(name, record.get(), id) == Acad::eOk)
        record.release()->close();
}

AcDbObjectId DxfDrawingReader::dimensionStyles() {
    const AcDbObjectPointer<AcDbDictionary> named(m_database.namedObjectsDictionaryId(), AcDb::kForWrite);
    AcDbObjectId id;
    if (!named || named->getAt(kDimensionStyles, id) == Acad::eOk) return id;
    auto made = std::make_unique<AcDbDictionary>();
    if (named->setAt(kDimensionStyles, made.get(), id) == Acad::eOk) made.release()->close();
    return id;
}

void DxfDrawingReader::noteBlockRecord(const Object& object) {
    std::string name;
    m_decoder.decode(object.text(2), name);
    const AcDbObjectId block = blockNamed(name);
    if (block.isNull()) return;
    m_handles.note(object.handle, block);
    if (object.xdata.empty()) return;
    if (const AcDbObjectPointer<AcDbObject> record(block, AcDb::kForWrite); record) setXData(*record, object);
}

// Makes the block where it is missing. Null for a name that no block can have.
AcDbObjectId DxfDrawingReader::blockNamed(std::string name) {
    const std::string key = symbolKey(name);
    if (key == "*MODEL_SPACE" || key == "$MODEL_SPACE") return m_database.modelSpaceId();
    if (key == "*PAPER_SPACE" || key == "$PAPER_SPACE") return m_database.paperSpaceId();
    const auto found = m_blocks.find(key);
    if (found != m_blocks.end()) return found->second;
    AcDbObjectId block;
    if (startBlock(m_database, name, AcGePoint3d::kOrigin, block) != Acad::eOk) block.setNull();
    m_blocks.emplace(key, block);
    return block;
}

// References may stand before what they refer to.
void DxfDrawingReader::makeBlocks() {
    const DxfInput::Place place = m_input.place();
    const DxfGroup ahead = m_ahead;
    const bool hasAhead = m_hasAhead;
    DxfGroup group;
    bool inBlock = false;
    while (nextGroup(group) && !group.is(0, "ENDSEC")) {
        if (group.code == 0) inBlock = group.value == "BLOCK";
        if (!inBlock || group.code != 2) continue;
        std::string name;
        m_decoder.decode(group.value, name);
        blockNamed(name);
        inBlock = false;
    }
    m_input.goTo(place);
    m_ahead = ahead;
    m_hasAhead = hasAhead;
}

void DxfDrawingReader::readBlocks() {
    makeBlocks();
    Object object;
    AcDbObjectId block;
    std::string name;
    while (m_hasObject || nextObject(object)) {
        if (std::exchange(m_hasObject, false)) std::swap(object, m_object);
        if (atEnd(object, "ENDSEC")) return;
        if (object.type == "BLOCK") {
            m_decoder.decode(object.text(2), name);
            block = blockNamed(name);
            if (block.isNull()) problem(object.line, fmt::format("\"{}\" is no name for a block", name));
            if (!block.isNull()) {
                closeBlock();
                const AcDbObjectPointer<AcDbBlockTableRecord> record(block, AcDb::kForWrite);
                AcDbDxfItem item;
                m_filer.start(object.groups);
                while (m_filer.readItem(item) == Acad::eOk)
                    if (item.code == AcDb::kDxfXCoord && record) record->setOrigin(item.point);
            }
        } else if (object.type == "ENDBLK") {
            block.setNull();
        } else if (!block.isNull()) {
            readEntity(object, block);
        } else {
            leaveOut(object.type);
        }
    }
}

void DxfDrawingReader::readEntities() {
    Object object;
    while (m_hasObject || nextObject(object)) {
        if (std::exchange(m_hasObject, false)) std::swap(object, m_object);
        if (atEnd(object, "ENDSEC")) return;
        readEntity(object, object.isInPaper ? m_database.paperSpaceId() : m_database.modelSpaceId());
    }
}

} // namespace veldrin
