#pragma once

#include "drawing/AcDbEntity.h"
#include "files/DxfFileReader.h"
#include "files/DxfImport.h"
#include "files/DxfInput.h"

#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

class AcDb2dPolyline;
class AcDbBlockTableRecord;
class AcDbBlockReference;
class AcDbSymbolTable;

namespace veldrin {

// Fills a drawing that has the default tables from an exchange file, section by section. Names come before
// what uses them: header values are set at the end, and all blocks are made before the first is filled.
class DxfDrawingReader {
public:
    DxfDrawingReader(DxfInput& input, AcDbDatabase& database, DxfImportReport& report);
    ~DxfDrawingReader();

    void read();

private:
    // Objects by their handles in the file. Those nearly always ascend, and then a row in order is enough.
    class HandleTable {
    public:
        void note(std::uint64_t handle, AcDbObjectId id);
        AcDbObjectId find(std::uint64_t handle) const;

    private:
        std::vector<std::pair<std::uint64_t, AcDbObjectId>> m_ascending;
        std::unordered_map<std::uint64_t, AcDbObjectId> m_others;
    };

    // An object: its type, and the groups up to the next one.
    struct Object {
        std::string type;
        std::uint32_t line = 0;
        std::vector<DxfGroup> groups; // as the classes read them: without head, controls and picture
        std::vector<DxfGroup> xdata;
        std::uint64_t handle = 0;
        std::uint64_t dictionary = 0; // that extends it
        bool isInPaper = false;
        bool isFollowed = false; // by attributes

        std::string_view text(int code) const;
    };

    bool nextGroup(DxfGroup& group);
    bool nextObject(Object& object);
    void sortGroup(Object& object, const DxfGroup& group, int& controls, bool& inEntity, bool& inExtension);
    void skipToSection();
    bool atEnd(const Object& object, const char* end) const;

    void readHeader();
    void takeHeaderGroup(const std::string& name, const DxfGroup& group);
    void applyHeader();
    void readTables();
    void readTable();
    void readRecord(const Object& object, AcDbObjectId table);
    void keepDimensionStyle(const Object& object);
    AcDbObjectId dimensionStyles();
    void noteBlockRecord(const Object& object);
    void makeBlocks();
    void readBlocks();
    void readEntities();
    void readObjects();
    // Dictionaries of the file by their handles, and what hangs in them, as objects here.
    void fillDictionaries();
    void fillDictionary(AcDbObjectId dictionary, std::uint64_t handle, int depth = 0);
    void noteExtension(const Object& object, AcDbObjectId id);
    std::unique_ptr<AcDbObject> recordFrom(const std::vector<DxfGroup>& groups);

    AcDbObjectId blockNamed(std::string name);
    // Reads an entity, and what follows it: vertices, attributes.
    void readEntity(Object& object, AcDbObjectId block);
    std::unique_ptr<AcDbEntity> makeEntity(const Object& object);
    bool fill(AcDbObject& object, const Object& from);
    AcDbObjectId append(std::unique_ptr<AcDbEntity> entity, const Object& object, AcDbObjectId block);
    void openBlock(AcDbObjectId block);
    void closeBlock();
    void readVertices(std::unique_ptr<AcDbEntity> entity, const Object& head, AcDbObjectId block);
    void readAttributes(AcDbObjectId reference);
    void setXData(AcDbObject& object, const Object& from);
    // The entity with all of its record, where the file has that; see dxf_records.h.
    void completeFromRecord(std::unique_ptr<AcDbEntity>& entity, Object& object);
    std::vector<DxfGroup> changedGroups(const AcDbEntity& entity, const Object& object);
    std::string takeRecord(Object& object, const std::string& className) const;
    void problem(std::uint32_t line, const std::string& what);
    void leaveOut(const std::string& type) { ++m_report.leftOut[type]; }

    DxfInput& m_input;
    AcDbDatabase& m_database;
    DxfImportReport& m_report;
    DxfTextDecoder m_decoder;
    DxfFileReader m_filer;
    Object m_object; // the one that was read last and is not taken yet
    bool m_hasObject = false;
    DxfGroup m_ahead;
    bool m_hasAhead = false;
    HandleTable m_handles;
    std::unordered_map<std::string, std::vector<DxfGroup>> m_header; // by name: the values
    struct Entry {
        std::string name;
        std::uint64_t handle;
    };
    std::unordered_map<std::uint64_t, std::vector<Entry>> m_dictionaries; // of the file, not made yet
    std::unordered_map<std::uint64_t, std::vector<DxfGroup>> m_records;   // XRECORDs, not made yet
    std::uint64_t m_rootDictionary = 0;
    std::vector<std::pair<AcDbObjectId, std::uint64_t>>
        m_extensions; // objects, and the dictionaries that extend them
    std::unordered_map<std::string, AcRxClass*>
        m_classes;                               // by the type of their entities; null for unknown ones
    AcDbBlockTableRecord* m_openBlock = nullptr; // what entities are appended to
    std::unordered_map<std::string, AcDbObjectId> m_blocks; // by upper-case name
};

} // namespace veldrin
