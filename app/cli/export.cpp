#include "cli/Session.h"
#include "cli/Subcommands.h"
#include "editor/DocumentManager.h"
#include "files/DxfExport.h"

#include <memory>

namespace {

struct ExportOptions {
    std::string drawing;
    std::string out;
    std::string version = "R2000";
    veldrin::DxfExportOptions dxf;
};

int exportDrawing(ExportOptions options) {
    Session session;
    bool goOn = false;
    const int status = session.prepare(options.drawing, goOn);
    if (!goOn) return session.finish(status);
    options.dxf.version = *veldrin::dxfVersionNamed(options.version);
    AcDbDatabase& database = *session.host().documents().curDocument()->database();
    std::vector<std::string> losses;
    const auto problem = veldrin::exportDxf(database, options.out, options.dxf, losses);
    for (const std::string& line : losses) session.tell(line);
    if (problem) session.tell(*problem);
    return session.finish(problem ? kFailed : kDone);
}

std::string checkVersion(const std::string& text) {
    return veldrin::dxfVersionNamed(text) ? std::string()
                                          : "\"" + text + "\" is no version; R2000 and R2018 are";
}

} // namespace

Subcommand addExport(CLI::App& program) {
    auto options = std::make_shared<ExportOptions>();
    CLI::App* app = program.add_subcommand("export", "Writes a drawing as DXF for other programs");
    app->add_option("DRAWING", options->drawing, "a drawing, or a Lisp script that draws one")->required();
    app->add_option("-o,--output", options->out, "the DXF file")->required()->type_name("OUT.dxf");
    app->add_option("--version", options->version, "R2000 or R2018")
        ->type_name("VERSION")
        ->check(checkVersion);
    app->add_option("--decimals", options->dxf.decimals, "decimal places, 16 for all")
        ->type_name("N")
        ->check(CLI::Range(0, veldrin::kDxfFullPrecision));
    app->add_flag("--explode", options->dxf.explodes,
                  "pipes become plain lines, arcs and texts, for programs that do not show their pictures");
    return {app, [=] { return exportDrawing(*options); }};
}
