// A debug session whose stops a test answers in code.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "debug/debug_session.h"
#include "support/script_fixture.h"

namespace korvant::test {

class DebugFixture : public ScriptFixture, protected DebugListener {
  protected:
    DebugSession debug{moduleSession(), *this};
    std::function<void(const StopInfo&)> atStop;  ///< null: goes on
    std::function<void()> attentionAct;
    std::vector<StopInfo> stops;
    std::string output;
    int ended = 0;

    void onStopped(const StopInfo& info) override {
        stops.push_back(info);
        if (atStop) atStop(info);
    }
    void onOutput(const std::string& text, const ScriptPlace&, int) override { output += text; }
    void onAttention() override {
        if (attentionAct) attentionAct();
    }
    void onEnded(const RunFailure&) override { ++ended; }

    RunOutcome start(const std::string& text) { return debug.start(engine(), context(), text); }
    int breakAt(std::int32_t line, const std::string& condition = {}) {
        BreakpointWish wish;
        wish.place.line = line;
        wish.condition = condition;
        return debug.breakpoints().add(std::move(wish));
    }
    std::string value(const std::string& expression,
                      EvaluationPurpose purpose = EvaluationPurpose::watch) {
        const ShownValue shown = debug.show(0, expression, purpose);
        return shown.error.empty() ? shown.value.value : "error: " + shown.error;
    }
    /// Lets go of the session before the engine does.
    void TearDown() override { debug.detach(); }
};

}  // namespace korvant::test
