// korvant debug FILE: runs a script under a debugger that is worked with lines of text.
#include <atomic>
#include <deque>
#include <fstream>
#include <memory>

#include "base/system/os_file.h"
#include "base/system/terminal_state.h"
#include "commands.h"
#include "debug/debug_console.h"
#include "exit_code.h"
#include "host/library/script_console.h"
#include "limit_options.h"
#include "script_file.h"
#include "source_report.h"
#include "terminal_host.h"

namespace korvant_app {

namespace {

using korvant::moduleSession;

struct Debug {
    std::string file;
    std::string commandFile;  ///< empty: commands are typed alone
    TerminalHost::Options host;
    korvant::Limits limits;
};

/// Ctrl+C stops the script where it is instead of ending it, and drops a command that is typed.
korvant::DebugSession* interrupted = nullptr;
std::atomic<bool> typing{false};
std::atomic<bool> dropped{false};
std::atomic<bool> ending{false};

void onInterrupt(bool ends) noexcept {
    if (interrupted == nullptr) return;
    if (ends) {
        ending = true;
        moduleSession().requestStop();
    } else if (typing) {
        dropped = true;
    } else {
        interrupted->requestPause();
        interrupted->requestAttention();
    }
}

constexpr std::uint16_t kOwnColours = 7;

void write(const std::string& text) {
    korvant::Console& console = *moduleSession().services().console;
    korvant::scriptConsole().flush();
    // The colours of the script are its own.
    const std::uint16_t colours = console.attributes();
    console.setAttributes(kOwnColours);
    console.write(text);
    console.flush();
    console.setAttributes(colours);
}

/// A line of the terminal or of standard input; nothing at its end, or when it was dropped.
std::optional<std::string> readLine() {
    const auto stopped = [] { return dropped.load() || ending.load(); };
    std::string line;
    for (;;) {
        const int byte = moduleSession().services().console->readChar(stopped);
        if (byte < 0 && (line.empty() || stopped())) return std::nullopt;
        if (byte < 0 || byte == '\n') break;
        line.push_back(static_cast<char>(byte));
    }
    if (line.ends_with('\r')) line.pop_back();
    return line;
}

/// Commands of a file come first, and are shown as if they had been typed.
class Commands {
  public:
    explicit Commands(korvant::StreamInput& input) : input_(input) {}
    bool open(const std::string& path) {
        std::ifstream file(path, std::ios::binary);
        if (!file) return false;
        for (std::string line; std::getline(file, line);) lines_.push_back(line);
        return !file.bad();  // a folder can be opened
    }
    std::optional<std::string> next(const std::string& prompt) {
        if (ending) return std::nullopt;
        korvant::forgetInterrupts();
        if (!lines_.empty()) {
            std::string line = std::move(lines_.front());
            lines_.pop_front();
            write(prompt + line + "\n");
            return line;
        }
        // The arguments are for the script.
        input_.keepFed(true);
        typing = true;
        std::optional<std::string> line = typed(prompt);
        while (dropped.exchange(false) && !line && !ending) {
            korvant::forgetInterrupts();
            write("\n");
            line = typed(prompt);
        }
        typing = false;
        input_.keepFed(false);
        return line;
    }

  private:
    std::optional<std::string> typed(const std::string& prompt) {
        if (korvant::isTerminal(STDIN_FILENO)) write(prompt);
        const bool rest = input_.insideLine();
        std::optional<std::string> line = readLine();
        // What the script has left of a line that it read a word of is no command.
        if (rest && line && line->find_first_not_of(" \t") == std::string::npos) line = readLine();
        return line;
    }

    korvant::StreamInput& input_;
    std::deque<std::string> lines_;
};

int debugScript(const Debug& debug) {
    const std::optional<Source> source = readScript(debug.file, debug.limits.scriptBytes);
    if (!source) return kCannotRead;
    TerminalHost host(debug.host);
    // What the debugger said is not the script's to blank.
    korvant::scriptConsole().keepText(true);
    Commands commands(host.input());
    if (!debug.commandFile.empty() && !commands.open(debug.commandFile)) {
        complain("could not read " + debug.commandFile);
        return kCannotRead;
    }
    korvant::ScriptSession& session = moduleSession();
    session.setLimits(debug.limits);
    const ConfiguredEngine engine;
    if (!engine.usable()) return kRunFailed;
    korvant::DebugConsole::Parts parts{
        session, engine.engine(), engine.context(), source->name, source->text, {}, {}, {}};
    parts.read = [&commands](const std::string& prompt) { return commands.next(prompt); };
    parts.write = write;
    parts.report = [&session, &source] {
        korvant::scriptConsole().flush();
        reportBuild(*source, session.buildMessages());
        reportRun(*source, session.lastFailure());
        for (const std::string& line : session.lastFailure().unwritten) complain(line);
    };
    parts.built = [&host] { host.feedArguments(); };
    korvant::DebugConsole console(std::move(parts));
    interrupted = &console.session();
    korvant::ownInterrupts(onInterrupt);
    console.run();
    korvant::ownInterrupts(nullptr);
    interrupted = nullptr;
    return exitCodeOf(session.lastFailure());
}

}  // namespace

void addDebugCommand(CLI::App& app, int& exitCode) {
    const auto debug = std::make_shared<Debug>();
    CLI::App* const command = app.add_subcommand(
        "debug", "Runs a script under a debugger in the terminal; help lists its words");
    command->add_option("FILE", debug->file, "script to debug")->required();
    command->add_option("ARGS", debug->host.arguments,
                        "lines that Input reads before standard input; after -- they may begin "
                        "with a dash");
    command->add_option("-x,--commands", debug->commandFile,
                        "file with commands that come before those of standard input");
    command->add_flag("--allow-escapes", debug->host.allowEscapes,
                      "what the script prints reaches a terminal as it stands, control bytes "
                      "included");
    addBuildLimitOptions(*command, debug->limits);
    addRunLimitOptions(*command, debug->limits);
    command->callback([debug, &exitCode] { exitCode = debugScript(*debug); });
}

}  // namespace korvant_app
