#include "cli/Subcommands.h"

#include <cstdio>
#include <exception>
#include <iostream>

namespace {

int runChosen(const std::vector<Subcommand>& subcommands) {
    for (const Subcommand& subcommand : subcommands)
        if (subcommand.app->parsed()) return subcommand.run();
    return kWrongArguments;
}

} // namespace

int main(int argc, char** argv) {
    CLI::App program("Plumbing plans on a small drafting host", "veldrin");
    program.require_subcommand(1);
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    const std::vector<Subcommand> subcommands{
        addRun(program, arguments), addRepl(program),       addPlot(program),
        addInfo(program),           addExport(program),     addCheck(program),
        addRepair(program),         addNewProject(program), addDump(program)};
    try {
        program.parse(argc, argv);
        return runChosen(subcommands);
    } catch (const CLI::ParseError& problem) {
        if (problem.get_exit_code() == 0) return program.exit(problem);
        std::cerr << "veldrin: " << problem.what()
                  << "\nRun with --help for the calls and their arguments.\n";
        return kWrongArguments;
    } catch (const std::exception& problem) {
        std::fflush(stdout);
        std::cerr << "veldrin: " << problem.what() << "\n";
        return kFailed;
    }
}
