// An engine, the module's session, and scripts that run in it.
#pragma once

#include <gtest/gtest.h>

#include <atomic>
#include <functional>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "host/run/script_session.h"
#include "support/fake_console.h"
#include "support/fake_frontend.h"

namespace korvant::test {

/// A clock that a test moves. Both of its times may be moved apart. Safe from any thread, because
/// the watch thread reads it too.
class FakeClock final : public Clock {
  public:
    explicit FakeClock(std::uint64_t start = 1000) : now_(start) {}
    std::uint32_t tick() override { return static_cast<std::uint32_t>(now_.load() + shift_); }
    std::uint64_t monotonic() override { return now_; }
    void sleep(std::uint32_t milliseconds) override { advance(milliseconds); }

    void advance(std::uint64_t milliseconds) { now_ += milliseconds; }
    /// The next tick is `tick`; the monotonic time goes on as it was.
    void setTick(std::uint32_t tick) { shift_ = tick - static_cast<std::uint32_t>(now_.load()); }

  private:
    std::atomic<std::uint64_t> now_;
    std::atomic<std::uint32_t> shift_{0};
};

/// A second thread that acts once a script has called `begun()`, which the engine has from then on.
/// Its end waits for the thread.
class Meanwhile {
  public:
    Meanwhile(asIScriptEngine& engine, std::function<void()> act);
    ~Meanwhile() { thread_.join(); }
    Meanwhile(const Meanwhile&) = delete;
    Meanwhile& operator=(const Meanwhile&) = delete;

  private:
    std::thread thread_;
};

/// One engine configured with everything that scripts can call, on a fake console and front end.
/// Clock and limits are the usual ones unless a test sets others.
class ScriptFixture : public ::testing::Test {
  protected:
    ScriptFixture();
    ~ScriptFixture() override;

    ScriptSession& session() { return moduleSession(); }
    /// Of the last run() or resume().
    const RunOutcome& outcome() { return outcome_; }
    asIScriptEngine* engine() { return engine_; }
    asIScriptContext* context() { return context_; }

    /// From here on the time is that of `clock`, which lives until the end of the test or the next
    /// call; null: the system's.
    void useClock(Clock* clock);
    void useLimits(const Limits& limits) { moduleSession().setLimits(limits); }
    /// A new engine, for instance after forcePortableConventions().
    void configureAgain();

    /// Builds `text` and runs its int main(). True when it finished or is suspended.
    bool run(const std::string& text, const std::vector<std::int32_t>* breakpoints = nullptr);
    bool resume(StepMode mode, const std::vector<std::int32_t>* breakpoints = nullptr);
    /// The body of int main(); what it printed. A failed run is a failure of the test.
    std::string output(std::string_view body);
    /// The text of an expression that can be added to a string.
    std::string value(std::string_view expression);
    /// The description of the script exception that ends the body of int main(); empty for none.
    std::string exceptionOf(std::string_view body);
    /// The messages of the last build, one a line.
    std::string messages();
    /// Builds `text`, a source of the host's own by the name `source`; scripts call its function
    /// `int NAME(int)` as share().
    void shareLibrary(const std::string& source, const std::string& text, const char* name);
    /// The texts of all boxes shown so far, one a line.
    std::string boxes();

    FakeConsole console;
    FakeFrontend frontend;
    FakeClock fakeClock;

  private:
    void discardEngine();

    asIScriptEngine* engine_ = nullptr;
    asIScriptContext* context_ = nullptr;
    asIScriptFunction* shared_ = nullptr;
    RunOutcome outcome_;
};

/// The fixture under both calling conventions of the engine: true for the portable one.
class ScriptInBothConventions : public ScriptFixture, public ::testing::WithParamInterface<bool> {
  protected:
    ScriptInBothConventions();
    ~ScriptInBothConventions() override;
};

/// For INSTANTIATE_TEST_SUITE_P over both conventions.
std::string conventionName(const ::testing::TestParamInfo<bool>& info);

}  // namespace korvant::test
