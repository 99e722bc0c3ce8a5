#include "host/run/breakpoint_table.h"

#include <algorithm>

namespace korvant {

void BreakpointTable::set(const std::vector<std::int32_t>* lines) {
    lines_.clear();
    if (lines != nullptr) lines_ = *lines;
    std::erase_if(lines_, [](std::int32_t line) { return line < 1 || line > kLastLine; });
    std::sort(lines_.begin(), lines_.end());
    lines_.erase(std::unique(lines_.begin(), lines_.end()), lines_.end());
    bits_.assign(lines_.empty() ? 0 : static_cast<std::size_t>(lines_.back()) / 64 + 1, 0);
    bitCount_ = static_cast<std::uint32_t>(bits_.size() * 64);
    for (const std::int32_t line : lines_)
        bits_[static_cast<std::size_t>(line) / 64] |= std::uint64_t{1} << (line % 64);
    forgetFunctions();
}

/// A line that lies within the function's span is enough: the statements of a function need not
/// stand in the order of their lines.
bool BreakpointTable::holdsLineOf(const asIScriptFunction& function) const {
    return std::any_of(lines_.begin(), lines_.end(),
                       [&](std::int32_t line) { return function.FindNextLineWithCode(line) >= 0; });
}

}  // namespace korvant
