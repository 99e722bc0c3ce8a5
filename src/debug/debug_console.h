// A debugger that is worked with lines of text.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "debug/debug_session.h"

namespace korvant {

/// Reads commands and says what there is to see. The words are those that users of such tools
/// know; "help" lists them.
class DebugConsole final : public DebugListener {
  public:
    struct Parts {
        ScriptSession& session;
        asIScriptEngine* engine;
        asIScriptContext* context;
        std::string name;  ///< of the script, as it is shown
        std::string text;
        /// The next command without its line feed; nothing at the end. `prompt` is to be shown
        /// where somebody types.
        std::function<std::optional<std::string>(const std::string& prompt)> read;
        std::function<void(const std::string&)> write;
        /// What the compiler said, and how the run ended.
        std::function<void()> report;
        /// A run is about to begin.
        std::function<void()> built = {};
    };
    explicit DebugConsole(Parts parts);

    /// Reads and obeys commands to the end. Whether the last run ended without a failure.
    bool run();
    DebugSession& session() noexcept { return debug_; }

  private:
    struct Command {
        const char* names;  ///< "break b"
        const char* arguments;
        const char* help;
        void (DebugConsole::*act)(const std::string& rest);
    };
    static const std::vector<Command>& commands();

    void onBuilt() override {
        if (parts_.built) parts_.built();
    }
    void onWait() override;
    void onStopped(const StopInfo& info) override;
    void onOutput(const std::string& text, const ScriptPlace& place, int breakpointId) override;
    void onBreakpointsChanged(const std::vector<int>& ids) override;
    void onEnded(const RunFailure& failure) override;

    void obey(const std::string& line);
    void say(const std::string& text) { parts_.write(text + "\n"); }
    bool standsStill();
    bool standsStillQuietly() const;
    bool goes(bool accepted);
    void sayBreakpoint(int id);
    void sayFrame(unsigned frame);
    void sayValues(ValueScope which);
    void sayValue(const std::string& indent, const DebugValue& value);
    std::string sourceLine(std::int32_t line) const;
    std::string placeText(const ScriptPlace& place) const;
    Breakpoint* numbered(std::string& rest);
    void addBreakpoint(BreakpointWish wish);

    void doBreak(const std::string& rest);
    void doWatch(const std::string& rest);
    void doCatch(const std::string& rest);
    void doCondition(const std::string& rest);
    void doHits(const std::string& rest);
    void doLog(const std::string& rest);
    void doDelete(const std::string& rest);
    void doEnable(const std::string& rest);
    void doDisable(const std::string& rest);
    void doInfo(const std::string& rest);
    void doRun(const std::string& rest);
    void doContinue(const std::string& rest);
    void doStep(const std::string& rest);
    void doNext(const std::string& rest);
    void doFinish(const std::string& rest);
    void doUntil(const std::string& rest);
    void doWhere(const std::string& rest);
    void doFrame(const std::string& rest);
    void doUp(const std::string& rest);
    void doDown(const std::string& rest);
    void doPrint(const std::string& rest);
    void doHex(const std::string& rest);
    void doSet(const std::string& rest);
    void doLocals(const std::string& rest);
    void doGlobals(const std::string& rest);
    void doThis(const std::string& rest);
    void doList(const std::string& rest);
    void doKill(const std::string& rest);
    void doHelp(const std::string& rest);
    void doQuit(const std::string& rest);

    Parts parts_;
    DebugSession debug_;
    std::vector<std::string_view> lines_;
    std::string last_;  ///< an empty line does it again
    unsigned frame_ = 0;
    std::int32_t listed_ = 0;
    bool goesOn_ = false;  ///< the command let the script go on
    bool quit_ = false;
    bool ends_ = false;  ///< a command has ended the run
    bool wantRun_ = false;
    bool failed_ = false;
};

}  // namespace korvant
