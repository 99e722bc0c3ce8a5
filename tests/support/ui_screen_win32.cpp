#include <wx/bitmap.h>
#include <wx/dcmemory.h>
#include <wx/dcscreen.h>
#include <wx/image.h>
#include <wx/msw/wrapwin.h>
#include <wx/toplevel.h>

#include <dlgs.h>

#include "support/screen_win32.h"
#include "support/ui_driver.h"

namespace korvant::test {

void saveScreen(const std::string& path) {
    keepScreen(path);
}

/// With its frame, which shows whether it is dark.
void saveWindow(wxWindow& window, const std::string& path) {
    RECT area{};
    GetWindowRect(static_cast<HWND>(window.GetHandle()), &area);
    keepArea(path, area);
}

wxImage pictureOf(wxWindow& window) {
    const wxRect place(window.ClientToScreen(wxPoint()), window.GetClientSize());
    wxBitmap picture(place.GetSize());
    wxScreenDC screen;
    wxMemoryDC(picture).Blit(wxPoint(), place.GetSize(), &screen, place.GetPosition());
    return picture.ConvertToImage();
}

void resizeContent(wxTopLevelWindow& window, wxSize size) {
    window.SetClientSize(size);
}

/// The driver's timer only fires when nothing else waits.
bool inputIsOnItsWay() {
    return false;
}

bool pressGotLost() {
    return false;
}

bool menuIsOpen() {
    GUITHREADINFO info{};
    info.cbSize = sizeof info;
    return GetGUIThreadInfo(GetCurrentThreadId(), &info) && (info.flags & GUI_INMENUMODE) != 0;
}

/// The first key leaves the menu alone.
void leaveMenuBar() {
    for (int i = 0; i < 2; ++i) wxUIActionSimulator().Char(WXK_ESCAPE);
}

void endMenus() {
    EndMenu();
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
    const auto choose = [dialog](int list, const std::string& entry) {
        SendDlgItemMessageA(dialog, list, CB_SELECTSTRING, static_cast<WPARAM>(-1),
                            reinterpret_cast<LPARAM>(entry.c_str()));
        SendMessageW(dialog, WM_COMMAND, MAKEWPARAM(list, CBN_SELCHANGE),
                     reinterpret_cast<LPARAM>(GetDlgItem(dialog, list)));
    };
    choose(kFaces, face);
    choose(kSizes, std::to_string(points));
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
