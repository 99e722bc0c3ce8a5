// Stops from another thread at any moment of a compile, a run, a wait and a debugged run.
#include <chrono>
#include <random>
#include <thread>

#include "support/script_fixture.h"

namespace korvant::test {
namespace {

class RandomStops : public ScriptFixture {
  protected:
    const std::string endless =
        "int main() { string s; int[] a; while (true) { s = \"x\" + a.length(); "
        "a.insertLast(1); if (a.length() > 50) { a.resize(0); Print(s); } } return 0; }";
};

TEST_F(RandomStops, EndEveryRunAndLeaveTheNextOneAlone) {
    std::mt19937 random(7);
    const std::vector<std::int32_t> breakpoints = {1};
    for (int i = 0; i < 60; ++i) {
        const auto delay = std::chrono::microseconds(random() % 4000);
        std::atomic<bool> ended{false};
        std::thread stopper([&] {
            std::this_thread::sleep_for(delay);
            while (!ended) {  // a run that had not begun when it came does not see a stop
                session().requestStop();
                std::this_thread::sleep_for(std::chrono::milliseconds(1));
            }
        });
        // With breakpoints the run is suspended again and again, and stopped in between.
        const bool debugged = i % 3 == 0;
        bool suspended = run(endless, debugged ? &breakpoints : nullptr);
        while (suspended && resume(static_cast<StepMode>(random() % 3), &breakpoints)) {
        }
        ended = true;
        stopper.join();
        const auto kind = session().lastFailure().kind;
        EXPECT_TRUE(kind == RunFailure::Kind::stopped || kind == RunFailure::Kind::build) << i;
        console.output.clear();
        frontend.boxes.clear();
        EXPECT_EQ(output("Print(\"next\");"), "next");
        console.output.clear();
    }
}

}  // namespace
}  // namespace korvant::test
