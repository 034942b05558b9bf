// Any text as SQL: rows, a change, or an error. What holds for the file afterwards: it is whole, and a yes/no
// is -1 or 0.
#include "HostWithModule.h"
#include "database/CDBConnection.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <string>

#include <unistd.h>

namespace {

// Statements that never end, or that reach for other files, are not what is looked for here.
bool isOutOfScope(std::string sql) {
    std::transform(sql.begin(), sql.end(), sql.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    for (const char* word :
         {"recursive", "attach", "vacuum", "pragma", "randomblob", "zeroblob", "printf", "format"})
        if (sql.find(word) != std::string::npos) return true;
    return false;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    HostWithModule::instance();
    static const std::string path = "/dev/shm/veldrin-fuzz-" + std::to_string(getpid()) + ".vq";
    const std::string sql(reinterpret_cast<const char*>(data), size);
    if (isOutOfScope(sql)) return 0;
    std::filesystem::remove(path);
    plumb::CDBConnection connection;
    connection.CreateDatabase(path);
    connection.Open(path, false, false);
    connection.Execute(
        "create table tblA(ixA INTEGER PRIMARY KEY AUTOINCREMENT, sName TEXT(20) COLLATE NOCASE DEFAULT "
        "' ', bOn YESNO DEFAULT 0, dSize DOUBLE)");
    connection.Execute("create index [tblA.sName] on tblA(sName)");
    connection.Execute("insert into tblA(sName, bOn) values ('a', 1), (\"b\", 0)");
    RowArray rows;
    connection.Select(sql, rows);
    rows.flat();
    connection.Execute(sql);
    bool exists = false;
    if (connection.TableExists("tblA", exists) && exists &&
        connection.Select("select count(*) from tblA where bOn is not 0 and bOn is not -1", rows) &&
        rows.at(0, 0).whole() != 0)
        std::abort();
    if (!connection.Select("pragma integrity_check", rows) || rows.at(0, 0).text() != "ok") std::abort();
    return 0;
}
