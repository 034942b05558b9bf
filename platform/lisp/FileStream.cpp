#include "lisp/FileStream.h"

#include "lisp/Characters.h"

#include <algorithm>
#include <filesystem>

namespace veldrin::lisp {

std::string nativePath(std::string_view path) {
    std::string native(path);
    std::replace(native.begin(), native.end(), '\\', '/');
    return native;
}

std::shared_ptr<FileStream> FileStream::open(const std::string& path, char mode) {
    const std::string native = nativePath(path);
    std::error_code problem;
    if (std::filesystem::is_directory(native, problem)) return nullptr;
    std::FILE* file = std::fopen(native.c_str(), mode == 'r' ? "rb" : mode == 'a' ? "ab" : "wb");
    return file ? std::shared_ptr<FileStream>(new FileStream(file, path)) : nullptr;
}

FileStream::~FileStream() {
    close();
}

bool FileStream::close() {
    std::FILE* file = std::exchange(file_, nullptr);
    return !file || std::fclose(file) == 0;
}

bool FileStream::write(std::string_view text) {
    return std::fwrite(text.data(), 1, text.size(), file_) == text.size();
}

std::optional<std::string> FileStream::readLine() {
    std::string line;
    int c = std::fgetc(file_);
    if (c == EOF) return std::nullopt;
    for (; c != EOF && c != '\n'; c = std::fgetc(file_)) line += static_cast<char>(c);
    if (line.ends_with('\r')) line.pop_back();
    return line;
}

std::optional<char32_t> FileStream::readCharacter() {
    int c = std::fgetc(file_);
    if (c == '\r') { // both line ends read as one newline
        c = std::fgetc(file_);
        if (c != '\n') std::ungetc(c, file_);
        return '\n';
    }
    if (c == EOF) return std::nullopt;
    std::string bytes(1, static_cast<char>(c));
    const int more = c >= 0xF0 ? 3 : c >= 0xE0 ? 2 : c >= 0xC2 ? 1 : 0;
    for (int i = 0; i < more; ++i) {
        const int next = std::fgetc(file_);
        if ((next & 0xC0) != 0x80 || next == EOF) {
            std::ungetc(next, file_);
            break;
        }
        bytes += static_cast<char>(next);
    }
    std::size_t at = 0;
    return nextCodePoint(bytes, at);
}

} // namespace veldrin::lisp
