// Any bytes as the record of an entity or of another object, of any class: it may be refused, but what was
// taken in can be drawn, measured and exchanged, and writes a record that reads back to itself.
//
// The input is the name of the class, a line end, and the record.
#include "HostWithModule.h"
#include "drawing/AcDbEntity.h"
#include "drawing/RecordFiler.h"
#include "drawing/acdb.h"
#include "graphics/Recorder.h"
#include "runtime/AcRxClass.h"

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>

namespace {

std::unique_ptr<AcDbObject> make(AcRxClass& rxClass) {
    std::unique_ptr<AcRxObject> made(rxClass.create());
    return std::unique_ptr<AcDbObject>(AcDbObject::cast(made.release()));
}

bool read(AcDbObject& object, AcDbDatabase& database, std::string_view record) {
    veldrin::RecordReader reader(AcDb::kFileFiler, &database, record);
    return object.dwgInFields(&reader) == Acad::eOk && reader.filerStatus() == Acad::eOk;
}

std::string write(const AcDbObject& object) {
    veldrin::RecordWriter writer(AcDb::kFileFiler);
    return object.dwgOutFields(&writer) == Acad::eOk ? writer.takeRecord() : std::string();
}

void look(AcDbEntity& entity) {
    veldrin::DisplayList list;
    veldrin::Recorder recorder(list);
    veldrin::drawEntity(entity, recorder);
    AcDbExtents extents;
    entity.getGeomExtents(extents);
    AcGePoint3dArray grips;
    AcGeIntArray modes, ids;
    entity.getGripPoints(grips, modes, ids);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    AcDbDatabase& database = HostWithModule::instance().drawing();
    const std::string_view input(reinterpret_cast<const char*>(data), size);
    const std::size_t end = input.find('\n');
    AcRxClass* const rxClass = AcRxClassRegistry::instance().at(input.substr(0, end));
    if (end == std::string_view::npos || !rxClass || !rxClass->isDerivedFrom(AcDbObject::desc())) return -1;
    const std::unique_ptr<AcDbObject> object = make(*rxClass);
    if (!object || !read(*object, database, input.substr(end + 1))) return 0;
    if (AcDbEntity* entity = AcDbEntity::cast(object.get())) look(*entity);

    // What it writes may differ from what it took in, but not from what it writes when read again.
    const std::string first = write(*object);
    const std::unique_ptr<AcDbObject> again = make(*rxClass);
    if (first.empty() || !read(*again, database, first) || write(*again) != first) std::abort();
    return 0;
}
