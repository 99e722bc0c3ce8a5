// korvant check FILE...: builds scripts without running them.
#include <memory>
#include <vector>

#include "commands.h"
#include "korvantide/korvantide.h"
#include "limit_options.h"
#include "script_file.h"
#include "source_report.h"
#include "terminal_host.h"

namespace korvant_app {

namespace {

struct Check {
    std::vector<std::string> files;
    korvant::Limits limits;
};

int checkOne(const ConfiguredEngine& engine, const std::string& name, const Check& check) {
    const std::optional<Source> source = readScript(name, check.limits.scriptBytes);
    if (!source) return kCannotRead;
    const bool built = CompileScript(engine.engine(), source->text) == 1;
    reportBuild(*source, korvant::moduleSession().buildMessages());
    return built ? kFinished : kBuildFailed;
}

/// The first file that fails decides.
int checkAll(const Check& check) {
    const TerminalHost host({});
    korvant::moduleSession().setLimits(check.limits);
    const ConfiguredEngine engine;
    if (!engine.usable()) return kRunFailed;
    int exitCode = kFinished;
    for (const std::string& name : check.files) {
        const int result = checkOne(engine, name, check);
        if (exitCode == kFinished) exitCode = result;
    }
    return exitCode;
}

}  // namespace

void addCheckCommand(CLI::App& app, int& exitCode) {
    const auto check = std::make_shared<Check>();
    CLI::App* const command = app.add_subcommand("check", "Builds scripts without running them");
    command->add_option("FILE", check->files, "scripts to build")->required();
    addBuildLimitOptions(*command, check->limits);
    command->callback([check, &exitCode] { exitCode = checkAll(*check); });
}

}  // namespace korvant_app
