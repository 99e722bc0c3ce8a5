#include "editor/stops/run_line_map.h"

#include <algorithm>
#include <numeric>

#include "editor/stops/line_shift.h"

namespace korvant {

void RunLineMap::begin(int lines) {
    lines_ = lines;
    moved_.clear();
}

void RunLineMap::follow(const LineShift& shift) {
    if (moved_.empty()) {
        moved_.resize(static_cast<std::size_t>(std::max(lines_, 0)));
        std::iota(moved_.begin(), moved_.end(), 1);
    }
    for (std::int32_t& line : moved_) line = shifted(line, shift);
}

bool RunLineMap::undo() {
    const bool hadMoved = !moved_.empty();
    moved_.clear();
    return hadMoved;
}

ScriptLine RunLineMap::editorLine(ScriptLine running) const {
    if (running.number < 1 || running.number > static_cast<std::int32_t>(moved_.size()))
        return running;
    return {moved_[static_cast<std::size_t>(running.number - 1)]};
}

std::vector<std::int32_t> RunLineMap::runningLines(
    const std::vector<std::int32_t>& editorLines) const {
    if (moved_.empty()) return editorLines;
    std::vector<std::int32_t> running;
    for (const std::int32_t line : editorLines) {
        const auto found = std::lower_bound(moved_.begin(), moved_.end(), line);
        if (found != moved_.end() && *found == line)
            running.push_back(static_cast<std::int32_t>(found - moved_.begin()) + 1);
    }
    return running;
}

}  // namespace korvant
