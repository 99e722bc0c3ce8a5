// What the user looks at while a script stands still: stack, values, watched expressions.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "debug/debug_session.h"

namespace korvant {

/// A watched expression at the last stop.
struct Watch {
    std::string expression;
    std::string error;
    DebugValue value;
    std::string was;  ///< at the stop before, where it was another one
};

class Inspection : public DebugListener {
  public:
    /// `wait` is called while a run is held: it returns when its argument answers true.
    using Wait = std::function<void(const std::function<bool()>& goesOn)>;

    Inspection(ScriptSession& session, Wait wait);
    ~Inspection() override;

    /// Only while nothing runs. Off: nothing is held, evaluated or shown here; the runs of the
    /// editor are the core's all the same, which the classic debugger asks.
    void setEnabled(bool enabled);
    bool enabled() const noexcept { return enabled_ && session_.attached(); }
    /// A run of the editor's is about to begin or to go on, and one is over.
    void beginRun();
    void endRun();

    /// A run is held inside itself: at an exception, or in what the library called.
    bool held() const noexcept { return held_; }
    bool isException() const noexcept {
        return held_ && (stop_.reason == StopReason::exception ||
                         stop_.reason == StopReason::timeOut || stop_.reason == StopReason::memory);
    }
    /// Something can be looked at.
    bool canLook() const noexcept { return looking_ && enabled(); }
    /// A run stands still, whoever may look.
    bool standsStill() const noexcept { return looking_; }
    const StopInfo& stop() const noexcept { return stop_; }
    /// Another number whenever what can be seen may be something else.
    std::uint64_t generation() const noexcept { return generation_; }
    /// The script is about to go on, or is given up: nothing can be looked at any more.
    void endLooking();

    // A held run goes on.
    void goOn();
    void stepOver();
    void stepInto();
    void stepOut();
    void runTo(const ScriptPlace& place);
    void end();
    void doNotStopAgain();
    void pause() { session_.requestPause(); }

    /// Of the stack, the innermost first; empty when nothing can be looked at. Lines of the text
    /// that runs are those that it has now.
    std::vector<DebugFrame> stack() const;
    /// Where a line of the text that runs, as it was built, is now.
    std::function<std::int32_t(std::int32_t)> lineInText;
    /// Lines came or went.
    void linesMoved();
    unsigned frame() const noexcept { return frame_; }
    void chooseFrame(unsigned frame);
    DebugSession& session() noexcept { return session_; }

    const std::vector<Watch>& watches() const noexcept { return watches_; }
    void addWatch(std::string expression);
    void changeWatch(std::size_t index, std::string expression);
    void removeWatch(std::size_t index);
    void removeWatches();
    /// A value has been set: expressions may have others now.
    void valuesChanged();

    /// A script is built: now it is known which sources it has.
    std::function<void()> onScriptBuilt;

    /// What breakpoints print.
    std::function<void(const std::string&)> onPrinted;

    /// The run lets its window live.
    std::function<void()> onBreath;

    void onBuilt() override;
    void onStopped(const StopInfo& info) override;
    void onAttention() override;
    void onWait() override { onAttention(); }
    void onContinued() override;
    void onOutput(const std::string& text, const ScriptPlace& place, int breakpointId) override;
    void onEnded(const RunFailure& failure) override;

  private:
    void evaluateWatches(bool isNewStop);
    void evaluate(Watch& watch, bool isNewStop);
    void leaveHold();

    Wait wait_;
    StopInfo stop_;
    std::vector<Watch> watches_;
    std::uint64_t generation_ = 0;
    unsigned frame_ = 0;
    bool enabled_ = false;
    bool held_ = false;
    bool goesOn_ = false;
    bool looking_ = false;
    bool neverAgain_ = false;
    DebugSession session_;
};

}  // namespace korvant
