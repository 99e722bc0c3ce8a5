#include "host/terminal/status_line.h"

#include <algorithm>
#include <utility>

#include "base/text/display_text.h"
#include "base/text/text_encoding.h"

namespace korvant {

namespace {

/// One line that fits: no control characters, cut to the width.
std::string fitted(const std::string& text, int columns) {
    std::string shown;
    DisplayText display;
    display.append(text, shown);
    display.finish(shown);
    std::replace_if(
        shown.begin(), shown.end(), [](char c) { return c >= 0 && c < ' '; }, ' ');
    std::size_t bytes = 0;
    for (int used = 0; used + 1 < columns && bytes < shown.size(); ++used)
        bytes += static_cast<std::size_t>(
            std::max(1, utf8SequenceLength(std::string_view(shown).substr(bytes))));
    return shown.substr(0, bytes);
}

}  // namespace

StatusLine::StatusLine(GatheredOutput& output, std::function<int()> columns)
    : output_(output), columns_(std::move(columns)) {}

StatusLine::~StatusLine() {
    output_.setStatus({});
}

void StatusLine::show(bool visible) {
    visible_ = visible;
    redraw();
}

void StatusLine::setTexts(const std::string& caption, const std::string& text) {
    line_ = caption.empty() || caption == text ? text : caption + ": " + text;
    redraw();
}

void StatusLine::redraw() {
    output_.setStatus(visible_ ? fitted(line_, columns_()) : std::string());
}

}  // namespace korvant
