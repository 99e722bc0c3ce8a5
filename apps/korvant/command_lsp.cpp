// korvant lsp: a language server; korvant api: what scripts can call, for tools.
#include <cstdio>
#include <cstdlib>
#include <memory>

#include "commands.h"
#include "language/api_description.h"
#include "language/diagnostics.h"
#include "language/predefined.h"
#include "module/configuration.h"
#include "module/families.h"
#include "protocol/lsp/language_server.h"
#include "script_file.h"
#include "source_report.h"
#include "terminal_host.h"

namespace korvant_app {

namespace {

constexpr std::size_t kLongestDescription = std::size_t{64} << 20;

/// The description in a file; nothing, with the reason on standard error, when it is none.
std::optional<korvant::ApiDescription> readApi(const std::string& path) {
    const std::optional<Source> file = readScript(path, kLongestDescription);
    if (!file) return std::nullopt;
    auto api = korvant::apiFromJson(file->text);
    if (!api) complain(path + " is no description made by korvant api");
    return api;
}

/// An engine with the library, and with what a host adds to it.
asIScriptEngine* makeEngine(const std::optional<korvant::ApiDescription>& api,
                            asIScriptContext** context) {
    asIScriptEngine* const engine = asCreateScriptEngine();
    if (engine == nullptr) return nullptr;
    asIScriptContext* const made = korvant::configureEngine(engine);
    if (api) korvant::mirrorEngine(*api, *engine);
    if (context != nullptr) *context = made;
    return engine;
}

int serveLanguage(const std::string& apiFile) {
    std::optional<korvant::ApiDescription> api;
    if (!apiFile.empty() && !(api = readApi(apiFile))) return kCannotRead;
    asIScriptEngine* const engine = makeEngine(api, nullptr);
    if (engine == nullptr) return kRunFailed;
    korvant::lsp::LanguageServices services;
    services.checks = [&](korvant::CheckService::Poster poster) {
        return korvant::makeCheckService(*engine, std::move(poster));
    };
    services.abandon = [] { std::_Exit(kRunFailed); };
    services.engine = [&] { return makeEngine(api, nullptr); };
    services.families = korvant::allFamilies();
    korvant::lsp::LanguageServer server(korvant::rpc::standardStreams(), std::move(services));
    return server.serve();
}

int writeApi(bool predefined) {
    const ConfiguredEngine engine;
    if (!engine.usable()) return kRunFailed;
    const korvant::ApiDescription api = korvant::describeEngine(*engine.engine());
    const std::string text = predefined
                                 ? korvant::predefinedText(*engine.engine(), korvant::allFamilies())
                                 : korvant::apiToJson(api);
    writeOutput(text);
    return kFinished;
}

}  // namespace

void addLspCommand(CLI::App& app, int& exitCode) {
    const auto file = std::make_shared<std::string>();
    CLI::App* const command =
        app.add_subcommand("lsp", "Serves an editor on standard input and output");
    command->add_option("--api", *file, "what a host's scripts can call, made by korvant api")
        ->type_name("FILE");
    command->callback([file, &exitCode] { exitCode = serveLanguage(*file); });
}

void addApiCommand(CLI::App& app, int& exitCode) {
    const auto predefined = std::make_shared<bool>(false);
    CLI::App* const command = app.add_subcommand("api", "Writes what scripts can call");
    const auto json = std::make_shared<bool>(true);
    CLI::Option* const asJson =
        command->add_flag("--json", *json, "as JSON; also without a switch");
    command->add_flag("--predefined", *predefined, "as declarations that other tools read")
        ->excludes(asJson);
    command->callback([predefined, json, &exitCode] { exitCode = writeApi(*predefined); });
}

}  // namespace korvant_app
