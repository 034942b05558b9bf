// An open file of a Lisp program.
#pragma once

#include "lisp/Value.h"

#include <cstdio>
#include <optional>
#include <string>
#include <string_view>

namespace veldrin::lisp {

class VELDRIN_API FileStream final : public Payload {
public:
    // Mode "r", "w" or "a"; null when the file cannot be opened.
    static std::shared_ptr<FileStream> open(const std::string& path, char mode);
    ~FileStream() override;

    std::string describe() const override { return "#<file \"" + path_ + "\">"; }
    bool isOpen() const { return file_ != nullptr; }
    bool close(); // false when what was written could not be stored

    bool write(std::string_view text);
    std::optional<std::string> readLine(); // without its end; none at the end of the file
    std::optional<char32_t> readCharacter();

private:
    FileStream(std::FILE* file, std::string path) : file_(file), path_(std::move(path)) {}

    std::FILE* file_;
    std::string path_;
};

// A path as the file system takes it: backslashes become slashes.
VELDRIN_API std::string nativePath(std::string_view path);

} // namespace veldrin::lisp
