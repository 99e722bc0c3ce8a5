// korvant dap without its process: a server on a thread, and the client that a test is.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <thread>

#include "protocol/dap/dap_driver.h"
#include "protocol/dap/launch_server.h"
#include "support/script_fixture.h"

namespace korvant::test {

#ifdef _WIN32
inline constexpr char kProgram[] = "C:\\scripts\\walk.as";
#else
inline constexpr char kProgram[] = "/scripts/walk.as";
#endif

class Launch : public ScriptFixture {
  protected:
    Launch() {
        services.engine = [this](asIScriptContext*& given) {
            given = context();
            return engine();
        };
        services.readScript = [this](const std::string&, std::string& read, std::string& error) {
            error = "cannot read it";
            read = text;
            return readable;
        };
        services.setLimits = [](const Json&) { return std::string(); };
        services.useConsole = [this](Console& used) {
            session().setServices({&used, &frontend, nullptr, nullptr});
        };
        services.runCommand = [this](const Json& launch, std::uint16_t port) {
            return runCommand ? runCommand(launch, port) : std::vector<std::string>();
        };
        services.spawn = [this](const std::vector<std::string>& command, const std::string& token,
                                const std::string& folder) {
            return spawn ? spawn(command, token, folder) : std::string("not here");
        };
        services.exitCode = [](const RunFailure& failure) {
            return failure.kind == RunFailure::Kind::build  ? 2
                   : failure.kind == RunFailure::Kind::none ? 0
                                                            : 1;
        };
        begin();
    }
    ~Launch() override { end(); }

    /// A server of its own and a client that has launched nothing yet, but sent `noise`.
    void anotherClient(const std::string& noise = {}) {
        end();
        channel = std::make_shared<DriverChannel>();
        client = DapDriver(channel);
        channel->put(noise);
        begin();
    }

    /// Launches, and waits at `line`; 0: runs.
    void launch(const std::string& script, int line, Json more = Json::object()) {
        text = script;
        more["program"] = kProgram;
        const int request = client.send("launch", more);
        client.event("initialized");
        setBreakpoint(line);
        client.good("configurationDone");
        EXPECT_EQ(client.answerTo(request)["success"], true);
        if (line > 0) client.stopped();
    }
    Json setBreakpoint(int line, Json more = Json::object()) {
        more["line"] = line;
        return client.good("setBreakpoints",
                           {{"source", {{"path", kProgram}}},
                            {"breakpoints", line > 0 ? Json::array({more}) : Json::array()}});
    }
    void goOn() { client.good("continue", {{"threadId", 1}}); }
    int endOf() {
        const Json exited = client.event("exited");
        client.event("terminated");
        return exited.value("exitCode", -1);
    }

    std::string text;
    bool readable = true;
    std::function<std::vector<std::string>(const Json&, std::uint16_t)> runCommand;
    std::function<std::string(const std::vector<std::string>&, const std::string&,
                              const std::string&)>
        spawn;
    int exitCode = -1;
    std::shared_ptr<DriverChannel> channel = std::make_shared<DriverChannel>();
    DapDriver client{channel};

  private:
    void begin() {
        serving_ = std::thread([this] {
            dap::LaunchServer server(channel, services);
            exitCode = server.serve();
            asThreadCleanup();
        });
        client.good("initialize", {{"adapterID", "test"}, {"supportsRunInTerminalRequest", true}});
    }
    void end() {
        channel->close();
        serving_.join();
        session().setServices({});
    }

    dap::LaunchServices services;
    std::thread serving_;
};

}  // namespace korvant::test
