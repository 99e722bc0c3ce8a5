#include "ui/console/console_keys.h"

namespace korvant::ui {
namespace {

using Kind = ConsoleKey::Kind;

struct Named {
    int code;
    Kind kind;
};

constexpr Named kNamed[] = {
    {WXK_RETURN, Kind::enter},
    {WXK_NUMPAD_ENTER, Kind::enter},
    {WXK_BACK, Kind::backspace},
    {WXK_TAB, Kind::tab},
    {WXK_NUMPAD_TAB, Kind::tab},
    {WXK_ESCAPE, Kind::escape},
    {WXK_INSERT, Kind::insert},
    {WXK_NUMPAD_INSERT, Kind::insert},
    {WXK_DELETE, Kind::remove},
    {WXK_NUMPAD_DELETE, Kind::remove},
    {WXK_LEFT, Kind::left},
    {WXK_NUMPAD_LEFT, Kind::left},
    {WXK_RIGHT, Kind::right},
    {WXK_NUMPAD_RIGHT, Kind::right},
    {WXK_UP, Kind::up},
    {WXK_NUMPAD_UP, Kind::up},
    {WXK_DOWN, Kind::down},
    {WXK_NUMPAD_DOWN, Kind::down},
    {WXK_HOME, Kind::home},
    {WXK_NUMPAD_HOME, Kind::home},
    {WXK_END, Kind::end},
    {WXK_NUMPAD_END, Kind::end},
    {WXK_PAGEUP, Kind::pageUp},
    {WXK_NUMPAD_PAGEUP, Kind::pageUp},
    {WXK_PAGEDOWN, Kind::pageDown},
    {WXK_NUMPAD_PAGEDOWN, Kind::pageDown},
};

bool isControlLetter(const wxKeyEvent& event, char letter) {
    return event.RawControlDown() && !event.AltDown() &&
           (event.GetKeyCode() == letter || event.GetKeyCode() == letter - 64);
}

}  // namespace

ConsoleShortcut consoleShortcutOf(const wxKeyEvent& event) {
    const int code = event.GetKeyCode();
    if (isControlLetter(event, 'C'))
        return event.ShiftDown() ? ConsoleShortcut::copy : ConsoleShortcut::interrupt;
    if (isControlLetter(event, 'V')) return ConsoleShortcut::paste;
    if (event.ControlDown()) {
        if (code == WXK_PAUSE || code == WXK_CANCEL) return ConsoleShortcut::interrupt;
        if (code == WXK_INSERT) return ConsoleShortcut::copy;
        if (code == WXK_HOME) return ConsoleShortcut::toStart;
        if (code == WXK_END) return ConsoleShortcut::toEnd;
    } else if (event.ShiftDown()) {
        if (code == WXK_INSERT) return ConsoleShortcut::paste;
        if (code == WXK_PAGEUP) return ConsoleShortcut::pageUp;
        if (code == WXK_PAGEDOWN) return ConsoleShortcut::pageDown;
    }
    return ConsoleShortcut::none;
}

std::optional<ConsoleKey> consoleKeyOf(const wxKeyEvent& event) {
    const int code = event.GetKeyCode();
    for (const Named& named : kNamed)
        if (named.code == code) return ConsoleKey{named.kind, 0, 0};
    if (code >= WXK_F1 && code <= WXK_F12) return ConsoleKey{Kind::function, 0, code - WXK_F1 + 1};
    const wxChar character = event.GetUnicodeKey();
    if (character == WXK_NONE) return std::nullopt;
    return ConsoleKey{Kind::character, static_cast<char32_t>(character), 0};
}

std::optional<ConsoleKey> consoleKeyOf(wxUniChar character) {
    const auto code = static_cast<char32_t>(character.GetValue());
    if (code == U'\r') return std::nullopt;
    if (code == U'\n') return ConsoleKey{Kind::enter, 0, 0};
    if (code == U'\t') return ConsoleKey{Kind::tab, 0, 0};
    if (code < 32 || code == 127) return std::nullopt;
    return ConsoleKey{Kind::character, code, 0};
}

}  // namespace korvant::ui
