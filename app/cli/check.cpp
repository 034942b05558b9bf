#include "files/DrawingCheck.h"

#include "cli/Session.h"
#include "cli/Subcommands.h"
#include "editor/CommandLine.h"

#include <fmt/format.h>

#include <memory>

namespace {

void print(Session& session, const std::string& text) {
    session.host().commandLine().freshLine();
    session.host().commandLine().print(text);
}

std::string lines(const std::vector<std::string>& problems) {
    std::string text;
    for (const std::string& problem : problems) text += "  " + problem + "\n";
    return text;
}

// What the module says of itself is no part of the answer.
bool startQuietly(Session& session) {
    const veldrin::CommandLine::Capture capture(session.host().commandLine());
    return session.start({});
}

int check(const std::string& file) {
    Session session;
    if (!startQuietly(session)) return session.finish(kFailed);
    const veldrin::DrawingReport report = veldrin::checkDrawing(file);
    if (!report.failure.empty()) {
        session.tell(report.failure);
        return session.finish(kFailed);
    }
    if (report.problems.empty()) {
        print(session, fmt::format("{} is sound: {} objects.\n", file, report.objects));
        return session.finish(kDone);
    }
    print(session, fmt::format("{} is damaged; {} objects can be read:\n", file, report.objects));
    print(session, lines(report.problems));
    return session.finish(kFailed);
}

int repair(const std::string& file) {
    Session session;
    if (!startQuietly(session)) return session.finish(kFailed);
    const veldrin::DrawingReport report = veldrin::repairDrawing(file);
    if (!report.failure.empty()) {
        session.tell(report.failure);
        return session.finish(kFailed);
    }
    if (report.kept.empty())
        print(session, fmt::format("{} is sound, nothing was changed.\n", file));
    else
        print(session,
              fmt::format("{} was mended with {} objects; the damaged file is {}. What was wrong:\n{}", file,
                          report.objects, report.kept, lines(report.problems)));
    return session.finish(kDone);
}

Subcommand addFileCall(CLI::App& program, const char* name, const char* description,
                       int (*call)(const std::string&)) {
    auto file = std::make_shared<std::string>();
    CLI::App* app = program.add_subcommand(name, description);
    app->add_option("FILE", *file, "a drawing")->required();
    return {app, [=] { return call(*file); }};
}

} // namespace

Subcommand addCheck(CLI::App& program) {
    return addFileCall(program, "check", "Tells what is wrong with a drawing file", check);
}

Subcommand addRepair(CLI::App& program) {
    return addFileCall(program, "repair",
                       "Saves what can be read of a damaged drawing file, and keeps that file", repair);
}
