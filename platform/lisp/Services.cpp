#include "lisp/Services.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <iostream>

namespace veldrin::lisp {

Services::~Services() = default;

void Services::print(std::string_view text) {
    std::fwrite(text.data(), 1, text.size(), stdout);
}

std::optional<std::string> Services::readLine() {
    std::string line;
    if (!std::getline(std::cin, line)) return std::nullopt;
    return line;
}

std::string Services::findFile(std::string_view name) {
    std::error_code problem;
    const std::filesystem::path path(name);
    if (!std::filesystem::exists(path, problem)) return {};
    return std::filesystem::absolute(path, problem).string();
}

Value Services::systemVariable(std::string_view upperName) {
    if (upperName == "LUNITS") return Value::integer(2);
    if (upperName == "LUPREC") return Value::integer(4);
    if (upperName == "ANGBASE") return Value::real(0.0);
    if (upperName == "AUNITS" || upperName == "AUPREC" || upperName == "DIMZIN" || upperName == "ANGDIR")
        return Value::integer(0);
    return {};
}

std::optional<std::string> Services::environment(std::string_view name) {
    const char* value = std::getenv(std::string(name).c_str());
    return value ? std::optional<std::string>(value) : std::nullopt;
}

void Services::setEnvironment(std::string_view name, std::string_view value) {
    setenv(std::string(name).c_str(), std::string(value).c_str(), 1);
}

Value Services::readSetting(std::string_view, std::string_view) {
    return {};
}
bool Services::writeSetting(std::string_view, std::string_view, const Value&) {
    return false;
}
bool Services::deleteSetting(std::string_view, std::optional<std::string_view>) {
    return false;
}

Ename Services::pickSetName(const Value&) {
    return {};
}
Value Services::pickSetOf(const Ename&) {
    return {};
}

} // namespace veldrin::lisp
