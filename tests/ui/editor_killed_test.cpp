// An editor that is killed while somebody types in its window, and what the next one offers.
#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <optional>
#include <thread>

#include "base/system/user_folders.h"
#include "editor/document/recovery_store.h"
#include "editor_window_fixture.h"

using namespace korvant;
using korvant::test::EditorWindowTest;
using korvant::test::OtherProcess;
using korvant::test::readFile;
using korvant::test::Variable;
using korvant::test::writeFile;
using SteadyClock = std::chrono::steady_clock;

namespace {

/// Tells the process that is to be killed where to keep its texts and to say how far it is.
constexpr char kVictimFolder[] = "KORVANT_VICTIM_FOLDER";
/// And to write a few letters only.
constexpr char kFewLetters[] = "KORVANT_VICTIM_FEW";
constexpr char kWord[] = "0123456789";
/// The clock of the process that is to be killed goes so much faster.
constexpr unsigned kHaste = 8;
/// How old a text may be lost: ten seconds by that clock, of which one is looked at by the window's
/// own timer, whatever the clock; half a second is this test's own.
constexpr std::chrono::milliseconds kBound{9000 / kHaste + 1000 + 500};

class HastyClock final : public Clock {
  public:
    std::uint32_t tick() override { return static_cast<std::uint32_t>(monotonic()); }
    std::uint64_t monotonic() override { return systemClock().monotonic() * kHaste; }
    void sleep(std::uint32_t milliseconds) override { systemClock().sleep(milliseconds / kHaste); }
};

class KilledWindow : public EditorWindowTest {
  protected:
    /// The other editor's process, with the test that follows alone.
    void startVictim(bool fewLetters) {
        const Variable place(kVictimFolder, folder.path().string());
        // What it leaves is cleared away with ours.
        const Variable temporary(test::temporaryVariable(), folder.path().string());
        std::optional<Variable> few;
        if (fewLetters) few.emplace(kFewLetters, "1");
        victim.emplace("KilledWindow.DISABLED_TypesUntilItIsKilled");
    }
    static void await(const std::function<bool()>& condition) {
        const auto patience = SteadyClock::now() + std::chrono::seconds(40);
        while (!condition() && SteadyClock::now() < patience)
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
    std::string progressFile() const { return folder.file("typed"); }
    int typedByVictim() const { return std::atoi(readFile(progressFile()).c_str()); }
    bool copyExists() const {
        const std::string copies = userDataFolder() + "/recovery";
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

    std::optional<OtherProcess> victim;
};

TEST_F(KilledWindow, DISABLED_TypesUntilItIsKilled) {
    const char* place = std::getenv(kVictimFolder);
    if (!place) GTEST_SKIP() << "not a process that is to be killed";
    const Variable data(test::userDataVariable(), (std::filesystem::path(place) / "data").string());
    const int words = std::getenv(kFewLetters) ? 1 : 100'000;
    HastyClock clock;
    useClock(&clock);
    ready();
    std::function<void()> typeMore = [&, typed = 0]() mutable {
        writeFile(std::string(place) + "/typed.new", std::to_string(text().size()));
        // Some systems move nothing onto a file that is being read.
        std::error_code busy;
        for (int attempt = 0; attempt == 0 || (busy && attempt < 1000); ++attempt)
            std::filesystem::rename(std::string(place) + "/typed.new",
                                    std::string(place) + "/typed", busy);
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
    startVictim(true);
    await([this] { return typedByVictim() > 0; });
    const auto typed = SteadyClock::now();
    await([this] { return copyExists(); });
    EXPECT_LT(SteadyClock::now() - typed, kBound);
    victim->kill();
    EXPECT_EQ(recovered(), kWord);
}

TEST_F(KilledWindow, LosesNothingWhenItIsToldToGo) {
    for (const bool terminalCloses : {false, true}) {
        startVictim(true);
        await([this] { return typedByVictim() == 10; });
        const auto told = SteadyClock::now();
        victim->tellToGo(terminalCloses);
        EXPECT_LT(SteadyClock::now() - told, std::chrono::seconds(5));
        EXPECT_EQ(recovered(), kWord);
        std::filesystem::remove(progressFile());
    }
}

TEST_F(KilledWindow, LosesAtMostTenSecondsOfSteadyTyping) {
    startVictim(false);
    await([this] { return typedByVictim() > 0; });
    const int early = typedByVictim();
    std::this_thread::sleep_for(kBound);
    const int late = typedByVictim();
    victim->kill();
    const std::string text = recovered();
    EXPECT_GE(text.size(), static_cast<std::size_t>(early));
    EXPECT_GE(text.size() + RecoveryTimer::kMostChanges, static_cast<std::size_t>(late));
    EXPECT_EQ(text.substr(0, 10), kWord);
}

}  // namespace
