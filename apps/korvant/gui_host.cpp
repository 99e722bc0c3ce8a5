#include "gui_host.h"

#include <csignal>
#include <cstdint>
#include <cstdio>

#include "debug_port.h"
#include "exit_code.h"
#include "module_library.h"
#include "process_display.h"
#include "source_report.h"

namespace korvant_app {
namespace {

const ModuleFunctions* loaded = nullptr;

/// Ctrl+C on the terminal stops the script as Ctrl+C in the console window does.
class InterruptScope {
  public:
    InterruptScope() : previous_(std::signal(SIGINT, [](int) { loaded->requestStop(); })) {}
    ~InterruptScope() { std::signal(SIGINT, previous_); }
    InterruptScope(const InterruptScope&) = delete;
    InterruptScope& operator=(const InterruptScope&) = delete;

  private:
    void (*previous_)(int);
};

korvant::BuildMessage::Kind kindOf(const KorvantBuildMessage& message) {
    return static_cast<korvant::BuildMessage::Kind>(message.kind);
}

/// While it lives, the module tells of what is printed and of the build.
class TellScope {
  public:
    explicit TellScope(const GuiRun& run) {
        KorvantCallbacks callbacks{};
        callbacks.size = sizeof callbacks;
        callbacks.user = const_cast<GuiRun*>(&run);
        callbacks.print = print;
        callbacks.message = message;
        loaded->setCallbacks(&callbacks);
    }
    ~TellScope() {
        loaded->setCallbacks(nullptr);
        std::fflush(stdout);
    }
    TellScope(const TellScope&) = delete;
    TellScope& operator=(const TellScope&) = delete;

  private:
    /// The console's window shows it as well; a console without one would write it here again.
    static std::int32_t KORVANTIDE_CALL print(void*, const char* bytes, std::uint64_t count) {
        static const bool window = consoleIsWindow();
        std::fwrite(bytes, 1, static_cast<std::size_t>(count), stdout);
        return window ? 0 : 1;
    }
    static void KORVANTIDE_CALL message(void* user, const KorvantBuildMessage* message) {
        const GuiRun& run = *static_cast<const GuiRun*>(user);
        if (!run.onMessage) return;
        korvant::BuildMessages messages;
        messages.add(message->text, message->row, message->column, kindOf(*message));
        run.onMessage(messages);
    }
};

/// The program's own functions translate; the module is another copy of them.
void handOverLimits(const korvant::Limits& limits) {
    korvant::moduleSession().setLimits(limits);
    KorvantLimits record{};
    record.size = sizeof record;
    GetScriptLimits(&record);
    loaded->setLimits(&record);
}

korvant::BuildMessages takeMessages() {
    korvant::BuildMessages messages;
    for (std::uint32_t i = 0; i < loaded->countMessages(); ++i) {
        KorvantBuildMessage message{};
        message.size = sizeof message;
        if (!loaded->message(i, &message)) break;
        messages.add(message.text, message.row, message.column, kindOf(message));
    }
    return messages;
}

korvant::RunFailure takeFailure() {
    KorvantRunResult result{};
    result.size = sizeof result;
    loaded->lastRunResult(&result);
    korvant::RunFailure failure;
    failure.kind = static_cast<korvant::RunFailure::Kind>(result.end);
    failure.text = result.message;
    failure.line = result.line;
    for (std::uint32_t i = 0; i < result.unwritten; ++i)
        failure.unwritten.emplace_back(loaded->unwrittenFile(i));
    return failure;
}

}  // namespace

std::optional<GuiOutcome> runInWindows(const GuiRun& run) {
    loaded = loadModule();
    if (!loaded) return std::nullopt;
    asIScriptEngine* engine = asCreateScriptEngine();
    asIScriptContext* context = engine ? loaded->configure(engine) : nullptr;
    if (!context) {
        complain("the script engine could not be set up");
        return std::nullopt;
    }
    handOverLimits(run.limits);
    const TellScope told(run);
    for (const std::string& line : run.arguments) loaded->feedInput(line.c_str());
    if (run.debugPort && !openDebugPort(*run.debugPort, run.file, loaded->startDebugServer))
        return std::nullopt;
    {
        const InterruptScope interrupts;
        loaded->runApplication(engine, context, run.text, nullptr);
    }
    GuiOutcome outcome{takeMessages(), takeFailure()};
    loaded->tellDebugExit(exitCodeOf(outcome.failure));
    loaded->release(engine);
    return outcome;
}

}  // namespace korvant_app
