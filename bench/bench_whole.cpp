// What scripts do all day, as whole programs beside those of other languages: filling, sorting and
// reading arrays, reading numbers, building and searching texts.
#include <angelscript/scriptarray.h>
#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include "base/system/child_process.h"
#include "host/library/script_console.h"
#include "host/run/script_session.h"
#include "host/terminal/pipe_console.h"
#include "korvantide/script_array.h"
#include "module/families.h"
#include "ratio_table.h"

extern "C" {
#include <lauxlib.h>
#include <lua.h>
#include <lualib.h>
}

RATIO_ROW("Whole programs", "append 100,000 numbers / Lua's table", 3, "whole_append",
          "lua_append");
RATIO_ROW("Whole programs", "1,000,000 calls in a loop / Lua", 2.5, "whole_loops", "lua_loops");
RATIO_ROW("Whole programs", "sort 1,000,000 ints / std::sort", 3, "whole_sort", "std_sort");
RATIO_ROW("Whole programs", "sort by a function of the script's / as many bare calls of it", 1.2,
          "whole_less", "bare_less", "how random numbers compare cannot be foretold");
RATIO_ROW("Whole programs", "read 1,000,000 numbers of a file / Lua's read(\"n\")", 1.2,
          "whole_read_file", "lua_read");
RATIO_ROW("Whole programs", "read 1,000,000 numbers of the input / Lua's read(\"n\")", 1.2,
          "whole_read_input", "lua_read");
RATIO_ROW("Whole programs", "elements of an array / those of the engine's add-on", 1.05,
          "array_access", "addon_access");
RATIO_ROW("Whole programs", "compile of arrays / with the engine's add-on", 1.05, "array_compile",
          "addon_compile");

namespace {

using korvant::moduleSession;

constexpr int kReads = 1'000'000;

constexpr char kProgram[] = R"(
int[] numbers, few, work;
string[] texts;
double sum;
int hits;
int calls;
void append() { int[] all; for (int i = 0; i < 100000; i++) all.insertLast(i); }
void fill() { numbers.resize(1000000); int x = 1;
    for (uint i = 0; i < numbers.length(); i++) { x = x * 1103515245 + 12345; numbers[i] = x; }
    few = numbers; few.resize(200000); }
void sort() { work = numbers; work.sortAsc(); }
bool less(const int &in a, const int &in b) { return a < b; }
bool counting(const int &in a, const int &in b) { calls++; return a < b; }
void cut() { numbers.resize(30000); }
void sortBy() { work = numbers; work.sort(less); }
void count() { calls = 0; work = numbers; work.sort(counting); }
void read() { double value; sum = 0; for (int i = 0; i < 1000000; i++) { Input(value); sum += value; } }
void readFile() { OpenInputFile("@FILE"); read(); CloseInputFile(); }
void text() { string[] all; hits = 0;
    for (int i = 0; i < 300000; i++) all.insertLast("hole " + i);
    for (uint i = 0; i < all.length(); i++) if (StrFind(all[i], "99") >= 0) hits++; }
int step(int a, int b) { return (a * 3 + b) % 1000003; }
void loops() { int n = 0; for (int i = 1; i <= 1000000; i++) n = step(n, i); }
void sortFew() { work = few; work.sortAsc(); }
int main() { return 0; }
)";

constexpr char kAccess[] =
    "int total; void access() { int[] all(1000); for (int round = 0; round < 200; round++)\n"
    "for (uint i = 0; i < all.length(); i++) { all[i] = all[i] + i; total += all[i]; } }\n";

const std::string& numbersFile() {
    static const std::string name = [] {
        std::string made = "/tmp/korvant_bench_numbers_" + std::to_string(::getpid());
        std::FILE* const file = std::fopen(made.c_str(), "w");
        for (int i = 0; i < kReads; ++i)
            std::fprintf(file, "%d.%02d%c", i % 1000, i % 100, i % 8 == 7 ? '\n' : ' ');
        std::fclose(file);
        std::atexit([] { ::unlink(numbersFile().c_str()); });
        return made;
    }();
    return name;
}

/// An engine with the library, and the program above. Runs under its limit, as scripts do.
class Scripts {
  public:
    Scripts() {
        std::string text = kProgram;
        text.replace(text.find("@FILE"), 5, numbersFile());
        if (moduleSession().compile(engine, text) != 1) std::abort();
        run("void fill()");
    }
    void run(const char* function) {
        context->Prepare(engine->GetModule("main")->GetFunctionByDecl(function));
        if (moduleSession().run(context).failed()) std::abort();
    }
    int number(const char* name) {
        asIScriptModule* const module = engine->GetModule("main");
        return *static_cast<int*>(module->GetAddressOfGlobalVar(
            static_cast<asUINT>(module->GetGlobalVarIndexByName(name))));
    }

    asIScriptEngine* engine = asCreateScriptEngine();
    asIScriptContext* context = moduleSession().configure(engine, korvant::registrationOrder());
};

Scripts& scripts() {
    static Scripts& instance = *new Scripts;
    return instance;
}

template <const char* Function>
void whole(benchmark::State& state) {
    Scripts& mine = scripts();
    for (auto _ : state) mine.run(Function);
}

void stdSort(benchmark::State& state) {
    std::vector<int> numbers(1'000'000);
    unsigned x = 1;
    for (int& number : numbers) number = static_cast<int>(x = x * 1103515245u + 12345u);
    std::vector<int> work;
    for (auto _ : state) {
        work = numbers;
        std::sort(work.begin(), work.end());
        benchmark::DoNotOptimize(work.data());
    }
}

/// A script of its own, because the array is shorter.
Scripts& shortScripts() {
    static Scripts& instance = []() -> Scripts& {
        Scripts& made = *new Scripts;
        made.run("void cut()");
        return made;
    }();
    return instance;
}

void wholeLess(benchmark::State& state) {
    Scripts& mine = shortScripts();
    for (auto _ : state) mine.run("void sortBy()");
}

void bareLess(benchmark::State& state) {
    Scripts& mine = shortScripts();
    mine.run("void count()");
    const int calls = mine.number("calls");
    asIScriptFunction* const less = mine.engine->GetModule("main")->GetFunctionByName("less");
    asIScriptContext* const context = mine.engine->CreateContext();
    context->ClearLineCallback();  // which the library gives to every context that a host makes
    int left = 1, right = 2;
    for (auto _ : state)
        for (int i = 0; i < calls; ++i) {
            context->Prepare(less);
            context->SetArgAddress(0, &left);
            context->SetArgAddress(1, &right);
            context->Execute();
            benchmark::DoNotOptimize(context->GetReturnByte());
        }
    context->Release();
}

void wholeReadInput(benchmark::State& state) {
    Scripts& mine = scripts();
    for (auto _ : state) {
        const int handle = ::open(numbersFile().c_str(), O_RDONLY);
        korvant::StreamInput input(handle);
        korvant::GatheredOutput output(STDERR_FILENO);
        korvant::PipeConsole console(input, output, nullptr);
        moduleSession().setServices({&console, nullptr, nullptr, nullptr});
        mine.run("void read()");
        korvant::scriptConsole().release();
        moduleSession().setServices({});
        ::close(handle);
    }
}

void luaRun(benchmark::State& state, const std::string& text) {
    lua_State* const lua = luaL_newstate();
    luaL_openlibs(lua);
    if (luaL_loadstring(lua, text.c_str()) != 0) std::abort();
    for (auto _ : state) {
        lua_pushvalue(lua, -1);
        if (lua_pcall(lua, 0, 0, 0) != 0) std::abort();
    }
    lua_close(lua);
}

void luaAppend(benchmark::State& state) {
    luaRun(state, "local t = {} for i = 1, 100000 do t[#t + 1] = i end");
}
void luaLoops(benchmark::State& state) {
    luaRun(state,
           "local function step(a, b) return (a * 3 + b) % 1000003 end\n"
           "local n = 0 for i = 1, 1000000 do n = step(n, i) end");
}
void luaRead(benchmark::State& state) {
    luaRun(state, "local f = io.open('" + numbersFile() +
                      "') local s = 0 for i = 1, 1000000 do s = s + f:read('n') end f:close()");
}

/// An engine with the add-on's array, or with ours.
asIScriptEngine* arrayEngine(bool ours) {
    asIScriptEngine* const engine = asCreateScriptEngine();
    if (ours)
        korvant::ensureDefaultArray(engine);
    else
        RegisterScriptArray(engine, true);
    return engine;
}

asIScriptModule* build(asIScriptEngine& engine) {
    asIScriptModule* const module = engine.GetModule("access", asGM_ALWAYS_CREATE);
    module->AddScriptSection("access", kAccess);
    if (module->Build() < 0) std::abort();
    return module;
}

template <bool ours>
void access(benchmark::State& state) {
    asIScriptEngine* const engine = arrayEngine(ours);
    asIScriptModule* const module = build(*engine);
    asIScriptContext* const context = engine->CreateContext();
    for (auto _ : state) {
        context->Prepare(module->GetFunctionByName("access"));
        if (context->Execute() != asEXECUTION_FINISHED) std::abort();
    }
    context->Release();
    engine->ShutDownAndRelease();
}

template <bool ours>
void compile(benchmark::State& state) {
    asIScriptEngine* const engine = arrayEngine(ours);
    for (auto _ : state) build(*engine);
    engine->ShutDownAndRelease();
}

/// Lua and Python are measured as scripts are: from the call of a function that is compiled already
/// to its end, without the start of anything.

/// A Python that runs one function again and again, as it is told, and says how long it took.
class Python {
  public:
    Python(const std::string& body, const std::string& ahead) {
        const std::string text = "import sys, time\n" + ahead + "def work():\n" + body +
                                 "\nfor line in sys.stdin:\n"
                                 " b = time.process_time(); work(); e = time.process_time()\n"
                                 " print(e - b, flush=True)\n";
        child_ = korvant::ChildProcess::start({"/usr/bin/env", {"python3", "-c", text}, {}, 0});
        if (child_ == nullptr) std::abort();
    }

    double seconds() {
        std::string line;
        const bool asked = child_->write("\n", kPatienceMs);
        while (asked && line.find('\n') == std::string::npos)
            if (child_->read(line, kPatienceMs) != korvant::ChildProcess::Read::some) return 0;
        return std::atof(line.c_str());
    }

  private:
    static constexpr std::uint32_t kPatienceMs = 60'000;
    std::unique_ptr<korvant::ChildProcess> child_;
};

void pythonRun(benchmark::State& state, const char* body, const char* ahead = "") {
    Python python(body, ahead);
    for (auto _ : state) state.SetIterationTime(python.seconds());
}

void pythonAppend(benchmark::State& state) {
    pythonRun(state, " a = []\n for i in range(100000): a.append(i)\n");
}
void pythonLoops(benchmark::State& state) {
    pythonRun(state, " n = 0\n for i in range(1, 1000001): n = step(n, i)\n",
              "def step(a, b): return (a * 3 + b) % 1000003\n");
}
void pythonSort(benchmark::State& state) {
    pythonRun(state, " work = list(numbers)\n work.sort()\n",
              "numbers = []\nx = 1\nfor i in range(200000):\n"
              " x = (x * 1103515245 + 12345) & 0xffffffff\n numbers.append(x)\n");
}
void pythonText(benchmark::State& state) {
    pythonRun(state,
              " a = []\n for i in range(300000): a.append('hole ' + str(i))\n hits = 0\n"
              " for t in a:\n  if t.find('99') >= 0: hits += 1\n");
}

/// Where there is one.
[[maybe_unused]] const bool kPython = [] {
    if (std::system("command -v python3 >/dev/null 2>&1") != 0) return false;
    korvant_bench::addRow(korvant_bench::RatioRow{
        "Whole programs", "append 100,000 numbers / Python's list", 0.4, "whole_append",
        "python_append", "eleven instructions and a call for each number"});
    korvant_bench::addRow(korvant_bench::RatioRow{
        "Whole programs", "build and search 300,000 texts / Python", 0.8, "whole_text",
        "python_text", "each element's text is made twice and its memory goes back each time"});
    korvant_bench::addRow(korvant_bench::RatioRow{"Whole programs", "sort 200,000 ints / Python",
                                                  0.5, "whole_sort_few", "python_sort"});
    korvant_bench::addRow(korvant_bench::RatioRow{
        "Whole programs", "1,000,000 calls in a loop / Python", 0.25, "whole_loops", "python_loops",
        "the state that each call keeps for stops"});
    benchmark::RegisterBenchmark("python_loops", pythonLoops)->UseManualTime();
    benchmark::RegisterBenchmark("python_sort", pythonSort)->UseManualTime();
    benchmark::RegisterBenchmark("python_append", pythonAppend)->UseManualTime();
    benchmark::RegisterBenchmark("python_text", pythonText)->UseManualTime();
    return true;
}();

constexpr char kLoops[] = "void loops()", kSortFew[] = "void sortFew()";
constexpr char kAppend[] = "void append()", kSort[] = "void sort()", kFile[] = "void readFile()",
               kText[] = "void text()";
BENCHMARK(whole<kAppend>)->Name("whole_append");
BENCHMARK(luaAppend)->Name("lua_append");
BENCHMARK(whole<kLoops>)->Name("whole_loops");
BENCHMARK(luaLoops)->Name("lua_loops");
BENCHMARK(whole<kSortFew>)->Name("whole_sort_few");
BENCHMARK(whole<kSort>)->Name("whole_sort");
BENCHMARK(stdSort)->Name("std_sort");
BENCHMARK(wholeLess)->Name("whole_less");
BENCHMARK(bareLess)->Name("bare_less");
BENCHMARK(whole<kFile>)->Name("whole_read_file");
BENCHMARK(wholeReadInput)->Name("whole_read_input");
BENCHMARK(luaRead)->Name("lua_read");
BENCHMARK(whole<kText>)->Name("whole_text");
BENCHMARK(access<true>)->Name("array_access");
BENCHMARK(access<false>)->Name("addon_access");
BENCHMARK(compile<true>)->Name("array_compile");
BENCHMARK(compile<false>)->Name("addon_compile");

}  // namespace
