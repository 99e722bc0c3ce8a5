#include <windows.h>

#include <dlgs.h>

#include <wx/toplevel.h>

#include "support/screen_win32.h"
#include "support/ui_driver.h"

namespace korvant::test {

void saveScreen(const std::string& path) {
    keepScreen(path);
}

void saveWindow(wxWindow&, const std::string& path) {
    keepScreen(path);
}

void resizeContent(wxTopLevelWindow& window, wxSize size) {
    window.SetClientSize(size);
}

/// The driver's timer only fires when nothing else waits.
bool inputIsOnItsWay() {
    return false;
}

bool menuIsOpen() {
    GUITHREADINFO info{};
    info.cbSize = sizeof info;
    return GetGUIThreadInfo(GetCurrentThreadId(), &info) && (info.flags & GUI_INMENUMODE) != 0;
}

void giveKeyboard(wxTopLevelWindow& window) {
    SetForegroundWindow(static_cast<HWND>(window.GetHandle()));
}

bool looksDefault(wxWindow& button) {
    const LONG style = GetWindowLongW(static_cast<HWND>(button.GetHandle()), GWL_STYLE);
    return (style & BS_TYPEMASK) == BS_DEFPUSHBUTTON;
}

bool answerFontDialog(const std::string& face, int points) {
    constexpr int kFaces = cmb1, kSizes = cmb3;  // of the system's dialog
    HWND dialog = nullptr;
    while ((dialog = FindWindowExW(nullptr, dialog, L"#32770", nullptr)) != nullptr)
        if (GetDlgItem(dialog, kFaces) && GetDlgItem(dialog, kSizes)) break;
    if (!dialog) return false;
    SendDlgItemMessageA(dialog, kFaces, CB_SELECTSTRING, static_cast<WPARAM>(-1),
                        reinterpret_cast<LPARAM>(face.c_str()));
    SendMessageW(dialog, WM_COMMAND, MAKEWPARAM(kFaces, CBN_SELCHANGE),
                 reinterpret_cast<LPARAM>(GetDlgItem(dialog, kFaces)));
    SetDlgItemTextA(dialog, kSizes, std::to_string(points).c_str());
    PostMessageW(dialog, WM_COMMAND, IDOK, 0);
    return true;
}

/// Controls of the system do not complain.
void failOnComplaints() {}

bool showsFocus(wxTopLevelWindow& window) {
    const LRESULT state =
        SendMessageW(static_cast<HWND>(window.GetHandle()), WM_QUERYUISTATE, 0, 0);
    return (state & UISF_HIDEFOCUS) == 0;
}

}  // namespace korvant::test
