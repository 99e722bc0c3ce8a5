// Whatever allocation fails: nothing is thrown where nothing may be, nothing is lost for good, and
// what was there before still works.
#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>
#include <string>

#include "expr/evaluator.h"
#include "failing_memory.h"
#include "host/engine/native_call.h"
#include "korvantide/host_interface.h"
#include "korvantide/korvantide.h"
#include "korvantide/script_object.h"
#include "module/configuration.h"
#include "support/script_fixture.h"

namespace korvant::test {

namespace {

class ShortMemory : public ::testing::TestWithParam<Shortage> {};

TEST_P(ShortMemory, TheEvaluatorThrowsAndStaysWhatItWas) {
    ExpressionEvaluator evaluator;
    evaluator.setValue("depth", 12.0);
    ExpressionEvaluator::Rule rule("min(depth;20)*2");
    const std::int64_t before = liveAllocations();
    const auto scenario = [&] {
        try {
            evaluator.setValue("a name that is longer than any small text", 3.0);
            (void)evaluator.evaluate("max(depth^2;abs(-7))+(1+2*(3+4*(5+depth)))");
            (void)evaluator.evaluate("unknown(depth;1;2)");
            (void)evaluator.grouping("1-2-3-depth");
            double value = 0;
            evaluator.evaluateValue(rule, value);
            ExpressionEvaluator copy(evaluator);
            copy = evaluator;
        } catch (const std::bad_alloc&) {
        }
    };
    const auto check = [&] {
        EXPECT_EQ(evaluator.evaluate("depth+1").value, 13.0);
        EXPECT_EQ(evaluator.evaluate("max(depth^2;abs(-7))+(1+2*(3+4*(5+depth)))").value, 287.0);
        double value = 0;
        EXPECT_TRUE(evaluator.evaluateValue(rule, value));
        EXPECT_EQ(value, 24.0);
    };
    EXPECT_GT(forEveryAllocation(GetParam(), scenario, check), 10u);
    evaluator.clearValues();
    evaluator.setCacheEntries(0);
    EXPECT_LE(liveAllocations(), before + 16);
}

/// A form with everything in it.
void fill(ScriptObject& object) {
    object.setTitle("A title that needs memory of its own");
    object.addClass("Duty", true);
    object.addCategory("Water and everything else that flows");
    object.addProperty("flow", "Flow through the whole pump", 36.0, "m3/h", true);
    object.addProperty("name", "Name", "a text of more than sixteen", "*.txt", true, true);
    object.addProperty("power", "Power", 0.0, "kW", false);
    object.addErrorConstraint("flow", "flow>0", "The flow must be positive, always");
    object.addComputation("power", "flow*25*9.81/3600");
    object.addHint("flow", "A hint that needs memory of its own too");
    object.addTranslation(1, "Flow", "D\351bit");
    ScriptObject element;
    element.addProperty("from", "From where it begins", 0.0, "m", true);
    object.addClass("Parts", true);
    object.addGroup("Parts", element, true, true, true, true);
    object.addGroupElement(element);
    ScriptObject other;
    other.addProperty("extra", "Something else altogether", 3, "m", true);
    object.append(other);
}

TEST_P(ShortMemory, APropertyObjectThrowsNothingAndStaysUsable) {
    ScriptObject warm;
    fill(warm);
    const int count = warm.getPropertiesCount();
    ASSERT_EQ(count, 5);
    raiseInScript("");  // makes the module's session
    std::unique_ptr<ScriptObject> object;
    const std::int64_t before = liveAllocations();
    const auto scenario = [&] {
        try {
            object = std::make_unique<ScriptObject>();
        } catch (const std::bad_alloc&) {
            return;  // a constructor has no other way to say so
        }
        try {
            fill(*object);
        } catch (const std::bad_alloc&) {  // of the arguments that are made here
        }
    };
    const auto check = [&] {
        if (!object) return;
        EXPECT_LE(object->getPropertiesCount(), count);
        object->clear();
        fill(*object);
        double flow = 0;
        EXPECT_TRUE(object->getProperty("flow", &flow));
        EXPECT_EQ(flow, 36.0);
        EXPECT_TRUE(object->setProperty("flow", 40.0));
        EXPECT_EQ(object->getPropertiesCount(), count);
        object.reset();
        EXPECT_LE(liveAllocations(), before + 8);  // a few script strings are kept for later
    };
    EXPECT_GT(forEveryAllocation(GetParam(), scenario, check), 40u);
}

/// The entry points as a host calls them; the fixture's engine is not used.
class ShortMemoryInRuns : public ScriptFixture, public ::testing::WithParamInterface<Shortage> {
  protected:
    void expectAnswer() {
        console.output.clear();
        ASSERT_TRUE(run("int main() { string s = \"forty\"; s += \"-two\"; Print(s); return 0; }"))
            << messages() << session().lastFailure().text;
        EXPECT_EQ(console.output, "forty-two");
    }
};

const std::string kScript = R"(
class Layer { string name; double from; Layer(const string &in n) { name = n; } }
string globalText = "a global text with more than sixteen bytes";
int main() {
    Layer@[] layers;
    for (int i = 0; i < 20; i++) layers.insertLast(Layer("layer number " + i + " of this hole"));
    string all;
    for (uint i = 0; i < layers.length(); i++) all += StrToUpper(layers[i].name) + ", ";
    int[] numbers = {5, 3, 9, 1};
    numbers.sortAsc();
    Object form;
    form.addClass("A page", true);
    form.addCategory("A category with a long name");
    form.addProperty("depth", "Depth below the ground", 12.5, "m", true);
    form.addErrorConstraint("depth", "depth>0&&depth<1000", "not so deep, please");
    double depth;
    form.getProperty("depth", depth);
    Print(StrSubstring(all, 0, 10) + depth + numbers[0] + StrFind(all, "HOLE", 0) + "\n");
    Information("a box with a text that is long enough");
    return 0;
}
)";

TEST_P(ShortMemoryInRuns, AScriptEndsInAnExceptionAndTheNextOneRuns) {
    frontend.answers.clear();
    const auto scenario = [&] {
        RunApplication(engine(), context(), kScript, nullptr);
        KorvantRunResult result{};
        result.size = sizeof result;
        GetLastRunResult(&result);
    };
    scenario();  // caches are full from here on
    const auto check = [&] {
        console.output.clear();
        console.output.shrink_to_fit();
        frontend.boxes.clear();
        expectAnswer();
    };
    check();
    const std::int64_t before = liveAllocations();
    EXPECT_GT(forEveryAllocation(GetParam(), scenario, check), 50u);
    EXPECT_LE(liveAllocations(), before + 64);
}

TEST_P(ShortMemoryInRuns, ADebuggedScriptGoesOnOrEndsAndTheNextOneRuns) {
    const std::vector<std::int32_t> breakpoints = {8, 12};
    const auto scenario = [&] {
        if (!RunApplication(engine(), context(), kScript, &breakpoints)) return;
        for (int i = 0; i < 8; ++i)
            if (!ContinueApplication(engine(), context(), &breakpoints, i % 3)) return;
    };
    const auto check = [&] {
        frontend.boxes.clear();
        expectAnswer();
    };
    EXPECT_GT(forEveryAllocation(GetParam(), scenario, check), 50u);
}

TEST_P(ShortMemoryInRuns, AnEngineIsConfiguredOrNotAndTheOthersGoOn) {
    const std::string text = "int main() { return StrSize(\"a\"); }";
    const auto scenario = [&] {
        asIScriptEngine* other = asCreateScriptEngine();
        asIScriptContext* its = configureEngine(other);
        if (its) CompileScript(other, text);
        ReleaseScriptEngine(other);
        if (its) its->Release();
        other->ShutDownAndRelease();
    };
    scenario();
    const std::int64_t before = liveAllocations();
    EXPECT_GT(forEveryAllocation(GetParam(), scenario, [&] { expectAnswer(); }), 10u);
    EXPECT_LE(liveAllocations(), before + 64);
}

// An object that is filled before anything else has used the module finds no session to tell.
TEST(ShortMemoryFromTheStart, AnObjectWithoutASessionThrowsNothing) {
    const auto filled = [] {
        ScriptObject object;
        std::string title(100, 'x');
        {
            const FailingMemory memory(1, Shortage::lasting);
            object._setTitle(title);
        }
        std::_Exit(object.getTitle().empty() ? 0 : 1);
    };
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(filled(), ::testing::ExitedWithCode(0), "");
}

INSTANTIATE_TEST_SUITE_P(All, ShortMemory, ::testing::Values(Shortage::once, Shortage::lasting),
                         [](const auto& one) { return shortageName(one.param); });
INSTANTIATE_TEST_SUITE_P(All, ShortMemoryInRuns,
                         ::testing::Values(Shortage::once, Shortage::lasting),
                         [](const auto& one) { return shortageName(one.param); });

}  // namespace

}  // namespace korvant::test
