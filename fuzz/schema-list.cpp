// Any sequence of values as a schema list: a table comes to be, with the fields before the first mistake, and
// it takes a record.
#include "HostWithModule.h"
#include "database/CDBConnection.h"

#include <cstdint>
#include <filesystem>
#include <string>

#include <unistd.h>

namespace {

// One value for a byte; texts of their own behind an 'x', up to a blank.
std::vector<COleVariant> itemsFrom(const std::uint8_t* data, std::size_t size) {
    constexpr const char* kWords[] = {"*RTLB*",   "*RTLE*", "BOOL", "BYTE", "INT", "LONG", "REAL",
                                      "CURRENCY", "DATE",   "MEMO", "TEXT", "I",   "D",    ""};
    std::vector<COleVariant> items;
    for (std::size_t i = 0; i < size; ++i) {
        const std::uint8_t code = data[i];
        if (code >= 'a' && code < 'a' + std::size(kWords)) {
            items.emplace_back(kWords[code - 'a']);
        } else if (code == 'x') {
            std::string text;
            while (++i < size && data[i] != ' ') text += static_cast<char>(data[i]);
            items.emplace_back(text);
        } else if (code == 't' || code == 'f') {
            items.emplace_back(static_cast<std::int16_t>(code == 't' ? -1 : 0), VT_BOOL);
        } else if (code == 'n') {
            items.emplace_back();
        } else {
            items.emplace_back(static_cast<std::int32_t>(code));
        }
    }
    return items;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    HostWithModule::instance();
    static const std::string path = "/dev/shm/veldrin-fuzz-" + std::to_string(getpid()) + ".vq";
    std::filesystem::remove(path);
    plumb::CDBConnection connection;
    connection.CreateDatabase(path);
    connection.Open(path, false, false);
    const std::size_t half = size / 2;
    connection.CreateTable("tblA", itemsFrom(data, half));
    connection.AddFields("tblA", itemsFrom(data + half, size - half));
    if (connection.OpenTable("tblA", "")) {
        plumb::FieldArray blank;
        connection.GetBlankRecord(blank);
        connection.AddRecord(blank, true);
    }
    return 0;
}
