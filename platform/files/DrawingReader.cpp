#include "files/DrawingReader.h"

#include "drawing/AcDbDatabase.h"
#include "drawing/AcDbObjectAccess.h"
#include "drawing/RecordFiler.h"
#include "drawing/SlotTable.h"
#include "drawing/acdb.h"
#include "drawing/mend_drawing.h"
#include "files/PictureRecord.h"
#include "files/header_rows.h"
#include "runtime/AcRxClass.h"

#include <fmt/format.h>

#include <exception>
#include <utility>

namespace veldrin {

namespace {

std::string handleText(std::uint64_t handle) {
    return AcDbHandle(handle).text();
}

// What is wrong with the record, in words; empty when the object took it.
std::string readInto(AcDbObject& object, RecordReader& reader, Acad::ErrorStatus& status) {
    try {
        status = object.dwgInFields(&reader);
        if (status == Acad::eOk) status = reader.filerStatus();
        return status == Acad::eOk ? std::string() : std::string(acadErrorStatusText(status));
    } catch (const std::exception& exception) { // what a module's class raises
        status = Acad::eInvalidInput;
        return exception.what();
    }
}

} // namespace

bool DrawingReader::read() {
    if (!readClasses() || !makeObjects() || !readRecords()) return false;
    if (!AcDbObjectAccess::findRoots(m_database)) return m_file.fail("it is damaged (a table is missing)");
    if (!readPictures() || !readHeaderRows(m_file, m_database)) return false;
    settle();
    return true;
}

bool DrawingReader::readWhatIsThere(std::vector<std::string>& told) {
    m_losses = &told;
    if (!readClasses() || !makeObjects() || !readRecords()) return false;
    if (m_database.slots().size() == 1)
        return m_file.fail("nothing of it can be read"); // slot 0 is no object
    const std::vector<std::string> mended = mendDrawing(m_database);
    told.insert(told.end(), mended.begin(), mended.end());
    if (!readPictures() || !readHeaderRows(m_file, m_database)) return false;
    settle();
    return true;
}

bool DrawingReader::lose(std::string what) {
    if (!m_losses) return m_file.fail(std::move(what));
    m_losses->push_back(std::move(what));
    return true;
}

bool DrawingReader::readClasses() {
    SqlStatement rows(m_file, "select name, dxf_name, application, is_entity from classes");
    while (rows.step()) {
        ClassRow& row = m_classes[std::string(rows.text(0))];
        row.names.className = rows.text(0);
        row.names.dxfName = rows.text(1);
        row.names.appName = rows.text(2);
        row.isEntity = rows.integer(3) != 0;
        row.rxClass = AcRxClassRegistry::instance().at(row.names.className);
    }
    return m_file.ok();
}

bool DrawingReader::makeObjects() {
    SqlStatement rows(m_file, "select handle, class from objects order by handle");
    while (rows.step())
        if (!makeObject(rows)) return false;
    return m_file.ok();
}

bool DrawingReader::makeObject(const SqlStatement& row) {
    const auto handle = static_cast<std::uint64_t>(row.integer(0));
    const ClassRow& classRow = classNamed(row.text(1));
    std::unique_ptr<AcDbObject> object = make(classRow, !classRow.rxClass);
    if (row.integer(0) <= 0 || !object)
        return lose(fmt::format("object {} of class {} is damaged (there are no such objects)",
                                handleText(handle), classRow.names.className));
    AcDbObjectAccess::add(m_database, object.get(), {}, handle); // cannot fail: handles are the rows' key
    object.release();
    return true;
}

// A class that has no row of its own is known by its name alone.
const DrawingReader::ClassRow& DrawingReader::classNamed(std::string_view name) {
    if (m_lastClass && m_lastClass->names.className == name) return *m_lastClass;
    const auto [entry, isNew] = m_classes.try_emplace(std::string(name));
    if (isNew) {
        entry->second.names.className = name;
        entry->second.rxClass = AcRxClassRegistry::instance().at(name);
    }
    return *(m_lastClass = &entry->second);
}

std::unique_ptr<AcDbObject> DrawingReader::make(const ClassRow& row, bool asProxy) const {
    if (asProxy && row.isEntity) return std::make_unique<AcDbProxyEntity>(row.names);
    if (asProxy) return std::make_unique<AcDbProxyObject>(row.names);
    std::unique_ptr<AcRxObject> made(row.rxClass->create());
    AcDbObject* const object = AcDbObject::cast(made.get());
    if (object) made.release();
    return std::unique_ptr<AcDbObject>(object);
}

// The drawing was empty, so its slots are the rows in their order, without those of which no object was made.
bool DrawingReader::readRecords() {
    SqlStatement rows(m_file, "select class, owner, record, handle from objects order by handle");
    const SlotTable& slots = m_database.slots();
    std::uint32_t number = 1;
    while (rows.step()) {
        if (number >= slots.size() || slots[number].handle != static_cast<std::uint64_t>(rows.integer(3)))
            continue;
        if (!readRecord(AcDbObjectId(m_database.generation(), number), rows)) return false;
        ++number;
    }
    return m_file.ok();
}

bool DrawingReader::readRecord(AcDbObjectId id, const SqlStatement& row) {
    const Slot& slot = m_database.slots()[id.slot()];
    const std::string_view record = row.bytes(2);
    const std::uint32_t owner = m_database.slots().findHandle(static_cast<std::uint64_t>(row.integer(1)));
    if (owner != 0) AcDbObjectAccess::setOwner(*slot.object, AcDbObjectId(m_database.generation(), owner));

    Acad::ErrorStatus status = Acad::eOk;
    RecordReader reader(AcDb::kFileFiler, &m_database, record);
    std::string reason = readInto(*slot.object, reader, status);
    if (status == Acad::eMakeMeProxy) {
        AcDbObjectAccess::replace(id, make(classNamed(row.text(0)), true));
        RecordReader again(AcDb::kFileFiler, &m_database, record);
        reason = readInto(*slot.object, again, status);
    }
    if (reason.empty()) return true;
    AcDbObjectAccess::setErased(id, true); // half read
    return lose(
        fmt::format("object {} of class {} is damaged ({})", handleText(slot.handle), row.text(0), reason));
}

// Only proxies show the picture of the last save; who has a class draws.
bool DrawingReader::readPictures() {
    SqlStatement row(m_file, "select picture from pictures where handle = ?");
    const SlotTable& slots = m_database.slots();
    for (std::uint32_t number = 1; number < slots.size(); ++number) {
        const Slot& slot = slots[number];
        AcDbProxyEntity* const proxy = AcDbProxyEntity::cast(slot.object);
        if (!proxy) continue;
        if (row.bind(1, static_cast<std::int64_t>(slot.handle)).step())
            proxy->setPicture(readPicture(row.bytes(0), m_database));
        if (!row.execute()) return false;
    }
    return m_file.ok();
}

// As if every object had been closed after a save.
void DrawingReader::settle() {
    SlotTable& slots = m_database.slots();
    for (std::uint32_t number = 1; number < slots.size(); ++number) {
        Slot& slot = slots[number];
        slot.writer = slot.changed = slot.appended = slot.fresh = false;
    }
}

} // namespace veldrin
