// A program that owns the memory of its engines: in processes of their own, because the engine does
// not survive the end of its compiler and its memory functions cannot be taken back.
#include "host/engine/engine_memory.h"

#include <unistd.h>

#include <cstdio>

#include "host/run/script_session.h"
#include "module/families.h"
#include "support/script_fixture.h"

namespace korvant::test {
namespace {

/// Builds and runs `text` in a fresh engine with the memory owned, and tells on standard error.
/// Never returns.
[[noreturn]] void tell(const std::string& text, Clock* clock) {
    ownEngineMemory();
    ScriptSession& session = moduleSession();
    session.setServices({nullptr, nullptr, clock, nullptr});
    Limits limits;
    limits.runBytes = std::size_t{64} << 20;
    session.setLimits(limits);
    asIScriptEngine* engine = asCreateScriptEngine();
    asIScriptContext* context = session.configure(engine, registrationOrder());
    session.runApplication(engine, context, text, nullptr);
    for (const BuildMessage& message : session.buildMessages().all())
        std::fputs(message.text.c_str(), stderr);
    std::fputs(session.lastFailure().text.c_str(), stderr);
    session.compile(engine, "int main() { return 0; }");
    for (const BuildMessage& message : session.buildMessages().all())
        std::fputs(message.text.c_str(), stderr);
    session.release(engine);
    ::_exit(0);
}

/// Every question moves it on by a second.
class HurryingClock final : public Clock {
  public:
    std::uint32_t tick() override { return 0; }
    std::uint64_t monotonic() override { return now_ += 1000; }
    void sleep(std::uint32_t) override {}

  private:
    std::atomic<std::uint64_t> now_{0};
};

std::string manyLocals() {
    std::string text = "int main() {";
    for (int i = 0; i < 3000; ++i)
        text += "int y" + std::to_string(i) + " = " + std::to_string(i) + ";";
    return text + " return 0; }";
}

TEST(EngineMemory, ACompileThatTakesTooLongIsEnded) {
    HurryingClock clock;
    EXPECT_EXIT(tell(manyLocals(), &clock), ::testing::ExitedWithCode(0),
                "compile took too long at line 0 column 0\nThe compiler was ended");
}

TEST(EngineMemory, ScriptObjectsWithoutEndAreAnException) {
    FakeClock clock;  // memory is what ends them
    EXPECT_EXIT(tell("class Node { Node@ next; int[] data(10); }\n"
                     "int main() { Node@ all; while (true) {\n Node n; @n.next = all; @all = n; } "
                     "return 0; }",
                     &clock),
                ::testing::ExitedWithCode(0),
                "The script ended with an exception.\n\nline: .\ndesc: Out of memory");
}

TEST(EngineMemory, AnOrdinaryScriptRuns) {
    EXPECT_EXIT(tell("int main() { int[] a(1000); return 0; }", nullptr),
                ::testing::ExitedWithCode(0), "^$");
}

}  // namespace
}  // namespace korvant::test
