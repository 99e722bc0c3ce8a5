// The colours of the editor's window and of the code in it, light and dark, as a table.
#pragma once

#include <cstdint>

namespace korvant {

/// 8 bits each; made from 0xRRGGBB.
struct Rgb {
    std::uint8_t red = 0, green = 0, blue = 0;
    constexpr Rgb() = default;
    constexpr Rgb(std::uint32_t value)
        : red(static_cast<std::uint8_t>(value >> 16)),
          green(static_cast<std::uint8_t>(value >> 8)),
          blue(static_cast<std::uint8_t>(value)) {}
    friend constexpr bool operator==(const Rgb&, const Rgb&) = default;
};

/// What is laid over text: a colour, how much of it (0 to 255), and how much of its edge.
struct Tint {
    Rgb colour;
    int alpha = 0;
    int outline = 0;
};

/// Of the texts in the editing control.
struct CodeColours {
    Rgb plain, comment, number, keyword, text, library, operatorSign, type;
    Rgb lineNumber, braceFore, braceBack, selection, guide;
};

struct ThemeTable {
    bool dark;
    Rgb chrome;  ///< menu bar, toolbar, headings, status bar
    Rgb panel;   ///< lists
    Rgb editor;  ///< the text, and fields
    Rgb border, hair;
    Rgb fieldEdge;
    Rgb text, secondText, disabled;
    Rgb accent;
    Rgb mainFill, mainText, mainKey;
    Rgb selected, secondOnSelected;
    Rgb pressed, hover;
    Rgb caretLine;
    Rgb stopBand, stopMark;
    Rgb errorBand, errorEdge, error;
    Rgb warning, well;
    Rgb breakpoint, unverified;
    Rgb changedFill, changedText;
    Tint findAll, findCurrent;
    Rgb popUp, popUpEdge;
    Rgb badgeFill, badgeText;
    Rgb track;
    CodeColours code;
};

/// What the user may choose. `system` follows the desktop where it can be followed.
enum class ThemeChoice { system, light, dark, classic };

const ThemeTable& lightTheme();
const ThemeTable& darkTheme();

/// The name under which a choice is remembered, and the choice of a name; an unknown one is
/// `system`.
const char* themeName(ThemeChoice choice);
ThemeChoice themeOfName(const char* name);

}  // namespace korvant
