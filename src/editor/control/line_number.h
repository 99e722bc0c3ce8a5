// The two ways of counting lines, and the one place that converts between them.
#pragma once

#include <compare>
#include <cstdint>

namespace korvant {

/// 0-based, as the editing control counts.
struct ControlLine {
    std::int32_t index = 0;
    friend constexpr auto operator<=>(ControlLine, ControlLine) = default;
};

/// 1-based, as scripts, build messages and breakpoint lists count.
struct ScriptLine {
    std::int32_t number = 0;
    friend constexpr auto operator<=>(ScriptLine, ScriptLine) = default;
};

/// Meaningful for lines of 1 and above; those below give the control's first line.
constexpr ControlLine toControl(ScriptLine line) {
    return {line.number > 0 ? line.number - 1 : 0};
}
constexpr ScriptLine toScript(ControlLine line) {
    return {line.index + 1};
}

/// Lines inserted (count above 0) or removed (below 0): what stood on `first` or below it has
/// moved by `count`; what stood on a removed line is now on the line before `first`.
struct LineShift {
    ControlLine first;
    std::int32_t count = 0;
    bool wholeLines = false;  ///< removed from the beginning of a line on
    bool everything = false;  ///< no text is left
};

}  // namespace korvant
