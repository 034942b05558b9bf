#pragma once

#include "lisp/Services.h"

#include <map>
#include <memory>
#include <vector>

namespace veldrin {

// What the interpreter asks of the host: the command line, the system variables, the user's settings, and
// where files are looked for: the working directory, beside the running script, the current drawing's folder,
// lisp/.
class LispServices : public lisp::Services {
public:
    void print(std::string_view text) override;
    std::optional<std::string> readLine() override;
    std::string findFile(std::string_view name) override;
    lisp::Value systemVariable(std::string_view upperName) override;
    std::optional<std::string> environment(std::string_view name) override;
    void setEnvironment(std::string_view name, std::string_view value) override;
    lisp::Value readSetting(std::string_view key, std::string_view name) override;
    bool writeSetting(std::string_view key, std::string_view name, const lisp::Value& value) override;
    bool deleteSetting(std::string_view key, std::optional<std::string_view> name) override;
    lisp::Ename pickSetName(const lisp::Value& set) override;
    lisp::Value pickSetOf(const lisp::Ename& name) override;

private:
    std::map<std::string, std::string, std::less<>> m_environment;
    // Sets whose names C++ holds, for as long as it may: while calls of C++ functions run.
    std::vector<std::shared_ptr<lisp::Payload>> m_namedSets;
};

} // namespace veldrin
