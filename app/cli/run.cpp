#include "cli/Session.h"
#include "cli/Subcommands.h"
#include "cli/windows.h"

#include <algorithm>
#include <memory>

namespace {

struct RunOptions {
    std::string script;
    std::string drawing;
    bool bare = false;
    bool show = false;
};

int run(const RunOptions& options, std::vector<std::string> arguments) {
    Session session;
    if (options.show) {
        std::string problem;
        switch (showWindows(session.host(), problem)) {
        case Windows::kShown: break;
        case Windows::kNotBuilt:
            session.tell("--show: this program is built without windows");
            return kWrongArguments;
        case Windows::kNotLoaded: session.tell("--show: " + problem); return kFailed;
        case Windows::kNoDisplay: session.tell("--show: there is no display"); return kFailed;
        }
    }
    veldrin::lisp::Outcome outcome;
    if (!session.canRead(options.script)) return session.finish(kFailed);
    if (!session.start({options.bare, options.drawing, std::move(arguments)})) return session.finish(kFailed);
    if (!session.runScript(options.script, outcome)) return session.finish(kFailed);
    return session.finish(session.statusOf(outcome));
}

// An option that is unknown belongs to the script when it stands behind the script's name.
void refuseForeignOptions(const std::vector<std::string>& all, const RunOptions& options,
                          const std::vector<std::string>& rest) {
    const auto script = std::find(all.begin(), all.end(), options.script);
    for (const std::string& foreign : rest)
        if (std::find(all.begin(), script, foreign) != script) throw CLI::ExtrasError("run", {foreign});
}

} // namespace

Subcommand addRun(CLI::App& program, const std::vector<std::string>& arguments) {
    auto options = std::make_shared<RunOptions>();
    CLI::App* app = program.add_subcommand("run", "Runs a Lisp script without windows");
    app->add_option("SCRIPT", options->script, "the script; what stands behind it is for the script")
        ->required();
    app->add_flag("--bare", options->bare, "loads neither the module nor the Lisp layer");
    app->add_option("--drawing", options->drawing, "opens, or makes, this drawing first")->type_name("FILE");
    app->add_flag("--show", options->show, "shows dialogs on the display");
    app->allow_extras();
    app->callback([=] { refuseForeignOptions(arguments, *options, app->remaining()); });
    return {app, [=] { return run(*options, app->remaining()); }};
}
