#include <mutex>
#include <optional>

#include "ui/boxes/progress_window.h"

namespace korvant::ui {
namespace {

std::mutex& guard() {
    static std::mutex* const instance = new std::mutex;
    return *instance;
}

std::optional<ProgressStyle>& known() {
    static auto* const instance = new std::optional<ProgressStyle>;
    return *instance;
}

}  // namespace

void setProgressStyle(const ProgressStyle& style) {
    const std::lock_guard<std::mutex> lock(guard());
    known() = style;
}

ProgressStyle progressStyle() {
    const std::lock_guard<std::mutex> lock(guard());
    return known() ? *known() : guessedProgressStyle();
}

}  // namespace korvant::ui
