// Print against the C library's output: to a file, to a pipe, to a terminal, and from a script.
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <thread>

#include "base/system/gathered_output.h"
#include "host/engine/native_call.h"
#include "host/engine/script_string.h"
#include "host/library/console_functions.h"
#include "host/library/run_files.h"
#include "host/library/script_console.h"
#include "host/run/script_session.h"
#include "host/terminal/ansi_terminal.h"
#include "host/terminal/pipe_console.h"
#include "module/families.h"
#include "ratio_table.h"

RATIO_ROW("Output", "prints to a file / fprintf", 0.55, "print_file", "fprintf_file");
RATIO_ROW("Output", "prints to a pipe / fprintf", 0, "print_pipe", "fprintf_pipe");
RATIO_ROW("Output", "prints to a terminal, gathered / a formatted write each", 0.25,
          "print_terminal", "fprintf_terminal", "a busy machine: both ends of a terminal run");
RATIO_ROW("Output", "a script's Print of a literal / one that does nothing", 1.08, "script_print",
          "script_nothing", "a call that does nothing takes 14 ns, no longer 140");

namespace {

using korvant::moduleSession;

constexpr int kPrints = 100'000;
constexpr int kTerminalPrints = 5000;  // terminals take their time with every byte
constexpr char kLine[] = "NR-02 from 30.0 to 35.0 m: 3.10 g/t\n";

using Print = void (*)(const korvant::ScriptString*);

/// The function that scripts call, past the engine.
Print printFunction() {
    return reinterpret_cast<Print>(korvant::consoleFunctionRows()[0].native.ptr.f.func);
}

/// Reads and drops what arrives until the other side closes.
class Drain {
  public:
    explicit Drain(int handle)
        : thread_([handle] {
              char piece[65536];
              while (::read(handle, piece, sizeof piece) > 0) {
              }
          }) {}
    ~Drain() { thread_.join(); }

  private:
    std::thread thread_;
};

/// Somewhere to write to, and the end of it that is read.
struct Channel {
    int write = -1;
    int read = -1;

    static Channel pipe() {
        int ends[2] = {-1, -1};
        if (::pipe(ends) != 0) std::abort();
        return {ends[1], ends[0]};
    }
    static Channel terminal() {
        const int reader = ::posix_openpt(O_RDWR | O_NOCTTY);
        if (::grantpt(reader) != 0 || ::unlockpt(reader) != 0) std::abort();
        return {::open(::ptsname(reader), O_RDWR | O_NOCTTY), reader};
    }
};

std::string temporaryFile() {
    return "/tmp/korvant_bench_" + std::to_string(::getpid()) + ".txt";
}

void printFile(benchmark::State& state) {
    korvant::ScriptString* const text = korvant::ScriptString::create(kLine);
    const std::string name = temporaryFile();
    for (auto _ : state) {
        korvant::runFiles().openOutput(name, korvant::OutputFile::Mode::truncate);
        for (int i = 0; i < kPrints; ++i) printFunction()(text);
        korvant::runFiles().closeOutput();
    }
    ::unlink(name.c_str());
    text->release();
}

void fprintfFile(benchmark::State& state) {
    const std::string format = kLine;
    const std::string name = temporaryFile();
    for (auto _ : state) {
        std::FILE* const file = std::fopen(name.c_str(), "w");
        for (int i = 0; i < kPrints; ++i) std::fprintf(file, format.c_str(), 0);
        std::fclose(file);
    }
    ::unlink(name.c_str());
}

/// Prints into a channel whose other end is drained; `wrap` makes the console over the output.
template <class Wrap>
void printInto(benchmark::State& state, const Channel& channel, int prints, Wrap wrap) {
    korvant::ScriptString* const text = korvant::ScriptString::create(kLine);
    {
        const Drain drain(channel.read);
        korvant::StreamInput input(STDIN_FILENO);
        auto output = std::make_unique<korvant::GatheredOutput>(channel.write);
        auto console = wrap(input, *output);
        moduleSession().setServices({console.get(), nullptr, nullptr, nullptr});
        for (auto _ : state) {
            for (int i = 0; i < prints; ++i) printFunction()(text);
            korvant::scriptConsole().flush();
        }
        korvant::scriptConsole().release();
        moduleSession().setServices({});
        console.reset();
        output.reset();
        ::close(channel.write);
    }
    ::close(channel.read);
    text->release();
}

void printPipe(benchmark::State& state) {
    printInto(state, Channel::pipe(), kPrints, [](auto& input, auto& output) {
        return std::make_unique<korvant::PipeConsole>(input, output, nullptr);
    });
}

void printTerminal(benchmark::State& state) {
    printInto(state, Channel::terminal(), kTerminalPrints, [](auto& input, auto& output) {
        return std::make_unique<korvant::AnsiTerminal>(input, output, nullptr,
                                                       korvant::AnsiTerminal::Options{});
    });
}

void fprintfInto(benchmark::State& state, const Channel& channel, int prints, int buffering) {
    const std::string format = kLine;
    {
        const Drain drain(channel.read);
        std::FILE* const file = ::fdopen(channel.write, "w");
        std::setvbuf(file, nullptr, buffering, BUFSIZ);
        for (auto _ : state) {
            for (int i = 0; i < prints; ++i) std::fprintf(file, format.c_str(), 0);
            std::fflush(file);
        }
        std::fclose(file);
    }
    ::close(channel.read);
}

void fprintfPipe(benchmark::State& state) {
    fprintfInto(state, Channel::pipe(), kPrints, _IOFBF);
}
void fprintfTerminal(benchmark::State& state) {
    fprintfInto(state, Channel::terminal(), kTerminalPrints, _IONBF);
}

void nothing(const korvant::ScriptString*) {}

/// One engine with the library and a function of the same form that does nothing.
struct Scripts {
    asIScriptEngine* engine = asCreateScriptEngine();
    asIScriptContext* context = moduleSession().configure(engine, korvant::registrationOrder());

    Scripts() {
        const korvant::FunctionRow rows[] = {
            korvant::functionRow<nothing>("void Nothing(string &in)", "")};
        korvant::registerGlobalFunctions(engine, rows);
        moduleSession().compile(engine,
                                "void print() { for (int i = 0; i < 20000; i++) Print(\"a line of "
                                "text\\n\"); }\n"
                                "void nothing() { for (int i = 0; i < 20000; i++) Nothing(\"a line "
                                "of text\\n\"); }\nint main() { return 0; }\n");
    }
    void execute(const char* function) {
        context->Prepare(engine->GetModule("main")->GetFunctionByDecl(function));
        context->ClearLineCallback();
        if (context->Execute() != asEXECUTION_FINISHED) std::abort();
        context->Unprepare();
    }
};

Scripts& scripts() {
    static Scripts& instance = *new Scripts;
    return instance;
}

void scriptPrint(benchmark::State& state) {
    const std::string name = temporaryFile();
    scripts();
    korvant::runFiles().openOutput(name, korvant::OutputFile::Mode::truncate);
    for (auto _ : state) scripts().execute("void print()");
    korvant::runFiles().closeOutput();
    ::unlink(name.c_str());
}

void scriptNothing(benchmark::State& state) {
    for (auto _ : state) scripts().execute("void nothing()");
}

BENCHMARK(printFile)->Name("print_file");
BENCHMARK(fprintfFile)->Name("fprintf_file");
BENCHMARK(printPipe)->Name("print_pipe")->UseRealTime();
BENCHMARK(fprintfPipe)->Name("fprintf_pipe")->UseRealTime();
BENCHMARK(printTerminal)->Name("print_terminal")->UseRealTime();
BENCHMARK(fprintfTerminal)->Name("fprintf_terminal")->UseRealTime();
BENCHMARK(scriptPrint)->Name("script_print");
BENCHMARK(scriptNothing)->Name("script_nothing");

}  // namespace
