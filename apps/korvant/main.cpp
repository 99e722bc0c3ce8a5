// The reference host and command line.
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <new>
#include <string>
#include <system_error>

#include "commands.h"
#include "host/engine/engine_memory.h"
#include "process_display.h"
#include "process_setup.h"
#include "source_report.h"

namespace {

/// Ends the process without tearing the engine down; what was printed must have arrived.
[[noreturn]] void leave(int exitCode) {
    const int error = korvant_app::finishOutput();
    if (error != 0 && exitCode == korvant_app::kFinished) {
        korvant_app::complainOfOutput(error);
        exitCode = korvant_app::kRunFailed;
    }
    std::_Exit(exitCode);
}

/// Somebody who just starts the program wants to see it.
int withoutCommand(const CLI::App& app) {
    if (korvant_app::hasDisplay()) return korvant_app::editFile({});
    std::fputs(app.help().c_str(), stdout);
    return korvant_app::kFinished;
}

/// The first word is no command; most likely somebody names a script and leaves out what to do.
int unknownCommand(const std::string& word) {
    std::string text = "there is no command \"" + word + "\"";
    std::error_code unknown;
    if (std::filesystem::exists(word, unknown)) text += "; to run a script: korvant run " + word;
    korvant_app::complain(text);
    std::fputs("Run with --help for more information.\n", stderr);
    return korvant_app::kWrongUsage;
}

int parse(CLI::App& app, int argc, char** argv, const int& exitCode) {
    try {
        app.parse(argc, argv);
    } catch (const CLI::ExtrasError& error) {
        if (app.get_subcommands().empty() && argv[1][0] != '-') return unknownCommand(argv[1]);
        app.exit(error);
        return korvant_app::kWrongUsage;
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? korvant_app::kFinished : korvant_app::kWrongUsage;
    } catch (const std::exception& error) {
        korvant_app::complain(error.what());
        return korvant_app::kRunFailed;
    }
    return app.get_subcommands().empty() ? withoutCommand(app) : exitCode;
}

/// An exception that nothing can take, mostly for want of memory: where the compiler's own clean-up
/// runs out of it, none can leave. Says so without memory.
[[noreturn]] void endWithWords() noexcept {
    try {
        if (std::current_exception()) throw;
    } catch (const korvant::CompileEnded& ended) {
        std::fprintf(stderr, "korvant: %s\n", ended.reason);
    } catch (const std::bad_alloc&) {
        std::fputs("korvant: Out of memory\n", stderr);
    } catch (...) {
        std::fputs("korvant: ended by an unforeseen exception\n", stderr);
    }
    std::_Exit(korvant_app::kRunFailed);
}

}  // namespace

int main(int argc, char** argv) {
    std::set_terminate(endWithWords);
    korvant_app::setUpProcess();
    korvant::ownEngineMemory();
    CLI::App app{"KorvantIDE: run, check and edit AngelScript scripts", "korvant"};
    app.allow_windows_style_options(false);  // a path may begin with a slash
    app.set_version_flag("--version", "korvant " KORVANT_VERSION);
    app.require_subcommand(0, 1);
    int exitCode = korvant_app::kFinished;
    korvant_app::addRunCommand(app, exitCode);
    korvant_app::addDebugCommand(app, exitCode);
    korvant_app::addCheckCommand(app, exitCode);
    korvant_app::addEvalCommand(app, exitCode);
    korvant_app::addObjectCommand(app, exitCode);
    korvant_app::addCryptCommand(app, exitCode);
    korvant_app::addEditCommand(app, exitCode);
    korvant_app::addDocCommand(app, exitCode);
    korvant_app::addDapCommand(app, exitCode);
    korvant_app::addLspCommand(app, exitCode);
    korvant_app::addApiCommand(app, exitCode);
    leave(parse(app, argc, argv, exitCode));
}
