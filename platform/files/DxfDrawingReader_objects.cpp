#include "drawing/AcDbDictionary.h"
#include "drawing/DxfListFiler.h"
#include "drawing/acdb.h"
#include "files/DxfDrawingReader.h"

#include <algorithm>
#include <array>

namespace veldrin {

namespace {

constexpr int kName = 3;
constexpr int kSoftEntry = 350;
constexpr int kHardEntry = 360;
constexpr int kCloning = 280;

// What every file has for its own order, and what describes how it is shown and plotted: not the drawing's.
constexpr std::array<std::string_view, 21> kFrameObjects = {"ACDBDICTIONARYWDFLT",
                                                            "ACDBPLACEHOLDER",
                                                            "LAYOUT",
                                                            "MATERIAL",
                                                            "MLINESTYLE",
                                                            "MLEADERSTYLE",
                                                            "TABLESTYLE",
                                                            "VISUALSTYLE",
                                                            "SCALE",
                                                            "PLOTSETTINGS",
                                                            "DICTIONARYVAR",
                                                            "SORTENTSTABLE",
                                                            "CELLSTYLEMAP",
                                                            "ACDBDETAILVIEWSTYLE",
                                                            "ACDBSECTIONVIEWSTYLE",
                                                            "SUN",
                                                            "RASTERVARIABLES",
                                                            "GROUP",
                                                            "DBCOLOR",
                                                            "WIPEOUTVARIABLES",
                                                            "ACDB_RECOMPOSE_DATA"};

// What a file has in its root dictionary for its own order.
bool isOfFrame(std::string_view name) {
    return name.starts_with("ACAD_") || name.starts_with("AcDb");
}

} // namespace

void DxfDrawingReader::noteExtension(const Object& object, AcDbObjectId id) {
    if (object.dictionary != 0 && !id.isNull()) m_extensions.emplace_back(id, object.dictionary);
}

// The first dictionary is the root of all.
void DxfDrawingReader::readObjects() {
    Object object;
    while (nextObject(object)) {
        if (atEnd(object, "ENDSEC")) return;
        if (object.type == "DICTIONARY") {
            if (m_rootDictionary == 0) m_rootDictionary = object.handle;
            std::vector<Entry>& entries = m_dictionaries[object.handle];
            std::string name;
            for (const DxfGroup& group : object.groups) {
                if (group.code == kName) m_decoder.decode(group.value, name);
                if (group.code == kSoftEntry || group.code == kHardEntry)
                    entries.push_back({name, dxfHandle(group.value)});
            }
        } else if (object.type == "XRECORD") {
            m_records[object.handle] = object.groups;
        } else if (std::find(kFrameObjects.begin(), kFrameObjects.end(), object.type) ==
                   kFrameObjects.end()) {
            leaveOut(object.type);
        }
    }
}

// Records that hang nowhere, or in something that was not read, are left out.
void DxfDrawingReader::fillDictionaries() {
    if (const auto root = m_dictionaries.find(m_rootDictionary); root != m_dictionaries.end()) {
        std::erase_if(root->second, [](const Entry& entry) { return isOfFrame(entry.name); });
        fillDictionary(m_database.namedObjectsDictionaryId(), m_rootDictionary);
    }
    for (const auto& [id, handle] : m_extensions) {
        if (!m_dictionaries.contains(handle)) continue;
        AcDbObjectId dictionary;
        if (const AcDbObjectPointer<AcDbObject> object(id, AcDb::kForWrite);
            object && object->createExtensionDictionary() == Acad::eOk)
            dictionary = object->extensionDictionary();
        fillDictionary(dictionary, handle);
    }
    if (!m_records.empty()) m_report.leftOut["XRECORD"] += static_cast<int>(m_records.size());
}

// What was made is taken out, so that a dictionary within itself ends.
void DxfDrawingReader::fillDictionary(AcDbObjectId id, std::uint64_t handle, int depth) {
    constexpr int kDeepest = 100;
    if (depth > kDeepest) return leaveOut("DICTIONARY");
    const auto node = m_dictionaries.extract(handle);
    if (node.empty()) return;
    for (const Entry& entry : node.mapped()) {
        AcDbObjectId made;
        const auto record = m_records.extract(entry.handle);
        const bool isDictionary = record.empty() && m_dictionaries.contains(entry.handle);
        {
            const AcDbObjectPointer<AcDbDictionary> dictionary(id, AcDb::kForWrite);
            if (!dictionary) return;
            std::unique_ptr<AcDbObject> object;
            if (!record.empty()) object = recordFrom(record.mapped());
            if (isDictionary) object = std::make_unique<AcDbDictionary>();
            if (object && dictionary->setAt(entry.name, object.get(), made) == Acad::eOk)
                object.release()->close();
        }
        if (isDictionary && !made.isNull()) fillDictionary(made, entry.handle, depth + 1);
    }
}

std::unique_ptr<AcDbObject> DxfDrawingReader::recordFrom(const std::vector<DxfGroup>& groups) {
    ResbufBuilder chain;
    AcDbDxfItem item;
    m_filer.start(groups);
    while (m_filer.readItem(item) == Acad::eOk)
        if (item.code != AcDb::kDxfSubclass && item.code != kCloning) addDxfItem(chain, item);
    const ResbufPtr taken = chain.take();
    auto record = std::make_unique<AcDbXrecord>();
    record->setFromRbChain(taken.get());
    return record;
}

} // namespace veldrin
