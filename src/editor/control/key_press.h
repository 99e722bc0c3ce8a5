// A key with what is held down beside it, apart from any toolkit.
#pragma once

#include <optional>
#include <string_view>

namespace korvant {

struct KeyPress {
    /// Keys that type no character.
    enum Special : int {
        kF1 = 0x1000,
        kF24 = kF1 + 23,
        kEnter,
        kTab,
        kUp,
        kDown,
        kEscape,
        kLeft,
        kRight,
        kPageUp,
        kPageDown
    };

    int code = 0;  ///< an upper-case ASCII character, or one of Special
    bool control = false;
    bool shift = false;
    bool alt = false;

    bool isFunctionKey() const noexcept { return code >= kF1 && code <= kF24; }
    friend bool operator==(const KeyPress&, const KeyPress&) = default;
};

constexpr KeyPress functionKeyPress(int number) {
    return {KeyPress::kF1 + number - 1};
}

/// "F5", "Ctrl+Shift+Z", "Ctrl++", "Alt+Up". Nothing for any other text.
std::optional<KeyPress> parseKeyPress(std::string_view name);

}  // namespace korvant
