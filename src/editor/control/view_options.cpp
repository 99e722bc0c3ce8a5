#include "editor/control/view_options.h"

#include <utility>

#include "editor/control/command_ids.h"

namespace korvant {

namespace {

constexpr int kNumberPadding = 4;  // pixels

void setMarginWidth(const TextControl& editor, int margin, int width) {
    editor.send(sci::kSetMarginWidthN, static_cast<std::uintptr_t>(margin), width);
}

}  // namespace

void ViewOptions::setUp() {
    useScheme(ColourScheme::light);
    black_ = false;
    if (!lineNumbers_) showLineNumbers(true);
    setMarginWidth(editor_, kFoldMargin, kMarkMarginWidth);
    setMarginWidth(editor_, kBookmarkMargin, kMarkMarginWidth);
    lineNumbers_ = bookmarks_ = folding_ = true;
}

void ViewOptions::useScheme(ColourScheme scheme) {
    applyScheme(editor_, output_, scheme);
    colourMargins(editor_, output_, scheme);
    putTheme();
}

/// The black scheme is a look of its own.
void ViewOptions::putTheme() {
    if (!theme_ || black_) return;
    applyTheme(editor_, output_, *theme_, font_);
    colourNames(editor_, names_);
    themed_ = true;
    if (lineNumbers_) showLineNumbers(true);
}

void ViewOptions::useTheme(const ThemeTable* theme, CodeFont font) {
    theme_ = theme;
    font_ = std::move(font);
    if (std::exchange(themed_, false)) removeTheme(editor_, output_);
    useScheme(black_ ? ColourScheme::black : ColourScheme::light);
    if (lineNumbers_ && !themed_) showLineNumbers(true);
}

/// Others let the whole text be coloured anew.
void ViewOptions::useNames(ColouredNames names) {
    if (names == names_) return;
    names_ = std::move(names);
    if (themed_) colourNames(editor_, names_);
}

void ViewOptions::textShown() {
    themed_ ? colourNames(editor_, names_) : uncolourNames(editor_);
    fontChanged();
}

void ViewOptions::showLineNumbers(bool shown) {
    digits_ = decimalDigits(editor_.lineCount());
    setMarginWidth(editor_, kNumberMargin, shown ? lineNumberWidth(editor_) + kNumberPadding : 0);
}

void ViewOptions::linesChanged() {
    if (lineNumbers_ && decimalDigits(editor_.lineCount()) != digits_) showLineNumbers(true);
}

void ViewOptions::fontChanged() {
    if (lineNumbers_) showLineNumbers(true);
}

void ViewOptions::toggleLineNumbers() {
    lineNumbers_ = !lineNumbers_;
    showLineNumbers(lineNumbers_);
    window_.setMenuChecked(command_id::kLineNumbers, lineNumbers_);
}

void ViewOptions::toggleMargin(bool& shown, int margin, int command) {
    shown = !shown;
    setMarginWidth(editor_, margin, shown ? kMarkMarginWidth : 0);
    window_.setMenuChecked(command, shown);
}

void ViewOptions::toggleBookmarks() {
    toggleMargin(bookmarks_, kBookmarkMargin, command_id::kBookmarks);
}

void ViewOptions::toggleFolding() {
    toggleMargin(folding_, kFoldMargin, command_id::kFolding);
}

void ViewOptions::toggleBackground() {
    black_ = !black_;
    if (black_ && std::exchange(themed_, false)) removeTheme(editor_, output_);
    useScheme(black_ ? ColourScheme::black : ColourScheme::light);
    window_.setMenuChecked(command_id::kBlackBackground, black_);
}

}  // namespace korvant
