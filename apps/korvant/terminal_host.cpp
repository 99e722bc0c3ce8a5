#include "terminal_host.h"

#include <unistd.h>

#include <functional>

#include "base/system/os_file.h"
#include "base/system/terminal_state.h"
#include "host/library/script_console.h"
#include "host/terminal/ansi_terminal.h"
#include "host/terminal/status_line.h"
#include "korvantide/korvantide.h"
#include "module/configuration.h"
#include "source_report.h"

namespace korvant_app {

namespace {

using korvant::moduleSession;
using korvant::runShouldStop;

/// Empty where there can be no line that comes and goes.
std::function<std::unique_ptr<korvant::ProgressWindow>()> progressOn(
    int handle, korvant::GatheredOutput& output) {
    if (!korvant::understandsSequences(handle)) return {};
    return [handle, &output] {
        return std::make_unique<korvant::StatusLine>(
            output, [handle] { return korvant::terminalSize(handle).columns; });
    };
}

}  // namespace

TerminalHost::TerminalHost(const Options& options)
    : options_(options),
      input_(STDIN_FILENO),
      output_(STDOUT_FILENO),
      errorOutput_(STDERR_FILENO),
      console_(consoleOn(STDOUT_FILENO, output_)),
      errorConsole_(consoleOn(STDERR_FILENO, errorOutput_)),
      frontend_(std::make_unique<korvant::TerminalFrontend>(frontendOptions())) {
    feedArguments();
    korvant::guardTerminal(STDIN_FILENO,
                           korvant::isTerminal(STDOUT_FILENO) ? STDOUT_FILENO : STDERR_FILENO);
    console_->onInterrupt([]() noexcept { moduleSession().requestStop(); });
    moduleSession().setServices({console_.get(), frontend_.get(), nullptr, nullptr});
}

void TerminalHost::feedArguments() {
    input_.forgetFed();
    for (const std::string& argument : options_.arguments) input_.feed(argument);
}

TerminalHost::~TerminalHost() {
    korvant::scriptConsole().release();
    moduleSession().setServices({});
}

std::unique_ptr<korvant::Console> TerminalHost::consoleOn(int handle,
                                                          korvant::GatheredOutput& output) {
    if (!korvant::isTerminal(handle))
        return std::make_unique<korvant::PipeConsole>(input_, output, runShouldStop);
    const korvant::AnsiTerminal::Options terminal{handle, !korvant::understandsSequences(handle),
                                                  options_.allowEscapes};
    return std::make_unique<korvant::AnsiTerminal>(input_, output, runShouldStop, terminal);
}

/// Somebody must be able to type an answer and to see the question.
korvant::Console* TerminalHost::whereToAsk() {
    if (!input_.terminal()) return nullptr;
    if (korvant::isTerminal(STDOUT_FILENO)) return console_.get();
    return korvant::isTerminal(STDERR_FILENO) ? errorConsole_.get() : nullptr;
}

korvant::TerminalFrontend::Options TerminalHost::frontendOptions() {
    korvant::TerminalFrontend::Options options;
    options.terminal = whereToAsk();
    options.shouldStop = runShouldStop;
    options.notice = complain;
    options.omitRunReports = true;
    if (korvant::isTerminal(STDOUT_FILENO))
        options.makeProgress = progressOn(STDOUT_FILENO, output_);
    else if (korvant::isTerminal(STDERR_FILENO))
        options.makeProgress = progressOn(STDERR_FILENO, errorOutput_);
    return options;
}

ConfiguredEngine::ConfiguredEngine()
    : engine_(asCreateScriptEngine()),
      context_(engine_ != nullptr ? korvant::configureEngine(engine_) : nullptr) {}

ConfiguredEngine::~ConfiguredEngine() {
    if (engine_ != nullptr) ReleaseScriptEngine(engine_);
}

}  // namespace korvant_app
