// The reference host and command line.
#include <unistd.h>

#include "commands.h"

int main(int argc, char** argv) {
    CLI::App app{"KorvantIDE: run, check and edit AngelScript scripts", "korvant"};
    app.set_version_flag("--version", "korvant " KORVANT_VERSION);
    app.require_subcommand(0, 1);
    int exitCode = korvant_app::kFinished;
    korvant_app::addRunCommand(app, exitCode);
    korvant_app::addCheckCommand(app, exitCode);
    korvant_app::addEvalCommand(app, exitCode);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? korvant_app::kFinished : korvant_app::kWrongUsage;
    }
    if (app.get_subcommands().empty()) std::fputs(app.help().c_str(), stdout);
    return exitCode;
}
