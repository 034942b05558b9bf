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

namespace {

struct StatedForm {
    std::uintmax_t pageSize = 0;
    std::uintmax_t pages = 0;
};

StatedForm statedForm(const std::string& path) {
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
    constexpr std::uintmax_t kSmallestPage = 512;
    const std::uintmax_t written = number(kPageSizeAt, 2);
    const std::uintmax_t size = written == 1 ? kLargestPage : written;
    if (size < kSmallestPage || (size & (size - 1)) != 0) return {}; // no power of two: nonsense
    return {size, number(kPageCountAt, 4)};
}

} // namespace

std::uintmax_t statedLength(const std::string& path) {
    const StatedForm form = statedForm(path);
    return form.pageSize * form.pages;
}

std::string copyLengthened(const std::string& path, const std::string& into) {
    std::error_code error;
    fs::copy_file(path, into, error);
    if (error) return error.message();
    const StatedForm form = statedForm(into);
    const std::uintmax_t stated = form.pageSize * form.pages;
    const std::uintmax_t size = fs::file_size(into, error);
    constexpr std::uintmax_t kMostGrowth = 64; // times; a length beyond that is damage itself
    if (!error && size < stated && stated / kMostGrowth <= size) {
        // A page that is there in part would show rows that never were.
        fs::resize_file(into, size - size % form.pageSize, error);
        if (!error) fs::resize_file(into, stated, error);
    }
    return error ? error.message() : std::string();
}

} // namespace veldrin
