// Typing into a console window: keys, the line that is being edited, and what keys mean to scripts.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "host/terminal/console_grid.h"

namespace korvant {

struct ConsoleKey {
    enum class Kind {
        character,  ///< control characters included, but not those below
        enter,
        backspace,
        tab,
        escape,
        insert,
        remove,  ///< Delete
        left,
        right,
        up,
        down,
        home,
        end,
        pageUp,
        pageDown,
        function  ///< F1 to F12 by `number`
    };
    Kind kind = Kind::character;
    char32_t character = 0;
    int number = 0;
};

/// The codes that the single-key read of a console gives for a key, one after the other: the byte
/// of a character (its UTF-8 bytes where Windows Western lacks it), Return 13, Backspace 8, Tab 9,
/// Escape 27; other keys 224 or 0 and a scan code. Nothing for a key without a code.
std::vector<int> consoleKeyCodes(const ConsoleKey& key);

/// One line of input, edited on the grid where the cursor stood when it began. Lines that were
/// entered before come back with the arrows.
class ConsoleLine {
  public:
    static constexpr std::size_t kLongest = 16'000;  ///< characters; further ones are refused
    static constexpr std::size_t kRemembered = 100;  ///< entered lines

    explicit ConsoleLine(ConsoleGrid& grid) : grid_(grid) {}

    /// Starts with an empty line at the cursor.
    void begin();
    bool editing() const noexcept { return editing_; }
    /// True when the key ended the line: result() holds it then, without a line feed.
    bool handle(const ConsoleKey& key);
    /// The end of the input was typed: Ctrl+D or Ctrl+Z on an empty line. Ends the line.
    bool endOfInput() const noexcept { return endOfInput_; }
    /// UTF-8.
    const std::string& result() const noexcept { return result_; }
    /// Gives up: the text stays on the grid, nothing is entered.
    void abandon();

  private:
    bool append(const ConsoleKey& key);
    void edit(const ConsoleKey& key);
    void insert(char32_t character);
    void erase(std::size_t at);
    void recall(int step);
    void enter();
    void finish();
    void draw();

    ConsoleGrid& grid_;
    bool editing_ = false;
    bool endOfInput_ = false;
    ConsolePlace start_;
    std::u32string text_;
    std::size_t at_ = 0;
    std::size_t drawn_ = 0;  ///< cells on the grid
    std::vector<std::u32string> entered_;
    std::size_t recalled_ = 0;
    std::u32string kept_;  ///< what was typed before the first recall
    std::string result_;
};

}  // namespace korvant
