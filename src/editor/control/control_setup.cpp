#include "editor/control/control_setup.h"

#include <algorithm>
#include <iterator>

#include "editor/control/keyword_list.h"

namespace korvant {

namespace {

constexpr char kFont[] = "Courier New";
constexpr int kFontSize = 10;
constexpr int kStyleBits = 5, kTabWidth = 4;
constexpr int kFoldLineAfterContracted = 16;
constexpr std::uintptr_t kFolderMarkers = 0xFE000000;
constexpr int kOutputHeight = 144;
constexpr int kDwellMilliseconds = 500;
constexpr int kListedNames = 10;  // at once

struct FolderMarker {
    int marker;
    int symbol;
};
constexpr FolderMarker kFolderSymbols[] = {
    {sci::kMarkNumFolderOpen, sci::kMarkMinus},    {sci::kMarkNumFolder, sci::kMarkPlus},
    {sci::kMarkNumFolderSub, sci::kMarkEmpty},     {sci::kMarkNumFolderTail, sci::kMarkEmpty},
    {sci::kMarkNumFolderEnd, sci::kMarkEmpty},     {sci::kMarkNumFolderOpenMid, sci::kMarkEmpty},
    {sci::kMarkNumFolderMidTail, sci::kMarkEmpty},
};

/// What a lexer style of the C-like lexer shows.
enum Role { comment, keyword, literal, operatorRole, plain, kRoles };

struct StyleRole {
    int style;
    Role role;
};
constexpr StyleRole kStyleRoles[] = {
    {0, comment},       {1, comment}, {2, comment}, {3, comment}, {5, keyword},
    {4, literal},       {6, literal}, {7, literal}, {8, literal}, {9, plain},
    {10, operatorRole}, {11, plain},  {16, plain},
};

struct SchemeColours {
    std::intptr_t defaultFore, back, brace;
    std::intptr_t roles[kRoles];
    std::intptr_t caret, selectionFore, selectionBack, caretLine;
    std::intptr_t outputFore;
};

constexpr SchemeColours kLight = {
    sci::rgb(0, 0, 0),
    sci::rgb(255, 255, 255),
    sci::rgb(200, 200, 255),
    {sci::rgb(0, 100, 0), sci::rgb(0, 0, 255), sci::rgb(255, 0, 0), sci::rgb(0, 0, 255),
     sci::rgb(0, 0, 0)},
    sci::rgb(0, 0, 0),
    sci::rgb(255, 255, 255),
    sci::rgb(0, 0, 255),
    sci::rgb(232, 232, 255),
    sci::rgb(0, 0, 0),
};
constexpr SchemeColours kBlack = {
    sci::rgb(150, 150, 150),
    sci::rgb(0, 0, 0),
    sci::rgb(255, 255, 255),
    {sci::rgb(0, 255, 0), sci::rgb(200, 200, 255), sci::rgb(255, 150, 150), sci::rgb(200, 200, 255),
     sci::rgb(255, 255, 255)},
    sci::rgb(255, 255, 255),
    sci::rgb(0, 0, 0),
    sci::rgb(200, 200, 255),
    sci::rgb(80, 80, 80),
    sci::rgb(255, 255, 255),
};

void setFont(const TextControl& control, int style) {
    control.send(sci::kStyleSetFont, static_cast<std::uintptr_t>(style), kFont);
    control.send(sci::kStyleSetSize, static_cast<std::uintptr_t>(style), kFontSize);
}

void setColours(const TextControl& control, int style, std::intptr_t fore, std::intptr_t back) {
    control.send(sci::kStyleSetFore, static_cast<std::uintptr_t>(style), fore);
    control.send(sci::kStyleSetBack, static_cast<std::uintptr_t>(style), back);
}

void colourSelection(const TextControl& control, const SchemeColours& colours) {
    control.send(sci::kSetSelFore, 1, colours.selectionFore);
    control.send(sci::kSetSelBack, 1, colours.selectionBack);
}

void colourEditor(const TextControl& editor, const SchemeColours& colours) {
    setFont(editor, sci::kStyleDefault);
    setColours(editor, sci::kStyleDefault, colours.defaultFore, colours.back);
    setFont(editor, sci::kStyleBraceLight);
    setColours(editor, sci::kStyleBraceLight, colours.brace, colours.back);
    editor.send(sci::kStyleSetFore, sci::kStyleLineNumber, sci::rgb(0, 0, 0));
    for (const StyleRole& row : kStyleRoles)
        setColours(editor, row.style, colours.roles[row.role], colours.back);
    editor.send(sci::kSetCaretFore, static_cast<std::uintptr_t>(colours.caret));
    colourSelection(editor, colours);
    editor.send(sci::kSetCaretLineBack, static_cast<std::uintptr_t>(colours.caretLine));
    editor.send(sci::kSetCaretLineVisible, 1);
}

void colourOutput(const TextControl& output, const SchemeColours& colours) {
    setColours(output, sci::kStyleDefault, colours.outputFore, colours.back);
    output.send(sci::kStyleClearAll);
    colourSelection(output, colours);
}

void setFoldProperties(const TextControl& editor) {
    for (const char* key : {"fold", "fold.comment"})
        editor.send(sci::kSetProperty, reinterpret_cast<std::uintptr_t>(key), "1");
}

/// Beside the text and over it.
struct Surroundings {
    std::intptr_t numbers, numberMargin, foldMargin, outputMargin;
    std::intptr_t tip, tipBack, tipCurrent;
};
constexpr Surroundings kLightSurroundings = {
    sci::rgb(0, 0, 0),    sci::rgb(240, 240, 240), sci::rgb(248, 248, 248), sci::rgb(240, 240, 240),
    sci::rgb(64, 64, 64), sci::rgb(255, 255, 255), sci::rgb(0, 0, 255),
};
constexpr Surroundings kBlackSurroundings = {
    sci::rgb(150, 150, 150), sci::rgb(32, 32, 32), sci::rgb(16, 16, 16),    sci::rgb(64, 64, 64),
    sci::rgb(220, 220, 220), sci::rgb(48, 48, 48), sci::rgb(200, 200, 255),
};

}  // namespace

int decimalDigits(int value) {
    int digits = 0;
    for (; value > 0; value /= 10) ++digits;
    return digits;
}

void setUpEditorControl(const TextControl& editor) {
    editor.send(sci::kSetLexer, sci::kLexerCpp);
    editor.send(sci::kSetStyleBits, kStyleBits);
    editor.send(sci::kSetTabWidth, kTabWidth);
    editor.send(sci::kSetKeywords, 0, kKeywordList);
    editor.send(sci::kSetIndentationGuides, 1);
    setFoldProperties(editor);
    editor.send(sci::kSetFoldFlags, kFoldLineAfterContracted);
    editor.send(sci::kSetMarginMaskN, kFoldMargin, static_cast<std::intptr_t>(kFolderMarkers));
    editor.send(sci::kSetMarginSensitiveN, kFoldMargin, 1);
    editor.send(sci::kSetModEventMask, sci::kModInsertText | sci::kModDeleteText);
    for (const FolderMarker& row : kFolderSymbols)
        editor.send(sci::kMarkerDefine, static_cast<std::uintptr_t>(row.marker), row.symbol);
    editor.send(sci::kConvertEols, sci::kEolLf);
    editor.send(sci::kSetEolMode, sci::kEolLf);
}

void setUpFurtherText(const TextControl& editor) {
    editor.send(sci::kSetCodePage, sci::kCodePageUtf8);
    editor.send(sci::kSetLexer, sci::kLexerCpp);
    editor.send(sci::kSetTabWidth, kTabWidth);
    editor.send(sci::kSetKeywords, 0, kKeywordList);
    setFoldProperties(editor);
    editor.send(sci::kSetEolMode, sci::kEolLf);
}

void setUpOutputControl(const TextControl& output) {
    output.send(sci::kSetStyleBits, kStyleBits);
    output.send(sci::kSetTabWidth, kTabWidth);
    output.send(sci::kStyleSetFont, sci::kStyleDefault, kFont);
}

void setUpConveniences(const TextControl& editor) {
    editor.send(sci::kSetMarginSensitiveN, kBookmarkMargin, 1);
    editor.send(sci::kSetMouseDwellTime, kDwellMilliseconds);
    editor.send(sci::kAutoCSetMaxHeight, kListedNames);
    editor.send(sci::kAutoCSetIgnoreCase, 1);
    editor.send(sci::kAutoCSetOrder, sci::kOrderPerformSort);
    setFont(editor, sci::kStyleLineNumber);
    for (const StyleRole& row : kStyleRoles) setFont(editor, row.style);
}

void wrapOutput(const TextControl& output) {
    output.send(sci::kSetWrapMode, sci::kWrapWords);
}

void applyScheme(const TextControl& editor, const TextControl& output, ColourScheme scheme) {
    const SchemeColours& colours = scheme == ColourScheme::light ? kLight : kBlack;
    colourEditor(editor, colours);
    colourOutput(output, colours);
}

void colourMargins(const TextControl& editor, const TextControl& output, ColourScheme scheme) {
    const Surroundings& colours =
        scheme == ColourScheme::light ? kLightSurroundings : kBlackSurroundings;
    const auto colour = [](std::intptr_t value) { return static_cast<std::uintptr_t>(value); };
    setColours(editor, sci::kStyleLineNumber, colours.numbers, colours.numberMargin);
    editor.send(sci::kSetFoldMarginColour, 1, colours.foldMargin);
    editor.send(sci::kSetFoldMarginHiColour, 1, colours.foldMargin);
    editor.send(sci::kCallTipSetFore, colour(colours.tip));
    editor.send(sci::kCallTipSetBack, colour(colours.tipBack));
    editor.send(sci::kCallTipSetForeHlt, colour(colours.tipCurrent));
    output.send(sci::kStyleSetBack, sci::kStyleLineNumber, colours.outputMargin);
}

int lineNumberWidth(const TextControl& editor) {
    const int digit = static_cast<int>(editor.send(sci::kTextWidth, sci::kStyleLineNumber, "9"));
    return digit * (decimalDigits(editor.lineCount()) + 2);
}

EditorLayout layOut(int clientWidth, int clientHeight) {
    const int split = std::max(clientHeight - kOutputHeight, 0);
    return {{0, 0, clientWidth, split}, {0, split, clientWidth, kOutputHeight}};
}

}  // namespace korvant
