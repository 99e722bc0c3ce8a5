#include "support/script_fixture.h"

#include <condition_variable>
#include <cstdlib>
#include <mutex>

#include "host/library/script_console.h"
#include "module/families.h"

namespace korvant::test {

namespace {

struct Beginning {
    std::mutex mutex;
    std::condition_variable changed;
    bool came = false;
};

Beginning& beginning() {
    static Beginning one;
    return one;
}

void tellBegun() {
    const std::lock_guard lock(beginning().mutex);
    beginning().came = true;
    beginning().changed.notify_all();
}

/// A script that never says so fails the test by what follows, and not by hanging.
void awaitBegun() {
    std::unique_lock lock(beginning().mutex);
    beginning().changed.wait_for(lock, std::chrono::seconds(20), [] { return beginning().came; });
}

}  // namespace

Meanwhile::Meanwhile(asIScriptEngine& engine, std::function<void()> act) {
    beginning().came = false;
    if (engine.GetGlobalFunctionByDecl("void begun()") == nullptr)
        engine.RegisterGlobalFunction("void begun()", asFUNCTION(tellBegun), asCALL_CDECL);
    thread_ = std::thread([act = std::move(act)] {
        awaitBegun();
        act();
    });
}

ScriptFixture::ScriptFixture() {
    useClock(nullptr);
    configureAgain();
}

ScriptFixture::~ScriptFixture() {
    useClock(nullptr);
    discardEngine();
    scriptConsole().release();
    moduleSession().setServices({});
    moduleSession().setLimits({});
}

namespace {

/// The system's, but its tick begins where KORVANT_TEST_TICK says.
class ShiftedClock final : public Clock {
  public:
    void restart(std::uint32_t start) { shift_ = start - systemClock().tick(); }
    std::uint32_t tick() override { return systemClock().tick() + shift_; }
    std::uint64_t monotonic() override { return systemClock().monotonic(); }
    void sleep(std::uint32_t milliseconds) override { systemClock().sleep(milliseconds); }

  private:
    std::atomic<std::uint32_t> shift_{0};
};

Clock* usualClock() {
    const char* const start = std::getenv("KORVANT_TEST_TICK");
    if (!start) return nullptr;
    static ShiftedClock clock;
    clock.restart(static_cast<std::uint32_t>(std::strtoul(start, nullptr, 10)));
    return &clock;
}

}  // namespace

void ScriptFixture::useClock(Clock* clock) {
    if (!clock) clock = usualClock();
    moduleSession().setServices({&console, &frontend, clock, nullptr});
}

void ScriptFixture::configureAgain() {
    discardEngine();
    engine_ = asCreateScriptEngine();
    context_ = moduleSession().configure(engine_, registrationOrder());
    EXPECT_NE(context_, nullptr);
}

void ScriptFixture::discardEngine() {
    if (engine_ == nullptr) return;
    moduleSession().release(engine_);
    if (context_ != nullptr) context_->Release();
    engine_->ShutDownAndRelease();
    engine_ = nullptr;
}

bool ScriptFixture::run(const std::string& text, const std::vector<std::int32_t>* breakpoints) {
    outcome_ = moduleSession().runApplication(engine_, context_, text, breakpoints);
    return !outcome_.failed();
}

bool ScriptFixture::resume(StepMode mode, const std::vector<std::int32_t>* breakpoints) {
    outcome_ = moduleSession().continueApplication(engine_, context_, breakpoints, mode);
    return !outcome_.failed();
}

std::string ScriptFixture::output(std::string_view body) {
    console.output.clear();
    const std::string text = "int main() {\n" + std::string(body) + "\nreturn 0;\n}\n";
    EXPECT_TRUE(run(text)) << body << "\n" << messages() << session().lastFailure().text;
    return console.output;
}

std::string ScriptFixture::value(std::string_view expression) {
    return output("Print(\"\" + (" + std::string(expression) + "));");
}

std::string ScriptFixture::exceptionOf(std::string_view body) {
    if (run("int main() {\n" + std::string(body) + "\nreturn 0;\n}\n")) return {};
    EXPECT_EQ(session().lastFailure().kind, RunFailure::Kind::exception) << body << messages();
    const char* description = context_->GetExceptionString();
    return description != nullptr ? description : "";
}

std::string ScriptFixture::messages() {
    std::string all;
    for (const BuildMessage& message : session().buildMessages().all()) all += message.text;
    return all;
}

void ScriptFixture::shareLibrary(const std::string& source, const std::string& text,
                                 const char* name) {
    asIScriptModule* const module = engine_->GetModule("library", asGM_ALWAYS_CREATE);
    module->AddScriptSection(source.c_str(), text.data(), text.size());
    EXPECT_GE(module->Build(), 0);
    shared_ = module->GetFunctionByName(name);
    EXPECT_GE(engine_->RegisterFuncdef("int Share(int n)"), 0);
    EXPECT_GE(engine_->RegisterGlobalProperty("Share@ share", &shared_), 0);
}

std::string ScriptFixture::boxes() {
    std::string all;
    for (const MessageBoxRequest& box : frontend.boxes) all += box.text + "\n";
    return all;
}

ScriptInBothConventions::ScriptInBothConventions() {
    forcePortableConventions(GetParam());
    configureAgain();
}

ScriptInBothConventions::~ScriptInBothConventions() {
    forcePortableConventions(false);
}

std::string conventionName(const ::testing::TestParamInfo<bool>& info) {
    return info.param ? "portable" : "native";
}

}  // namespace korvant::test
