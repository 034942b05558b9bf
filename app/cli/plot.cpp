#include "graphics/plot.h"

#include "cli/Session.h"
#include "cli/Subcommands.h"
#include "editor/DocumentManager.h"
#include "graphics/plot_paper.h"
#include "system/AsciiCase.h"

#include <filesystem>
#include <memory>

namespace {

struct PlotOptions {
    std::string drawing;
    std::string out;
    veldrin::PlotSettings settings;
};

int plot(const PlotOptions& options) {
    Session session;
    bool goOn = false;
    const int status = session.prepare(options.drawing, goOn);
    if (!goOn) return session.finish(status);
    AcDbDatabase& database = *session.host().documents().curDocument()->database();
    if (const auto problem = veldrin::plotDrawing(database, options.settings, options.out)) {
        session.tell(*problem);
        return session.finish(kFailed);
    }
    return session.finish(kDone);
}

std::string checkPaper(const std::string& text) {
    return veldrin::paperSize(text) ? std::string() : "there is no paper \"" + text + "\"";
}

std::string checkScale(const std::string& text) {
    return veldrin::plotScale(text) ? std::string() : "\"" + text + "\" is no scale";
}

std::string checkEnding(const std::string& path) {
    const std::string ending = veldrin::asciiLowerCase(std::filesystem::path(path).extension().string());
    for (const char* known : {".svg", ".pdf", ".png"})
        if (ending == known) return {};
    return "a plot ends in .svg, .pdf or .png, not as in " + path;
}

} // namespace

Subcommand addPlot(CLI::App& program) {
    auto options = std::make_shared<PlotOptions>();
    CLI::App* app = program.add_subcommand("plot", "Plots a drawing, or the one that a script draws");
    app->add_option("DRAWING", options->drawing, "a drawing, or a Lisp script that draws one")->required();
    app->add_option("-o,--output", options->out, "where the plot goes: SVG, PDF or PNG by its ending")
        ->required()
        ->type_name("OUT")
        ->check(checkEnding);
    app->add_option("--paper", options->settings.paper, "A4, \"ARCH D landscape\", 420x297, 36x24in ...")
        ->type_name("SIZE")
        ->check(checkPaper);
    app->add_option("--scale", options->settings.scale, "fit, or paper to drawing as in 1:48")
        ->type_name("SCALE")
        ->check(checkScale);
    return {app, [=] { return plot(*options); }};
}
