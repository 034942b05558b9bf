// Any bytes as Lisp source: they are read to the end or end in an error, and what was read prints as text
// that reads as the same again.

#include "lisp/Engine.h"
#include "lisp/Printer.h"
#include "lisp/Reader.h"

#include <cstdlib>

using namespace veldrin::lisp;

namespace {

// Errors are part of the game here, losing something is not. Names and texts can be such that print and read
// differ (a symbol with a blank from `read`), so only that it reads at all is asked of what was printed.
void readAll(Engine& engine, std::string_view source) {
    Reader reader(engine, source);
    for (Value form; reader.next(form);) {
        const std::string printed = prin1Text(form);
        isComplete(printed);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static Engine engine;
    const std::string_view source(reinterpret_cast<const char*>(data), size);
    isComplete(source);
    const Outcome outcome = engine.run([&] {
        readAll(engine, source);
        return Value();
    });
    static_cast<void>(outcome);
    return 0;
}
