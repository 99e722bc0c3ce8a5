// korvant check FILE...: builds scripts without running anything of them.
#include <cstdio>
#include <memory>
#include <nlohmann/json.hpp>
#include <vector>

#include "base/text/text_encoding.h"
#include "commands.h"
#include "language/checker.h"
#include "limit_options.h"
#include "script_file.h"
#include "source_report.h"
#include "terminal_host.h"

namespace korvant_app {

namespace {

struct Check {
    std::vector<std::string> files;
    bool json = false;
    korvant::Limits limits;
};

const char* nameOf(korvant::Diagnostic::Kind kind) {
    switch (kind) {
        case korvant::Diagnostic::Kind::warning:
            return "warning";
        case korvant::Diagnostic::Kind::information:
            return "information";
        default:
            return "error";
    }
}

/// One object a line for each message, on standard output.
void reportJson(const std::string& file, const std::vector<korvant::Diagnostic>& diagnostics) {
    for (const korvant::Diagnostic& diagnostic : diagnostics) {
        const nlohmann::ordered_json object{
            {"file", file},
            {"line", diagnostic.line},
            {"column", diagnostic.column},
            {"end", diagnostic.endColumn},
            {"kind", nameOf(diagnostic.kind)},
            {"text", korvant::decodeForDisplay(diagnostic.text)},
            {"context", korvant::decodeForDisplay(diagnostic.context)}};
        const std::string line =
            object.dump(-1, ' ', false, nlohmann::ordered_json::error_handler_t::replace) + "\n";
        writeOutput(line);
    }
}

int checkOne(const ConfiguredEngine& engine, const std::string& name, const Check& check) {
    const std::optional<Source> source = readScript(name, check.limits.scriptBytes);
    if (!source) return kCannotRead;
    korvant::ScriptSession& session = korvant::moduleSession();
    korvant::Checker checker(session, *engine.engine());
    const korvant::CheckResult result = checker.check(0, source->text);
    if (check.json)
        reportJson(name, result.diagnostics);
    else
        reportBuild(*source, session.buildMessages());
    return result.builds ? kFinished : kBuildFailed;
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
    command->add_flag("--json", check->json,
                      "one JSON object a message on standard output: file, line, column, end, "
                      "kind, text, context");
    addBuildLimitOptions(*command, check->limits);
    command->callback([check, &exitCode] { exitCode = checkAll(*check); });
}

}  // namespace korvant_app
