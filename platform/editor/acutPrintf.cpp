#include "runtime/acut.h"

#include "editor/CommandLine.h"
#include "runtime/Host.h"

#include <cstdarg>
#include <cstdio>
#include <string>

int acutPrintf(const char* format, ...) {
    if (!format || !veldrin::Host::exists()) return -1;
    va_list arguments;
    va_start(arguments, format);
    va_list again;
    va_copy(again, arguments);
    const int length = std::vsnprintf(nullptr, 0, format, arguments);
    va_end(arguments);
    std::string text(length > 0 ? static_cast<std::size_t>(length) : 0, '\0');
    if (length > 0) std::vsnprintf(text.data(), text.size() + 1, format, again);
    va_end(again);
    if (length > 0) veldrin::Host::current().commandLine().print(text);
    return length;
}
