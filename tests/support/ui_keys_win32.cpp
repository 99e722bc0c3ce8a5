#include <windows.h>

#include <chrono>
#include <cstdlib>
#include <functional>
#include <map>
#include <sstream>
#include <vector>

#include "base/system/wide_text_win32.h"
#include "support/ui_x_keys.h"

namespace korvant::test {
namespace {

struct Search {
    std::wstring title;
    HWND found = nullptr;
};

BOOL CALLBACK compare(HWND window, LPARAM data) {
    auto& search = *reinterpret_cast<Search*>(data);
    wchar_t title[1024];
    // Unlike the usual call this one does not wait for the thread of the window.
    const int length = InternalGetWindowText(window, title, 1024);
    if (!IsWindowVisible(window) || std::wstring(title, length) != search.title) return TRUE;
    search.found = window;
    return FALSE;
}

HWND find(const std::string& title) {
    Search search{wideOfUtf8(title)};
    EnumWindows(compare, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

bool hasKeyboard(const std::string& title) {
    const HWND window = find(title);
    return window && GetForegroundWindow() == window;
}

constexpr std::chrono::seconds kPatience{20}, kUntilTheNextTry{2};

bool await(const std::function<bool()>& condition, std::chrono::seconds patience = kPatience) {
    const auto end = std::chrono::steady_clock::now() + patience;
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end) return false;
        Sleep(2);
    }
    return true;
}

/// The names are those of another display server; the tests use a few of them. 0: none of them.
WORD keyNamed(const std::string& name) {
    static const std::map<std::string, WORD> named = {
        {"Control_L", VK_CONTROL}, {"Shift_L", VK_SHIFT}, {"Alt_L", VK_MENU},
        {"Return", VK_RETURN},     {"Up", VK_UP},         {"Left", VK_LEFT},
        {"Right", VK_RIGHT},       {"Home", VK_HOME},     {"End", VK_END},
        {"Next", VK_NEXT},         {"Prior", VK_PRIOR},   {"BackSpace", VK_BACK},
        {"Delete", VK_DELETE},     {"Escape", VK_ESCAPE}, {"Tab", VK_TAB},
        {"space", VK_SPACE},       {"Pause", VK_PAUSE},   {"Break", VK_CANCEL},
        {"Down", VK_DOWN}};
    const auto place = named.find(name);
    if (place != named.end()) return place->second;
    if (name.size() == 1)
        return static_cast<WORD>(VkKeyScanW(static_cast<wchar_t>(name.front())) & 0xFF);
    const int number = name.empty() || name.front() != 'F' ? 0 : std::atoi(name.c_str() + 1);
    return number >= 1 && number <= 24 ? static_cast<WORD>(VK_F1 + number - 1) : WORD{0};
}

INPUT stroke(WORD key, bool up) {
    INPUT input{};
    input.type = INPUT_KEYBOARD;
    input.ki.wVk = key;
    input.ki.wScan = static_cast<WORD>(MapVirtualKeyW(key, MAPVK_VK_TO_VSC));
    input.ki.dwFlags = up ? KEYEVENTF_KEYUP : 0;
    return input;
}

/// All go down in this order, and up in the other.
void pressTogether(const std::vector<WORD>& keys) {
    std::vector<INPUT> strokes;
    for (const WORD key : keys) strokes.push_back(stroke(key, false));
    for (auto key = keys.rbegin(); key != keys.rend(); ++key) strokes.push_back(stroke(*key, true));
    SendInput(static_cast<UINT>(strokes.size()), strokes.data(), sizeof(INPUT));
}

}  // namespace

bool pressInWindow(const std::string& title, const std::string& key, bool control) {
    return typeInWindow(title, {control ? "Control_L+" + key : key});
}

bool typeInWindow(const std::string& title, const std::vector<std::string>& keys) {
    for (const std::string& combination : keys) {
        if (!await([&] { return hasKeyboard(title); })) return false;
        std::vector<WORD> together;
        std::istringstream names(combination);
        for (std::string name; std::getline(names, name, '+');) {
            together.push_back(keyNamed(name));
            if (together.back() == 0) return false;
        }
        pressTogether(together);
    }
    return true;
}

void turnWheel(bool up) {
    INPUT input{};
    input.type = INPUT_MOUSE;
    input.mi.dwFlags = MOUSEEVENTF_WHEEL;
    input.mi.mouseData = static_cast<DWORD>(up ? WHEEL_DELTA : -WHEEL_DELTA);
    SendInput(1, &input, sizeof input);
}

/// A key that fell between two windows, while another one came up, is pressed again.
bool answerWindow(const std::string& title, const std::string& key) {
    if (!await([&] { return hasKeyboard(title); })) return false;
    const HWND window = find(title);
    const auto gone = [window] { return !IsWindow(window) || !IsWindowVisible(window); };
    for (int attempt = 0; attempt < 5 && !gone(); ++attempt) {
        if (!await([&] { return gone() || GetForegroundWindow() == window; })) return false;
        if (!gone()) pressTogether({keyNamed(key)});
        await(gone, kUntilTheNextTry);
    }
    return gone();
}

bool awaitWindow(const std::string& title, bool present) {
    return await([&] { return (find(title) != nullptr) == present; });
}

unsigned long windowFingerprint(const std::string& title) {
    const HWND window = find(title);
    RECT area{};
    if (!window || !GetClientRect(window, &area) || area.right == 0) return 0;
    const HDC context = GetDC(window);
    unsigned long sum = 1;
    for (int y = 0; y < area.bottom; ++y)
        for (int x = 0; x < area.right; ++x) sum = sum * 31 + GetPixel(context, x, y);
    ReleaseDC(window, context);
    return sum;
}

int distanceFromCentre(const std::string& title) {
    const HWND window = find(title);
    RECT area{};
    if (!window || !GetWindowRect(window, &area)) return -1;
    const int middle = static_cast<int>(area.left + area.right) / 2;
    return std::abs(middle - GetSystemMetrics(SM_CXSCREEN) / 2);
}

}  // namespace korvant::test
