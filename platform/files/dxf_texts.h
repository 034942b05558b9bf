#pragma once

#include <memory>
#include <string>
#include <string_view>

namespace veldrin {

// Texts in exchange files. In both directions a line end is written as "^J" and "^" itself as "^ ", as a line
// holds one value.

// Whether a text is the same in all files.
bool isPlainDxfText(std::string_view text);

// For files whose texts are in the code page ANSI_1252; what it lacks becomes \U+XXXX.
void appendAsAnsi(std::string_view text, std::string& out);
// For files in UTF-8.
void appendAsUtf8(std::string_view text, std::string& out);

// Turns texts of a file into UTF-8: from its code page ("ANSI_1252", "ANSI_932", "UTF-8" ...), with \U+XXXX
// and \M+NXXXX. Bytes that mean nothing become U+FFFD; a code page that is unknown is taken for ANSI_1252.
class DxfTextDecoder {
public:
    DxfTextDecoder();
    ~DxfTextDecoder();
    DxfTextDecoder(const DxfTextDecoder&) = delete;
    DxfTextDecoder& operator=(const DxfTextDecoder&) = delete;

    void setCodePage(std::string_view name);
    void decode(std::string_view bytes, std::string& text);

private:
    struct Converter;
    void appendConverted(Converter* converter, std::string_view bytes, std::string& text);
    Converter* multibyte(char number);

    std::unique_ptr<Converter> m_codePage; // null: UTF-8
    std::unique_ptr<Converter> m_multibyte[6];
};

} // namespace veldrin
