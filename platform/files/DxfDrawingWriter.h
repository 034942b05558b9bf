#pragma once

#include "files/DxfExport.h"
#include "files/DxfFileWriter.h"
#include "files/DxfPicture.h"
#include "graphics/Recorder.h"

#include <map>
#include <string>
#include <vector>

class AcDb2dPolyline;
class AcDb3dPolyline;
class AcDbBlockTableRecord;
class AcDbBlockReference;
class AcDbDictionary;
class AcDbEntity;

namespace veldrin {

struct ProxyContent;

// Writes a drawing section by section. Objects keep their handles; what every file has beside them, and
// vertices, get handles above all of these.
class DxfDrawingWriter {
public:
    DxfDrawingWriter(DxfOutput& out, AcDbDatabase& database, bool explodes);

    void write();
    // What came out as less than it is, a line each.
    std::vector<std::string> losses() const;

private:
    void findPlaces();
    std::uint64_t newHandle() { return m_nextHandle++; }
    void begin(const char* type, std::uint64_t handle, std::uint64_t owner, int handleCode = 5);
    void section(const char* name);

    void writeHeader();
    void writeHeaderMembers();
    void writeClasses();
    void writeClass(const std::string& dxfName, const std::string& name, const std::string& application,
                    int flags, bool isEntity);

    void writeTables();
    void beginTable(const char* name, std::uint64_t handle, std::size_t count);
    void writeViewports();
    void writeRecords(const char* name, AcDbObjectId table, const std::vector<AcDbObjectId>& records);
    void writeEmptyTable(const char* name);
    void writeApplications();
    void writeDimensionStyles();
    void writeDimensionStyle(const std::string& name, AcDbObjectId kept, std::uint64_t table);
    void writeBlockRecords();

    void writeBlocks();
    void writeBlock(AcDbObjectId block);
    void writeContents(AcDbObjectId block);
    void writeEntity(AcDbObjectId id);
    void writePlain(AcDbEntity& entity);
    void writeProxy(AcDbEntity& entity, const ProxyContent& content);
    void writeVertices(const AcDb2dPolyline& polyline);
    void writeVertices(const AcDb3dPolyline& polyline);
    void writeAttributes(const AcDbBlockReference& reference);
    void writeExploded(AcDbEntity& entity);
    void writeObject(const AcDbObject& object, const std::string& type);
    void writeSequenceEnd(const AcDbEntity& owner, std::uint64_t handle, std::uint64_t ownerHandle);
    void writeExtensionMark(const AcDbObject& object);
    void writeXData(const AcDbObject& object);
    void record(AcDbEntity& entity); // what it shows
    void writePicture(AcDbEntity& entity);
    void writeRecord(const AcDbEntity& entity);

    void writeObjects();
    void writeRootDictionary();
    void writeLayout(const char* name, std::uint64_t handle, bool isModel);
    void writeDictionary(AcDbObjectId id);
    void writeDictionaryObject(AcDbObjectId id);

    DxfOutput& m_out;
    AcDbDatabase& m_database;
    DxfFileWriter m_filer;
    bool m_explodes;
    std::uint64_t m_nextHandle;
    // Of what every file has.
    struct {
        std::uint64_t layouts, modelLayout, paperLayout, groups, plotStyles, placeholder;
    } m_frame{};
    AcDbExtents m_extents; // of what is shown
    DxfTablePlaces m_places;
    std::vector<AcDbObjectId> m_linetypes, m_layers, m_styles, m_applications, m_blocks;
    std::map<std::string, int> m_proxyClasses; // by name: place among the classes of the file
    std::map<std::string, int> m_losses;       // how often
    DisplayList m_list;
    Recorder m_recorder{m_list};
    std::vector<AcDbObjectId> m_dictionaries; // of objects, to be written with the others
};

} // namespace veldrin
