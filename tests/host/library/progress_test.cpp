// The progress display and the thread that owns it.
#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <mutex>
#include <stdexcept>
#include <thread>
#include <vector>

#include "host/library/progress.h"
#include "support/script_fixture.h"

namespace korvant {
namespace {

/// What the windows of one test were told.
struct Seen {
    std::mutex mutex;
    std::vector<std::string> calls;
    std::atomic<int> alive{0};
    std::atomic<int> made{0};
    std::atomic<bool> escape{false};

    void add(const std::string& call) {
        const std::lock_guard lock(mutex);
        calls.push_back(call);
    }
    std::string lastTexts() {
        const std::lock_guard lock(mutex);
        const auto last = std::find_if(calls.rbegin(), calls.rend(), [](const std::string& call) {
            return call.find('|') != std::string::npos;
        });
        return last == calls.rend() ? "" : *last;
    }
    int count(const std::string& call) {
        const std::lock_guard lock(mutex);
        return static_cast<int>(std::count(calls.begin(), calls.end(), call));
    }
};

class FakeWindow final : public ProgressWindow {
  public:
    explicit FakeWindow(Seen& seen) : seen_(seen) {
        ++seen_.alive;
        ++seen_.made;
    }
    ~FakeWindow() override { --seen_.alive; }
    void show(bool visible) override { seen_.add(visible ? "show" : "hide"); }
    void setTexts(const std::string& caption, const std::string& text) override {
        seen_.add(caption + "|" + text);
    }
    void redraw() override { seen_.add("redraw"); }
    /// Nobody presses a key in a window that is not there yet.
    bool pollEscape() override { return seen_.escape && seen_.count("show") > 0; }

  private:
    Seen& seen_;
};

template <class Condition>
bool eventually(Condition condition) {
    for (int i = 0; i < 2000 && !condition(); ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    return condition();
}

class Progress : public test::ScriptFixture {
  protected:
    Progress() {
        frontend.makeWindow = [this] { return std::make_unique<FakeWindow>(seen); };
    }
    /// A script that shows something and gives the thread time.
    void runFor(const std::string& body, int milliseconds) {
        EXPECT_TRUE(run("int main() { " + body +
                        " uint t = GetSystemTime(); while (GetSystemTime() - t < " +
                        std::to_string(milliseconds) + ") {} return 0; }"));
    }
    Seen seen;
};

TEST_F(Progress, ShowsCaptionAndTextAndEndsWithTheRun) {
    runFor("Progress(\"Title\", \"one\");", 300);
    EXPECT_EQ(1, seen.count("show"));
    EXPECT_EQ(1, seen.count("Title|one"));
    EXPECT_EQ(0, seen.alive);
    runFor("Progress(\"two\");", 300);
    EXPECT_EQ(1, seen.count("two|two"));
    EXPECT_EQ(2, seen.made);
}

TEST_F(Progress, OpensWithItsTextsAndIsGoneBeforeTheRunsEndIsReported) {
    int aliveAtBox = -1;
    frontend.meanwhile = [&] { aliveAtBox = seen.alive; };
    seen.escape = true;
    EXPECT_FALSE(run("int main() { Progress(\"Title\", \"one\"); while (true) {} return 0; }"));
    EXPECT_EQ(0, aliveAtBox);
    const std::lock_guard lock(seen.mutex);
    const auto texts = std::find(seen.calls.begin(), seen.calls.end(), "Title|one");
    EXPECT_LT(texts, std::find(seen.calls.begin(), seen.calls.end(), "show"));
}

TEST_F(Progress, AnEmptyTextHidesTheWindowAndKeepsTheOldOne) {
    runFor("Progress(\"Title\", \"one\");", 300);
    EXPECT_EQ(0, seen.count("hide"));
    runFor(
        "Progress(\"Title\", \"one\"); uint u = GetSystemTime(); while (GetSystemTime() - u < 300) "
        "{}"
        " Progress(\"Title\", \"\");",
        300);
    EXPECT_EQ(1, seen.count("hide"));
    EXPECT_EQ(0, seen.count("Title|"));
}

TEST_F(Progress, AScriptWithoutAWindowGoesOn) {
    frontend.makeWindow = [] { return nullptr; };
    runFor("for (int i = 0; i < 100; i++) Progress(\"\" + i);", 1);
    frontend.makeWindow = []() -> std::unique_ptr<ProgressWindow> {
        throw std::runtime_error("no display");
    };
    runFor("Progress(\"x\");", 1);
}

TEST_F(Progress, EscapeStopsTheScript) {
    seen.escape = true;
    EXPECT_FALSE(run("int main() { Progress(\"x\"); while (true) {} return 0; }"));
    EXPECT_EQ(RunFailure::Kind::stopped, session().lastFailure().kind);
}

TEST_F(Progress, OneCallAfterTheOtherMakesOneWindow) {
    runFor("for (int i = 0; i < 10000; i++) Progress(\"Holes\", \"Hole \" + i);", 300);
    EXPECT_EQ(1, seen.made);
    EXPECT_EQ("Holes|Hole 9999", seen.lastTexts());
}

TEST(ProgressBuffer, KeepsNinetyNineBytes) {
    ProgressBuffer buffer;
    for (const std::size_t length : {std::size_t{0}, std::size_t{98}, std::size_t{99}}) {
        clearProgress(buffer);
        writeProgress(buffer, std::string(length, 'x'));
        EXPECT_EQ(length, readProgress(buffer).size());
    }
    for (const std::size_t length : {100u, 101u, 100000u}) {
        writeProgress(buffer, std::string(length, 'y'));
        EXPECT_EQ(std::string(99, 'y'), readProgress(buffer));
    }
    writeProgress(buffer, "short");
    EXPECT_EQ("short", readProgress(buffer));
}

TEST(ProgressBuffer, AReaderSeesATerminatedTextAtAnyMoment) {
    ProgressBuffer buffer;
    std::atomic<bool> done{false};
    std::thread writer([&] {
        for (int i = 0; i < 20000; ++i)
            writeProgress(buffer, std::string(static_cast<std::size_t>(i % 150), 'z'));
        done = true;
    });
    while (!done) EXPECT_LE(readProgress(buffer).size(), 99u);
    writer.join();
}

TEST(ProgressThread, OutlivesItsOwnerWithoutHarm) {
    Seen seen;
    ProgressBuffer caption, text;
    for (int i = 0; i < 50; ++i) {
        auto progress = CThreadedProgressText::begin(
            caption, text, [&] { return std::make_unique<FakeWindow>(seen); }, [] {});
        const std::weak_ptr<CThreadedProgressText> watch = progress;
        if (i % 2 == 0)
            progress->end();
        else
            progress->Stop(0), progress->end();
        progress.reset();
        EXPECT_TRUE(eventually([&] { return watch.expired(); }));
    }
    EXPECT_EQ(0, seen.alive);
}

}  // namespace
}  // namespace korvant
