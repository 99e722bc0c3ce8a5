// How the two controls of the editor are set up, and how they are coloured and laid out.
#pragma once

#include "editor/control/text_control.h"

namespace korvant {

enum class ColourScheme { light, black };

/// Markers and margins by number.
inline constexpr int kBreakpointMarker = 0;
/// Beside it: over a breakpoint with a condition, and on breakpoints while marker 0 is an arrow.
inline constexpr int kConditionMarker = 1, kWaitingMarker = 9;
inline constexpr int kNumberMargin = 0, kBookmarkMargin = 1, kFoldMargin = 2;
inline constexpr int kMarkMarginWidth = 16;  ///< pixels, of margins 1 and 2

void setUpEditorControl(const TextControl& editor);
/// What belongs to a text and not to the control: for each text beside the first.
void setUpFurtherText(const TextControl& editor);
void setUpOutputControl(const TextControl& output);
/// What the editor offers beyond its first set-up: margin clicks, tips at rest, completion, and
/// the fixed font on every style, which some platforms do not inherit.
void setUpConveniences(const TextControl& editor);
/// Its messages are longer than a small window is wide.
void wrapOutput(const TextControl& output);

void applyScheme(const TextControl& editor, const TextControl& output, ColourScheme scheme);
/// The margins beside the text and the tips over it, whose colours the schemes leave to the
/// desktop: under a dark theme the black line numbers could not be read. To be called after every
/// applyScheme().
void colourMargins(const TextControl& editor, const TextControl& output, ColourScheme scheme);

/// Of a number above 0; 0 has none.
int decimalDigits(int value);
/// Pixels that the digits of the last line's number and two more take.
int lineNumberWidth(const TextControl& editor);

struct Rectangle {
    int x = 0, y = 0, width = 0, height = 0;
};
struct EditorLayout {
    Rectangle editor;
    Rectangle output;
};
/// The output control takes the bottom 144 pixels, the editor control the rest.
EditorLayout layOut(int clientWidth, int clientHeight);

}  // namespace korvant
