// Any bytes as a project database. It may be refused, or opened and read with errors; a repair leaves a file
// that opens, or the damaged one.
#include "HostWithModule.h"
#include "database/CDBConnection.h"
#include "projects/ProjectCheck.h"

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include <unistd.h>

namespace {

constexpr int kMostRecords = 300;

void readAll(plumb::CDBConnection& connection) {
    std::vector<CString> tables;
    connection.GetTableNames(tables);
    for (const CString& table : tables) {
        std::vector<CString> indexes;
        if (!connection.OpenTable(table, "") || !connection.GetIndexNames(indexes)) continue;
        indexes.emplace_back("");
        for (const CString& index : indexes) {
            plumb::FieldArray record;
            if (!connection.OpenTable(table, index) || !connection.MoveFirst(&record)) continue;
            for (int n = 0; n < kMostRecords && connection.Move(1, &record); ++n) {
            }
            connection.Seek1(std::int32_t{1}, &record);
            connection.EditRecord({{"iTee", std::int32_t{1}}});
        }
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    HostWithModule::instance();
    static const std::string folder = "/dev/shm/veldrin-fuzz-project-" + std::to_string(getpid());
    const std::string path = folder + "/F vq_plumb.vq";
    std::filesystem::remove_all(folder);
    std::filesystem::create_directory(folder);
    std::ofstream(path, std::ios::binary)
        .write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
    plumb::CDBConnection connection;
    const CString opened = connection.Open(path, false, false);
    if (opened == path) readAll(connection);
    connection.Close();
    const veldrin::ProjectReport report = veldrin::repairProject(path);
    if (report.failure.empty() && connection.Open(path, false, false) != path) std::abort();
    connection.Close();
    std::filesystem::remove_all(folder);
    return 0;
}
