#include "ui/editor/editor_keys.h"

#include <wx/event.h>

#include <string_view>

#include "editor/editor_commands.h"

namespace korvant::ui {
namespace {

/// What stands behind "Ctrl+" in a label; empty for a label without.
std::string_view controlKeyName(std::string_view label) {
    constexpr std::string_view kControl = "\tCtrl+";
    const std::size_t found = label.find(kControl);
    return found == std::string_view::npos ? std::string_view()
                                           : label.substr(found + kControl.size());
}

/// The character that a key types. The plus sign is the equals sign's key on many keyboards, and
/// the number pad means the same as the keys above the letters.
int characterOf(const wxKeyEvent& event) {
    const int code = event.GetKeyCode();
    switch (code) {
        case '=':
        case WXK_NUMPAD_ADD:
            return '+';
        case WXK_NUMPAD_SUBTRACT:
            return '-';
        case WXK_NUMPAD0:
            return '0';
        default:
            return code;
    }
}

bool names(std::string_view key, int character) {
    if (key == "Space") return character == WXK_SPACE;
    return key.size() == 1 && key[0] == character;
}

}  // namespace

int functionKeyOf(const wxKeyEvent& event) {
    const int code = event.GetKeyCode();
    const bool isFunctionKey = code >= WXK_F1 && code <= WXK_F24;
    return isFunctionKey && !event.AltDown() ? code - WXK_F1 + 1 : 0;
}

int controlKeyCommand(const wxKeyEvent& event) {
    if (!event.ControlDown() || event.AltDown()) return 0;
    const int character = characterOf(event);
    if (event.ShiftDown() && character != '+') return 0;
    for (const EditorCommand& command : editorCommands())
        if (names(controlKeyName(command.label), character)) return command.id;
    return 0;
}

}  // namespace korvant::ui
