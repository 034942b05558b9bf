#include "editor/LispServices.h"

#include "editor/CallFrames.h"
#include "editor/CommandLine.h"
#include "editor/DocumentManager.h"
#include "editor/SystemVariables.h"
#include "lisp/Engine.h"
#include "runtime/Host.h"
#include "system/ProgramFolders.h"
#include "system/UserSettings.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <vector>

namespace fs = std::filesystem;

namespace veldrin {

using lisp::Value;

void LispServices::print(std::string_view text) {
    Host::current().commandLine().print(text);
}

std::optional<std::string> LispServices::readLine() {
    return Host::current().commandLine().readLine();
}

std::string LispServices::findFile(std::string_view name) {
    if (name.empty()) return {};
    const fs::path given(name);
    std::vector<fs::path> folders{fs::path()}; // the working directory
    if (given.is_relative()) {
        Host& host = Host::current();
        const fs::path running(host.lisp().currentFile());
        if (running.has_parent_path()) folders.push_back(running.parent_path());
        const Document* document = host.documents().current();
        if (document && document->isTitled()) folders.push_back(fs::path(document->path()).parent_path());
        if (const fs::path library = findDataFolder("lisp"); !library.empty()) folders.push_back(library);
    }
    for (const fs::path& folder : folders) {
        std::error_code error;
        const fs::path candidate = fs::absolute(folder / given, error);
        if (!error && fs::exists(candidate, error)) return candidate.lexically_normal().string();
    }
    return {};
}

Value LispServices::systemVariable(std::string_view upperName) {
    return Host::current().variables().getLisp(upperName);
}

std::optional<std::string> LispServices::environment(std::string_view name) {
    if (const auto set = m_environment.find(name); set != m_environment.end()) return set->second;
    const char* value = std::getenv(std::string(name).c_str());
    return value ? std::optional<std::string>(value) : std::nullopt;
}

void LispServices::setEnvironment(std::string_view name, std::string_view value) {
    m_environment.insert_or_assign(std::string(name), std::string(value));
}

Value LispServices::readSetting(std::string_view key, std::string_view name) {
    const auto value = Host::current().settings().read(key, name);
    if (!value) return {};
    if (const auto* number = std::get_if<std::int32_t>(&*value)) return Value::integer(*number);
    return Value::text(std::get<std::string>(*value));
}

bool LispServices::writeSetting(std::string_view key, std::string_view name, const Value& value) {
    UserSettings& settings = Host::current().settings();
    if (!settings.createKey(key)) return false;
    if (value.isNil()) return true; // the key alone
    if (value.isInteger()) return settings.write(key, name, value.asInteger());
    if (value.isText()) return settings.write(key, name, std::string(value.asText()));
    throw lisp::Error::badArgument("stringp", value);
}

bool LispServices::deleteSetting(std::string_view key, std::optional<std::string_view> name) {
    UserSettings& settings = Host::current().settings();
    return name ? settings.remove(key, *name) : settings.removeKey(key);
}

// The first word counts from 1, the second is empty.
lisp::Ename LispServices::pickSetName(const Value& set) {
    if (Host::current().callFrames().depth() == 0) m_namedSets.clear();
    auto named = std::find(m_namedSets.begin(), m_namedSets.end(), set.payload());
    if (named == m_namedSets.end()) named = m_namedSets.insert(named, set.payload());
    return {{named - m_namedSets.begin() + 1, 0}};
}

Value LispServices::pickSetOf(const lisp::Ename& name) {
    const auto number = static_cast<std::size_t>(name.words[0]);
    return number >= 1 && number <= m_namedSets.size() ? Value::pickSet(m_namedSets[number - 1]) : Value();
}

} // namespace veldrin
