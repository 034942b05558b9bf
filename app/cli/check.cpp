#include "cli/Session.h"
#include "cli/Subcommands.h"
#include "editor/CommandLine.h"
#include "files/DrawingCheck.h"
#include "projects/ProjectCheck.h"
#include "projects/ProjectFiles.h"

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

// A drawing or a project, in the words that both have.
struct Report {
    std::string failure;
    std::vector<std::string> problems;
    std::string contents; // "12 objects"
    std::string kept;
};

Report drawingReport(const veldrin::DrawingReport& report) {
    return {report.failure, report.problems, fmt::format("{} objects", report.objects), report.kept};
}

Report projectReport(const veldrin::ProjectReport& report) {
    return {report.failure, report.problems, fmt::format("{} records", report.records), report.kept};
}

int check(const std::string& file) {
    Session session;
    if (!startQuietly(session)) return session.finish(kFailed);
    const Report report = veldrin::looksLikeProject(file) ? projectReport(veldrin::checkProject(file))
                                                          : drawingReport(veldrin::checkDrawing(file));
    if (!report.failure.empty()) {
        session.tell(report.failure);
        return session.finish(kFailed);
    }
    if (report.problems.empty()) {
        print(session, fmt::format("{} is sound: {}.\n", file, report.contents));
        return session.finish(kDone);
    }
    print(session, fmt::format("{} is damaged; {} can be read:\n", file, report.contents));
    print(session, lines(report.problems));
    return session.finish(kFailed);
}

int repair(const std::string& file) {
    Session session;
    if (!startQuietly(session)) return session.finish(kFailed);
    const Report report = veldrin::looksLikeProject(file) ? projectReport(veldrin::repairProject(file))
                                                          : drawingReport(veldrin::repairDrawing(file));
    if (!report.failure.empty()) {
        session.tell(report.failure);
        return session.finish(kFailed);
    }
    if (report.problems.empty())
        print(session, fmt::format("{} is sound, nothing was changed.\n", file));
    else
        print(session, fmt::format("{} was mended with {}{}. What was wrong:\n{}", file, report.contents,
                                   report.kept.empty() ? "" : "; the damaged file is " + report.kept,
                                   lines(report.problems)));
    return session.finish(kDone);
}

Subcommand addFileCall(CLI::App& program, const char* name, const char* description,
                       int (*call)(const std::string&)) {
    auto file = std::make_shared<std::string>();
    CLI::App* app = program.add_subcommand(name, description);
    app->add_option("FILE", *file, "a drawing or a project database")->required();
    return {app, [=] { return call(*file); }};
}

} // namespace

Subcommand addCheck(CLI::App& program) {
    return addFileCall(program, "check", "Tells what is wrong with a drawing or a project", check);
}

Subcommand addRepair(CLI::App& program) {
    return addFileCall(program, "repair", "Mends a damaged drawing or project, and keeps the damaged file",
                       repair);
}
