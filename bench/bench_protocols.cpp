// How long a client of `korvant dap` and `korvant lsp` waits, from its message to the answer: the
// program as a child process, all of its reading, compiling and writing included.
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <functional>
#include <memory>
#include <string>

#include "base/system/child_process.h"
#include "protocol/rpc/frame_reader.h"
#include "protocol/rpc/json.h"
#include "ratio_table.h"

COUNTER_ROW("Protocols", "a debugger's step, request to stop, milliseconds", 5, "dap_step", "ms");
COUNTER_ROW("Protocols", "hover in 10,000 lines, milliseconds", 50, "lsp_hover", "ms");
COUNTER_ROW("Protocols", "completion in 10,000 lines, milliseconds", 50, "lsp_completion", "ms");
COUNTER_ROW("Protocols", "definition in 10,000 lines, milliseconds", 50, "lsp_definition", "ms");
COUNTER_ROW("Protocols", "rename with its proof in 1,000 lines, milliseconds", 150, "lsp_rename",
            "ms");
COUNTER_ROW("Whole programs", "start of `korvant run` on a small script, milliseconds", 20,
            "whole_start", "ms");

namespace {

using korvant::rpc::Json;
using Clock = std::chrono::steady_clock;

constexpr char kProgram[] = KORVANT_BENCH_PROGRAM;
constexpr std::uint32_t kPatienceMs = 60'000;

/// A folder with one script in it.
class Script {
  public:
    explicit Script(const std::string& text) {
        char folder[] = "/tmp/korvant_bench_XXXXXX";
        if (::mkdtemp(folder) == nullptr) std::abort();
        folder_ = folder;
        std::FILE* const file = std::fopen(path().c_str(), "w");
        std::fwrite(text.data(), 1, text.size(), file);
        std::fclose(file);
    }
    ~Script() {
        ::unlink(path().c_str());
        ::rmdir(folder_.c_str());
    }
    Script(const Script&) = delete;
    Script& operator=(const Script&) = delete;
    std::string path() const { return folder_ + "/script.as"; }

  private:
    std::string folder_;
};

class Server {
  public:
    explicit Server(const char* command)
        : child_(korvant::ChildProcess::start({kProgram, {command}, {}, 0})) {
        if (child_ == nullptr) std::abort();
    }

    void send(const Json& message) {
        if (!child_->write(korvant::rpc::framed(message.dump()), kPatienceMs)) std::abort();
    }
    /// The next message that fits; others are dropped.
    Json await(const std::function<bool(const Json&)>& fits) {
        for (;;) {
            while (const auto body = reader_.next()) {
                Json message = Json::parse(*body);
                if (fits(message)) return message;
            }
            std::string bytes;
            if (child_->read(bytes, kPatienceMs) != korvant::ChildProcess::Read::some) std::abort();
            reader_.feed(bytes);
        }
    }

  private:
    std::unique_ptr<korvant::ChildProcess> child_;
    korvant::rpc::FrameReader reader_;
};

double millisecondsOf(const std::function<void()>& act) {
    const auto begin = Clock::now();
    act();
    return std::chrono::duration<double, std::milli>(Clock::now() - begin).count();
}

/// The median of the iterations is the benchmark's counter.
void measure(benchmark::State& state, const std::function<void()>& act) {
    std::vector<double> all;
    for (auto _ : state) all.push_back(millisecondsOf(act));
    std::nth_element(all.begin(), all.begin() + static_cast<long>(all.size() / 2), all.end());
    state.counters["ms"] = all[all.size() / 2];
}

void dapStep(benchmark::State& state) {
    const Script script(
        "int main() {\n    int n = 0;\n    while (true) {\n        n++;\n        n += 2;\n    }\n"
        "    return n;\n}\n");
    Server server("dap");
    int number = 0;
    const auto request = [&](const char* command, const Json& arguments) {
        server.send({{"seq", ++number},
                     {"type", "request"},
                     {"command", command},
                     {"arguments", arguments}});
    };
    const auto event = [&](const char* name) {
        server.await([&](const Json& one) { return one.value("event", "") == name; });
    };
    request("initialize", {{"adapterID", "korvant"}});
    request("launch", {{"program", script.path()}, {"stopOnEntry", true}});
    event("initialized");
    request("configurationDone", Json::object());
    event("stopped");
    measure(state, [&] {
        request("next", {{"threadId", 1}});
        event("stopped");
    });
}

/// A script of so many lines; the last of them are what is asked about.
std::string longScript(int lines) {
    std::string text =
        "class Hole { double depth = 0; double grade(int at) { return depth + at; } }\n";
    for (int i = 0; lines > 10 && i < lines / 5; ++i) {
        const std::string number = std::to_string(i);
        text += "double part" + number +
                "(int count) {\n    Hole hole;\n    double sum = " + number +
                ";\n    return sum + hole.grade(count);\n}\n";
    }
    return text + "int main() {\n    Hole last;\n    last.depth = 2;\n    return 0;\n}\n";
}

class LanguageClient {
  public:
    explicit LanguageClient(int lines) : text_(longScript(lines)), script_(text_) {
        last_ = static_cast<int>(std::count(text_.begin(), text_.end(), '\n')) - 3;
        ask("initialize",
            {{"processId", nullptr}, {"rootUri", nullptr}, {"capabilities", Json::object()}});
        server_.send({{"jsonrpc", "2.0"}, {"method", "initialized"}, {"params", Json::object()}});
        server_.send({{"jsonrpc", "2.0"},
                      {"method", "textDocument/didOpen"},
                      {"params",
                       {{"textDocument",
                         {{"uri", uri()},
                          {"languageId", "angelscript"},
                          {"version", 1},
                          {"text", text_}}}}}});
    }
    /// About "depth" in `last.depth = 2;`.
    void ask(const std::string& method, Json params) {
        server_.send(
            {{"jsonrpc", "2.0"}, {"id", ++number_}, {"method", method}, {"params", params}});
        const Json reply = server_.await([&](const Json& one) {
            return one.value("id", 0) == number_ && !one.contains("method");
        });
        if (reply.contains("error")) std::abort();
    }
    Json place() const {
        return {{"textDocument", {{"uri", uri()}}},
                {"position", {{"line", last_}, {"character", 10}}}};
    }
    std::string uri() const { return "file://" + script_.path(); }

  private:
    std::string text_;
    Script script_;
    Server server_{"lsp"};
    int number_ = 0;
    int last_ = 0;
};

void language(benchmark::State& state, const char* method, int lines, const Json& more) {
    LanguageClient client(lines);
    Json params = client.place();
    params.update(more);
    client.ask(method, params);
    measure(state, [&] { client.ask(method, params); });
}

void wholeStart(benchmark::State& state) {
    const Script script("int main() { Print(\"\"); return 0; }\n");
    const std::string command = std::string(kProgram) + " run " + script.path();
    measure(state, [&] {
        if (std::system(command.c_str()) != 0) std::abort();
    });
}

[[maybe_unused]] const bool kRegistered = [] {
    struct Question {
        const char* name;
        const char* method;
        int lines;
        Json more;
    };
    for (const Question& one :
         {Question{"lsp_hover", "textDocument/hover", 10'000, Json::object()},
          Question{"lsp_completion", "textDocument/completion", 10'000, Json::object()},
          Question{"lsp_definition", "textDocument/definition", 10'000, Json::object()},
          Question{"lsp_rename", "textDocument/rename", 1000, {{"newName", "deepness"}}}})
        benchmark::RegisterBenchmark(one.name, [one](benchmark::State& state) {
            language(state, one.method, one.lines, one.more);
        })->UseRealTime();
    return true;
}();
BENCHMARK(dapStep)->Name("dap_step")->UseRealTime();
BENCHMARK(wholeStart)->Name("whole_start")->UseRealTime();

}  // namespace
