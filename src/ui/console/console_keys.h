// Keys of the toolkit, as the console window takes them.
#pragma once

#include <wx/event.h>

#include <optional>

#include "host/terminal/console_line.h"

namespace korvant::ui {

enum class ConsoleShortcut { none, interrupt, copy, paste, pageUp, pageDown, toStart, toEnd };

/// What the window itself does with a key.
ConsoleShortcut consoleShortcutOf(const wxKeyEvent& event);
/// What the script gets of a key; nothing for a modifier alone.
std::optional<ConsoleKey> consoleKeyOf(const wxKeyEvent& event);
/// A pasted character; nothing for a carriage return.
std::optional<ConsoleKey> consoleKeyOf(wxUniChar character);

}  // namespace korvant::ui
