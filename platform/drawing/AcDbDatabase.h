#pragma once

#include "drawing/AcCmColor.h"
#include "drawing/AcDbObject.h"
#include "geometry/AcGeMatrix3d.h"

#include <functional>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

class AcDbBlockTable;
class AcDbLayerTable;
class AcDbLinetypeTable;
class AcDbTextStyleTable;
class AcDbRegAppTable;
class AcDbDictionary;
class AcDbIdMapping;

namespace veldrin {

class UndoLog;
class SlotTable;

// Values that belong to a drawing and are kept in its file; every one is also a system variable.
struct HeaderVariables {
    AcDbObjectId clayer;
    AcDbObjectId celtype; // by layer at first
    AcCmColor cecolor;    // by layer at first
    AcDb::LineWeight celweight = AcDb::kLnWtByLayer;
    double celtscale = 1.0;
    double ltscale = 1.0;
    AcDbObjectId textstyle;
    double textsize = 2.5;
    double elevation = 0.0;
    AcGePoint3d ucsOrigin;
    AcGeVector3d ucsXDir{1.0, 0.0, 0.0};
    AcGeVector3d ucsYDir{0.0, 1.0, 0.0};
    int lunits = 2;
    int luprec = 4;
    int aunits = 0;
    int auprec = 0;
    double angbase = 0.0;
    int angdir = 0;
    int insunits = 1; // inches
    int measurement = 0;
    int orthomode = 0;
    int mirrtext = 0;
    int attreq = 1;
    int pdmode = 0;
    double pdsize = 0.0;
    int fillmode = 1;
};

// The file that holds the drawing but for what its slots call changed. Written by the reader and the writer
// of drawing files alone.
struct DrawingFileLink {
    std::string path;            // empty: there is none, and the next save writes everything
    std::string saveId;          // the file's own mark of that save, which tells it from another's
    bool previousKept = false;   // the file as it was opened has been kept beside it
    std::string exchangeVersion; // of the exchange file that it came from
};

} // namespace veldrin

// One drawing: objects in slots, tables, header variables, and the record of what changed.
class VELDRIN_API AcDbDatabase {
public:
    // An empty drawing with its tables, layer 0, the linetypes ByBlock, ByLayer and Continuous, text style
    // Standard, application ACAD, and the blocks of model and paper space. Without the default it has
    // nothing, for a reader to fill.
    explicit AcDbDatabase(bool buildDefaultDrawing = true);
    ~AcDbDatabase();
    AcDbDatabase(const AcDbDatabase&) = delete;
    AcDbDatabase& operator=(const AcDbDatabase&) = delete;

    std::uint32_t generation() const { return m_generation; }

    // Tables, opened.
    Acad::ErrorStatus getBlockTable(AcDbBlockTable*& table, AcDb::OpenMode mode = AcDb::kForRead);
    Acad::ErrorStatus getLayerTable(AcDbLayerTable*& table, AcDb::OpenMode mode = AcDb::kForRead);
    Acad::ErrorStatus getLinetypeTable(AcDbLinetypeTable*& table, AcDb::OpenMode mode = AcDb::kForRead);
    Acad::ErrorStatus getTextStyleTable(AcDbTextStyleTable*& table, AcDb::OpenMode mode = AcDb::kForRead);
    Acad::ErrorStatus getRegAppTable(AcDbRegAppTable*& table, AcDb::OpenMode mode = AcDb::kForRead);
    Acad::ErrorStatus getNamedObjectsDictionary(AcDbDictionary*& dictionary,
                                                AcDb::OpenMode mode = AcDb::kForRead);

    AcDbObjectId blockTableId() const { return m_blockTable; }
    AcDbObjectId layerTableId() const { return m_layerTable; }
    AcDbObjectId linetypeTableId() const { return m_linetypeTable; }
    AcDbObjectId textStyleTableId() const { return m_textStyleTable; }
    AcDbObjectId regAppTableId() const { return m_regAppTable; }
    AcDbObjectId namedObjectsDictionaryId() const { return m_namedObjects; }
    AcDbObjectId modelSpaceId() const { return m_modelSpace; }
    AcDbObjectId paperSpaceId() const { return m_paperSpace; }
    AcDbObjectId layerZero() const { return m_layerZero; }
    AcDbObjectId byLayerLinetype() const { return m_byLayer; }
    AcDbObjectId byBlockLinetype() const { return m_byBlock; }
    AcDbObjectId continuousLinetype() const { return m_continuous; }
    AcDbObjectId standardTextStyle() const { return m_standardStyle; } // null once it was renamed in a file

    // Objects. The object is then the database's and open for write.
    Acad::ErrorStatus addAcDbObject(AcDbObject* object);
    Acad::ErrorStatus addAcDbObject(AcDbObjectId& id, AcDbObject* object);
    // eUnknownHandle when no object has the handle.
    Acad::ErrorStatus getAcDbObjectId(AcDbObjectId& id, AcDbHandle handle) const;
    AcDbHandle handseed() const; // the next handle

    // Header variables. A change goes through setHeader, which files the values before it.
    const veldrin::HeaderVariables& header() const { return m_header; }
    void setHeader(const veldrin::HeaderVariables& values);
    AcGeMatrix3d ucsToWorld() const;

    const std::string& getFilename() const { return m_fileName; }
    void setFilename(const std::string& fileName) { m_fileName = fileName; }

    // Copies objects, and what they own, under the new owner: a block, or a table for its records. Ids inside
    // the copies are translated to the copies; other ids stay. From another drawing, layers, linetypes, text
    // styles and applications are found by name, and copied along where the name is missing. The mapping
    // tells old from new. The copies are closed; when one fails there are none.
    Acad::ErrorStatus deepCloneObjects(const std::vector<AcDbObjectId>& ids, AcDbObjectId newOwner,
                                       AcDbIdMapping& mapping);

    // Moves with every change of what is drawn: of an entity, a table record or a header variable.
    std::uint64_t graphicsGeneration() const { return m_graphicsGeneration; }
    // Moves with changes of tables and header variables alone.
    std::uint64_t tablesGeneration() const { return m_tablesGeneration; }
    bool isModified() const { return m_modified; } // since made, opened or saved
    void setModified(bool modified) { m_modified = modified; }
    const veldrin::DrawingFileLink& fileLink() const { return m_fileLink; }
    void setFileLink(veldrin::DrawingFileLink link) { m_fileLink = std::move(link); }

    veldrin::UndoLog& undoLog() { return *m_undo; }
    veldrin::SlotTable& slots() { return *m_slots; }
    const veldrin::SlotTable& slots() const { return *m_slots; }

private:
    friend class AcDbObjectAccess;
    void buildDefault();

    std::uint32_t m_generation = 0;
    std::unique_ptr<veldrin::SlotTable> m_slots;
    std::unique_ptr<veldrin::UndoLog> m_undo;
    veldrin::HeaderVariables m_header;
    AcDbObjectId m_blockTable, m_layerTable, m_linetypeTable, m_textStyleTable, m_regAppTable, m_namedObjects;
    AcDbObjectId m_modelSpace, m_paperSpace, m_layerZero, m_byLayer, m_byBlock, m_continuous, m_standardStyle;
    std::string m_fileName;
    veldrin::DrawingFileLink m_fileLink;
    std::uint64_t m_graphicsGeneration = 0;
    std::uint64_t m_tablesGeneration = 0;
    bool m_modified = false;
};

// Which object became which in a copy.
class VELDRIN_API AcDbIdMapping {
public:
    AcDbObjectId find(AcDbObjectId original) const; // null when it was not copied
    void assign(AcDbObjectId original, AcDbObjectId copy);
    const std::vector<std::pair<AcDbObjectId, AcDbObjectId>>& pairs() const { return m_pairs; }

private:
    std::vector<std::pair<AcDbObjectId, AcDbObjectId>> m_pairs;
    std::unordered_map<AcDbObjectId, AcDbObjectId> m_byOriginal;
};

// The database that calls without one work on; the current document's, as a rule.
class VELDRIN_API AcDbHostApplicationServices {
public:
    AcDbDatabase* workingDatabase() const;
    void setWorkingDatabase(AcDbDatabase* database);
};
VELDRIN_API AcDbHostApplicationServices* acdbHostApplicationServices();
