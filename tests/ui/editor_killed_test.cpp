// An editor that is killed while somebody types in its window, and what the next one offers.
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <thread>

#include "editor/recovery_store.h"
#include "editor_window_fixture.h"

extern char** environ;

using namespace korvant;
using korvant::test::EditorWindowTest;
using korvant::test::readFile;
using korvant::test::writeFile;
using SteadyClock = std::chrono::steady_clock;

namespace {

/// Tells the process that is to be killed where to keep its texts and to say how far it is.
constexpr char kVictimFolder[] = "KORVANT_VICTIM_FOLDER";
/// And to write a few letters only.
constexpr char kFewLetters[] = "KORVANT_VICTIM_FEW";
constexpr char kWord[] = "0123456789";
/// How old a text may be lost; half a second is this test's own.
constexpr std::chrono::milliseconds kBound{10'500};

class KilledWindow : public EditorWindowTest {
  protected:
    /// The other editor's process: this program with the test that follows alone.
    pid_t startVictim(bool fewLetters) {
        ::setenv(kVictimFolder, folder.path().c_str(), 1);
        ::setenv("TMPDIR", folder.path().c_str(), 1);  // what it leaves is cleared away with ours
        if (fewLetters) ::setenv(kFewLetters, "1", 1);
        std::string program = "/proc/self/exe", also = "--gtest_also_run_disabled_tests",
                    filter = "--gtest_filter=KilledWindow.DISABLED_TypesUntilItIsKilled";
        char* arguments[] = {program.data(), also.data(), filter.data(), nullptr};
        pid_t victim = -1;
        ::posix_spawn(&victim, program.c_str(), nullptr, nullptr, arguments, environ);
        ::unsetenv("TMPDIR");
        ::unsetenv(kVictimFolder);
        ::unsetenv(kFewLetters);
        return victim;
    }
    static void kill(pid_t victim) {
        ::kill(victim, SIGKILL);
        ::waitpid(victim, nullptr, 0);
    }
    static void await(const std::function<bool()>& condition) {
        const auto patience = SteadyClock::now() + std::chrono::seconds(40);
        while (!condition() && SteadyClock::now() < patience)
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
    std::string progressFile() const { return folder.file("typed"); }
    int typedByVictim() const { return std::atoi(readFile(progressFile()).c_str()); }
    bool copyExists() const {
        const std::string copies = folder.file("data") + "/korvantide/recovery";
        std::vector<std::string> names;
        systemFiles().list(copies, names);
        return std::any_of(names.begin(), names.end(),
                           [](const std::string& name) { return name.ends_with(".current"); });
    }
    /// What the next opening offers and puts into the window.
    std::string recovered() {
        driver.run([] {});  // its patience begins now
        untilBox();
        driver.key('Y');
        ready();
        closeBox();
        return edit("");
    }
};

TEST_F(KilledWindow, DISABLED_TypesUntilItIsKilled) {
    const char* place = std::getenv(kVictimFolder);
    if (!place) GTEST_SKIP() << "not a process that is to be killed";
    ::setenv("XDG_DATA_HOME", (std::string(place) + "/data").c_str(), 1);
    const int words = std::getenv(kFewLetters) ? 1 : 100'000;
    ready();
    std::function<void()> typeMore = [&, typed = 0]() mutable {
        writeFile(std::string(place) + "/typed.new", std::to_string(text().size()));
        std::filesystem::rename(std::string(place) + "/typed.new", std::string(place) + "/typed");
        if (typed++ >= words) {
            driver.when("death", [] { return false; });
            return;
        }
        driver.type(kWord);
        driver.when(
            "the word", [this, typed] { return text().size() == 10u * typed; },
            [&] { typeMore(); });
    };
    driver.run([&] { typeMore(); });
    edit("");
}

TEST_F(KilledWindow, LosesAtMostTenSecondsOfAPause) {
    const pid_t victim = startVictim(true);
    await([this] { return typedByVictim() > 0; });
    const auto typed = SteadyClock::now();
    await([this] { return copyExists(); });
    EXPECT_LT(SteadyClock::now() - typed, kBound);
    kill(victim);
    EXPECT_EQ(recovered(), kWord);
}

TEST_F(KilledWindow, LosesAtMostTenSecondsOfSteadyTyping) {
    const pid_t victim = startVictim(false);
    await([this] { return typedByVictim() > 0; });
    const int early = typedByVictim();
    std::this_thread::sleep_for(kBound);
    const int late = typedByVictim();
    kill(victim);
    const std::string text = recovered();
    EXPECT_GE(text.size(), static_cast<std::size_t>(early));
    EXPECT_GE(text.size() + RecoveryTimer::kMostChanges, static_cast<std::size_t>(late));
    EXPECT_EQ(text.substr(0, 10), kWord);
}

}  // namespace
