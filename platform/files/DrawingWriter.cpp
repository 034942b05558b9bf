#include "files/DrawingWriter.h"

#include "drawing/AcDbDatabase.h"
#include "drawing/AcDbObjectAccess.h"
#include "drawing/AcDbProxyEntity.h"
#include "drawing/acdb.h"
#include "files/header_rows.h"
#include "runtime/AcRxClass.h"

#include <fmt/format.h>

#include <exception>

namespace veldrin {

namespace {

constexpr const char* kInsert = "insert into objects values(?1, ?2, ?3, ?4)";
constexpr const char* kUpdate = "update objects set class = ?2, owner = ?3, record = ?4 where handle = ?1";
constexpr const char* kPutPicture = "insert or replace into pictures values(?1, ?2)";
// What a proxy knows of its class must not displace what the class itself told an earlier save.
constexpr const char* kPutClass =
    "insert into classes values(?1, ?2, ?3, ?4, ?5, ?6, ?7) on conflict(name) do update set dxf_name = ?2, "
    "application = ?3, is_entity = ?4, dwg_version = ?5, maint_version = ?6, proxy_flags = ?7 where ?5 is "
    "not null";

} // namespace

DrawingWriter::DrawingWriter(SqlFile& file, const AcDbDatabase& database)
    : m_file(file)
    , m_database(database)
    , m_insert(file, kInsert)
    , m_update(file, kUpdate)
    , m_picture(file, kPutPicture)
    , m_class(file, kPutClass) {}

bool DrawingWriter::writeAll() {
    const SlotTable& slots = m_database.slots();
    for (std::uint32_t number = 1; number < slots.size() && m_file.ok(); ++number)
        if (slots.holds(number) && !slots[number].erased) put(slots[number]);
    return writeHeaderRows(m_file, m_database);
}

bool DrawingWriter::writeChanges() {
    SqlStatement drop(m_file, "delete from objects where handle = ?");
    SqlStatement dropPicture(m_file, "delete from pictures where handle = ?");
    const SlotTable& slots = m_database.slots();
    for (std::uint32_t number = 1; number < slots.size() && m_file.ok(); ++number) {
        const Slot& slot = slots[number];
        if (!slot.changed) continue;
        if (slots.holds(number) && !slot.erased) {
            putChanged(slot);
            continue;
        }
        drop.bind(1, static_cast<std::int64_t>(slot.handle)).execute();
        dropPicture.bind(1, static_cast<std::int64_t>(slot.handle)).execute();
    }
    return putOwners() && writeHeaderRows(m_file, m_database);
}

bool DrawingWriter::put(const Slot& slot) {
    return bindRow(m_insert, slot) && m_insert.execute() && putPicture(slot);
}

bool DrawingWriter::putChanged(const Slot& slot) {
    if (!bindRow(m_update, slot) || !m_update.execute()) return false;
    if (m_file.changedRows() > 0) return putPicture(slot);
    const AcDbObjectId owner = slot.object->ownerId();
    if (!owner.isErased()) m_owners.insert(owner.slot());
    return put(slot);
}

bool DrawingWriter::putPicture(const Slot& slot) {
    if (!m_hasPicture) return true;
    const ReadAccess access(slot.object->objectId());
    std::string_view picture;
    try {
        picture = m_pictures.write(static_cast<AcDbEntity&>(*slot.object));
    } catch (const std::exception&) { // what a module's class raises: the drawing goes on without the picture
        picture = {};
    }
    return m_picture.bind(1, static_cast<std::int64_t>(slot.handle)).bindBytes(2, picture).execute();
}

// An owner's record lists what it owns but for what was erased when it was written. What comes back from
// being erased changes nothing in its owner, yet must be listed again.
bool DrawingWriter::putOwners() {
    for (const std::uint32_t number : m_owners) {
        const Slot& slot = m_database.slots()[number];
        if (slot.changed) continue;
        if (!bindRow(m_update, slot) || !m_update.execute()) return false;
    }
    return m_file.ok();
}

bool DrawingWriter::bindRow(SqlStatement& statement, const Slot& slot) {
    const AcDbObject& object = *slot.object;
    if (object.isA() != m_lastClass) noteClass(object);
    if (!file(object)) return false;
    statement.bind(1, static_cast<std::int64_t>(slot.handle))
        .bind(2, std::string_view(m_className))
        .bind(3, static_cast<std::int64_t>(object.ownerId().handle().value()))
        .bindBytes(4, m_record.record());
    return m_file.ok();
}

bool DrawingWriter::file(const AcDbObject& object) {
    const ReadAccess access(object.objectId());
    m_record.clear();
    Acad::ErrorStatus status = Acad::eOk;
    std::string reason;
    try {
        status = object.dwgOutFields(&m_record);
        if (status == Acad::eOk) status = m_record.filerStatus();
        if (status != Acad::eOk) reason = acadErrorStatusText(status);
    } catch (const std::exception& exception) { // what a module's class raises
        reason = exception.what();
    }
    if (reason.empty()) return true;
    return m_file.fail(fmt::format("object {} of class {} gives no record ({})", object.handle().text(),
                                   m_className, reason));
}

void DrawingWriter::noteClass(const AcDbObject& object) {
    const AcRxClass& rxClass = *object.isA();
    const ProxyContent* proxy = proxyContentOf(object);
    m_lastClass = proxy ? nullptr : &rxClass;
    m_className = proxy ? proxy->className : rxClass.name();
    // The host's own classes are everywhere, so nobody needs their pictures.
    const bool isEntity = rxClass.isDerivedFrom(AcDbEntity::desc());
    m_hasPicture = isEntity && (proxy || rxClass.appName() != AcDbEntity::desc()->appName());
    if (!m_classes.insert(m_className).second) return;
    m_class.clearValues().bind(1, std::string_view(m_className));
    m_class.bind(2, std::string_view(proxy ? proxy->dxfName : rxClass.dxfName()));
    m_class.bind(3, std::string_view(proxy ? proxy->appName : rxClass.appName()));
    m_class.bind(4, std::int64_t{isEntity});
    if (!proxy) {
        m_class.bind(5, std::int64_t{rxClass.traits().dwgVersion});
        m_class.bind(6, std::int64_t{rxClass.traits().maintVersion});
        m_class.bind(7, std::int64_t{rxClass.proxyFlags()});
    }
    m_class.execute();
}

} // namespace veldrin
