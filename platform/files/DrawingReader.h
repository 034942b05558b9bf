#pragma once

#include "drawing/AcDbProxyEntity.h"
#include "files/SqlFile.h"

#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

class AcDbDatabase;
class AcRxClass;

namespace veldrin {

// Fills an empty drawing from the tables of a file, in a read transaction of the caller's. Records name
// objects that come later, so the rows are walked twice: all objects are made first and read their records
// then. What fails is the file's error.
class DrawingReader {
public:
    DrawingReader(SqlFile& file, AcDbDatabase& database) : m_file(file), m_database(database) {}

    bool read();
    // The same for a file that may be damaged: objects that cannot be read are left out, and what is missing
    // is mended. What was lost or mended is told, a line each. False only when the file gives no rows.
    bool readWhatIsThere(std::vector<std::string>& told);

private:
    struct ClassRow {
        AcRxClass* rxClass = nullptr; // null when it is not here
        ProxyContent names;           // class, exchange name and application; no items
        bool isEntity = true;
    };
    bool readClasses();
    bool makeObjects();
    bool makeObject(const SqlStatement& row);
    const ClassRow& classNamed(std::string_view name);
    std::unique_ptr<AcDbObject> make(const ClassRow& row, bool asProxy) const;
    // What cannot be read ends the reading or, when losses are taken, is left out.
    bool lose(std::string what);
    bool readRecords();
    bool readRecord(AcDbObjectId id, const SqlStatement& row);
    bool readPictures();
    void settle();

    SqlFile& m_file;
    AcDbDatabase& m_database;
    std::unordered_map<std::string, ClassRow> m_classes;
    const ClassRow* m_lastClass = nullptr;
    std::vector<std::string>* m_losses = nullptr;
};

} // namespace veldrin
