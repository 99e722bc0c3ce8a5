// Which command a key of the editor's window means.
#pragma once

class wxKeyEvent;

namespace korvant::ui {

/// 1 for F1 and so on, whatever other keys are held but Alt, which belongs to the desktop; 0 for
/// any other key.
int functionKeyOf(const wxKeyEvent& event);

/// The command whose record names this key with Ctrl; 0 for none. Only the editor control has
/// these keys.
int controlKeyCommand(const wxKeyEvent& event);

}  // namespace korvant::ui
