#pragma once

#include "drawing/AcDbObject.h"
#include "geometry/AcGePoint3d.h"

#include <memory>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

// Records as lists of named items, for scripts and tests. A list holds the items behind the base part: those
// of the object's own classes. So does that of an embedded object, an item of type "Object".
namespace veldrin {

struct RecordItem {
    // Whole numbers of all sizes; points and vectors of two coordinates have 0 as their third; bytes are a
    // text.
    using Value = std::variant<bool, std::int64_t, double, AcGePoint3d, std::string, AcDbObjectId,
                               std::vector<RecordItem>>;

    std::string type; // as itemTypeName gives it
    Value value;
};

// What an object files. The object must be open, or be in no database.
VELDRIN_API Acad::ErrorStatus inspectObject(const AcDbObject& object, std::vector<RecordItem>& items,
                                            AcDb::FilerType type = AcDb::kFileFiler);
// The items of a record behind its base part. Errors: eBadRecord, eEndOfObject for one without a base part.
VELDRIN_API Acad::ErrorStatus listRecord(std::string_view record, AcDbDatabase* database,
                                         std::vector<RecordItem>& items);
// Such items as a record again. eInvalidInput for a type that is unknown or a value of another type.
VELDRIN_API Acad::ErrorStatus buildItems(const std::vector<RecordItem>& items, std::string& record);
// An object of the class, read from such items as from a file, with a fresh object's base part. Null when it
// fails: then the status is that of the class's reader, or eNotApplicable for a class that makes no objects.
VELDRIN_API std::unique_ptr<AcDbObject> objectFromItems(const AcRxClass& aClass, AcDbDatabase& database,
                                                        const std::vector<RecordItem>& items,
                                                        Acad::ErrorStatus& status);

} // namespace veldrin
