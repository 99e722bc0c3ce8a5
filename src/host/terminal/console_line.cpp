#include "host/terminal/console_line.h"

#include <algorithm>

#include "base/text/text_encoding.h"

namespace korvant {

namespace {

constexpr char32_t kControlD = 4, kControlU = 21, kControlZ = 26;

using Kind = ConsoleKey::Kind;

/// Scan code set 1 of the personal computer, as the single-key read of a console gives it after
/// the byte 224; 0 for none.
int scanCode(Kind kind) {
    switch (kind) {
        case Kind::home:
            return 71;
        case Kind::up:
            return 72;
        case Kind::pageUp:
            return 73;
        case Kind::left:
            return 75;
        case Kind::right:
            return 77;
        case Kind::end:
            return 79;
        case Kind::down:
            return 80;
        case Kind::pageDown:
            return 81;
        case Kind::insert:
            return 82;
        case Kind::remove:
            return 83;
        default:
            return 0;
    }
}

std::vector<int> functionCodes(int number) {
    if (number >= 1 && number <= 10) return {0, 58 + number};
    if (number == 11 || number == 12) return {224, 122 + number};
    return {};
}

std::vector<int> characterCodes(char32_t character) {
    std::string utf8;
    appendUtf8(utf8, character);
    std::vector<int> codes;
    for (const char c : encodeTyped(utf8)) codes.push_back(static_cast<unsigned char>(c));
    return codes;
}

}  // namespace

std::vector<int> consoleKeyCodes(const ConsoleKey& key) {
    switch (key.kind) {
        case Kind::character:
            return characterCodes(key.character);
        case Kind::enter:
            return {13};
        case Kind::backspace:
            return {8};
        case Kind::tab:
            return {9};
        case Kind::escape:
            return {27};
        case Kind::function:
            return functionCodes(key.number);
        default:
            return {224, scanCode(key.kind)};
    }
}

void ConsoleLine::begin() {
    grid_.finishSequence();
    editing_ = true;
    endOfInput_ = false;
    start_ = grid_.cursor();
    text_.clear();
    kept_.clear();
    at_ = drawn_ = 0;
    recalled_ = entered_.size();
    result_.clear();
}

bool ConsoleLine::handle(const ConsoleKey& key) {
    if (!editing_) return false;
    const bool end = key.kind == Kind::character && text_.empty() &&
                     (key.character == kControlD || key.character == kControlZ);
    if (end) {
        endOfInput_ = true;
        finish();
        return true;
    }
    if (key.kind == Kind::enter) {
        enter();
        return true;
    }
    if (!append(key)) {
        edit(key);
        draw();
    }
    return false;
}

/// The common case, and the one that a paste repeats: the rest of the line need not be drawn.
bool ConsoleLine::append(const ConsoleKey& key) {
    const bool plain = key.kind == Kind::character && key.character >= 32 && key.character < 127;
    if (!plain || at_ != text_.size() || at_ == 0 || at_ >= kLongest) return false;
    insert(key.character);
    grid_.put(key.character);
    ++drawn_;
    return true;
}

void ConsoleLine::edit(const ConsoleKey& key) {
    switch (key.kind) {
        case Kind::character:
            if (key.character == kControlU)
                text_.clear();
            else if (key.character >= 32 && key.character != 127)
                insert(key.character);
            break;
        case Kind::tab:
            insert(U' ');
            break;
        case Kind::backspace:
            if (at_ > 0) erase(--at_);
            break;
        case Kind::remove:
            erase(at_);
            break;
        case Kind::left:
            at_ -= at_ > 0;
            break;
        case Kind::right:
            ++at_;
            break;
        case Kind::home:
            at_ = 0;
            break;
        case Kind::end:
            at_ = text_.size();
            break;
        case Kind::up:
            recall(-1);
            break;
        case Kind::down:
            recall(1);
            break;
        case Kind::escape:
            text_.clear();
            break;
        default:
            break;
    }
    at_ = std::min(at_, text_.size());
}

void ConsoleLine::insert(char32_t character) {
    if (text_.size() < kLongest) text_.insert(at_++, 1, character);
}

void ConsoleLine::erase(std::size_t at) {
    if (at < text_.size()) text_.erase(at, 1);
}

void ConsoleLine::recall(int step) {
    if (step < 0 ? recalled_ == 0 : recalled_ == entered_.size()) return;
    if (recalled_ == entered_.size()) kept_ = text_;
    recalled_ = step < 0 ? recalled_ - 1 : recalled_ + 1;
    text_ = recalled_ == entered_.size() ? kept_ : entered_[recalled_];
    at_ = text_.size();
}

void ConsoleLine::enter() {
    for (const char32_t character : text_) appendUtf8(result_, character);
    if (!text_.empty() && (entered_.empty() || entered_.back() != text_)) {
        entered_.push_back(text_);
        if (entered_.size() > kRemembered) entered_.erase(entered_.begin());
    }
    at_ = text_.size();
    draw();
    finish();
}

void ConsoleLine::abandon() {
    if (!editing_) return;
    at_ = text_.size();
    draw();
    finish();
}

void ConsoleLine::finish() {
    editing_ = false;
    grid_.newLine();
}

/// Every character is taken as one cell: a wide one moves the rest of its line when it is drawn,
/// and the cursor is set from the grid's own count.
void ConsoleLine::draw() {
    grid_.moveCursorTo(start_);
    ConsolePlace cursor = grid_.cursor();
    for (std::size_t i = 0; i < text_.size(); ++i) {
        if (i == at_) cursor = grid_.cursor();
        grid_.put(text_[i]);
    }
    if (at_ == text_.size()) cursor = grid_.cursor();
    const ConsolePlace end = grid_.cursor();
    const auto columns = static_cast<std::size_t>(grid_.columns());
    const auto cells = static_cast<std::size_t>(end.line - start_.line) * columns +
                       static_cast<std::size_t>(end.column) -
                       static_cast<std::size_t>(start_.column);
    for (std::size_t i = cells; i < drawn_; ++i) grid_.put(U' ');
    drawn_ = cells;
    grid_.moveCursorTo(cursor);
}

}  // namespace korvant
