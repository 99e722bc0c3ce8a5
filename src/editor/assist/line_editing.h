// Whole lines while somebody types: indentation and comments.
#pragma once

#include "editor/control/text_control.h"

namespace korvant {

/// What a typed character does to the line's indentation: a new line begins like the one above, one
/// step deeper behind an open brace; a closing brace that is first in its line goes back to where
/// the open one's line begins.
void indentAfter(const TextControl& editor, int character);

/// Makes comments of the lines that the selection touches; where all of them are comments already,
/// makes them code again. Blank lines stay as they are. One step of undo.
void commentLines(const TextControl& editor);

}  // namespace korvant
