#include "cli/Session.h"
#include "cli/Subcommands.h"
#include "editor/CommandLine.h"
#include "projects/ProjectDump.h"
#include "projects/ProjectMaker.h"
#include "runtime/CException.h"

#include <fmt/format.h>

#include <filesystem>
#include <iostream>
#include <memory>

namespace fs = std::filesystem;

namespace {

struct NewProject {
    std::string folder;
    std::string name;
    bool standards = false;
};

// A project is called like its folder unless it is given a name.
std::string nameOf(const NewProject& wanted) {
    if (!wanted.name.empty()) return wanted.name;
    std::error_code error;
    const std::string name =
        fs::weakly_canonical(fs::absolute(wanted.folder, error), error).filename().string();
    return name.empty() ? "Project" : name;
}

int makeNew(const NewProject& wanted) {
    try {
        const std::string path = wanted.standards ? veldrin::makeStandardsFile(wanted.folder, nameOf(wanted))
                                                  : veldrin::makeProject(wanted.folder, nameOf(wanted));
        std::cout << path << "\n";
        return kDone;
    } catch (const CException& failure) {
        std::cerr << "veldrin: " << failure.GetErrorMessage() << "\n";
        return kFailed;
    }
}

int dump(const std::string& path) {
    try {
        veldrin::dumpProject(path, std::cout);
        std::cout.flush();
        if (std::cout) return kDone;
        std::cerr << "veldrin: The dump cannot be written.\n";
    } catch (const CException& failure) {
        std::cout.flush();
        std::cerr << "veldrin: " << failure.GetErrorMessage() << "\n";
    }
    return kFailed;
}

} // namespace

Subcommand addNewProject(CLI::App& program) {
    auto wanted = std::make_shared<NewProject>();
    CLI::App* app =
        program.add_subcommand("new-project", "Makes a project database from the starter standards");
    app->add_option("DIR", wanted->folder, "its folder, made where it is missing")->required();
    app->add_option("--name", wanted->name, "its name; otherwise that of the folder");
    app->add_flag("--standards", wanted->standards, "a standards file instead");
    return {app, [=] { return makeNew(*wanted); }};
}

Subcommand addDump(CLI::App& program) {
    auto path = std::make_shared<std::string>();
    CLI::App* app = program.add_subcommand("dump", "Writes a project database as text");
    app->add_option("PROJECT", *path, "a project database")->required();
    return {app, [=] { return dump(*path); }};
}
