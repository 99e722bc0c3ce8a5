// The arrays of scripts.
#include "korvantide/script_array.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "host/engine/array_sort.h"
#include "host/engine/memory_budget.h"
#include "support/script_fixture.h"

namespace korvant::test {
namespace {

class ScriptArrays : public ScriptInBothConventions {
  protected:
    /// Classes and functions that the bodies use.
    static std::string surroundings() {
        return R"(
class Ranked { int rank; int name; Ranked() {} Ranked(int r, int n) { rank = r; name = n; }
    int opCmp(const Ranked &in o) const { return rank - o.rank; } }
class Plain { int value; }
class Twice { int opCmp(const Twice &in) const { return 0; } int opCmp(Twice@) const { return 0; } }
class Raising { Raising() { fail("made"); } }
class Careful { Careful &opAssign(const Careful &in) { fail("copied"); return this; }
    bool opEquals(const Careful &in) const { fail("compared"); return true; } }
Meddler@[] meddled;
class Meddler {
    int opCmp(const Meddler &in o) const { meddled.resize(0); return 0; }
    Meddler &opAssign(const Meddler &in) { meddled.removeLast(); return this; } }
int[] numbers;
int bit(bool value) { return value ? 1 : 0; }
void fail(string what) { int zero = 0; if (what.length() > 0) zero = 1 / zero; }
bool less(const int &in a, const int &in b) { return a < b; }
bool lessButRaising(const int &in a, const int &in b) { if (a == 7 || b == 7) fail("x"); return a < b; }
bool lessButCutting(const int &in a, const int &in b) { numbers.removeLast(); return a < b; }
bool lessButLetting(const Ranked@ &in a, const Ranked@ &in b) {
    for (uint i = 0; i < handles.length(); i++) @handles[i] = null;
    return a.rank < b.rank; }
Ranked@[] handles;
string shown(const int[] &in all) { string text; for (uint i = 0; i < all.length(); i++) text += all[i] + " "; return text; }
string named(const Ranked@[] &in all) { string text; for (uint i = 0; i < all.length(); i++) text += (all[i] is null ? "-" : "" + all[i].name) + " "; return text; }
)";
    }
    std::string printed(const std::string& body) {
        console.output.clear();
        EXPECT_TRUE(run(surroundings() + "int main() {\n" + body + "\nreturn 0;\n}\n"))
            << body << "\n"
            << messages() << session().lastFailure().text;
        return console.output;
    }
    std::string raised(const std::string& body) {
        EXPECT_FALSE(run(surroundings() + "int main() {\n" + body + "\nreturn 0;\n}\n")) << body;
        EXPECT_EQ(session().lastFailure().kind, RunFailure::Kind::exception) << body << messages();
        const char* const description = context()->GetExceptionString();
        return description != nullptr ? description : "";
    }
};

INSTANTIATE_TEST_SUITE_P(Both, ScriptArrays, ::testing::Bool(), conventionName);

TEST_P(ScriptArrays, MethodsDoThis) {
    const std::pair<const char*, const char*> kRows[] = {
        {"int[] a(3, 7); a[1] = 2; Print(shown(a));", "7 2 7 "},
        {"int[] a = {1, 2, 3, 4}; a.insertAt(1, a); Print(shown(a));", "1 1 2 3 4 2 3 4 "},
        {"int[] a = {1, 2}; a.insertAt(2, 9); a.insertAt(0, a[1]); Print(shown(a));", "2 1 2 9 "},
        {"int[] a = {1}; for (int i = 0; i < 40; i++) a.insertLast(a[0]); Print(\"\" + "
         "a.length());",
         "41"},
        {"int[] a = {1, 2, 3, 4}; a.removeAt(0); a.removeLast(); Print(shown(a));", "2 3 "},
        {"int[] a = {1, 2, 3, 4}; a.removeRange(1, 2); a.removeRange(2, 5); Print(shown(a));",
         "1 4 "},
        {"int[] a = {1, 2}, b; b = a; a = a; b.resize(3); Print(shown(b) + bit(a == b) + bit(a == "
         "a));",
         "1 2 0 01"},
        {"int8[] a = {3, -1, 2}; a.sortAsc(); Print(\"\" + a[0] + a[2]); a.reverse(); Print(\"\" + "
         "a[0]);",
         "-133"},
        {"double[] a = {0.5, 2.5, 1.5}; a.sortDesc(); Print(\"\" + a[0] + a.find(0.5));", "2.52"},
        {"int[] a = {9, 3, 1, 2}; a.sortAsc(1, 3); Print(shown(a)); a.sortDesc(0, 2); "
         "Print(shown(a));",
         "9 1 2 3 9 1 2 3 "},
        {"int[] a = {9, 3, 1, 2}; a.sort(less, 1); Print(shown(a)); a.sort(less, 0, 2); "
         "Print(shown(a));",
         "9 1 2 3 1 9 2 3 "},
        {"int[] a = {1, 2, 1}; Print(\"\" + a.find(1) + a.find(1, 1) + a.find(3, 1) + "
         "a.find(uint(-1), 1));",
         "02-1-1"},
        {"string[] a = {\"c\", \"a\", \"b\"}; a.insertLast(a[0]); a[0] = \"x\"; a.sortAsc(); "
         "Print(a[0] + a[1] + a[2] + a[3] + a.find(\"c\") + bit(a.isEmpty()));",
         "abcx20"},
        {"int[][] a = {{1}, {2, 3}}; int[][] b = a; b[1][0] = 5; Print(shown(a[1]) + shown(b[1]) + "
         "a.find(a[1]) + bit(a == b));",
         "2 3 5 3 10"},
        {"Ranked@[] a = {Ranked(2, 1), null, Ranked(1, 2), Ranked(2, 3), Ranked(1, 4)}; "
         "a.sortAsc(); "
         "Print(named(a)); a.sortDesc(); Print(named(a));",
         "- 2 4 1 3 1 3 2 4 - "},
        {"Ranked[] a = {Ranked(2, 1), Ranked(1, 2)}; Ranked@ h = a[1]; a.reverse(); Ranked[] b; b "
         "= a; "
         "Print(\"\" + bit(h is a[0]) + bit(h is b[0]) + a.findByRef(h) + b.findByRef(h) + "
         "a.find(b[1]));",
         "100-11"},
        {"Plain@[] a(2); Plain p; @a[1] = p; Plain@[] b; b = a; Print(\"\" + bit(a == b) + "
         "b.findByRef(p) + b.findByRef(null));",
         "110"},
        {"Plain[] a(2), b(2); Print(\"\" + bit(a == b));", "0"},
        {"int[] a; a.reserve(100); a.sort(less); a.sortAsc(); a.reverse(); a.removeRange(0, 1); "
         "int[] b; Print(\"\" + a.length() + bit(a == b));",
         "01"},
    };
    for (const auto& [body, expected] : kRows) EXPECT_EQ(printed(body), expected) << body;
}

TEST_P(ScriptArrays, WhatCannotBeDoneIsAnException) {
    constexpr char kBounds[] = "Index out of bounds", kMemory[] = "Out of memory";
    const std::pair<const char*, const char*> kRows[] = {
        {"int[] a; a[0] = 1;", kBounds},
        {"int[] a; a.removeLast();", kBounds},
        {"int[] a(3); a.removeAt(3);", kBounds},
        {"int[] a(3); a.removeRange(4, 1);", kBounds},
        {"int[] a(3); a.insertAt(4, 1);", kBounds},
        {"int[] a(3); a.insertAt(4, a);", kBounds},
        {"int[] a(3); a.sortAsc(0, 4);", kBounds},
        {"int[] a(3); a.sortAsc(uint(-1), 3);", kBounds},
        {"int[] a(3); a.sortDesc(2, uint(-1));", kBounds},
        {"int[] a(3); a.sort(less, 3, 2);", kBounds},
        {"Plain[] a(3); a.sortAsc();", "Type 'Plain' does not have a matching opCmp method"},
        {"Plain[] a; Plain p; a.find(p);",
         "Type 'Plain' does not have a matching opEquals or opCmp method"},
        {"Twice[] a(3); a.sortAsc();", "Type 'Twice' has multiple matching opCmp methods"},
        {"int8[] a(1000); a.resize(0x90000000);", kMemory},
        {"int64[] a; a.reserve(0xFFFFFFFF);", kMemory},
        {"array<int> a(200000000, 5);", kMemory},
        {"array<int[]> a(200000000);", kMemory},
        {"string[] a(200000000);", kMemory},
        {"Plain[] a(2000000);", kMemory},
    };
    for (const auto& [body, expected] : kRows) EXPECT_EQ(raised(body), expected) << body;
    EXPECT_EQ(printed("int[] a = {1, 2, 3}; a.removeRange(1, 0xFFFFFFFF); Print(shown(a));"), "1 ");
}

TEST_P(ScriptArrays, WhatElementsRaiseReachesTheScript) {
    for (const char* body :
         {"int[] a = {9, 7, 8}; a.sort(lessButRaising);", "Careful[] a(2), b(2); if (a == b) {}",
          "Careful[] a(2); Careful c; a.find(c);"})
        EXPECT_EQ(raised(body), "Divide by zero") << body;
    for (const char* body :
         {"Raising[] a(3);", "Raising[] a; a.resize(2);", "Careful[] a(2), b; b = a;",
          "Careful c; Careful[] a; a.insertLast(c);"})
        EXPECT_EQ(raised(body), "An exception occurred in a nested call") << body;
    // Caught, it leaves the array as it was, and the array can be used again.
    EXPECT_EQ(
        printed("int[] a = {9, 7, 8}; try { a.sort(lessButRaising); } catch {} Print(shown(a));"
                "a.sort(less); Print(shown(a));"),
        "9 7 8 7 8 9 ");
    EXPECT_EQ(printed("Careful c; Careful[] a(1); try { a.insertAt(0, c); } catch {} "
                      "try { a.insertAt(0, a); } catch {} a.resize(3); Print(\"\" + a.length());"),
              "3");
}

TEST_P(ScriptArrays, ScriptCodeInsideCannotPullTheArrayAway) {
    constexpr char kInUse[] = "The array is in use";
    EXPECT_EQ(
        raised("for (int i = 0; i < 9; i++) numbers.insertLast(i); numbers.sort(lessButCutting);"),
        kInUse);
    const std::string three = "for (int i = 0; i < 3; i++) meddled.insertLast(Meddler()); ";
    EXPECT_EQ(raised(three + "meddled.sortAsc();"), kInUse);
    EXPECT_EQ(raised(three + "meddled.find(Meddler());"), kInUse);
    EXPECT_EQ(
        raised(three + "Meddler@[] b = {Meddler(), Meddler(), Meddler()}; if (meddled == b) {}"),
        kInUse);
    // Handles that are let go of meanwhile are still those that are sorted.
    EXPECT_EQ(printed("for (int i = 0; i < 9; i++) handles.insertLast(Ranked(9 - i, i)); "
                      "handles.sort(lessButLetting); Print(named(handles));"),
              "8 7 6 5 4 3 2 1 0 ");
    // The array may go while it is sorted.
    EXPECT_TRUE(
        run("class Holder { int[] list = {3, 2, 1}; }\nHolder@ holder = Holder();\n"
            "bool less(const int &in a, const int &in b) { @holder = null; return a < b; }\n"
            "int main() { holder.list.sort(less); return holder is null ? 0 : 1; }"))
        << session().lastFailure().text;
}

TEST_P(ScriptArrays, AContradictingOrderGivesSomeOrder) {
    console.output.clear();
    EXPECT_TRUE(run(R"(
int seed = 1;
int next() { seed = seed * 1103515245 + 12345; return ((seed >> 16) & 3) - 1; }
class Any { int name; int opCmp(const Any &in) const { return next(); } }
int main() {
    Any[] all(500);
    for (uint i = 0; i < all.length(); i++) all[i].name = i;
    all.sortAsc();
    all.sortDesc();
    int sum = 0;
    for (uint i = 0; i < all.length(); i++) sum += all[i].name;
    Print("" + sum);
    return 0;
})"));
    EXPECT_EQ(console.output, std::to_string(500 * 499 / 2));
}

TEST_P(ScriptArrays, MemoryIsChargedByWhatIsHeld) {
    EXPECT_EQ(
        printed("int[][] grid(4); for (uint i = 0; i < 4; i++) grid[i].resize(1000000); "
                "double[][] all = {array<double>(1000000)}; int[][] many(1000000); "
                "many[999999].insertLast(1); Print(\"\" + grid[3].length() + all[0].length());"),
        "10000001000000");
    EXPECT_TRUE(run("int main() { return 0; }"));
    const std::size_t before = memoryBudget.used;
    EXPECT_EQ(printed("int[] a(1000000); a.resize(0); string[] s(1000, \"x\"); s.sortAsc(); "
                      "try { a.resize(1000000000); } catch { Print(\"caught \"); } a.resize(10); "
                      "Print(\"\" + a.length());"),
              "caught 10");
    EXPECT_TRUE(run("int main() { return 0; }"));
    EXPECT_LE(memoryBudget.used, before + 256);  // the result string
}

// Whatever is refused: an exception, and the array is whole.
TEST_P(ScriptArrays, RefusedMemoryLeavesWholeArrays) {
    const std::string text =
        surroundings() +
        "int main() { int done = 0;\n"
        "try { string[] s = {\"a\", \"b\"}; int[][] g(3); Ranked@[] h(20); int[] n(10, 3);\n"
        "  for (int i = 0; i < 50; i++) { n.insertAt(0, i); s.insertLast(\"text\"); }\n"
        "  g.insertLast(n); g.insertAt(1, g); g = g; int[][] copy; copy = g; h.insertAt(3, h);\n"
        "  n.sortAsc(); n.sort(less); s.sortDesc(); h.sortAsc(); n.reserve(5000); done = 1;\n"
        "} catch {} return done; }";
    ASSERT_TRUE(run(text)) << messages() << session().lastFailure().text;
    const std::size_t least = memoryBudget.used;
    int refused = 0;
    for (std::size_t room = 0; room < 40'000; room += 129) {
        Limits limits;
        limits.runBytes = least + room;
        useLimits(limits);
        run(text);
        EXPECT_EQ(context()->GetState(), asEXECUTION_FINISHED) << room;
        refused += context()->GetReturnDWord() == 0;
    }
    EXPECT_GT(refused, 20);
    EXPECT_EQ(context()->GetReturnDWord(), 1u);
}

TEST_P(ScriptArrays, WhatTakesLongEndsWithTheLimit) {
    const char* const kBodies[] = {
        "int[] a(30000000); for (uint i = 0; i < 3000; i++) a[i * 1000] = 7 - i; "
        "SetMaxRunTime(50); "
        "while (true) a.sortAsc();",
        "string[] a(300000, \"x\"); SetMaxRunTime(50); while (true) { a.sortAsc(); a.sortDesc(); }",
        "Ranked[] a(20000); SetMaxRunTime(50); while (true) a.sortAsc();",
        "SetMaxRunTime(50); while (true) { Ranked[] a(600000); }",
        "Ranked[] a(20000); Ranked[] b; SetMaxRunTime(50); while (true) b = a;",
        "Ranked[] a(20000); Ranked r(1, 1); SetMaxRunTime(50); while (true) a.find(r);",
    };
    for (const char* body : kBodies) {
        EXPECT_FALSE(run(surroundings() + "int main() {\n" + body + "\nreturn 0; }")) << messages();
        EXPECT_EQ(session().lastFailure().kind, RunFailure::Kind::timeOut) << body;
    }
}

TEST_P(ScriptArrays, CirclesAreCollected) {
    ASSERT_TRUE(
        run("class Node { Node@[] others; Node[] parts; }\n"
            "int main() { for (int i = 0; i < 100; i++) { Node a, b; "
            "a.others.insertLast(b); b.others.insertLast(a); a.parts.resize(2); "
            "a.parts[1].others.insertLast(a); } return 0; }"))
        << messages();
    context()->Unprepare();
    engine()->GarbageCollect();
    asUINT alive = 1000;
    engine()->GetGCStatistics(&alive);
    EXPECT_LT(alive, 50u);
}

// What hosts call, by the names of the engine's add-on.
TEST_P(ScriptArrays, AHostFillsAndReadsThem) {
    asITypeInfo* const type = engine()->GetTypeInfoByDecl("array<int>");
    ScriptArray* const array = ScriptArray::Create(type, 2);
    ASSERT_NE(array, nullptr);
    EXPECT_EQ(array->GetArrayObjectType(), type);
    EXPECT_EQ(array->GetArrayTypeId(), type->GetTypeId());
    EXPECT_EQ(array->GetElementTypeId(), int{asTYPEID_INT32});
    int value = 9;
    EXPECT_TRUE(array->SetValue(1, &value));
    EXPECT_TRUE(array->InsertAt(0, &(value = 5)));
    EXPECT_TRUE(array->InsertLast(array->At(0)));
    EXPECT_TRUE(array->InsertAt(4, *array));
    EXPECT_TRUE(array->SortDesc(0, 4));
    const int* const all = static_cast<const int*>(array->GetBuffer());
    EXPECT_EQ(std::vector<int>(all, all + array->GetSize()),
              (std::vector<int>{9, 5, 5, 0, 5, 0, 9, 5}));
    EXPECT_EQ(array->Find(1, &(value = 9)), 6);
    EXPECT_EQ(array->FindByRef(array->At(2)), 2);
    EXPECT_EQ(array->At(8), nullptr);
    EXPECT_FALSE(array->RemoveRange(9, 1));
    ScriptArray* const other = ScriptArray::Create(type, 3, &value);
    EXPECT_FALSE(*array == *other);
    *array = *other;
    EXPECT_TRUE(*array == *other);
    ScriptArray* const texts = ScriptArray::Create(engine()->GetTypeInfoByDecl("array<string>"), 1);
    EXPECT_FALSE(texts->InsertAt(0, *other));
    EXPECT_TRUE(texts->Reserve(9) && texts->Reverse() && texts->RemoveLast() && texts->IsEmpty());
    EXPECT_EQ(ScriptArray::Create(engine()->GetTypeInfoByDecl("string")), nullptr);
    EXPECT_EQ(ScriptArray::Create(nullptr), nullptr);
    for (const ScriptArray* made : {array, other, texts}) {
        EXPECT_EQ(made->GetRefCount(), 1);
        made->AddRef();
        made->Release();
        made->Release();
    }
}

TEST(MergeSort, DoesWhatAStableSortDoesAndSurvivesAnyOrder) {
    std::mt19937 random(1);
    for (int round = 0; round < 300; ++round) {
        std::vector<int> items(random() % 200);
        for (int& item : items) item = static_cast<int>(random() % 50);
        std::vector<int> expected = items, spare(items.size() / 2 + 1);
        const auto tens = [](int left, int right) { return left / 10 < right / 10; };
        std::stable_sort(expected.begin(), expected.end(), tens);
        std::vector<int> sorted = items;
        mergeSort<int, 1, 1>(sorted.data(), sorted.size(), spare.data(), tens,
                             [] { return false; });
        EXPECT_EQ(sorted, expected);
        unsigned calls = 0;
        const unsigned most = random() % 400;
        mergeSort<int, 8, 4>(
            sorted.data(), sorted.size(), spare.data(), [&](int, int) { return random() % 2 == 0; },
            [&] { return ++calls > most; });
        EXPECT_TRUE(std::is_permutation(sorted.begin(), sorted.end(), items.begin()));
    }
}

}  // namespace
}  // namespace korvant::test
