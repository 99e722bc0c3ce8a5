// Any bytes as what a debugging client sends. A text of lines, "command arguments" each, is sent as
// requests: each is answered once. Anything else goes as it is.
#include <condition_variable>
#include <cstdint>
#include <cstdlib>
#include <map>
#include <mutex>
#include <string>
#include <string_view>

#include "host/library/script_console.h"
#include "host/services/null_services.h"
#include "module/families.h"
#include "protocol/dap/launch_server.h"

namespace {

using namespace korvant;
using rpc::Json;

constexpr char kProgram[] = "/scripts/walk.as";
constexpr char kScript[] =
    "class Stone { int weight = 3; Stone@ next; int share(int n) { return weight / n; } }\n"
    "int total = 0;\n"
    "int main() {\n"
    "    Stone stone;\n"
    "    int[] numbers = {1, 2, 3};\n"
    "    for (int i = 2; i >= 0; i--) {\n"
    "        try { total += stone.share(i); } catch { total = 0; }\n"
    "    }\n"
    "    string word;\n"
    "    Input(word);\n"
    "    Print(word);\n"
    "    return 0;\n"
    "}\n";

/// Gives the client's bytes in pieces, then the end, and keeps what is answered.
class Client final : public rpc::Channel {
  public:
    explicit Client(std::string bytes) : bytes_(std::move(bytes)) {}

    bool read(std::string& bytes) override {
        if (at_ >= bytes_.size()) return false;
        const std::size_t size = 1 + static_cast<unsigned char>(bytes_[at_]) * 7u;
        bytes += bytes_.substr(at_, size);
        at_ += size;
        return true;
    }
    bool write(std::string_view bytes) override {
        const std::lock_guard lock(mutex_);
        frames_.feed(bytes);
        while (const auto body = frames_.next()) note(Json::parse(*body));
        return true;
    }
    void close() override {}

  private:
    void note(const Json& message) {
        if (message.at("seq").get<std::int64_t>() != ++sent_) std::abort();
        if (message.at("type") != "response") return;
        const std::int64_t request = message.at("request_seq").get<std::int64_t>();
        if (request > 0 && ++answers_[request] > 1) std::abort();
    }

    const std::string bytes_;
    std::size_t at_ = 0;
    std::mutex mutex_;
    rpc::FrameReader frames_;
    std::int64_t sent_ = 0;
    std::map<std::int64_t, int> answers_;
};

std::string requests(std::string_view text) {
    std::string bytes;
    int seq = 0;
    const auto add = [&](const std::string& command, const std::string& arguments) {
        const std::string body = "{\"seq\":" + std::to_string(++seq) +
                                 ",\"type\":\"request\",\"command\":\"" + command + "\"" +
                                 (arguments.empty() ? "" : ",\"arguments\":" + arguments) + "}";
        bytes += rpc::framed(body);
    };
    add("initialize", "{}");
    while (!text.empty()) {
        const auto end = text.find('\n');
        const std::string_view line = text.substr(0, end);
        const auto blank = line.find(' ');
        add(std::string(line.substr(0, blank)),
            blank == std::string_view::npos ? "" : std::string(line.substr(blank + 1)));
        text = end == std::string_view::npos ? std::string_view() : text.substr(end + 1);
    }
    return bytes;
}

struct Host {
    Host() {
        Limits limits = strictLimits();
        limits.hardCeilingMs = 200;
        moduleSession().setLimits(limits);
        context = moduleSession().configure(engine, registrationOrder());
        if (context == nullptr) std::abort();
    }
    asIScriptEngine* engine = asCreateScriptEngine();
    asIScriptContext* context = nullptr;
};

dap::LaunchServices servicesOf(Host& host) {
    dap::LaunchServices services;
    services.engine = [&host](asIScriptContext*& context) {
        context = host.context;
        return host.engine;
    };
    services.readScript = [](const std::string& path, std::string& text, std::string& error) {
        text = kScript;
        error = "no such script";
        return path == kProgram;
    };
    services.setLimits = [](const Json&) { return std::string(); };
    services.useConsole = [](Console& console) {
        moduleSession().setServices({&console, nullptr, nullptr, nullptr});
    };
    services.exitCode = [](const RunFailure&) { return 0; };
    services.runCommand = [](const Json&, std::uint16_t) { return std::vector<std::string>(); };
    services.spawn = [](const std::vector<std::string>&, const std::string&, const std::string&) {
        return std::string("nothing is started here");
    };
    return services;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static Host host;
    if (size == 0) return 0;
    const std::string text(reinterpret_cast<const char*>(data) + 1, size - 1);
    // These would wait for another process, or write files.
    for (const char* word : {"attach", "InTerminal", "coverage", "profile", "cwd"})
        if (text.find(word) != std::string::npos) return 0;
    auto client = std::make_shared<Client>((data[0] & 1) != 0 ? text : requests(text));
    dap::LaunchServer server(client, servicesOf(host));
    server.serve();
    scriptConsole().release();
    moduleSession().setServices({});
    return 0;
}
