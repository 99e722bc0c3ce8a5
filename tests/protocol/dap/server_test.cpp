// A host that lets a client look, and what happens when the client does not behave.
#include <atomic>
#include <chrono>
#include <thread>

#include "protocol/dap/dap_driver.h"
#include "protocol/dap/debug_server.h"
#include "support/script_fixture.h"

namespace korvant::test {
namespace {

constexpr char kScript[] =
    "int[] order = {3, 1, 2};\n"
    "bool less(const int &in a, const int &in b) {\n"
    "    return a < b;\n"
    "}\n"
    "class Stone {\n"
    "    ~Stone() {\n"
    "        order[0]++;\n"
    "    }\n"
    "}\n"
    "int fault(int zero) {\n"
    "    return 1 / zero;\n"
    "}\n"
    "int main() {\n"
    "    order.sort(less);\n"
    "    { Stone stone; }\n"
    "    try { fault(0); } catch { order[1] = 9; }\n"
    "    Print(\"\" + order[0] + order[1] + order[2]);\n"
    "    return 0;\n"
    "}\n"
    "int endless() {\n"
    "    for (;;) {}\n"
    "    return 0;\n"
    "}\n";

class Server : public ScriptFixture {
  protected:
    void SetUp() override {
        dap::DebugServer::Options options;
        options.token = "open";
        options.sourcePath = "/scripts/stones.as";
        options.waitForClient = true;
        std::string error;
        server = dap::DebugServer::start(std::move(options), error);
        ASSERT_TRUE(server) << error;
    }
    void TearDown() override { server.reset(); }

    std::unique_ptr<DapDriver> connect() {
        std::string error;
        std::shared_ptr<rpc::Channel> channel = rpc::connectToLoopback(server->port(), error);
        EXPECT_TRUE(channel) << error;
        last = channel;
        auto client = std::make_unique<DapDriver>(channel);
        client->good("initialize", {{"adapterID", "test"}});
        return client;
    }
    /// Attaches; the place of the one before is free when the server has seen that it is gone.
    std::unique_ptr<DapDriver> connectWhenFree() {
        const auto until = std::chrono::steady_clock::now() + std::chrono::seconds(8);
        while (std::chrono::steady_clock::now() < until) {
            auto client = connect();
            if (client->ask("attach", {{"port", 1}, {"token", "open"}})["success"] == true)
                return client;
        }
        return nullptr;
    }
    /// Attaches, and lets the script run.
    std::unique_ptr<DapDriver> attach(const std::vector<int>& lines, const char* filter) {
        auto client = connect();
        const int request = client->send("attach", {{"port", 1}, {"token", "open"}});
        client->event("initialized");
        Json wanted = Json::array();
        for (const int line : lines) wanted.push_back({{"line", line}});
        client->good("setBreakpoints",
                     {{"source", {{"path", "/scripts/stones.as"}}}, {"breakpoints", wanted}});
        client->good("setExceptionBreakpoints", {{"filters", Json::array({filter})}});
        client->good("configurationDone");
        EXPECT_EQ(client->answerTo(request)["success"], true);
        return client;
    }
    /// Runs the script while `act` is the client.
    void play(const std::function<void()>& act) {
        std::thread user(act);
        EXPECT_TRUE(run(kScript)) << messages();
        user.join();
    }

    std::unique_ptr<dap::DebugServer> server;
    std::shared_ptr<rpc::Channel> last;
};

TEST_F(Server, AClientThatDiesAtAnyStopLeavesTheScriptRunning) {
    // A comparator, a destructor, an exception, main: each by breakpoint, then by a step in it.
    for (const int line : {3, 7, 11, 14, 17})
        for (const bool steps : {false, true}) {
            SCOPED_TRACE(line);
            server.reset();
            SetUp();
            console.output.clear();
            play([&] {
                const auto client = attach({line}, "all");
                Json stop = client->stopped();
                if (steps) client->good("stepIn", {{"threadId", 1}});
                if (steps) client->stopped();
                last->close();
            });
            EXPECT_EQ(console.output, "293");
        }
}

TEST_F(Server, AClientThatDiesAtAStopOfAnyReasonLeavesTheScriptRunning) {
    const std::vector<std::pair<std::string, Json>> wishes = {
        {"setFunctionBreakpoints", {{"breakpoints", {{{"name", "fault"}}}}}},
        {"setDataBreakpoints", {{"breakpoints", {{{"dataId", "order[1]"}}}}}},
        {"pause", {{"threadId", 1}}}};
    for (const auto& [command, arguments] : wishes) {
        SCOPED_TRACE(command);
        server.reset();
        SetUp();
        console.output.clear();
        play([&, &wish = arguments, &name = command] {
            const auto client = connect();
            client->send("attach", {{"port", 1}, {"token", "open"}});
            client->event("initialized");
            client->good(name, wish);
            client->good("configurationDone");
            EXPECT_NE(client->stopped()["reason"], "breakpoint");
            last->close();
        });
        EXPECT_EQ(console.output, "293");
    }
}

TEST_F(Server, AClientThatDiesWhileItsExpressionRunsLeavesTheScriptRunning) {
    play([&] {
        const auto client = attach({14}, "all");
        client->stopped();
        client->send("evaluate", {{"expression", "endless()"},
                                  {"frameId", client->topFrame()["id"]},
                                  {"context", "repl"}});
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
        last->close();
    });
    EXPECT_EQ(console.output, "293");
}

TEST_F(Server, OnlyOneClientWithTheTokenIsLetIn) {
    std::atomic<bool> done{false};
    play([&] {
        {
            const auto wrong = connect();
            EXPECT_EQ(wrong->ask("attach", {{"port", 1}, {"token", "shut"}})["success"], false);
            EXPECT_EQ(wrong->ask("evaluate", {{"expression", "1"}})["success"], false);
            last->close();
        }
        const auto client = connectWhenFree();
        done = client != nullptr;
        ASSERT_TRUE(client);
        EXPECT_EQ(client->event("capabilities")["capabilities"]["supportsRestartRequest"], false);
        const auto kept = last;
        const auto second = connect();
        EXPECT_EQ(second->ask("attach", {{"port", 1}, {"token", "open"}})["success"], false);
        EXPECT_EQ(client->ask("restart")["success"], false);
        client->good("configurationDone");
        client->event("output");
        kept->close();
    });
    EXPECT_TRUE(done);
    EXPECT_EQ(console.output, "293");
}

TEST_F(Server, WhoSaysNothingGivesWay) {
    play([&] {
        std::string error;
        const auto silent = rpc::connectToLoopback(server->port(), error);
        ASSERT_TRUE(silent) << error;
        silent->write("Content-Le");
        const auto client = connectWhenFree();
        ASSERT_TRUE(client);
        client->good("configurationDone");
        client->event("output");
        last->close();
        silent->close();
    });
    EXPECT_EQ(console.output, "293");
}

TEST_F(Server, NoiseIsTurnedAwayAndTheNextClientServed) {
    play([&] {
        for (const std::string& noise :
             {std::string(10 << 20, 'x'), std::string("Content-Length: many\r\n\r\n"),
              std::string("Content-Length: 99999999999\r\n\r\n"), std::string("Content-Le")}) {
            std::string error;
            const auto channel = rpc::connectToLoopback(server->port(), error);
            ASSERT_TRUE(channel) << error;
            channel->write(noise);
            channel->close();
        }
        const auto client = connectWhenFree();
        ASSERT_TRUE(client);
        client->good("configurationDone");
        client->event("output");
        last->close();
    });
    EXPECT_EQ(console.output, "293");
}

}  // namespace
}  // namespace korvant::test
