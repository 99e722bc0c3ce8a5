// What an expression gives at a stop, and what it gives compiled into the script at that place.
#include <array>
#include <random>
#include <utility>

#include "debug/debug_fixture.h"
#include "host/engine/engine_build.h"
#include "language/worker_guard.h"

namespace korvant::test {
namespace {

class Expressions : public DebugFixture {};

constexpr char kDeclarations[] = R"(
class Stone {
    private int hidden = 11;
    int weight = 3;
    double size = 2.5;
    Stone@ next;
    int twice(int n) const { return n * 2; }
    int get_half() const property { return weight / 2; }
    Stone opAdd(const Stone &in other) const { Stone s; s.weight = weight + other.weight; return s; }
    bool opEquals(const Stone &in other) const { return weight == other.weight; }
}
enum Kind { Gravel = 7, Granite }
funcdef int Change(int);
int add1(int n) { return n + 1; }
namespace pit { int depth = 40; int level(int n) { return depth + n; } }
int global = 100;
string word = "global";
)";

constexpr char kLocals[] = R"(
    int a = 5; int b = -3; uint u = 4000000000; int64 big = 1234567890123; int8 tiny = -7;
    double d = 0.75; float f = 1.5f; bool yes = true; bool no = false; string s = "text";
    int[] v = {4, 5, 6}; string[] w = {"x", "yz"}; int[][] vv = {{1}, {2, 3}};
    Stone stone; Stone other; Stone@ handle = stone; Stone@ none; @stone.next = other;
    Kind kind = Granite; Change@ change = @add1;
)";

std::vector<std::string> numbers() {
    const std::vector<std::string> operands = {"a", "b",    "u",      "big", "tiny",         "d",
                                               "f", "v[1]", "global", "7",   "stone.weight", "2.5"};
    std::vector<std::string> all;
    for (const std::string& left : operands)
        for (const char* operation : {"+", "-", "*"})
            for (const std::string& right : {operands[0], operands[5], operands[10]})
                all.push_back("(" + left + ") " + operation + " (" + right + ")");
    for (const char* other : {"a % 3",
                              "a << 3",
                              "big >> 2",
                              "a & 6",
                              "a | 8",
                              "a ^ b",
                              "~a",
                              "-a",
                              "+d",
                              "a ** 2",
                              "yes ? a : b",
                              "no ? d : 2.5",
                              "stone.twice(a)",
                              "handle.weight",
                              "handle.next.weight",
                              "stone.half",
                              "handle.half + 1",
                              "(stone + other).weight",
                              "add1(a)",
                              "change(a)",
                              "pit::depth",
                              "pit::level(a)",
                              "v.length()",
                              "vv[1][0]",
                              "vv[1].length()",
                              "s.length()",
                              "int(d)",
                              "double(a) / 2",
                              "cast<Stone>(handle).weight",
                              "int(kind)",
                              "Gravel + 1",
                              "Kind::Granite * 2",
                              "::global - a",
                              "Stone().weight",
                              "uint8(300)",
                              "int64(u) * 4"})
        all.push_back(other);
    return all;
}

std::vector<std::string> truths() {
    std::vector<std::string> all;
    for (const char* left : {"a", "b", "d", "v[0]", "global"})
        for (const char* operation : {"<", "<=", ">", ">=", "==", "!="})
            for (const char* right : {"a", "2", "d"})
                all.push_back(std::string(left) + " " + operation + " " + right);
    for (const char* other :
         {"yes && no", "yes || no", "yes ^^ no", "!yes", "not no and yes", "none is null",
          "handle !is null", "handle is stone", "stone == other", "s == \"text\"",
          "kind == Granite", "kind == Kind::Gravel", "w[1] == \"yz\""})
        all.push_back(other);
    return all;
}

TEST_F(Expressions, GiveWhatTheyGiveInTheScript) {
    std::vector<std::string> all = numbers();
    const std::size_t truthsFrom = all.size();
    for (std::string& truth : truths()) all.push_back(std::move(truth));
    ASSERT_GE(all.size(), 200u);
    std::string script = std::string(kDeclarations) + "int main() {" + kLocals;
    for (std::size_t i = 0; i < all.size(); ++i)
        script += "    string r" + std::to_string(i) + " = " +
                  (i < truthsFrom ? "\"\" + (" + all[i] + ")"
                                  : "(" + all[i] + ") ? \"true\" : \"false\"") +
                  ";\n";
    const auto line = 1 + std::count(script.begin(), script.end(), '\n');
    script += "    return 0;\n}\n";
    breakAt(static_cast<std::int32_t>(line));
    atStop = [&](const StopInfo&) {
        for (std::size_t i = 0; i < all.size(); ++i) {
            const std::string here =
                value(i < truthsFrom ? "\"\" + (" + all[i] + ")"
                                     : "(" + all[i] + ") ? \"true\" : \"false\"");
            EXPECT_EQ(here, value("r" + std::to_string(i))) << all[i];
        }
    };
    EXPECT_FALSE(start(script).failed()) << messages() << session().lastFailure().text;
    EXPECT_EQ(stops.size(), 1u);
}

/// Expressions that may be wrong in every way but change nothing.
class Generator {
  public:
    explicit Generator(unsigned seed) : random_(seed) {}

    std::string expression(int depth = 0) {
        if (depth > 4 || pick(4) == 0) return name();
        switch (pick(9)) {
            case 0:
                return "(" + expression(depth + 1) + ")";
            case 1:
                return oneOf({"- ", "!", "~", "@", "not "}) + expression(depth + 1);
            case 2:
                return name() + "[" + expression(depth + 1) + "]";
            case 3:
                return name() + "." +
                       oneOf({"weight", "half", "next", "hidden", "length()", "size",
                              "twice(" + expression(depth + 1) + ")"});
            case 4:
                return oneOf({"add1", "change", "pit::level", "int", "double", "Stone", "string"}) +
                       "(" + expression(depth + 1) + ")";
            case 5:
                return expression(depth + 1) + " ? " + expression(depth + 1) + " : " +
                       expression(depth + 1);
            case 6:
                return oneOf({"{", "(", "[", "cast<Stone>(", "function(x) { return x; }", "\"",
                              "/*"}) +
                       expression(depth + 1);
            default:
                return expression(depth + 1) +
                       oneOf({" + ", " - ", " * ", " / ", " % ", " << ", " & ", " && ",
                              " == ", " < ", " is ", ".", "::", " ** ", " !is "}) +
                       expression(depth + 1);
        }
    }

  private:
    std::size_t pick(std::size_t count) { return random_() % count; }
    std::string oneOf(const std::vector<std::string>& all) { return all[pick(all.size())]; }
    std::string name() {
        return oneOf({"a",          "b",      "u",      "big",
                      "tiny",       "d",      "f",      "yes",
                      "s",          "v",      "w",      "vv",
                      "stone",      "other",  "handle", "none",
                      "kind",       "change", "global", "word",
                      "pit::depth", "this",   "1",      "0",
                      "2.5",        "\"t\"",  "null",   "Gravel",
                      "nobody",     "add1",   "@add1",  "function(x) { return x; }"});
    }

    std::mt19937 random_;
};

/// The engine ends the process over one that it takes for a value.
TEST_F(Expressions, AFunctionWithoutANameHasATypeOnlyWhereItIsGivenOne) {
    breakAt(5);
    atStop = [&](const StopInfo&) {
        for (const char* const text :
             {"function(){}", "(function(n) { return n; })", "@function(){}",
              "true ? function(){} : function(){}", "h is function(n) { return n; }",
              "h == function(n) { return n; }", "not function(){}"})
            EXPECT_EQ(value(text), "error: A function without a name has no type here.") << text;
        EXPECT_EQ(value("twice(function(n) { return n + 1; })"), "42");
        EXPECT_EQ(value("twice((function(n) { return n + 2; }))"), "44");
        EXPECT_EQ(value("F(function(n) { return n; })").substr(0, 10), "int lambda");
        EXPECT_EQ(value("@h = function(n) { return n; }", EvaluationPurpose::console),
                  "error: \"h\" is a function handle: it is set as a variable.");
        EXPECT_EQ(debug.setExpression(0, "h", "function(n) { return n; }").error, "");
        EXPECT_EQ(value("h(7)"), "7");
        EXPECT_EQ(debug.setExpression(0, "x", "function(n) { return n; }").error,
                  "A function without a name has no type here.");
        EXPECT_NE(debug.setExpression(0, "c", "function(n) { return n; }").error, "");
        for (const char* const text : {"1 2", "x y", "(x) (2)\n3", "12abc"})
            for (const std::string& error :
                 {debug.setExpression(0, "x", text).error, value(text).substr(7)})
                EXPECT_EQ(error, "The expression ends before something that does not belong to it.")
                    << text;
        EXPECT_EQ(debug.setExpression(0, "x", "(1 2)").error, "Expected ')'");
    };
    EXPECT_FALSE(start("funcdef int F(int n);\nint twice(F@ f) { return f(20) * 2; }\n"
                       "class C {}\nint main() { F@ h; C@ c; int x = 1;\n    return 0;\n}\n")
                     .failed())
        << messages();
    EXPECT_EQ(stops.size(), 1u);
}

TEST_F(Expressions, AtRandomKillNothingAndChangeNothing) {
    const char* const wanted = std::getenv("KORVANT_RANDOM_EXPRESSIONS");
    // Some end other builds of the engine: there a child process compiles each first.
    if (!engineIsHardened()) session().setBuildGuard(&workerGuard());
    const int count = wanted != nullptr ? std::atoi(wanted) : engineIsHardened() ? 5000 : 300;
    std::string script = std::string(kDeclarations) + "int main() {" + kLocals;
    const auto line = 1 + std::count(script.begin(), script.end(), '\n');
    script +=
        "    Print(\"\" + a + b + u + big + tiny + d + f + s + v[0] + w[1] + vv[1][1] + "
        "stone.weight + handle.weight + global + word + pit::depth + change(1));\n"
        "    return 0;\n}\n";
    ASSERT_TRUE(run(script)) << messages();
    const std::string untouched = std::exchange(console.output, {});
    breakAt(static_cast<std::int32_t>(line));
    int good = 0;
    atStop = [&](const StopInfo&) {
        Generator generator(20260728);
        for (int i = 0; i < count; ++i) {
            const ShownValue shown =
                debug.show(0, generator.expression(), EvaluationPurpose::watch);
            good += shown.error.empty() ? 1 : 0;
        }
    };
    EXPECT_FALSE(start(script).failed()) << messages() << session().lastFailure().text;
    EXPECT_EQ(console.output, untouched);
    EXPECT_GT(good, count / 20);
    session().setBuildGuard(nullptr);
}

}  // namespace
}  // namespace korvant::test
