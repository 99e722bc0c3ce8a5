// What a debugging client asks, and what it is told.
#include "protocol/dap/launch_fixture.h"
#include "support/temporary_folder.h"

namespace korvant::test {
namespace {

constexpr char kWalk[] =
    "enum Kind { Sand = 1, Gravel = 7 }\n"
    "int total = 0;\n"
    "int add(int a, int b) {\n"
    "    int sum = a + b;\n"
    "    return sum;\n"
    "}\n"
    "int main() {\n"
    "    int unset;\n"
    "    Kind kind = Sand;\n"
    "    Object form;\n"
    "    form.addProperty(\"width\", \"Width\", 2.5, \"mm\", true);\n"
    "    for (int i = 0; i < 3; i++) {\n"
    "        total = add(total, i);\n"
    "    }\n"
    "    Print(\"total \" + total + \"\\n\");\n"
    "    return 0;\n"
    "}\n";

TEST_F(Launch, ArgumentsOfTheWrongFormAreRefusedWithWords) {
    launch(kWalk, 13);
    const Json frame = client.topFrame()["id"];
    const Json source = {{"path", kProgram}};
    const std::vector<std::pair<std::string, Json>> good = {
        {"setBreakpoints", {{"source", source}, {"breakpoints", {{{"line", 13}}}}}},
        {"setFunctionBreakpoints", {{"breakpoints", {{{"name", "add"}}}}}},
        {"setDataBreakpoints", {{"breakpoints", {{{"dataId", "total"}}}}}},
        {"dataBreakpointInfo", {{"name", "total"}}},
        {"setExceptionBreakpoints", {{"filters", Json::array()}}},
        {"breakpointLocations", {{"source", source}, {"line", 1}}},
        {"stackTrace", {{"threadId", 1}}},
        {"scopes", {{"frameId", frame}}},
        {"variables", {{"variablesReference", 1}}},
        {"setExpression", {{"expression", "total"}, {"value", "1"}}},
        {"evaluate", {{"expression", "total"}}},
        {"completions", {{"text", "to"}, {"column", 3}, {"frameId", frame}}}};
    client.good("scopes", {{"frameId", frame}});
    for (const auto& [command, arguments] : good) {
        client.good(command, arguments);
        for (const auto& [name, value] : arguments.items())
            for (const Json& wrong : {Json(nullptr), Json(true), Json({{"x", 1}}), Json({5})}) {
                const bool optional =
                    wrong.is_null() && (name == "breakpoints" && command == "setBreakpoints");
                if (optional || (name == "frameId" && wrong.is_null())) continue;
                Json bad = arguments;
                bad[name] = wrong;
                const Json answer = client.ask(command, bad);
                EXPECT_EQ(answer["success"], false) << command << bad.dump();
                EXPECT_FALSE(answer.value("message", "").empty()) << command;
            }
    }
    for (const Json& wrong :
         {Json({{"line", 13}, {"condition", 5}}), Json({{"line", 13}, {"hitCondition", 5}}),
          Json({{"line", 13}, {"logMessage", false}}), Json({{"line", "13"}}), Json("13")})
        EXPECT_EQ(client.ask("setBreakpoints", {{"source", source},
                                                {"breakpoints", Json::array({wrong})}})["success"],
                  false)
            << wrong.dump();
    EXPECT_EQ(client.ask("next", {{"threadId", 2}})["success"], false);
    EXPECT_EQ(client.ask("variables", {{"variablesReference", 1}, {"filter", "odd"}})["success"],
              false);
}

TEST_F(Launch, EveryPhaseAnswersWhatItCan) {
    const auto refused = [this](const char* phase) {
        for (const char* command : {"setBreakpoints", "configurationDone", "cancel", "source",
                                    "pause", "evaluate", "restart", "stackTrace", "initialize",
                                    "stepBack", "goto", "restartFrame", "modules"}) {
            const Json answer =
                client.ask(command, {{"threadId", 1}, {"source", {{"path", kProgram}}}});
            EXPECT_EQ(answer["success"], false) << phase << command;
            EXPECT_FALSE(answer.value("message", "").empty()) << phase << command;
        }
        for (const char* command : {"threads", "loadedSources", "terminate"}) client.good(command);
    };
    refused("before: ");
    readable = false;
    EXPECT_EQ(client.ask("launch", {{"program", kProgram}})["success"], false);
    readable = true;
    launch(kWalk, 0);
    EXPECT_EQ(endOf(), 0);
    refused("after: ");
    EXPECT_EQ(client.output("stdout"), "total 3\n");
    EXPECT_EQ(client.count("exited"), 1);
    EXPECT_EQ(client.count("terminated"), 1);
    client.good("disconnect");
}

TEST_F(Launch, ValuesSayWhatTheyAreAndHowTheyAreNamed) {
    launch(kWalk, 12);
    auto locals = client.scope("Locals");
    EXPECT_EQ(locals["unset"]["value"], "not yet set");
    EXPECT_EQ(client.value("unset + 1"), "error: \"unset\" is not yet set.");
    const Json set = client.good(
        "setVariable", {{"variablesReference", 1}, {"name", "unset"}, {"value", "40 + 2"}});
    EXPECT_EQ(set.value("value", ""), "42");
    EXPECT_EQ(client.value("unset + 1"), "43");
    const auto parts = client.variables(locals["form"]["variablesReference"]);
    ASSERT_EQ(parts.size(), 1u);
    EXPECT_EQ(parts.begin()->second["evaluateName"], "form.width");
    EXPECT_EQ(client.value("form.width"), "2.5 mm");
    EXPECT_EQ(client.value("kind"), "Sand (1)");
    const auto setKind = [&](const char* value) {
        return client.ask("setVariable",
                          {{"variablesReference", 1}, {"name", "kind"}, {"value", value}});
    };
    EXPECT_EQ(setKind("7")["body"].value("value", ""), "Gravel (7)");
    EXPECT_EQ(setKind("\"x\"")["success"], false);
    EXPECT_EQ(client.ask("variables", {{"variablesReference", 4294967297}})["success"], false);
    EXPECT_EQ(client.good("dataBreakpointInfo", {{"name", "kind"}})["dataId"], "kind");
    EXPECT_TRUE(client.good("dataBreakpointInfo", {{"name", "nobody"}})["dataId"].is_null());
    const Json other = client.ask("source", {{"source", {{"path", "/etc/hostname"}}}});
    EXPECT_EQ(other["message"], "this file is no part of the script");
    EXPECT_EQ(client.scope("Globals")["total"]["value"], "0");
}

/// What is watched is what was chosen, whatever the innermost call has by that name.
TEST_F(Launch, AVariableOfAnOuterCallIsWatchedThere) {
    launch(
        "int n = 1;\nint half(int n) {\n    n /= 2;\n    ::n++;\n    return n;\n}\n"
        "int main() {\n    int n = 8;\n    n = half(n);\n    return n;\n}\n",
        3);
    const Json frames = client.good("stackTrace", {{"threadId", 1}})["stackFrames"];
    Json wanted = Json::array();
    const auto choose = [&](int frame, int scope) {
        const Json scopes = client.good("scopes", {{"frameId", frames[frame]["id"]}})["scopes"];
        const Json info = client.good(
            "dataBreakpointInfo",
            {{"name", "n"}, {"variablesReference", scopes[scope]["variablesReference"]}});
        wanted.push_back({{"dataId", info["dataId"]}});
        return info.value("description", "");
    };
    EXPECT_EQ(choose(1, 0), "n");
    EXPECT_EQ(choose(0, 1), "::n");
    wanted.push_back({{"dataId", "n++"}});
    const Json set = client.good("setDataBreakpoints", {{"breakpoints", wanted}})["breakpoints"];
    EXPECT_EQ(set[0]["verified"], true);
    EXPECT_EQ(set[2]["message"], "What is watched must not change anything.");
    goOn();
    EXPECT_EQ(client.stopped()["text"], "::n");
    goOn();
    EXPECT_EQ(client.stopped()["text"], "n");
    EXPECT_EQ(client.topFrame()["line"], 10);
    goOn();
    EXPECT_EQ(endOf(), 0);
}

/// A bee of three bytes in UTF-8 and one unit, and a clef of four bytes and two units.
TEST_F(Launch, ColumnsCountAsTheProtocolDoes) {
    launch(
        "int main() {\r\n    /* \xE8\x9C\x82\xF0\x9D\x84\x9E */ int word = 1; word = 2;\r\n"
        "    return word;\r\n}\r\n",
        2);
    EXPECT_EQ(client.topFrame()["column"], 15);
    client.good("next", {{"threadId", 1}, {"granularity", "statement"}});
    client.stopped();
    EXPECT_EQ(client.topFrame()["column"], 29);
    const auto offered = [&](const Json& place) {
        Json arguments = place;
        arguments["text"] = "\"\xF0\x9D\x84\x9E\" + wo\nmain";
        arguments["frameId"] = client.topFrame()["id"];
        return client.good("completions", arguments)["targets"];
    };
    EXPECT_EQ(offered({{"column", 10}}), Json({{{"label", "word"}}}));
    EXPECT_EQ(offered({{"column", 3}, {"line", 2}}), Json({{{"label", "main"}}}));
    text = "int main() {\n    /* \xE8\x9C\x82 */ nothing();\n    return 0;\n}\n";
    client.good("restart", Json::object());
    client.event("output");
    const Json told = client.event("output");
    EXPECT_NE(told.value("output", "").find(":2:15: error:"), std::string::npos) << told.dump();
    EXPECT_EQ(told["column"], 13) << told.dump();
}

TEST_F(Launch, AnExpressionThatAsksIsAnsweredAtTheConsole) {
    launch(
        "int ask() {\n    int n;\n    Input(n);\n    return n;\n}\n"
        "int main() {\n    int a = 1;\n    return a;\n}\n",
        7);
    const Json frame = client.topFrame()["id"];
    const auto say = [&](const char* typed) {
        return client.send("evaluate",
                           {{"expression", typed}, {"context", "repl"}, {"frameId", frame}});
    };
    const int question = say("ask() + 1");
    EXPECT_EQ(client.answerTo(say("41"))["success"], true);
    EXPECT_EQ(client.answerTo(question)["body"]["result"], "42");
}

TEST_F(Launch, RestartBeginsAfreshAndSaysSo) {
    launch(kWalk, 13);
    client.good("setBreakpoints", {{"source", {{"path", kProgram}}},
                                   {"breakpoints", {{{"line", 13}, {"hitCondition", "== 2"}}}}});
    goOn();
    client.stopped();
    EXPECT_EQ(client.value("i"), "1");
    text.insert(0, "\n");
    client.good("restart");
    EXPECT_EQ(client.event("continued").value("threadId", 0), 1);
    EXPECT_EQ(client.event("loadedSource").value("reason", ""), "changed");
    client.stopped();
    EXPECT_EQ(client.topFrame()["line"], 13);
    EXPECT_EQ(client.count("exited"), 0);
    setBreakpoint(0);
    goOn();
    EXPECT_EQ(endOf(), 0);
    EXPECT_EQ(client.output("stdout"), "total 3\n");
}

TEST_F(Launch, CoverageAndProfileAreWrittenBeforeTheEndIsTold) {
    const TemporaryFolder folder;
    launch(kWalk, 13,
           {{"coverage", folder.file("run.info")}, {"profile", folder.file("run.stacks")}});
    EXPECT_EQ(client.value("add(1, 2)", "repl"), "3");
    setBreakpoint(0);
    goOn();
    EXPECT_EQ(endOf(), 0);
    const std::string counted = readFile(folder.file("run.info"));
    EXPECT_NE(counted.find(std::string("SF:") + kProgram), std::string::npos);
    EXPECT_NE(counted.find("\nDA:4,3\n"), std::string::npos) << counted;
    EXPECT_TRUE(std::filesystem::exists(folder.file("run.stacks")));
    EXPECT_NE(client.output("console").find("lines (100 %)"), std::string::npos);
}

TEST_F(Launch, WhatIsNoMessageIsPassedOver) {
    for (const std::string& noise :
         {std::string("Content-Length: many\r\n\r\n{}"), std::string("Content-Length: -1\r\n\r\n"),
          std::string(1 << 20, 'x'), rpc::framed("{\"seq\":"),
          rpc::framed(std::string(100000, '[')), rpc::framed("7"),
          rpc::framed("{\"type\":\"event\"}"), std::string("Content-Length: 999999999999\r\n\r\n")})
        channel->put(noise);
    client.good("threads");
    launch(kWalk, 0);
    EXPECT_EQ(endOf(), 0);
}

/// Bytes that have come before the server stands are answered like others, and counted.
TEST_F(Launch, NoiseBeforeTheFirstMessageIsToldOf) {
    for (int times = 0; times < 200; ++times) {
        anotherClient("Content-Length: many\r\n\r\n");
        const std::vector<Json> messages = client.messages();
        ASSERT_GE(messages.size(), 2u);
        EXPECT_EQ(messages[0].value("event", ""), "output") << messages[0];
        for (std::size_t i = 0; i < messages.size(); ++i) EXPECT_EQ(messages[i]["seq"], i + 1);
    }
}

TEST_F(Launch, OutputIsCompleteInOrderAndInPieces) {
    launch(
        "int main() {\n    for (int i = 0; i < 100000; i++)\n        Print(\"\" + i + \"\\n\");\n"
        "    return 0;\n}\n",
        0);
    EXPECT_EQ(endOf(), 0);
    std::string wanted;
    for (int i = 0; i < 100000; ++i) wanted += std::to_string(i) + "\n";
    EXPECT_TRUE(client.output("stdout") == wanted);
    for (const Json& message : client.messages())
        if (message.value("event", "") == "output") {
            EXPECT_LE(std::string(message["body"]["output"]).size(), 64u << 10);
        }
}

TEST_F(Launch, AClientMayLeaveInEveryState) {
    text =
        "int main() {\n    string s;\n    Print(\"?\");\n    Input(s);\n    for (;;) {}\n"
        "    return 0;\n}\n";
    client.send("launch", {{"program", kProgram}});
    client.event("initialized");
    client.good("configurationDone");
    while (client.output("stdout").empty()) client.event("output");
    EXPECT_EQ(client.ask("evaluate", {{"expression", "1"}})["success"], false);
    client.good("evaluate", {{"expression", "a line"}, {"context", "repl"}});
    client.good("pause", {{"threadId", 1}});
    EXPECT_EQ(client.stopped()["reason"], "pause");
    EXPECT_EQ(client.value("s"), "\"a\"");
    const int endless = client.send("evaluate", {{"expression", "main()"}, {"context", "repl"}});
    client.send("cancel", {{"requestId", endless}});
    EXPECT_EQ(client.answerTo(endless)["success"], false);
    goOn();
    channel->close();
}

}  // namespace
}  // namespace korvant::test
