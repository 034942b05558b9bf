#pragma once

#include "drawing/RecordFiler.h"
#include "drawing/SlotTable.h"
#include "files/PictureRecord.h"
#include "files/SqlFile.h"

#include <cstdint>
#include <string>
#include <unordered_set>

class AcDbDatabase;
class AcDbObject;
class AcRxClass;

namespace veldrin {

// Puts a drawing's objects, pictures and header variables into the tables of a file, inside a transaction of
// the caller's.
class DrawingWriter {
public:
    DrawingWriter(SqlFile& file, const AcDbDatabase& database);

    bool writeAll();     // into empty tables
    bool writeChanges(); // what is marked as changed, into the tables of the save before

private:
    bool put(const Slot& slot);
    bool putChanged(const Slot& slot);
    bool putOwners();
    bool putPicture(const Slot& slot);
    bool bindRow(SqlStatement& statement, const Slot& slot);
    bool file(const AcDbObject& object);
    void noteClass(const AcDbObject& object);

    SqlFile& m_file;
    const AcDbDatabase& m_database;
    SqlStatement m_insert;
    SqlStatement m_update;
    SqlStatement m_picture;
    SqlStatement m_class;
    PictureWriter m_pictures;
    RecordWriter m_record{AcDb::kFileFiler};
    const AcRxClass* m_lastClass = nullptr; // null when the last object was a proxy
    bool m_hasPicture = false;              // objects of this class do
    std::string m_className; // of the object at hand; of a proxy, that of the object it stands in for
    std::unordered_set<std::string> m_classes;
    std::unordered_set<std::uint32_t> m_owners; // slots of those that own what is new in the file
};

} // namespace veldrin
