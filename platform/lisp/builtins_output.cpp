// Printing, and reading and writing of open files. Without a file the command line is meant.
#include "lisp/Builtins.h"
#include "lisp/Characters.h"
#include "lisp/FileStream.h"
#include "lisp/Printer.h"

namespace veldrin::lisp {

namespace {

FileStream& openFile(Args args, std::size_t i) {
    auto& file = args.payload<FileStream>(i, Kind::File, "streamp");
    if (!file.isOpen()) args.wrong(i, "streamp");
    return file;
}

void write(Engine& e, Args args, std::size_t file, const std::string& text) {
    if (!args.has(file)) return e.print(text);
    if (!openFile(args, file).write(text)) throw Error("cannot write to file");
}

// (princ) alone answers a symbol without a name, so that nothing shows at the prompt.
Value quiet(Engine& e) {
    return Value::symbol(&e.intern(""));
}

Value princ(Engine& e, Args args) {
    if (args.size() == 0) return quiet(e);
    write(e, args, 1, princText(args[0]));
    return args[0];
}

Value prin1(Engine& e, Args args) {
    if (args.size() == 0) return quiet(e);
    write(e, args, 1, prin1Text(args[0]));
    return args[0];
}

Value print(Engine& e, Args args) {
    if (args.size() == 0) return quiet(e);
    write(e, args, 1, "\n" + prin1Text(args[0]) + " ");
    return args[0];
}

Value prompt(Engine& e, Args args) {
    e.print(args.text(0));
    return {};
}

Value terpri(Engine& e, Args) {
    e.print("\n");
    return {};
}

Value writeLine(Engine& e, Args args) {
    write(e, args, 1, args.string(0) + "\n");
    return args[0];
}

Value writeChar(Engine& e, Args args) {
    const std::int32_t code = args.integer(0);
    if (code < 0 || code > 0x10FFFF)
        throw Error("bad argument value: character code " + std::to_string(code));
    std::string text;
    appendCodePoint(text, static_cast<char32_t>(code));
    write(e, args, 1, text);
    return args[0];
}

Value open(Engine&, Args args) {
    const std::string path = args.string(0);
    const auto mode = args.text(1);
    const char letter = mode.empty() ? ' ' : static_cast<char>(mode[0] | 32);
    if (letter != 'r' && letter != 'w' && letter != 'a')
        throw Error("bad argument value: open mode " + std::string(mode));
    auto file = FileStream::open(path, letter);
    return file ? Value::file(std::move(file)) : Value();
}

Value close(Engine&, Args args) {
    if (!openFile(args, 0).close()) throw Error("cannot write to file");
    return {};
}

Value readLine(Engine& e, Args args) {
    const auto line = args.has(0) ? openFile(args, 0).readLine() : e.services().readLine();
    return line ? Value::text(*line) : Value();
}

Value readChar(Engine& e, Args args) {
    if (args.has(0)) {
        const auto c = openFile(args, 0).readCharacter();
        return c ? Value::integer(static_cast<std::int32_t>(*c)) : Value();
    }
    const auto line = e.services().readLine();
    if (!line) return {};
    std::size_t at = 0;
    return Value::integer(line->empty() ? '\n' : static_cast<std::int32_t>(nextCodePoint(*line, at)));
}

constexpr BuiltinRow rows[] = {
    {"princ", 0, 2, princ},          {"prin1", 0, 2, prin1},        {"print", 0, 2, print},
    {"prompt", 1, 1, prompt},        {"terpri", 0, 0, terpri},      {"write-line", 1, 2, writeLine},
    {"write-char", 1, 2, writeChar}, {"open", 2, 3, open},          {"close", 1, 1, close},
    {"read-line", 0, 1, readLine},   {"read-char", 0, 1, readChar},
};

} // namespace

std::span<const BuiltinRow> outputBuiltins() {
    return rows;
}

} // namespace veldrin::lisp
