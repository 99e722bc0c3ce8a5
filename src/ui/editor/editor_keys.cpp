#include "ui/editor/editor_keys.h"

#include <wx/event.h>

namespace korvant::ui {
namespace {

constexpr int kLastAscii = 126;

/// The plus sign is the equals sign's key on many keyboards, and the number pad means the same as
/// the keys above the letters.
int codeOf(int code) {
    if (code >= WXK_F1 && code <= WXK_F24) return functionKeyPress(code - WXK_F1 + 1).code;
    switch (code) {
        case '=':
        case WXK_NUMPAD_ADD:
            return '+';
        case WXK_NUMPAD_SUBTRACT:
            return '-';
        case WXK_NUMPAD_DIVIDE:
            return '/';
        case WXK_NUMPAD0:
            return '0';
        case WXK_RETURN:
        case WXK_NUMPAD_ENTER:
            return KeyPress::kEnter;
        case WXK_TAB:
            return KeyPress::kTab;
        case WXK_UP:
            return KeyPress::kUp;
        case WXK_DOWN:
            return KeyPress::kDown;
        case WXK_ESCAPE:
            return KeyPress::kEscape;
        case WXK_LEFT:
            return KeyPress::kLeft;
        case WXK_RIGHT:
            return KeyPress::kRight;
        case WXK_PAGEUP:
            return KeyPress::kPageUp;
        case WXK_PAGEDOWN:
            return KeyPress::kPageDown;
        default:
            return code >= ' ' && code <= kLastAscii ? code : 0;
    }
}

}  // namespace

std::optional<KeyPress> keyPressOf(const wxKeyEvent& event) {
    KeyPress key{codeOf(event.GetKeyCode()), event.ControlDown(), event.ShiftDown(),
                 event.AltDown()};
    // Where the equals sign's key is meant it takes Shift to type a plus.
    if (key.code == '+') key.shift = false;
    return key.code == 0 ? std::nullopt : std::optional(key);
}

}  // namespace korvant::ui
