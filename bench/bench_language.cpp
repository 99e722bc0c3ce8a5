// Errors while typing: the check in the worker against a plain build, and what a key costs.
#include <signal.h>

#include <chrono>
#include <condition_variable>
#include <mutex>

#include "host/run/script_session.h"
#include "language/checker.h"
#include "language/compile_worker.h"
#include "language/safe_compiler.h"
#include "language/scope_index.h"
#include "module/families.h"
#include "ratio_table.h"

RATIO_ROW("Errors while typing", "check in the worker / plain build", 1.35, "check_worker/",
          "check_plain/");
COUNTER_ROW("Errors while typing", "check of 1,000 lines, ms", 40, "check_worker/1000_", "ms");
COUNTER_ROW("Errors while typing", "check of 10,000 lines, ms", 260, "check_worker/10000_", "ms");
COUNTER_ROW("Errors while typing", "a key on the window's thread, 10,000 lines, ms", 1, "check_key",
            "ms");
COUNTER_ROW("Errors while typing", "worker died -> next answer, ms", 50, "check_revive", "ms");
COUNTER_ROW("Errors while typing", "scope index of 10,000 lines, ms", 50, "check_index", "ms");

namespace {

using namespace korvant;
using Clock = std::chrono::steady_clock;

double since(Clock::time_point began) {
    return std::chrono::duration<double, std::milli>(Clock::now() - began).count();
}

std::string scriptOf(long lines) {
    std::string text =
        "class Well { double depth = 1; string name; double at(int i) { return "
        "depth * i; } }\n";
    for (long i = 0; i < lines / 10; ++i) {
        const std::string n = std::to_string(i);
        text += "double f" + n + "(int a, const string &in s)\n{\n    Well w;\n" +
                "    double sum = 0;\n    for (int i = 0; i < a; i++) {\n" +
                "        sum += w.at(i) * 2.5;\n    }\n    w.name = s + sum;\n" +
                "    return sum + w.name.length();\n}\n";
    }
    return text + "int main() { return 0; }\n";
}

asIScriptEngine& engine() {
    static asIScriptEngine* const made = [] {
        asIScriptEngine* const fresh = asCreateScriptEngine();
        moduleSession().setServices({});
        moduleSession().configure(fresh, registrationOrder());
        return fresh;
    }();
    return *made;
}

void plain(benchmark::State& state, long lines) {
    const std::string text = scriptOf(lines);
    for (auto _ : state)
        if (moduleSession().check(&engine(), text) != 1) state.SkipWithError("does not build");
}

void worker(benchmark::State& state, long lines) {
    const std::string text = scriptOf(lines);
    CompileWorker child(workerSetup(engine()));
    child.build(text);
    double ms = 0;
    for (auto _ : state) {
        const auto began = Clock::now();
        const auto outcome = child.build(text);
        if (outcome.build != BuildEnd::built) state.SkipWithError("not built");
        benchmark::DoNotOptimize(diagnosticsOf(outcome.messages, text));
        ms = since(began);
    }
    state.counters["ms"] = ms;
}

void revive(benchmark::State& state) {
    CompileWorker child(workerSetup(engine()));
    child.build("int main() { return 0; }");
    double ms = 0;
    for (auto _ : state) {
        ::kill(static_cast<pid_t>(child.childId()), SIGKILL);
        const auto began = Clock::now();
        child.buildTwice("int main() { return 0; }");
        ms = since(began);
    }
    state.counters["ms"] = ms;
}

/// What a key costs its window: the text is handed over, nothing is waited for.
void key(benchmark::State& state) {
    const std::string text = scriptOf(10000);
    auto service = makeCheckService(engine(), [](std::function<void()>) {});
    std::uint64_t version = 0;
    double worst = 0;
    for (auto _ : state) {
        const auto began = Clock::now();
        service->check(++version, text);
        worst = std::max(worst, since(began));
    }
    state.counters["ms"] = worst;
}

void index(benchmark::State& state) {
    const std::string text = scriptOf(10000);
    double ms = 0;
    for (auto _ : state) {
        const auto began = Clock::now();
        const ScopeIndex made(text);
        benchmark::DoNotOptimize(made.uses().size());
        ms = since(began);
    }
    state.counters["ms"] = ms;
}

const bool registered = [] {
    for (const long lines : {1000L, 10000L}) {
        const std::string name = std::to_string(lines) + "_lines";
        benchmark::RegisterBenchmark(("check_plain/" + name).c_str(), plain, lines)
            ->UseRealTime()
            ->Unit(benchmark::kMillisecond);
        benchmark::RegisterBenchmark(("check_worker/" + name).c_str(), worker, lines)
            ->UseRealTime()
            ->Unit(benchmark::kMillisecond);
    }
    benchmark::RegisterBenchmark("check_key", key)->UseRealTime()->Iterations(200);
    benchmark::RegisterBenchmark("check_revive", revive)->UseRealTime()->Iterations(20);
    benchmark::RegisterBenchmark("check_index", index)->UseRealTime();
    return true;
}();

}  // namespace
