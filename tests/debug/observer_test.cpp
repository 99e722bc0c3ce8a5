// What is counted and sampled, against what is known of the script.
#include <sstream>

#include "debug/debug_fixture.h"
#include "debug/run_observer.h"

namespace korvant::test {
namespace {

class Observer : public DebugFixture {
  protected:
    std::map<std::int32_t, std::uint64_t> countsOf(const Coverage& coverage) {
        std::map<std::int32_t, std::uint64_t> counts;
        const auto code = debug.code();
        if (code == nullptr) return counts;
        for (const Coverage::Line& line : coverage.lines(*code, {})) {
            counts[line.line] = line.hits;
            EXPECT_TRUE(code->hasCode({}, line.line)) << line.line;
        }
        return counts;
    }
};

constexpr char kCounted[] =
    "int made = 3;\n"                                 //  1: once
    "class Stone {\n"                                 //
    "    int weight;\n"                               //
    "    Stone(int w) {\n"                            //
    "        weight = w;\n"                           //  5: five times
    "    }\n"                                         //
    "    ~Stone() { made++; }\n"                      //  7: five times, its beginning counts too
    "    int opCmp(const Stone &in other) const {\n"  //
    "        return weight - other.weight;\n"         //  9: once
    "    }\n"                                         //
    "}\n"                                             //
    "int twice(int n) { return n * 2; }\n"            // 12: four times
    "int down(int n) {\n"                             //
    "    if (n > 0)\n"                                // 14: four times
    "        return down(n - 1);\n"                   // 15: three times
    "    return n;\n"                                 // 16: once
    "}\n"                                             //
    "funcdef int Change(int);\n"                      //
    "int main() {\n"                                  //
    "    int sum = 0;\n"                              // 20: once
    "    for (int i = 0;\n"                           // 21: once
    "         i < 4;\n"                               // 22: five times
    "         i++) {\n"                               // 23: four times
    "        sum += twice(i);\n"                      // 24: four times
    "        if (i == 2)\n"                           // 25: four times
    "            Stone(1);\n"                         // 26: once
    "    }\n"                                         //
    "    int n = 0;\n"                                // 28: once
    "    for (;;)\n"                                  //
    "        if (++n > 6) break;\n"                   // 30: seven conditions, one break
    "    down(3);\n"                                  // 31: once
    "    Stone a(1), b(2);\n"                         // 32: once
    "    bool less = a < b;\n"                        // 33: once
    "    Change@ change = function(x) {\n"            // 34: once
    "        return x + 1;\n"                         // 35: twice
    "    };\n"                                        //
    "    change(1); change(2);\n"                     // 37: twice, two statements
    "    while (n > 0) n -= 2;\n"                     // 38: five conditions, four statements
    "    try {\n"                                     //
    "        n = 1 / (sum - sum);\n"                  // 40: once
    "        n = 5;\n"                                // 41: never
    "    } catch {\n"                                 //
    "        n = 7;\n"                                // 43: once
    "    }\n"                                         //
    "    { Stone c(3); { Stone d(4); } }\n"           // 45: twice, two statements
    "    return n;\n"                                 // 46: once
    "}\n";

TEST_F(Observer, CountsEveryStatementOfARun) {
    const std::map<std::int32_t, std::uint64_t> wanted = {
        {1, 1},  {5, 5},  {7, 10}, {9, 1},  {12, 4}, {14, 4}, {15, 3}, {16, 1}, {20, 1}, {21, 1},
        {22, 5}, {23, 4}, {24, 4}, {25, 4}, {26, 1}, {28, 1}, {30, 8}, {31, 1}, {32, 1}, {33, 1},
        {34, 1}, {35, 2}, {37, 2}, {38, 9}, {40, 1}, {41, 0}, {43, 1}, {45, 2}, {46, 1}};
    Coverage coverage(kMainSource);
    debug.setCoverage(&coverage);
    for (const bool looks : {false, true}) {
        SCOPED_TRACE(looks ? "with stops" : "without");
        coverage.clear();
        if (looks) breakAt(24, "twice(i) == 4");
        atStop = [&](const StopInfo&) { EXPECT_EQ(value("down(3) + twice(2)"), "4"); };
        EXPECT_FALSE(start(kCounted).failed()) << messages() << session().lastFailure().text;
        const auto counts = countsOf(coverage);
        for (const auto& [line, hits] : wanted)
            EXPECT_EQ(counts.count(line) > 0 ? counts.at(line) : 999, hits) << "line " << line;
    }
    EXPECT_EQ(stops.size(), 1u);
    debug.setCoverage(nullptr);
    const std::string records = coverage.lcov(*debug.code(), "counted.as");
    for (const char* calls :
         {"FNDA:5,Stone::Stone\n", "FNDA:5,Stone::~Stone\n", "FNDA:1,Stone::opCmp\n",
          "FNDA:4,twice\n", "FNDA:4,down\n", "FNDA:2,lambda\n", "FNDA:1,main\n", "FNF:8\n"})
        EXPECT_NE(records.find(calls), std::string::npos) << calls << records;
}

struct CountedScript {
    const char* text;
    std::vector<std::uint64_t> hits;  ///< of its lines with code, in their order
};

const CountedScript kCountedScripts[] = {
    {"int main() {\n return 0;\n}\n", {1}},
    {"void f() {\n}\nint main() {\n f(); f();\n f();\n return 0;\n}\n", {3, 2, 1, 1}},
    {"int main() {\n int n = 0;\n while (n < 5)\n  n++;\n return n;\n}\n", {1, 6, 5, 1}},
    {"int main() {\n int n = 0;\n do {\n  n++;\n } while (n < 5);\n return n;\n}\n",
     {1, 1, 5, 5, 1}},
    {"int n = 0;\nint main() {\n if (n > 0) {\n  Print(\"\");\n } else {\n  Print(\"\");\n }\n "
     "return "
     "0;\n}\n",
     {1, 1, 0, 1, 1}},
    {"int main() {\n for (int i = 0;\n   i < 3;\n   i++)\n  if (i == 9)\n   Print(\"\");\n"
     " return 0;\n}\n",
     {1, 4, 3, 3, 0, 1}},
    {"int main() {\n int n = 0;\n if (n > 0)\n  n = 7;\n while (n < 3)\n  n++;\n"
     " return n;\n}\n",
     {1, 1, 0, 4, 3, 1}},
    {"int main() {\n int n = 0;\n if (n > 0)\n  n = 7;\n for (;;) {\n  n++;\n"
     "  if (n > 3)\n   break;\n }\n return n;\n}\n",
     {1, 1, 0, 1, 4, 4, 1, 1}},
    {"int f(int n) {\n switch (n) {\n case 1:\n  return 1;\n case 2:\n  return 2;\n }\n"
     " return 3;\n}\nint main() {\n f(1); f(2); f(2); f(5);\n return 0;\n}\n",
     {4, 1, 2, 1, 4, 1}},
    {"int f(int n) {\n return n < 2 ? n : f(n - 1) + f(n - 2);\n}\nint main() {\n f(6);\n"
     " return 0;\n}\n",
     {25, 1, 1}},
    {"class S {\n int w = 1;\n S() {\n  w = 2;\n }\n ~S() {\n  w = 0;\n }\n}\n"
     "int main() {\n for (int i = 0; i < 4; i++)\n  S();\n return 0;\n}\n",
     {4, 4, 4, 4, 4, 10, 4, 1}},
    {"int zero = 0;\nint main() {\n for (int i = 0; i < 3; i++)\n  try {\n   zero = 1 / zero;\n"
     "   zero = 5;\n  } catch {\n   zero = 0;\n  }\n return 0;\n}\n",
     {1, 8, 3, 3, 0, 3, 1}},
    {"int f() {\n return 2;\n}\nint a = f();\nint b = f() + a;\nint main() {\n return 0;\n}\n",
     {2, 1, 1, 1}},
    {"namespace n {\nint f(int x) {\n return x;\n}\n}\nint main() {\n n::f(n::f(n::f(1)));\n"
     " return 0;\n}\n",
     {3, 1, 1}},
    {"funcdef int F(int);\nint main() {\n F@ f = function(x) {\n  return x;\n };\n"
     " for (int i = 0; i < 5; i++)\n  f(i);\n return 0;\n}\n",
     {1, 5, 12, 5, 1}},
    {"class P {\n int get_v() const property {\n  return 1;\n }\n}\nint main() {\n P p;\n"
     " int s = p.v + p.v;\n return s;\n}\n",
     {2, 1, 1, 1}},
    {"class A {\n void m() {\n  int x = 1;\n }\n}\nclass B : A {\n void m() {\n  A::m();\n"
     "  A::m();\n }\n}\nint main() {\n A@ a = B();\n a.m();\n return 0;\n}\n",
     {2, 2, 1, 1, 1, 1, 1, 1}},
    {"int main() {\n int n = 0;\n for (int i = 0; i < 3; i++) {\n  for (int k = 0; k < 2; k++) "
     "{\n"
     "   if (k == 1)\n    continue;\n   n++;\n  }\n }\n return n;\n}\n",
     {1, 8, 18, 6, 3, 3, 1}},
    {"int main() {\n for (int i = 0; i < 2; i++) while (i < 0) i++;\n return 0;\n}\n", {8, 1}},
    {"int f(int d) {\n if (d == 0)\n  return 0;\n return f(d - 1);\n}\nint main() {\n return "
     "f(9);\n}\n",
     {10, 1, 9, 1}},
};

TEST_F(Observer, CountsAreExactWhateverTheScriptIsMadeOf) {
    for (const CountedScript& script : kCountedScripts) {
        SCOPED_TRACE(script.text);
        Coverage coverage(kMainSource);
        debug.setCoverage(&coverage);
        start(script.text);
        std::vector<std::uint64_t> hits;
        for (const auto& [line, count] : countsOf(coverage)) hits.push_back(count);
        EXPECT_EQ(hits, script.hits) << messages();
        debug.setCoverage(nullptr);
    }
}

TEST_F(Observer, SharesOfTimeAreThoseOfTheWork) {
    Profiler profiler;
    debug.setProfiler(&profiler);
    // So many that chance is a percent, however often the machine does something else.
    for (int runs = 0; runs < 40 && profiler.samples() < 2000; ++runs)
        EXPECT_FALSE(
            start("int work(int n) { int s = 0; for (int i = 0; i < n; i++) s ^= i; return s; }\n"
                  "int one() { return work(1000); }\nint two() { return work(2000); }\n"
                  "int three() { return work(3000); }\nint four() { return work(4000); }\n"
                  "int main() {\n    for (int i = 0; i < 8000; i++) {\n"
                  "        one(); two(); three(); four();\n    }\n    return 0;\n}\n")
                .failed());
    debug.setProfiler(nullptr);
    ASSERT_GE(profiler.samples(), 1500u);
    std::map<std::string, double> shares = profiler.shares();
    EXPECT_NEAR(100 * shares["one"], 10, 5);
    EXPECT_NEAR(100 * shares["two"], 20, 5);
    EXPECT_NEAR(100 * shares["three"], 30, 5);
    EXPECT_NEAR(100 * shares["four"], 40, 5);
}

/// Looking must stay cheap, and keep little, however deep a run is.
TEST_F(Observer, DeepStacksAreKeptByTheirEnds) {
    Profiler profiler;
    debug.setProfiler(&profiler);
    for (int runs = 0; runs < 40 && profiler.samples() <= 5; ++runs)
        EXPECT_FALSE(start("int down(int n) { return n > 0 ? down(n - 1) + 1 : 0; }\n"
                           "int main() {\n    for (int i = 0; i < 200; i++) down(5000);\n"
                           "    return 0;\n}\n")
                         .failed());
    debug.setProfiler(nullptr);
    ASSERT_GT(profiler.samples(), 5u);
    EXPECT_NEAR(profiler.shares()["main"], 1, 0.001);
    std::istringstream stacks(profiler.collapsed());
    bool cut = false;
    for (std::string line; std::getline(stacks, line);) {
        EXPECT_LE(std::count(line.begin(), line.end(), ';'), 200);
        cut = cut || line.find(";...;down") != std::string::npos;
    }
    EXPECT_TRUE(cut);
}

}  // namespace
}  // namespace korvant::test
