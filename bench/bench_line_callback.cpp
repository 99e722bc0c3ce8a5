// What the line callback costs, as a ratio to the same script without any and to an empty one.
#include <chrono>
#include <cstdlib>
#include <memory>
#include <string>

#include "host/engine/engine_compat.h"
#include "host/run/line_callback.h"
#include "host/run/run_state.h"
#include "host/run/script_session.h"
#include "module/families.h"
#include "ratio_table.h"

RATIO_ROW("Line callback", "no breakpoints, step mode 0 / the script without any callback", 1.02,
          "line_quiet/", "line_bare/");
RATIO_ROW("Line callback", "breakpoints, none in the running function / an empty callback", 1.20,
          "line_elsewhere/", "line_empty/", "the engine's answer which function runs, next row");
RATIO_ROW("Line callback", "asking for the function and nothing else / an empty callback", 0,
          "line_function/", "line_empty/");
RATIO_ROW("Line callback", "breakpoints in the running function / an empty callback", 1.65,
          "line_inside/", "line_empty/", "the engine's answer which line runs, next row");
RATIO_ROW("Line callback", "asking for the line and nothing else / an empty callback", 0,
          "line_number/", "line_empty/");
COUNTER_ROW("Line callback", "milliseconds beyond its limit that an endless script runs", 2.0,
            "line_endless", "beyond", "a busy machine wakes the watch thread late");

namespace {

using korvant::LineCallback;

/// Each has a branch that is never taken on line 3, and nothing from line 40 on but its end.
struct Script {
    const char* name;
    const char* body;
};

const Script kScripts[] = {
    {"sum", "int sum = 0;\nfor (int i = 0; i < 60000; i++) {\nsum += i;\nsum ^= 5;\n}"},
    {"calls", "int sum = 0;\nfor (int i = 0; i < 20000; i++) {\nsum = add(sum, i);\n}"},
    {"branches",
     "int a = 0, b = 0;\nfor (int i = 0; i < 40000; i++) {\nif (i % 3 == 0)\na++;\nelse\nb--;\n}"},
    {"array",
     "int[] v(100);\nfor (int i = 0; i < 30000; i++) {\nv[i % 100] = v[(i + 1) % 100] + i;\n}"},
    {"doubles",
     "double x = 0.5;\nfor (int i = 0; i < 40000; i++) {\nx = x * 0.99 + 0.1;\nx -= 0.01;\n}"},
    {"text",
     "string s;\nfor (int i = 0; i < 8000; i++) {\ns = \"depth \" + i;\nif (s.length() > 100)\ns = "
     "\"\";\n}"}};

std::string textOf(const Script& script) {
    std::string text = "int main() {\nint never = 0;\nif (never == 1) { never = 2; }\n";
    text += script.body;
    text += "\nreturn 0;\n}\nint add(int a, int b) {\nreturn a + b;\n}\n";
    return text;
}

class Silent final : public korvant::RunEndReport {
    void onStopped() override {}
    void onTimedOut() override {}
};

void emptyCallback(asIScriptContext*, void*) {}
void askFunction(asIScriptContext* context, void*) {
    benchmark::DoNotOptimize(korvant::currentFunction(*context));
}
void askLine(asIScriptContext* context, void*) {
    benchmark::DoNotOptimize(korvant::currentLine(*context));
}

/// One script in an engine of its own, never ended by a limit.
class Prepared {
  public:
    explicit Prepared(const Script& script) : engine_(asCreateScriptEngine()) {
        configured_ = korvant::moduleSession().configure(engine_, korvant::registrationOrder());
        if (korvant::moduleSession().compile(engine_, textOf(script)) == 0) std::abort();
        main_ = engine_->GetModule("main")->GetFunctionByDecl("int main()");
        context_ = engine_->CreateContext();
    }
    ~Prepared() {
        context_->Release();
        korvant::moduleSession().release(engine_);
        configured_->Release();
        engine_->ShutDownAndRelease();
    }
    Prepared(const Prepared&) = delete;
    Prepared& operator=(const Prepared&) = delete;

    asIScriptContext& context() {
        context_->Prepare(main_);
        return *context_;
    }
    /// Without what the library gives to every context that a host makes.
    void takeCallbackOff() { context_->ClearLineCallback(); }

  private:
    asIScriptEngine* engine_;
    asIScriptContext* configured_ = nullptr;
    asIScriptContext* context_ = nullptr;
    asIScriptFunction* main_ = nullptr;
};

enum class Form { bare, empty, function, line, quiet, elsewhere, inside };

void execute(benchmark::State& state, const Script& script, Form form) {
    Prepared prepared(script);
    korvant::RunState run;
    korvant::RunLimit limit(run);
    Silent report;
    LineCallback callback(run, limit, report);
    const std::vector<std::int32_t> elsewhere = {51, 52, 53, 54, 55, 56, 57, 58, 59, 60};
    const std::vector<std::int32_t> inside = {1, 3, 51, 52, 53, 54, 55, 56, 57, 58};
    const auto setCallback = [&](asSFuncPtr function) {
        prepared.context().SetLineCallback(function, nullptr, asCALL_CDECL);
    };
    prepared.takeCallbackOff();
    if (form == Form::empty) setCallback(asFUNCTION(emptyCallback));
    if (form == Form::function) setCallback(asFUNCTION(askFunction));
    if (form == Form::line) setCallback(asFUNCTION(askLine));
    if (form >= Form::quiet) callback.install(prepared.context());
    for (auto _ : state) {
        asIScriptContext& context = prepared.context();
        limit.begin(0);
        if (form >= Form::elsewhere)
            callback.breakpoints().set(form == Form::inside ? &inside : &elsewhere);
        const int result =
            form >= Form::quiet ? callback.execute(context, true) : context.Execute();
        // A breakpoint on the first line is met once; then the run goes on.
        for (int next = result; next == asEXECUTION_SUSPENDED;)
            next = callback.execute(context, true);
    }
}

const bool registered = [] {
    const std::pair<const char*, Form> forms[] = {
        {"line_bare/", Form::bare},         {"line_empty/", Form::empty},
        {"line_function/", Form::function}, {"line_number/", Form::line},
        {"line_quiet/", Form::quiet},       {"line_elsewhere/", Form::elsewhere},
        {"line_inside/", Form::inside}};
    for (const Script& script : kScripts)
        for (const auto& [name, form] : forms)
            benchmark::RegisterBenchmark(
                (std::string(name) + script.name).c_str(),
                [&script, form = form](benchmark::State& state) { execute(state, script, form); });
    return true;
}();

void endless(benchmark::State& state) {
    using Clock = std::chrono::steady_clock;
    constexpr double kLimit = 20.0;
    asIScriptEngine* const engine = asCreateScriptEngine();
    korvant::ScriptSession& session = korvant::moduleSession();
    asIScriptContext* const context = session.configure(engine, korvant::registrationOrder());
    if (session.compile(engine, "void main() { SetMaxRunTime(20); while (true) {} }") == 0)
        std::abort();
    double beyond = 0.0;
    for (auto _ : state) {
        context->Prepare(engine->GetModule("main")->GetFunctionByName("main"));
        const auto began = Clock::now();
        session.run(context);
        const std::chrono::duration<double, std::milli> spent = Clock::now() - began;
        beyond += spent.count() - kLimit;
    }
    state.counters["beyond"] = beyond / static_cast<double>(state.iterations());
    session.release(engine);
    context->Release();
    engine->ShutDownAndRelease();
}
BENCHMARK(endless)->Name("line_endless")->Iterations(5)->UseRealTime();

}  // namespace
