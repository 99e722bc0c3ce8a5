#include "editor/stops/line_shift.h"

#include <algorithm>

namespace korvant {

std::optional<LineShift> lineShiftOf(const TextControl& editor,
                                     const ControlNotification& notification) {
    // A control that loses all its text forgets its markers, even those of its only line.
    const bool everything = editor.length() == 0;
    if (notification.linesAdded == 0 && !everything) return std::nullopt;
    const ControlLine line = editor.lineOf(notification.position);
    const bool atStart = editor.lineStart(line) == notification.position;
    // What is inserted at the very beginning of a line moves that line too. Removed lines join
    // the line where the removal begins.
    const bool movesLine = atStart && notification.linesAdded > 0;
    return LineShift{
        {movesLine ? line.index : line.index + 1}, notification.linesAdded, atStart, everything};
}

std::int32_t shifted(std::int32_t line, const LineShift& shift) {
    const std::int32_t first = toScript(shift.first).number;
    if (line < first) return line;
    return shift.count > 0 ? line + shift.count : std::max(line + shift.count, first - 1);
}

void shiftLines(std::vector<std::int32_t>& lines, const LineShift& shift) {
    if (shift.everything) lines.clear();
    for (std::int32_t& line : lines) line = shifted(line, shift);
    lines.erase(std::unique(lines.begin(), lines.end()), lines.end());
}

void shiftKeys(std::map<std::int32_t, std::string>& values, const LineShift& shift) {
    std::map<std::int32_t, std::string> moved;
    if (shift.everything) values.clear();
    for (auto& [line, value] : values) {
        const std::int32_t target = shifted(line, shift);
        if (shift.wholeLines)
            moved.insert_or_assign(target, std::move(value));
        else
            moved.emplace(target, std::move(value));
    }
    values = std::move(moved);
}

}  // namespace korvant
