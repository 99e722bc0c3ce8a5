#include "editor/control/theme_setup.h"

#include <sstream>
#include <string_view>

#include "editor/control/control_setup.h"
#include "editor/control/keyword_list.h"

namespace korvant {

namespace {

constexpr int kExtraAscent = 1, kExtraDescent = 2, kTextIndent = 4;
constexpr std::uintptr_t kOutputExtra = 1, kUsualScrollWidth = 2000;
constexpr int kGuidesLookBoth = 3, kGuidesClassic = 1;
constexpr int kStyleIndentGuide = 37;
/// The last of the language's words in the classic list.
constexpr std::string_view kLastLanguageWord = " xor ";
/// Words of the language that the classic list does not know.
constexpr char kNewerWords[] =
    " abstract auto cast catch enum external final funcdef get interface is mixin namespace "
    "override private protected set shared super try typedef";

constexpr char kFromWord[] = " from ";

struct StyleColour {
    int style;
    Rgb CodeColours::*colour;
};
/// Styles of the C-like lexer.
constexpr StyleColour kStyles[] = {
    {0, &CodeColours::plain},   {1, &CodeColours::comment},       {2, &CodeColours::comment},
    {3, &CodeColours::comment}, {4, &CodeColours::number},        {5, &CodeColours::keyword},
    {6, &CodeColours::text},    {7, &CodeColours::text},          {8, &CodeColours::plain},
    {9, &CodeColours::library}, {10, &CodeColours::operatorSign}, {11, &CodeColours::plain},
    {12, &CodeColours::text},   {15, &CodeColours::comment},      {16, &CodeColours::library},
    {19, &CodeColours::type},
};

std::intptr_t sciColour(Rgb colour) {
    return sci::rgb(colour.red, colour.green, colour.blue);
}

void setStyle(const TextControl& control, int style, const CodeFont& font, Rgb fore, Rgb back) {
    const auto number = static_cast<std::uintptr_t>(style);
    control.send(sci::kStyleSetFont, number, font.face.c_str());
    control.send(sci::kStyleSetSize, number, font.points);
    control.send(sci::kStyleSetFore, number, sciColour(fore));
    control.send(sci::kStyleSetBack, number, sciColour(back));
}

void setFore(const TextControl& control, int style, Rgb colour) {
    control.send(sci::kStyleSetFore, static_cast<std::uintptr_t>(style), sciColour(colour));
}

void setSpacing(const TextControl& control, int ascent, int descent, int indent, int guides) {
    control.send(sci::kSetExtraAscent, static_cast<std::uintptr_t>(ascent));
    control.send(sci::kSetExtraDescent, static_cast<std::uintptr_t>(descent));
    control.send(sci::kSetMarginLeft, 0, indent);
    control.send(sci::kSetIndentationGuides, static_cast<std::uintptr_t>(guides));
}

void colourSelection(const TextControl& control, const ThemeTable& theme) {
    control.send(sci::kSetSelFore, 0);
    control.send(sci::kSetSelBack, 1, sciColour(theme.code.selection));
    control.send(sci::kSetCaretFore, static_cast<std::uintptr_t>(sciColour(theme.text)));
}

void colourEditor(const TextControl& editor, const ThemeTable& theme, const CodeFont& font) {
    const CodeColours& code = theme.code;
    setStyle(editor, sci::kStyleDefault, font, code.plain, theme.editor);
    editor.send(sci::kStyleClearAll);
    for (const StyleColour& row : kStyles) setFore(editor, row.style, code.*row.colour);
    setFore(editor, sci::kStyleLineNumber, code.lineNumber);
    editor.send(sci::kStyleSetBack, sci::kStyleLineNumber, sciColour(theme.editor));
    setFore(editor, sci::kStyleBraceLight, code.braceFore);
    editor.send(sci::kStyleSetBack, sci::kStyleBraceLight, sciColour(code.braceBack));
    setFore(editor, kStyleIndentGuide, code.guide);
    editor.send(sci::kSetFoldMarginColour, 1, sciColour(theme.editor));
    editor.send(sci::kSetFoldMarginHiColour, 1, sciColour(theme.editor));
    editor.send(sci::kSetCaretLineBack, static_cast<std::uintptr_t>(sciColour(theme.caretLine)));
    editor.send(sci::kCallTipSetBack, static_cast<std::uintptr_t>(sciColour(theme.popUp)));
    editor.send(sci::kCallTipSetFore, static_cast<std::uintptr_t>(sciColour(theme.text)));
    editor.send(sci::kCallTipSetForeHlt, static_cast<std::uintptr_t>(sciColour(theme.accent)));
    for (int marker = sci::kMarkNumFolderEnd; marker <= sci::kMarkNumFolderOpen; ++marker) {
        editor.send(sci::kMarkerSetFore, static_cast<std::uintptr_t>(marker),
                    sciColour(theme.editor));
        editor.send(sci::kMarkerSetBack, static_cast<std::uintptr_t>(marker),
                    sciColour(theme.secondText));
    }
}

/// The words of a list that are not in `others`, which begins and ends with a blank.
std::string without(const std::string& words, const std::string& others) {
    std::istringstream all(words);
    std::string left;
    for (std::string word; all >> word;)
        if (others.find(" " + word + " ") == std::string::npos) left += " " + word;
    return left;
}

std::size_t endOfLanguageWords() {
    const std::string_view all = kKeywordList;
    return all.find(kLastLanguageWord) + kLastLanguageWord.size() - 1;
}

}  // namespace

std::string languageWordList() {
    return std::string(kKeywordList, endOfLanguageWords());
}

std::string libraryWordList() {
    return std::string(kKeywordList + endOfLanguageWords() + 1);
}

void applyTheme(const TextControl& editor, const TextControl& output, const ThemeTable& theme,
                const CodeFont& font) {
    colourEditor(editor, theme, font);
    colourSelection(editor, theme);
    setSpacing(editor, kExtraAscent, kExtraDescent, kTextIndent, kGuidesLookBoth);
    output.send(sci::kSetExtraAscent, kOutputExtra);
    output.send(sci::kSetExtraDescent, kOutputExtra);
    editor.send(sci::kSetCaretLineVisibleAlways, 1);
    setStyle(output, sci::kStyleDefault, font, theme.text, theme.editor);
    output.send(sci::kStyleClearAll);
    output.send(sci::kSetMarginWidthN, kBookmarkMargin, std::intptr_t{0});
    colourSelection(output, theme);
    // A control makes its fonts for the first: behind all that would have it make them again.
    for (const TextControl* control : {&editor, &output}) {
        control->send(sci::kSetScrollWidth, 1);
        control->send(sci::kSetScrollWidthTracking, 1);
    }
}

void removeTheme(const TextControl& editor, const TextControl& output) {
    setSpacing(editor, 0, 0, 1, kGuidesClassic);
    editor.send(sci::kStyleClearAll);
    uncolourNames(editor);
    editor.send(sci::kCallTipSetBack, static_cast<std::uintptr_t>(sci::rgb(255, 255, 255)));
    setUpConveniences(editor);
    editor.send(sci::kSetCaretLineVisibleAlways, 0);
    for (const TextControl* control : {&editor, &output}) {
        control->send(sci::kSetScrollWidthTracking, 0);
        control->send(sci::kSetScrollWidth, kUsualScrollWidth);
    }
    output.send(sci::kSetMarginWidthN, kBookmarkMargin, kMarkMarginWidth);
    output.send(sci::kSetExtraAscent, 0);
    output.send(sci::kSetExtraDescent, 0);
    output.send(sci::kSetCaretFore, static_cast<std::uintptr_t>(sci::rgb(0, 0, 0)));
}

void uncolourNames(const TextControl& editor) {
    editor.send(sci::kSetKeywords, 0, kKeywordList);
    for (const std::uintptr_t set : {1, 3}) editor.send(sci::kSetKeywords, set, "");
}

void colourNames(const TextControl& editor, const ColouredNames& names) {
    std::string language = languageWordList() + kNewerWords;
    // A word of the language behind "import" only, and a good name of a member.
    language.erase(language.find(kFromWord), std::string_view(kFromWord).size() - 1);
    editor.send(sci::kSetKeywords, 0, language.c_str());
    const std::string functions =
        without(libraryWordList() + " " + names.functions, names.values + " ");
    editor.send(sci::kSetKeywords, 1, functions.c_str());
    editor.send(sci::kSetKeywords, 3, names.types.c_str());
}

}  // namespace korvant
