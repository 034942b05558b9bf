#include "files/DamagedFile.h"

#include <filesystem>
#include <fstream>
#include <system_error>

namespace fs = std::filesystem;

namespace veldrin {

void Scratch::remove() const {
    std::error_code none;
    for (const char* ending : {"", "-journal"}) fs::remove(m_path + ending, none);
}

std::uintmax_t statedLength(const std::string& path) {
    unsigned char head[32] = {};
    std::ifstream(path, std::ios::binary).read(reinterpret_cast<char*>(head), sizeof head);
    const auto number = [&head](int at, int bytes) {
        std::uintmax_t value = 0;
        for (int i = 0; i < bytes; ++i) value = value << 8 | head[at + i];
        return value;
    };
    constexpr int kPageSizeAt = 16;
    constexpr int kPageCountAt = 28;
    constexpr std::uintmax_t kLargestPage = 65536; // written as 1
    const std::uintmax_t size = number(kPageSizeAt, 2);
    return (size == 1 ? kLargestPage : size) * number(kPageCountAt, 4);
}

std::string copyLengthened(const std::string& path, const std::string& into) {
    std::error_code error;
    fs::copy_file(path, into, error);
    if (error) return error.message();
    const std::uintmax_t stated = statedLength(into);
    const std::uintmax_t size = fs::file_size(into, error);
    constexpr std::uintmax_t kMostGrowth = 64; // times; a length beyond that is damage itself
    if (!error && size < stated && stated / kMostGrowth <= size) fs::resize_file(into, stated, error);
    return error ? error.message() : std::string();
}

} // namespace veldrin
