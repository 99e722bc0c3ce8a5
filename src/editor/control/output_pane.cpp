#include "editor/control/output_pane.h"

#include <charconv>
#include <string_view>

namespace korvant {

namespace {

constexpr std::size_t kLongestCharacter = 4;  // bytes of UTF-8

/// The number that follows the last `label` in `line`; 0 for none.
std::int32_t numberAfter(std::string_view line, std::string_view label) {
    const auto at = line.rfind(label);
    if (at == std::string_view::npos) return 0;
    std::int32_t number = 0;
    const char* end = line.data() + line.size();
    const auto read = std::from_chars(line.data() + at + label.size(), end, number);
    return read.ec == std::errc() && number > 0 ? number : 0;
}

}  // namespace

void OutputPane::show(std::string text) {
    put(cutUtf8(std::move(text), kLimit) + notes_);
}

void OutputPane::put(const std::string& text) {
    if (text.find('\0') == std::string::npos)
        control_.setText(text);
    else
        control_.replaceText(text);
}

void OutputPane::showAbove(const std::string& line) {
    put(cutUtf8(line + "\n" + text(), kLimit + notes_.size()));
}

void OutputPane::note(const std::string& line) {
    const std::string note = cutUtf8(line, kLimit / 2) + "\n";
    if (notes_.size() + note.size() > kLimit) {
        // In halves, so that a loop that notes something in each pass is not held up.
        notes_.erase(0, notes_.find('\n', notes_.size() / 2) + 1);
        put(notes_);
    }
    notes_ += note;
    const int end = control_.length();
    control_.select(end, end);
    control_.send(sci::kAddText, note.size(), note.data());
}

void OutputPane::clear() {
    notes_.clear();
    put({});
}

std::string OutputPane::lineAt(int position) const {
    const ControlLine line = control_.lineOf(position);
    return control_.textOf({control_.lineStart(line), control_.lineEnd(line)});
}

std::optional<ReportedPlace> reportedPlace(const std::string& line) {
    const std::int32_t row = numberAfter(line, " at line ");
    if (row == 0) return std::nullopt;
    const std::int32_t column = numberAfter(line, " column ");
    return ReportedPlace{{row}, column > 0 ? column : 1};
}

std::string cutUtf8(std::string text, std::size_t limit) {
    if (text.size() <= limit) return text;
    std::size_t end = limit;
    while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0) == 0x80) --end;
    // Only bytes that are no UTF-8 have more of these in a row.
    text.resize(limit - end < kLongestCharacter ? end : limit);
    return text;
}

}  // namespace korvant
