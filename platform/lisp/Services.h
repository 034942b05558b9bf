// What the interpreter asks of the host around it. Every answer has a default that works without a host,
// so that an engine can be tested alone.
#pragma once

#include "lisp/Value.h"

#include <optional>
#include <string>
#include <string_view>

namespace veldrin::lisp {

class VELDRIN_API Services {
public:
    virtual ~Services();

    // The command line: text as it comes, without a line's end added. Default: standard output.
    virtual void print(std::string_view text);
    // A line or a character typed by the user, for `read-line` and `read-char` without a file; none at
    // the end of input. Default: standard input.
    virtual std::optional<std::string> readLine();

    // The full path of a file that `load`, `findfile` and `open` mean by a relative name; empty when there
    // is none. Default: as seen from the working directory.
    virtual std::string findFile(std::string_view name);

    // A system variable that formatting looks at (LUNITS, LUPREC, AUNITS, AUPREC, DIMZIN, ANGBASE,
    // ANGDIR); nil when unknown. Default: the values of a new drawing.
    virtual Value systemVariable(std::string_view upperName);

    // `getenv`, `setenv`. Default: the process's environment.
    virtual std::optional<std::string> environment(std::string_view name);
    virtual void setEnvironment(std::string_view name, std::string_view value);

    // The per-user settings behind `vl-registry-`: an empty name is a key's own value. Writing and deleting
    // answer whether they succeeded. Default: nothing is kept.
    virtual Value readSetting(std::string_view key, std::string_view name);
    virtual bool writeSetting(std::string_view key, std::string_view name, const Value& value);
    virtual bool deleteSetting(std::string_view key, std::optional<std::string_view> name);

    // The two words that stand for a selection set in C++, and the set for such words (nil when there is
    // none). Default: zeros and nil.
    virtual Ename pickSetName(const Value& set);
    virtual Value pickSetOf(const Ename& name);
};

} // namespace veldrin::lisp
