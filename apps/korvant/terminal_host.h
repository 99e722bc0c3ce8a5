// The program as a host: an engine, and the terminal or the plain streams as console and dialogs.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "base/system/gathered_output.h"
#include "host/run/script_session.h"
#include "host/terminal/pipe_console.h"
#include "host/terminal/stream_input.h"
#include "host/terminal/terminal_frontend.h"

namespace korvant_app {

/// Console and front end over the process's standard streams. Sets the services of the module's
/// session for as long as it lives; one at a time.
class TerminalHost {
  public:
    struct Options {
        bool allowEscapes = false;           ///< script output reaches the terminal as it stands
        std::vector<std::string> arguments;  ///< lines that the script reads first
    };
    explicit TerminalHost(const Options& options);
    /// Hands everything over and gives the terminal back as it was.
    ~TerminalHost();
    TerminalHost(const TerminalHost&) = delete;
    TerminalHost& operator=(const TerminalHost&) = delete;

    korvant::StreamInput& input() noexcept { return input_; }
    /// A script begins: it reads the arguments from the first one on.
    void feedArguments();

  private:
    std::unique_ptr<korvant::Console> consoleOn(int handle, korvant::GatheredOutput& output);
    korvant::Console* whereToAsk();
    korvant::TerminalFrontend::Options frontendOptions();

    Options options_;
    korvant::StreamInput input_;
    korvant::GatheredOutput output_;
    korvant::GatheredOutput errorOutput_;
    std::unique_ptr<korvant::Console> console_;
    std::unique_ptr<korvant::Console> errorConsole_;  ///< for questions when output is piped
    std::unique_ptr<korvant::TerminalFrontend> frontend_;
};

/// An engine that the module has configured, and its context.
class ConfiguredEngine {
  public:
    ConfiguredEngine();
    /// Lets go of the script within a bounded time. The engine itself is left to the end of the
    /// process: a full collection may take as long as the square of what the script has made.
    ~ConfiguredEngine();
    ConfiguredEngine(const ConfiguredEngine&) = delete;
    ConfiguredEngine& operator=(const ConfiguredEngine&) = delete;

    bool usable() const { return context_ != nullptr; }
    asIScriptEngine* engine() const { return engine_; }
    asIScriptContext* context() const { return context_; }

  private:
    asIScriptEngine* engine_;
    asIScriptContext* context_;
};

}  // namespace korvant_app
