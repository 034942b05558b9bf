#pragma once

#include <CLI/CLI.hpp>

#include <functional>
#include <string>
#include <vector>

// The calls of the program, a function each: it declares the call's arguments and gives what runs when the
// call was made. The result is the program's exit status.

inline constexpr int kDone = 0;
inline constexpr int kFailed = 1; // a script's error, a file that could not be read or written
inline constexpr int kWrongArguments = 2;

struct Subcommand {
    CLI::App* app;
    std::function<int()> run;
};

Subcommand addRun(CLI::App& program, const std::vector<std::string>& arguments);
Subcommand addRepl(CLI::App& program);
Subcommand addPlot(CLI::App& program);
Subcommand addExport(CLI::App& program);
Subcommand addInfo(CLI::App& program);
Subcommand addCheck(CLI::App& program);
Subcommand addRepair(CLI::App& program);
Subcommand addNewProject(CLI::App& program);
Subcommand addDump(CLI::App& program);
