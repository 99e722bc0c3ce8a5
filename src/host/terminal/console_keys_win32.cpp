#include "host/terminal/console_keys_win32.h"

namespace korvant {
namespace {

using Kind = ConsoleKey::Kind;

constexpr DWORD kPollMilliseconds = 50;

struct Named {
    WORD key;
    Kind kind;
};

constexpr Named kNamed[] = {
    {VK_RETURN, Kind::enter},  {VK_BACK, Kind::backspace}, {VK_TAB, Kind::tab},
    {VK_ESCAPE, Kind::escape}, {VK_INSERT, Kind::insert},  {VK_DELETE, Kind::remove},
    {VK_LEFT, Kind::left},     {VK_RIGHT, Kind::right},    {VK_UP, Kind::up},
    {VK_DOWN, Kind::down},     {VK_HOME, Kind::home},      {VK_END, Kind::end},
    {VK_PRIOR, Kind::pageUp},  {VK_NEXT, Kind::pageDown}};

}  // namespace

int awaitConsoleEvent(HANDLE input, StopQuery shouldStop, INPUT_RECORD& record) {
    for (;;) {
        if (shouldStop && shouldStop()) return ByteSource::kStopped;
        const DWORD waited = WaitForSingleObject(input, kPollMilliseconds);
        if (waited == WAIT_FAILED) return ByteSource::kEndOfInput;
        if (waited != WAIT_OBJECT_0) continue;
        DWORD count = 0;
        if (!ReadConsoleInputW(input, &record, 1, &count)) return ByteSource::kEndOfInput;
        if (count == 1) return 0;
    }
}

wchar_t characterOf(const INPUT_RECORD& record) {
    const KEY_EVENT_RECORD& key = record.Event.KeyEvent;
    if (record.EventType != KEY_EVENT) return 0;
    // A character that was typed as a number arrives when Alt goes up.
    const bool counts = key.bKeyDown || key.wVirtualKeyCode == VK_MENU;
    return counts ? key.uChar.UnicodeChar : L'\0';
}

std::optional<ConsoleKey> consoleKeyOf(const INPUT_RECORD& record) {
    if (record.EventType != KEY_EVENT) return std::nullopt;
    const KEY_EVENT_RECORD& key = record.Event.KeyEvent;
    for (const Named& named : kNamed)
        if (key.bKeyDown && named.key == key.wVirtualKeyCode) return ConsoleKey{named.kind, 0, 0};
    if (key.bKeyDown && key.wVirtualKeyCode >= VK_F1 && key.wVirtualKeyCode <= VK_F12)
        return ConsoleKey{Kind::function, 0, key.wVirtualKeyCode - VK_F1 + 1};
    const wchar_t character = characterOf(record);
    if (character == 0) return std::nullopt;
    return ConsoleKey{Kind::character, static_cast<char32_t>(character), 0};
}

}  // namespace korvant
