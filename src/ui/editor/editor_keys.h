// Keys of the toolkit as the editor knows them.
#pragma once

#include <optional>

#include "editor/control/key_press.h"

class wxKeyEvent;

namespace korvant::ui {

/// Nothing for a key that means no command of any editor: a modifier alone, a cursor key.
std::optional<KeyPress> keyPressOf(const wxKeyEvent& event);

}  // namespace korvant::ui
