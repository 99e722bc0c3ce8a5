// korvant dap: a debug adapter on standard input and output.
#include <algorithm>
#include <cstdlib>
#include <memory>
#include <optional>

#include "base/system/start_program.h"
#include "base/system/user_folders.h"
#include "commands.h"
#include "exit_code.h"
#include "host/library/script_console.h"
#include "host/terminal/terminal_frontend.h"
#include "limit_options.h"
#include "protocol/dap/launch_server.h"
#include "script_file.h"
#include "source_report.h"
#include "terminal_host.h"

namespace korvant_app {

namespace {

/// {"ceiling": 500, "strict": true} as switches.
std::vector<std::string> limitSwitches(const korvant::dap::Json& limits) {
    std::vector<std::string> switches;
    for (const auto& [name, value] : limits.items()) {
        if (value.is_boolean()) {
            if (value.get<bool>()) switches.push_back("--" + name);
        } else {
            switches.push_back("--" + name);
            switches.push_back(value.is_string() ? value.get<std::string>() : value.dump());
        }
    }
    return switches;
}

/// Empty, or what is wrong.
std::string readLimits(const korvant::dap::Json& asked, korvant::Limits& limits) {
    CLI::App app;
    app.set_help_flag();
    addBuildLimitOptions(app, limits);
    addRunLimitOptions(app, limits);
    std::vector<std::string> switches = limitSwitches(asked);
    std::reverse(switches.begin(), switches.end());
    try {
        app.parse(std::move(switches));
        return {};
    } catch (const CLI::ParseError& error) {
        return std::string("limits: ") + error.what();
    }
}

/// What the services of a served script live in.
struct Served {
    korvant::Limits limits;
    std::unique_ptr<korvant::TerminalFrontend> frontend;
    std::optional<ConfiguredEngine> engine;

    ~Served() {
        korvant::scriptConsole().release();
        korvant::moduleSession().setServices({});
    }
};

void useConsole(Served& served, korvant::Console& console) {
    korvant::TerminalFrontend::Options options;
    options.terminal = &console;
    options.shouldStop = korvant::runShouldStop;
    options.notice = complain;
    options.omitRunReports = true;
    served.frontend = std::make_unique<korvant::TerminalFrontend>(std::move(options));
    korvant::moduleSession().setServices({&console, served.frontend.get(), nullptr, nullptr});
}

asIScriptEngine* engineOf(Served& served, asIScriptContext*& context) {
    if (!served.engine) served.engine.emplace();
    context = served.engine->context();
    return served.engine->usable() ? served.engine->engine() : nullptr;
}

/// The command line of a run in another process.
std::vector<std::string> runCommand(const korvant::dap::Json& launch, std::uint16_t port) {
    using korvant::rpc::memberOf;
    using korvant::rpc::textOf;
    std::vector<std::string> command = {korvant::programPath(), "run",
                                        "--debug=" + std::to_string(port)};
    if (korvant::rpc::truthOf(launch, "gui")) command.push_back("--gui");
    for (const char* name : {"coverage", "profile"})
        if (!textOf(launch, name).empty())
            command.push_back("--" + std::string(name) + "=" +
                              korvant::absolutePath(textOf(launch, name)));
    if (memberOf(launch, "limits").is_object())
        for (std::string& text : limitSwitches(memberOf(launch, "limits")))
            command.push_back(std::move(text));
    command.push_back(korvant::absolutePath(textOf(launch, "program")));
    command.push_back("--");
    for (const char* name : {"answers", "args"})
        if (memberOf(launch, name).is_array())
            for (const korvant::dap::Json& line : memberOf(launch, name))
                command.push_back(line.is_string() ? line.get<std::string>() : line.dump());
    return command;
}

int serveDebugAdapter() {
    Served served;
    korvant::dap::LaunchServices services;
    services.engine = [&](asIScriptContext*& context) { return engineOf(served, context); };
    services.readScript = [&](const std::string& path, std::string& text, std::string& error) {
        return readScriptText(path, served.limits.scriptBytes, text, error);
    };
    services.setLimits = [&](const korvant::dap::Json& limits) {
        std::string wrong = readLimits(limits, served.limits);
        if (wrong.empty()) korvant::moduleSession().setLimits(served.limits);
        return wrong;
    };
    services.useConsole = [&](korvant::Console& console) { useConsole(served, console); };
    services.exitCode = exitCodeOf;
    services.runCommand = runCommand;
    services.spawn = [](const std::vector<std::string>& command, const std::string& token,
                        const std::string& folder) {
        return korvant::startProgram(command, {{"KORVANT_DEBUG_TOKEN", token}}, folder);
    };
    services.giveUp = [] { std::_Exit(0); };
    korvant::dap::LaunchServer server(korvant::rpc::standardStreams(), std::move(services));
    return server.serve();
}

}  // namespace

void addDapCommand(CLI::App& app, int& exitCode) {
    app.add_subcommand("dap", "Serves a debugging client on standard input and output")
        ->callback([&exitCode] { exitCode = serveDebugAdapter(); });
}

}  // namespace korvant_app
