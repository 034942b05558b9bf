// Any bytes as Lisp source. What can be read must print so that it reads back to the same print, and a text
// that is read to its end counts as complete at the prompt.
#include "lisp/Engine.h"
#include "lisp/Printer.h"
#include "lisp/Reader.h"

#include <cstdlib>
#include <memory>

using namespace veldrin::lisp;

namespace {

void require(bool holds) {
    if (!holds) std::abort();
}

void checkPrinting(Engine& engine, const Value& form) {
    const std::string once = prin1Text(form);
    const std::string source = '\n' + once; // a byte order mark counts at the very start alone
    Reader again(engine, source);
    Value copy;
    require(again.next(copy));
    const bool mayBeEndless = once.find("inf") != std::string::npos; // 1e999 prints so, and reads as a name
    require(mayBeEndless || prin1Text(copy) == once);
    princText(form);
}

// Symbols are kept by their engine for good, so it is replaced now and then.
Engine& freshEngine() {
    static std::unique_ptr<Engine> engine;
    static int uses = 0;
    if (uses++ % 1000 == 0) engine = std::make_unique<Engine>();
    return *engine;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Engine& engine = freshEngine();
    const std::string text(reinterpret_cast<const char*>(data), size);
    Reader reader(engine, text, "input");
    try {
        for (Value form; reader.next(form);) checkPrinting(engine, form);
        require(isComplete(text));
    } catch (const Error& error) {
        require(error.line > 0 && error.file == "input");
    }
    return 0;
}
