// The colours can be told apart by people who see less: texts 4.5 to 1, marks 3 to 1.
#include "editor/control/theme_table.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "editor/control/theme_setup.h"
#include "support/memory_control.h"

using namespace korvant;

namespace {

double linear(double channel) {
    channel /= 255;
    return channel <= 0.03928 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

double luminance(Rgb colour) {
    return 0.2126 * linear(colour.red) + 0.7152 * linear(colour.green) +
           0.0722 * linear(colour.blue);
}

double contrast(Rgb one, Rgb other) {
    const double a = luminance(one) + 0.05, b = luminance(other) + 0.05;
    return std::max(a, b) / std::min(a, b);
}

Rgb laidOver(Rgb under, const Tint& tint) {
    const auto mixed = [&](int over, int below) {
        return static_cast<std::uint32_t>((over * tint.alpha + below * (255 - tint.alpha)) / 255);
    };
    return mixed(tint.colour.red, under.red) << 16 | mixed(tint.colour.green, under.green) << 8 |
           mixed(tint.colour.blue, under.blue);
}

class Contrast : public testing::TestWithParam<const ThemeTable*> {
  protected:
    const ThemeTable& t = *GetParam();

    void readable(Rgb text, std::initializer_list<Rgb> backs, const char* what) {
        for (const Rgb back : backs) EXPECT_GE(contrast(text, back), 4.5) << what;
    }
    void visible(Rgb mark, std::initializer_list<Rgb> backs, const char* what) {
        for (const Rgb back : backs) EXPECT_GE(contrast(mark, back), 3.0) << what;
    }
};

TEST_P(Contrast, TextsOfTheWindow) {
    readable(t.text,
             {t.chrome, t.panel, t.editor, t.selected, t.pressed, t.hover, t.stopBand, t.errorBand,
              t.popUp},
             "text");
    readable(t.secondText, {t.chrome, t.panel, t.editor, t.stopBand, t.errorBand, t.popUp},
             "second text");
    readable(t.secondOnSelected, {t.selected}, "second text of the selected row");
    readable(t.mainText, {t.mainFill}, "the main button");
    readable(t.mainKey, {t.mainFill}, "its key");
    readable(t.accent, {t.chrome, t.panel, t.popUp, t.errorBand}, "a link");
    readable(t.error, {t.chrome, t.panel, t.editor, t.errorBand}, "an error");
    readable(t.changedText, {t.changedFill}, "a changed value");
    readable(t.badgeText, {t.badgeFill}, "a badge");
    readable(t.well, {t.editor}, "green of the console");
    readable(t.secondText, {t.editor}, "grey of the console");
}

TEST_P(Contrast, TextsOfTheCode) {
    for (const Rgb colour : {t.code.plain, t.code.comment, t.code.number, t.code.keyword,
                             t.code.text, t.code.library, t.code.operatorSign, t.code.type}) {
        readable(colour, {t.editor, t.caretLine, t.code.selection}, "code");
        visible(colour,
                {t.stopBand, t.errorBand, laidOver(t.editor, t.findAll),
                 laidOver(t.editor, t.findCurrent)},
                "code on a band or a match");
    }
    readable(t.code.lineNumber, {t.editor, t.caretLine}, "line numbers");
    readable(t.code.braceFore, {t.code.braceBack}, "a matching brace");
}

TEST_P(Contrast, Marks) {
    visible(t.fieldEdge, {t.chrome, t.panel, t.editor}, "the edge of a field");
    visible(t.accent, {t.chrome, t.panel, t.selected, t.stopBand, t.errorBand}, "the focus");
    visible(t.stopMark, {t.chrome, t.editor, t.stopBand}, "the arrow of a stop");
    visible(t.breakpoint, {t.editor, t.panel}, "a breakpoint");
    visible(t.unverified, {t.editor, t.panel}, "a breakpoint without code");
    visible(t.warning, {t.chrome, t.panel, t.editor, t.selected},
            "a warning, and the arrow in the selected row");
    visible(t.well, {t.chrome}, "all well");
    visible(t.secondText, {t.chrome, t.panel}, "an icon");
}

INSTANTIATE_TEST_SUITE_P(Themes, Contrast, testing::Values(&lightTheme(), &darkTheme()));

TEST(ThemeChoice, NamesLeadBack) {
    for (const ThemeChoice choice :
         {ThemeChoice::system, ThemeChoice::light, ThemeChoice::dark, ThemeChoice::classic})
        EXPECT_EQ(themeOfName(themeName(choice)), choice);
    EXPECT_EQ(themeOfName("nonsense"), ThemeChoice::system);
}

TEST(ThemeWords, LanguageAndLibraryAreParted) {
    const std::string language = languageWordList(), library = libraryWordList();
    EXPECT_EQ(language.substr(language.size() - 9), "while xor");
    EXPECT_EQ(library.substr(0, 14), "OpenInputFile ");
}

}  // namespace
