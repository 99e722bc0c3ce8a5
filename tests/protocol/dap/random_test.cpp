// A client that asks anything at any time: each request is answered once, and soon.
#include <array>
#include <chrono>
#include <cstdlib>
#include <random>

#include "protocol/dap/launch_fixture.h"

namespace korvant::test {
namespace {

constexpr int kRequests = 50;

constexpr char kEverything[] =
    "int total = 0;\n"
    "class Stone {\n"
    "    int weight = 3;\n"
    "    ~Stone() { total++; }\n"
    "    int twice() { return weight * 2; }\n"
    "}\n"
    "bool less(const int &in a, const int &in b) { return a < b; }\n"
    "int fault(int zero) {\n"
    "    return 1 / zero;\n"
    "}\n"
    "int main() {\n"
    "    Stone stone;\n"
    "    int[] list = {3, 1, 2};\n"
    "    string word;\n"
    "    list.sort(less);\n"
    "    for (int i = 0; i < 30; i++) {\n"
    "        total += stone.twice() + list[i % 3];\n"
    "        { Stone other; }\n"
    "    }\n"
    "    try { fault(0); } catch { total = 1; }\n"
    "    Input(word);\n"
    "    Print(word + total + \"\\n\");\n"
    "    return 1 / (total - total);\n"
    "}\n";

/// Requests that may come at the wrong time, with arguments that may be wrong.
class Asker {
  public:
    explicit Asker(unsigned seed) : random_(seed) {}

    std::pair<std::string, Json> next() {
        Json arguments = Json::object();
        const std::string command = oneOf(kCommands);
        const auto add = [&](const char* name, Json value) {
            if (pick(12) != 0) arguments[name] = std::move(value);
        };
        add("threadId", pick(15) == 0 ? 2 : 1);
        add("frameId", number());
        add("variablesReference", number());
        add("name", oneOf(kTexts));
        add("value", oneOf(kTexts));
        add("expression", oneOf(kTexts));
        add("text", oneOf(kTexts));
        add("column", number());
        add("line", number());
        add("context", oneOf(kContexts));
        add("granularity", pick(2) == 0 ? "line" : "statement");
        add("requestId", number());
        add("source", {{"path", pick(9) == 0 ? "/nowhere" : kProgram}});
        add("filters", pick(2) == 0 ? Json{"all"} : Json::array());
        add("breakpoints", breakpoints(command));
        return {command, std::move(arguments)};
    }

  private:
    using Texts = std::array<const char*, 12>;
    static constexpr std::array<const char*, 29> kCommands = {"threads",
                                                              "loadedSources",
                                                              "source",
                                                              "cancel",
                                                              "setBreakpoints",
                                                              "setFunctionBreakpoints",
                                                              "pause",
                                                              "setDataBreakpoints",
                                                              "dataBreakpointInfo",
                                                              "stackTrace",
                                                              "scopes",
                                                              "setExceptionBreakpoints",
                                                              "variables",
                                                              "setVariable",
                                                              "setExpression",
                                                              "evaluate",
                                                              "evaluate",
                                                              "breakpointLocations",
                                                              "completions",
                                                              "exceptionInfo",
                                                              "continue",
                                                              "next",
                                                              "stepIn",
                                                              "stepOut",
                                                              "restart",
                                                              "configurationDone",
                                                              "initialize",
                                                              "readMemory",
                                                              "stepBack"};
    static constexpr Texts kTexts = {"total",        "stone", "list", "list[1]",
                                     "stone.weight", "i + 1", "less", "stone.twice",
                                     "fault(0)",     "1 +",   "",     "this.x"};
    static constexpr std::array<const char*, 4> kContexts = {"watch", "hover", "repl", "clipboard"};

    std::size_t pick(std::size_t count) { return random_() % count; }
    template <class List>
    const char* oneOf(const List& list) {
        return list[pick(list.size())];
    }
    Json number() {
        static const Json kOdd[] = {-1, 0, 4294967297, 1e300, "7", nullptr};
        return pick(10) == 0 ? kOdd[pick(std::size(kOdd))] : Json(1 + pick(24));
    }
    Json breakpoints(const std::string& command) {
        Json list = Json::array();
        for (std::size_t i = pick(4); i > 0; --i) {
            Json one = {{"line", number()}, {"name", pick(2) == 0 ? "fault" : "Stone::twice"}};
            if (command == "setDataBreakpoints") one["dataId"] = oneOf(kTexts);
            if (pick(4) == 0) one["condition"] = oneOf(kTexts);
            if (pick(4) == 0) one["hitCondition"] = pick(2) == 0 ? ">= 2" : "x";
            if (pick(6) == 0) one["logMessage"] = "{total} {";
            list.push_back(std::move(one));
        }
        return list;
    }

    std::mt19937 random_;
};

class RandomClient : public Launch {};

/// One conversation, to its end.
void converse(DapDriver& client, unsigned seed, std::chrono::milliseconds& longest) {
    using Clock = std::chrono::steady_clock;
    Asker asker(seed);
    std::vector<int> sent;
    if (seed % 10 != 0) sent.push_back(client.send("launch", {{"program", kProgram}}));
    if (seed % 7 != 0) sent.push_back(client.send("configurationDone"));
    for (int i = 0; i < kRequests; ++i) {
        const auto begin = Clock::now();
        const auto [command, arguments] = asker.next();
        sent.push_back(client.send(command, arguments));
        if ((seed + static_cast<unsigned>(i)) % 3 == 0) continue;
        // Answers come in order, but that of a launch, which waits for its configuration.
        ASSERT_NE(client.answerTo(sent.back()).value("message", ""), "nothing came") << command;
        longest = std::max(
            longest, std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - begin));
    }
    sent.push_back(client.send("disconnect"));
    ASSERT_EQ(client.answerTo(sent.back())["success"], true);
    std::map<std::int64_t, int> answers;
    for (const Json& message : client.messages())
        if (message["type"] == "response") ++answers[message["request_seq"].get<std::int64_t>()];
    for (const int request : sent) EXPECT_EQ(answers[request], 1) << request;
}

TEST_F(RandomClient, IsAnsweredOnceAndSoonWhateverItAsks) {
    const char* const wanted = std::getenv("KORVANT_RANDOM_CLIENTS");
    const int count = wanted != nullptr ? std::atoi(wanted) : 40;
    text = kEverything;
    for (int seed = 1; seed <= count && !HasFailure(); ++seed) {
        SCOPED_TRACE(seed);
        std::chrono::milliseconds longest{0};
        if (seed > 1) anotherClient();
        converse(client, static_cast<unsigned>(seed), longest);
        EXPECT_LT(longest.count(), 2000);
    }
}

}  // namespace
}  // namespace korvant::test
