// What the debugging core costs a run, and how long a stop takes.
#include <benchmark/benchmark.h>

#include <chrono>
#include <cstdlib>
#include <functional>
#include <string>

#include "debug/debug_session.h"
#include "module/families.h"
#include "ratio_table.h"

RATIO_ROW("Debugging", "run under a debugger without stops / without one", 1.02, "debug_attached",
          "debug_alone");
RATIO_ROW("Debugging", "condition that never holds / leaving and coming back", 0.35,
          "debug_condition", "debug_leaving",
          "arithmetic and limits of the run are set aside for each evaluation");
RATIO_ROW("Debugging", "counting lines / an empty callback", 1.5, "debug_coverage", "debug_empty",
          "calls of callbacks became cheaper, what is done in them did not");
RATIO_ROW("Debugging", "looking every millisecond / no callback", 1.05, "debug_profile",
          "debug_alone");
COUNTER_ROW("Debugging", "milliseconds from a stop to its stack of 500 and a first page of values",
            10.0, "debug_first_page", "ms");

namespace {

using namespace korvant;

constexpr char kLoop[] =
    "int main() {\nint sum = 0;\nfor (int i = 0; i < 200000; i++) {\nsum += i;\nsum ^= 5;\n}\n"
    "return sum;\n}\n";
constexpr char kDeep[] =
    "int deep(int n) {\nif (n > 0)\nreturn deep(n - 1);\nint[] big(10000000);\nn++;\nreturn n;\n}\n"
    "int main() {\nreturn deep(498);\n}\n";
constexpr int kPasses = 2000;
constexpr char kShortLoop[] =
    "int main() {\nint sum = 0;\nfor (int i = 0; i < 2000; i++) {\nsum += i;\n}\nreturn sum;\n}\n";

class Answers final : public DebugListener {
  public:
    std::function<void()> act;
    void onStopped(const StopInfo&) override {
        if (act) act();
    }
};

struct Host {
    Host() : engine(asCreateScriptEngine()) {
        context = moduleSession().configure(engine, registrationOrder());
    }
    ~Host() {
        moduleSession().release(engine);
        context->Release();
        engine->ShutDownAndRelease();
    }
    asIScriptEngine* engine;
    asIScriptContext* context = nullptr;
};

void must(bool good) {
    if (!good) std::abort();
}

// Debuggers and profilers have threads of their own: all that the process computes counts, and what
// other processes take meanwhile does not.

/// Runs what is built again and again, under `debug` where it is attached.
void runBuilt(benchmark::State& state, Host& host) {
    must(moduleSession().compile(host.engine, kLoop) != 0);
    asIScriptFunction* const main = host.engine->GetModule("main")->GetFunctionByName("main");
    for (auto _ : state) {
        host.context->Prepare(main);
        moduleSession().run(host.context);
    }
}

void alone(benchmark::State& state) {
    Host host;
    runBuilt(state, host);
}
BENCHMARK(alone)->Name("debug_alone")->MeasureProcessCPUTime();

void attached(benchmark::State& state) {
    Host host;
    Answers answers;
    DebugSession debug(moduleSession(), answers);
    debug.rules() = StopRules::usual();
    debug.attach();
    runBuilt(state, host);
}
BENCHMARK(attached)->Name("debug_attached")->MeasureProcessCPUTime();

void coverage(benchmark::State& state) {
    Host host;
    Answers answers;
    Coverage counts(kMainSource);
    DebugSession debug(moduleSession(), answers);
    debug.setCoverage(&counts);
    debug.attach();
    runBuilt(state, host);
}
BENCHMARK(coverage)->Name("debug_coverage")->MeasureProcessCPUTime();

void profile(benchmark::State& state) {
    Host host;
    Answers answers;
    Profiler profiler;
    DebugSession debug(moduleSession(), answers);
    debug.setProfiler(&profiler);
    debug.attach();
    runBuilt(state, host);
}
BENCHMARK(profile)->Name("debug_profile")->MeasureProcessCPUTime();

void emptyCallback(asIScriptContext*, void*) {}

void empty(benchmark::State& state) {
    Host host;
    must(moduleSession().compile(host.engine, kLoop) != 0);
    asIScriptFunction* const main = host.engine->GetModule("main")->GetFunctionByName("main");
    asIScriptContext* const context = host.engine->CreateContext();
    context->SetLineCallback(asFUNCTION(emptyCallback), nullptr, asCALL_CDECL);
    for (auto _ : state) {
        context->Prepare(main);
        context->Execute();
    }
    context->Release();
}
BENCHMARK(empty)->Name("debug_empty")->MeasureProcessCPUTime();

void condition(benchmark::State& state) {
    Host host;
    Answers answers;
    DebugSession debug(moduleSession(), answers);
    BreakpointWish wish;
    wish.place.line = 4;
    wish.condition = "sum < 0";
    debug.breakpoints().add(wish);
    for (auto _ : state) must(!debug.start(host.engine, host.context, kShortLoop).failed());
}
BENCHMARK(condition)->Name("debug_condition")->MeasureProcessCPUTime();

/// As a debugger does that asks for each stop and goes on.
void leaving(benchmark::State& state) {
    Host host;
    const std::vector<std::int32_t> lines = {4};
    for (auto _ : state) {
        RunOutcome outcome =
            moduleSession().runApplication(host.engine, host.context, kShortLoop, &lines);
        int stops = 0;
        for (; outcome.stoppedAtLine(); ++stops)
            outcome = moduleSession().continueApplication(host.engine, host.context, &lines,
                                                          StepMode::run);
        must(stops == kPasses);
    }
}
BENCHMARK(leaving)->Name("debug_leaving")->MeasureProcessCPUTime();

void firstPage(benchmark::State& state) {
    using Clock = std::chrono::steady_clock;
    Host host;
    Answers answers;
    DebugSession debug(moduleSession(), answers);
    BreakpointWish wish;
    wish.place.line = 5;
    debug.breakpoints().add(wish);
    double spent = 0;
    answers.act = [&] {
        const auto began = Clock::now();
        for (unsigned i = 0; i < debug.frames().count(); ++i)
            benchmark::DoNotOptimize(debug.frames().frame(i));
        must(debug.frames().count() == 500);
        const auto values = debug.values().children(debug.scope(ValueScope::locals, 0));
        must(values.size() == 2 && values[1].indexed == 10000000);
        must(debug.values().children(values[1].node, 0, 100).size() == 100);
        spent += std::chrono::duration<double, std::milli>(Clock::now() - began).count();
    };
    for (auto _ : state) must(!debug.start(host.engine, host.context, kDeep).failed());
    state.counters["ms"] = spent / static_cast<double>(state.iterations());
}
BENCHMARK(firstPage)->Name("debug_first_page")->UseRealTime();

}  // namespace
