#include "files/DrawingFormat.h"

#include <fmt/format.h>

#include <cstdint>
#include <random>

namespace veldrin {

namespace {

constexpr int kApplicationId = 0x56514452; // "VQDR"

constexpr const char* kTables = R"(
create table objects(
    handle integer primary key,
    class text not null,
    owner integer not null,
    record blob not null);
create table classes(
    name text primary key,
    dxf_name text not null,
    application text not null,
    is_entity integer not null,
    dwg_version integer,
    maint_version integer,
    proxy_flags integer) without rowid;
create table pictures(
    handle integer primary key,
    picture blob not null);
create table header(
    name text primary key,
    value) without rowid;
)";

} // namespace

bool makeDrawingFormat(SqlFile& file) {
    file.run(fmt::format("pragma application_id = {}", kApplicationId).c_str());
    file.run(fmt::format("pragma user_version = {}", kDrawingFormatVersion).c_str());
    return file.run(kTables);
}

bool checkDrawingFormat(SqlFile& file) {
    const std::int64_t application = file.number("pragma application_id");
    if (file.ok() && application != kApplicationId) return file.fail("it is not a drawing");
    const std::int64_t version = file.number("pragma user_version");
    if (file.ok() && version > kDrawingFormatVersion)
        return file.fail(fmt::format("it has format {} of a newer program, this one reads up to {}", version,
                                     kDrawingFormatVersion));
    if (file.ok() && version < 1) return file.fail("it is damaged (no format version)");
    return file.ok();
}

std::string newSaveId() {
    std::random_device source;
    std::string id;
    for (int part = 0; part < 4; ++part) id += fmt::format("{:08x}", source());
    return id;
}

std::string readSaveId(SqlFile& file) {
    SqlStatement query(file, "select value from header where name = 'SAVEID'");
    return query.step() ? std::string(query.text(0)) : std::string();
}

bool writeSaveId(SqlFile& file, const std::string& saveId) {
    return SqlStatement(file, "insert or replace into header values('SAVEID', ?)").bind(1, saveId).execute();
}

} // namespace veldrin
