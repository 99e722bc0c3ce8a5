// korvant doc: opens the scripting manual.
#include "base/system/user_folders.h"
#include "commands.h"
#include "source_report.h"

namespace korvant_app {
namespace {

int openManual() {
    const std::string page = korvant::manualPage(korvant::programFolder());
    if (korvant::openWithDesktop(page)) return kFinished;
    complain("cannot open " + page);
    return kCannotRead;
}

}  // namespace

void addDocCommand(CLI::App& app, int& exitCode) {
    CLI::App* const command = app.add_subcommand("doc", "Opens the scripting manual");
    command->callback([&exitCode] { exitCode = openManual(); });
}

}  // namespace korvant_app
