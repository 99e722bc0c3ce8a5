#include "editor/control/theme_table.h"

#include <cstring>
#include <iterator>

namespace korvant {

namespace {

constexpr ThemeTable kLightTheme = {
    .dark = false,
    .chrome = 0xF6F5F4,
    .panel = 0xFFFFFF,
    .editor = 0xFFFFFF,
    .border = 0xD9D6D2,
    .hair = 0xE9E6E3,
    .fieldEdge = 0x848A92,
    .text = 0x1F2328,
    .secondText = 0x5B6069,
    .disabled = 0xA5A8AD,
    .accent = 0x0B62B8,
    .mainFill = 0x0B62B8,
    .mainText = 0xFFFFFF,
    .mainKey = 0xE6F0FB,
    .selected = 0xD6E6F8,
    .secondOnSelected = 0x474D55,
    .pressed = 0xE2DFDC,
    .hover = 0xECEAE8,
    .caretLine = 0xF3F6FA,
    .stopBand = 0xFFF1B8,
    .stopMark = 0xB7791F,
    .errorBand = 0xFDE8E6,
    .errorEdge = 0xE8A29D,
    .error = 0xC4231F,
    .warning = 0x9A6200,
    .well = 0x1A7A3C,
    .breakpoint = 0xD1332E,
    .unverified = 0x6B717A,
    .changedFill = 0xDCEBFB,
    .changedText = 0x0B62B8,
    .findAll = {0xF2B600, 90, 160},
    .findCurrent = {0xF07C00, 140, 255},
    .popUp = 0xFFFFFF,
    .popUpEdge = 0xBFBBB6,
    .badgeFill = 0xC4231F,
    .badgeText = 0xFFFFFF,
    .track = 0xE4E1DE,
    .code = {.plain = 0x1F2328,
             .comment = 0x47664A,
             .number = 0x8A4A00,
             .keyword = 0x0B4FB3,
             .text = 0xA33A12,
             .library = 0x7A3E9D,
             .operatorSign = 0x3A4048,
             .type = 0x0F6E78,
             .lineNumber = 0x6B717A,
             .braceFore = 0x1F2328,
             .braceBack = 0xDCE6F2,
             .selection = 0xD6E6F8,
             .guide = 0xE3E3E3},
};

constexpr ThemeTable kDarkTheme = {
    .dark = true,
    .chrome = 0x2B2D31,
    .panel = 0x212327,
    .editor = 0x1C1E22,
    .border = 0x3B3E44,
    .hair = 0x303338,
    .fieldEdge = 0x7A808A,
    .text = 0xDFE2E6,
    .secondText = 0xA0A7B0,
    .disabled = 0x6A7078,
    .accent = 0x6FB3FF,
    .mainFill = 0x2F6DB0,
    .mainText = 0xFFFFFF,
    .mainKey = 0xE6F0FB,
    .selected = 0x22405F,
    .secondOnSelected = 0xC0C6CE,
    .pressed = 0x3D4249,
    .hover = 0x383B41,
    .caretLine = 0x25282D,
    .stopBand = 0x3F3612,
    .stopMark = 0xE3B341,
    .errorBand = 0x4A2426,
    .errorEdge = 0x8A4542,
    .error = 0xFF8078,
    .warning = 0xE3B341,
    .well = 0x5CCB7F,
    .breakpoint = 0xF0625A,
    .unverified = 0x8D95A0,
    .changedFill = 0x1F3F61,
    .changedText = 0x6FB3FF,
    .findAll = {0xE3B341, 80, 150},
    .findCurrent = {0xFF9D2E, 85, 255},
    .popUp = 0x26292E,
    .popUpEdge = 0x4A4E55,
    .badgeFill = 0x6E2F2D,
    .badgeText = 0xFFFFFF,
    .track = 0x3C4047,
    .code = {.plain = 0xDFE2E6,
             .comment = 0x8FB593,
             .number = 0xE8BE7A,
             .keyword = 0x7FB8FF,
             .text = 0xF0A98A,
             .library = 0xCBA6F0,
             .operatorSign = 0xC4CAD2,
             .type = 0x6FD0D8,
             .lineNumber = 0x8D95A0,
             .braceFore = 0xDFE2E6,
             .braceBack = 0x3A4654,
             .selection = 0x22405F,
             .guide = 0x34373D},
};

/// In the order of ThemeChoice.
constexpr const char* kThemeNames[] = {"system", "light", "dark", "classic"};

}  // namespace

const ThemeTable& lightTheme() {
    return kLightTheme;
}

const ThemeTable& darkTheme() {
    return kDarkTheme;
}

const char* themeName(ThemeChoice choice) {
    return kThemeNames[static_cast<int>(choice)];
}

ThemeChoice themeOfName(const char* name) {
    for (std::size_t i = 0; i < std::size(kThemeNames); ++i)
        if (std::strcmp(kThemeNames[i], name) == 0) return static_cast<ThemeChoice>(i);
    return ThemeChoice::system;
}

}  // namespace korvant
