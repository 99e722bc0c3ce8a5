// A theme for the two controls, sent after the classic set-up and taken off again.
#pragma once

#include <string>

#include "editor/control/text_control.h"
#include "editor/control/theme_table.h"

namespace korvant {

/// Names that have a colour of their own, each list parted by blanks.
struct ColouredNames {
    std::string functions;  ///< of the library
    std::string types;      ///< classes, enums, registered types
    std::string values;     ///< variables and members of the script, which are no functions
    bool operator==(const ColouredNames&) const = default;
};

/// What code is written in.
struct CodeFont {
    static constexpr int kUsualPoints = 10;

    std::string face;
    int points = kUsualPoints;
};

void applyTheme(const TextControl& editor, const TextControl& output, const ThemeTable& theme,
                const CodeFont& font);
/// Undoes what a theme changes beyond the colours of the classic schemes; one of them is to be
/// applied afterwards.
void removeTheme(const TextControl& editor, const TextControl& output);
/// Which words are coloured. The lexer asks the first set first, so with a theme that holds the
/// language's words alone.
void colourNames(const TextControl& editor, const ColouredNames& names);
/// As the classic look has it.
void uncolourNames(const TextControl& editor);
/// The language's words of the classic list, and its functions.
std::string languageWordList();
std::string libraryWordList();

}  // namespace korvant
