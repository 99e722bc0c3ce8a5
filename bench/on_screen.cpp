#include "on_screen.h"

#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <string>

#include "ui/kit/ui_runtime.h"

namespace korvant_bench {
namespace {

std::filesystem::path ownFolder() {
    return std::filesystem::temp_directory_path() / ("korvant-bench-" + std::to_string(::getpid()));
}

}  // namespace

void giveUp(benchmark::State& state, const char* why) {
    state.SkipWithError(why);
    for ([[maybe_unused]] auto _ : state) {
    }
}

bool onScreen(benchmark::State& state) {
    const bool started = korvant::ui::startToolkit();
    if (!started) giveUp(state, "no display");
    return started;
}

double millisecondsSince(std::clock_t start) {
    return 1000.0 * static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
}

OwnFolders::OwnFolders() {
    ::setenv("XDG_DATA_HOME", (ownFolder() / "data").c_str(), 1);
    ::setenv("XDG_CONFIG_HOME", (ownFolder() / "settings").c_str(), 1);
}

OwnFolders::~OwnFolders() {
    std::error_code ignored;
    std::filesystem::remove_all(ownFolder(), ignored);
}

}  // namespace korvant_bench
