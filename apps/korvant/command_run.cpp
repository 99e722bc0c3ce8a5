// korvant run FILE [ARGS]: builds a script and runs its int main().
#include <memory>
#include <optional>
#include <vector>

#include "answer_file.h"
#include "commands.h"
#include "debug_port.h"
#include "exit_code.h"
#include "gui_host.h"
#include "host/run/build_listener.h"
#include "korvantide/korvantide.h"
#include "limit_options.h"
#include "observed_run.h"
#include "script_file.h"
#include "source_report.h"
#include "terminal_host.h"

namespace korvant_app {

namespace {

struct Run {
    std::string file;
    TerminalHost::Options host;
    korvant::Limits limits;
    bool gui = false;
    bool quiet = false;   ///< warnings are not shown
    std::string answers;  ///< file; empty: the terminal is asked
    std::optional<int> debugPort;
    korvant::RunObserver::Files observed;
};

/// While it lives, the warnings about `source` are shown before its main function begins.
class WarningScope {
  public:
    WarningScope(const Source& source, bool quiet) {
        source_ = &source;
        if (!quiet) korvant::setBuildListener(show);
    }
    ~WarningScope() { korvant::setBuildListener(nullptr); }
    WarningScope(const WarningScope&) = delete;
    WarningScope& operator=(const WarningScope&) = delete;

  private:
    static void show(const korvant::BuildMessages& messages) { reportBuild(*source_, messages); }
    static inline const Source* source_ = nullptr;
};

int report(const Source& source, const korvant::BuildMessages& messages,
           const korvant::RunFailure& failure) {
    reportBuild(source, messages);
    reportRun(source, failure);
    reportUnwritten(failure);
    return exitCodeOf(failure);
}

int runWithWindows(const Run& run, const Source& source) {
    // Errors are reported at the end.
    const auto tell = [&](const korvant::BuildMessages& messages) {
        const bool isWarning = messages.all().front().kind == korvant::BuildMessage::Kind::warning;
        if (isWarning && !run.quiet) reportBuild(source, messages);
    };
    const auto outcome =
        runInWindows({source.text, run.file, run.limits, run.host.arguments, run.debugPort, tell});
    return outcome ? report(source, outcome->messages, outcome->failure) : kRunFailed;
}

/// Where an answer failed, the stop that followed is not worth a word.
int reportAnswered(const Source& source, const AnswerBook* book) {
    korvant::ScriptSession& session = korvant::moduleSession();
    if (book == nullptr || !book->failed())
        return report(source, session.buildMessages(), session.lastFailure());
    reportBuild(source, session.buildMessages());
    reportAnswer(source, book->failure(), book->line());
    return kRunFailed;
}

int runScript(const Run& run) {
    const std::optional<Source> source = readScript(run.file, run.limits.scriptBytes);
    if (!source) return kCannotRead;
    if (run.gui) return runWithWindows(run, *source);
    std::optional<AnswerBook> book;
    if (!run.answers.empty() && !(book = AnswerBook::read(run.answers))) return kCannotRead;
    const TerminalHost host(run.host);
    const AnsweringScope answering(book ? &*book : nullptr);
    korvant::ScriptSession& session = korvant::moduleSession();
    session.setLimits(run.limits);
    const ConfiguredEngine engine;
    if (!engine.usable()) return kRunFailed;
    const WarningScope warnings(*source, run.quiet);
    if (run.debugPort && !openDebugPort(*run.debugPort, run.file, &StartScriptDebugServer))
        return kRunFailed;
    bool written = true;
    if (run.observed.wanted())
        written = runObserved(engine.engine(), engine.context(), *source, run.observed);
    else
        RunApplication(engine.engine(), engine.context(), source->text, nullptr);
    int exitCode = reportAnswered(*source, book ? &*book : nullptr);
    if (!written && exitCode == kFinished) exitCode = kRunFailed;
    TellScriptDebugExit(exitCode);
    StopScriptDebugServer();
    return exitCode;
}

}  // namespace

void addRunCommand(CLI::App& app, int& exitCode) {
    const auto run = std::make_shared<Run>();
    CLI::App* const command = app.add_subcommand("run", "Builds a script and runs its int main()");
    command->add_option("FILE", run->file, "script to run; - is standard input")->required();
    command->add_option("ARGS", run->host.arguments,
                        "lines that Input reads before standard input; after -- they may begin "
                        "with a dash");
    command->add_flag("-q,--quiet", run->quiet, "warnings about the script are not shown");
    command->add_flag("--allow-escapes", run->host.allowEscapes,
                      "what the script prints reaches a terminal as it stands, control bytes "
                      "included");
    CLI::Option* const gui =
        command->add_flag("--gui", run->gui, "windows for dialogs and console");
    command
        ->add_option("--answer", run->answers,
                     "file that answers prompts, message boxes and forms; a question without an "
                     "answer ends the run")
        ->excludes(gui);
    command
        ->add_option("--debug", run->debugPort,
                     "waits for a debugging client at this port of 127.0.0.1 before main; 0: any "
                     "free one")
        ->check(CLI::Range(0, 65535))
        ->type_name("PORT");
    for (auto [name, file, help] :
         {std::tuple{"--coverage", &run->observed.coverage,
                     "file for the lines that ran, in lcov's form"},
          std::tuple{"--profile", &run->observed.profile,
                     "file for the stacks that took time, for flame graphs"}})
        command->add_option(name, *file, help)->type_name("OUT")->excludes(gui);
    addBuildLimitOptions(*command, run->limits);
    addRunLimitOptions(*command, run->limits);
    command->callback([run, &exitCode] { exitCode = runScript(*run); });
}

}  // namespace korvant_app
