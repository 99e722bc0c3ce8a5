// What a host does ten thousand times in a day takes no more memory than doing it once.
#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>
#include <string>

#include "failing_memory.h"
#include "korvantide/korvantide.h"
#include "module/configuration.h"
#include "support/script_fixture.h"

namespace korvant::test {

namespace {

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr int kTimes = 300;
#else
constexpr int kTimes = 10'000;
#endif

/// The engine's allocations that are alive.
std::atomic<std::int64_t> ofEngine{0};

void* allocateForEngine(std::size_t size) {
    ++ofEngine;
    return std::malloc(size);
}

void releaseForEngine(void* memory) {
    if (memory) --ofEngine;
    std::free(memory);
}

/// Before the first engine of the process is made.
const bool counted = asSetGlobalMemoryFunctions(allocateForEngine, releaseForEngine) == 0;

/// A tenth of the repetitions fills every cache; the rest must not add to it.
void expectNoGrowth(const std::function<void()>& once) {
    ASSERT_TRUE(counted);
    for (int i = 0; i < kTimes / 10; ++i) once();
    const std::int64_t engine = ofEngine, ours = liveAllocations();
    for (int i = kTimes / 10; i < kTimes; ++i) once();
    EXPECT_LE(liveAllocations(), ours + 32) << kTimes << " times";
    EXPECT_LE(ofEngine, engine + 64) << kTimes << " times";
}

class Repetition : public ScriptFixture {};

TEST_F(Repetition, CompilingAndRunningTakesNoMore) {
    const std::string scripts[] = {
        R"(class Layer { string name; Layer@ next; }
           int main() {
               Layer a; Layer b; @a.next = b; @b.next = a;
               string all; for (int i = 0; i < 30; i++) all += "x" + i;
               Object form; form.addProperty("d", "D", 1.0, "m", true);
               Print(StrToUpper(all)); return 0; })",
        "int main() { string s; s[3] = 1; return 0; }",
        "int main() { not a script }",
    };
    int turn = 0;
    expectNoGrowth([&] {
        RunApplication(engine(), context(), scripts[turn++ % 3], nullptr);
        console.output.clear();
        console.output.shrink_to_fit();
        frontend.boxes.clear();
    });
}

TEST_F(Repetition, ConfiguringAndReleasingTakesNoMore) {
    expectNoGrowth([&] {
        asIScriptEngine* other = asCreateScriptEngine();
        asIScriptContext* its = configureEngine(other);
        ASSERT_NE(its, nullptr);
        ReleaseScriptEngine(other);
        its->Release();
        other->ShutDownAndRelease();
    });
}

}  // namespace

}  // namespace korvant::test
