#include "ui/kit/ui_native.h"

#include <wx/font.h>
#include <wx/fontenum.h>
#include <wx/frame.h>
#include <wx/graphics.h>
#include <wx/msw/private.h>
#include <wx/msw/wrapwin.h>
#include <wx/textctrl.h>
#include <wx/window.h>

#include <algorithm>
#include <array>
#include <clocale>
#include <memory>
#include <string>
#include <vector>

namespace korvant::ui::native {
namespace {

bool takeMessage(HWND window, MSG& message) {
    return PeekMessageW(&message, window, 0, 0, PM_REMOVE) && message.message != WM_QUIT;
}

void handle(MSG& message) {
    TranslateMessage(&message);
    DispatchMessageW(&message);
}

BOOL CALLBACK pumpChild(HWND child, LPARAM) {
    for (MSG message; takeMessage(child, message);) handle(message);
    return TRUE;
}

/// Disabled for the life of a grab; properties mark those that were enabled before.
constexpr wchar_t kHeld[] = L"KorvantIDE.HeldBack";

BOOL CALLBACK holdBack(HWND window, LPARAM kept) {
    if (window == reinterpret_cast<HWND>(kept) || !IsWindowVisible(window)) return TRUE;
    if (!IsWindowEnabled(window)) return TRUE;
    SetPropW(window, kHeld, window);
    EnableWindow(window, FALSE);
    return TRUE;
}

BOOL CALLBACK letGo(HWND window, LPARAM) {
    if (RemovePropW(window, kHeld)) EnableWindow(window, TRUE);
    return TRUE;
}

BOOL CALLBACK holdForeign(HWND window, LPARAM held) {
    if (!IsWindowVisible(window) || !IsWindowEnabled(window)) return TRUE;
    if (wxFindWinFromHandle(window)) return TRUE;
    reinterpret_cast<std::vector<HWND>*>(held)->push_back(window);
    EnableWindow(window, FALSE);
    return TRUE;
}

/// What the system shows for a font.
struct Shown {
    wxString face;  ///< empty when it is one of dots
    bool fixed = false;
};

Shown shownFor(const wxFont& font) {
    const ScreenHDC screen;
    const SelectInHDC selected(screen, GetHfontOf(font));
    TEXTMETRICW measures{};
    wchar_t face[LF_FACESIZE] = L"";
    Shown shown;
    if (!GetTextMetricsW(screen, &measures)) return shown;
    shown.fixed = (measures.tmPitchAndFamily & TMPF_FIXED_PITCH) == 0;  // which means the contrary
    if ((measures.tmPitchAndFamily & TMPF_TRUETYPE) != 0 &&
        GetTextFaceW(screen, LF_FACESIZE, face) > 0)
        shown.face = face;
    return shown;
}

/// What paints texts knows fewer kinds of fonts than the system, and leaves out a text in the
/// others.
bool isPainted(const wxFont& font) {
    const std::unique_ptr<wxGraphicsContext> context(wxGraphicsContext::Create());
    if (!context) return true;
    double width = 0;
    context->SetFont(font, *wxBLACK);
    context->GetTextExtent("x", &width, nullptr);
    return width > 0;
}

}  // namespace

bool displayReachable() {
    return true;
}

/// The toolkit's window classes and pictures are this module's, beside another copy of the toolkit
/// in the host.
void keepingProcess(const std::function<void()>& start) {
    HMODULE module = nullptr;
    GetModuleHandleExW(
        GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
        reinterpret_cast<LPCWSTR>(&keepingProcess), &module);
    wxSetInstance(module);
    const char* current = std::setlocale(LC_ALL, nullptr);
    const std::string kept = current ? current : "C";
    start();
    std::setlocale(LC_ALL, kept.c_str());
}

void surviveDisplay(bool (*)()) {}

bool displayLost() {
    return false;
}

/// Any host may have windows that the toolkit does not know.
bool foreignLoopRuns() {
    return true;
}

/// Every loop of the thread serves every window of the thread here; what has to be held back is the
/// user's input into those of the host. The toolkit sees to its own.
void runInOwnLoop(const std::function<void()>& call) {
    const HWND active = GetActiveWindow();
    std::vector<HWND> held;
    EnumThreadWindows(GetCurrentThreadId(), holdForeign, reinterpret_cast<LPARAM>(&held));
    call();
    for (const HWND window : held)
        if (IsWindow(window)) EnableWindow(window, TRUE);
    const bool foreign = std::find(held.begin(), held.end(), active) != held.end();
    if (foreign && IsWindow(active) && !GetActiveWindow()) SetActiveWindow(active);
}

void drainEvents() {
    for (MSG message; PeekMessageW(&message, nullptr, WM_PAINT, WM_PAINT, PM_REMOVE);)
        handle(message);
}

void finishClosing() {
    drainEvents();
}

void settle(wxWindow&) {}

/// The system's fields have it.
void takeLongTexts(wxTextCtrl& field) {
    field.SetMaxLength(0);
}

void padLines(wxWindow&) {}

void bareField(wxWindow&) {}

/// The system forgets what is asked for before the window is shown.
void showFocus(wxWindow& topLevel) {
    topLevel.CallAfter([&topLevel] {
        SendMessageW(static_cast<HWND>(topLevel.GetHandle()), WM_CHANGEUISTATE,
                     MAKEWPARAM(UIS_CLEAR, UISF_HIDEFOCUS | UISF_HIDEACCEL), 0);
    });
}

/// The toolkit marks the button with the focus, and some systems take that back with the mark of
/// the one that had it. Buttons that are drawn by their owner have no style of their own.
void markDefault(wxWindow& button, bool marked) {
    const HWND window = static_cast<HWND>(button.GetHandle());
    const LONG type = GetWindowLongW(window, GWL_STYLE) & BS_TYPEMASK;
    const LONG wanted = marked ? BS_DEFPUSHBUTTON : BS_PUSHBUTTON;
    const bool isPush = type == BS_PUSHBUTTON || type == BS_DEFPUSHBUTTON;
    if (isPush && type != wanted)
        SendMessageW(window, BM_SETSTYLE, static_cast<WPARAM>(wanted), TRUE);
}

void pumpWindow(wxWindow& window) {
    const HWND handleOfWindow = static_cast<HWND>(window.GetHandle());
    for (MSG message; takeMessage(handleOfWindow, message);) handle(message);
    EnumChildWindows(handleOfWindow, pumpChild, 0);
}

/// They are always visible here.
void keepScrollBarsVisible(wxWindow&) {}

double textScale(const wxWindow& window) {
    return window.FromDIP(USER_DEFAULT_SCREEN_DPI);
}

void putInFront(wxWindow& window) {
    for (const wxWindow* neighbour : window.GetParent()->GetChildren()) {
        const HWND handle = static_cast<HWND>(neighbour->GetHandle());
        const LONG_PTR style = GetWindowLongPtrW(handle, GWL_STYLE);
        SetWindowLongPtrW(handle, GWL_STYLE, style | WS_CLIPSIBLINGS);
    }
    window.Raise();
}

/// A theme that a system before Windows 10 1809 does not have leaves the bars as they are.
void colourScrollBars(wxWindow& window, const wxColour&, const wxColour& edge) {
    using SetTheme = HRESULT(WINAPI*)(HWND, const wchar_t*, const wchar_t*);
    const HMODULE library = LoadLibraryW(L"uxtheme.dll");
    if (!library) return;
    const auto set = reinterpret_cast<SetTheme>(
        reinterpret_cast<void*>(GetProcAddress(library, "SetWindowTheme")));
    const bool dark = edge.IsOk() && edge.GetLuminance() < 0.5;
    if (set) set(window.GetHandle(), dark ? L"DarkMode_Explorer" : nullptr, nullptr);
    FreeLibrary(library);
}

wxFont paintable(const wxFont& font) {
    const Shown shown = shownFor(font);
    wxFont found = font;
    if (!shown.face.empty() && shown.face != font.GetFaceName()) found.SetFaceName(shown.face);
    if (!shown.face.empty() && isPainted(found)) return found;
    const std::array<const wchar_t*, 4> texts{L"Segoe UI", L"Tahoma", L"Verdana", L"Arial"},
        codes{L"Consolas", L"DejaVu Sans Mono", L"Liberation Mono", L"Courier New"};
    for (const wchar_t* other : shown.fixed ? codes : texts) {
        if (!wxFontEnumerator::IsValidFacename(other)) continue;
        found.SetFaceName(other);
        if (isPainted(found)) return found;
    }
    return font;
}

/// Only regular and bold weights are painted; what is between is a face of its own.
wxFont semibold(const wxFont& font) {
    const wxString face = font.GetFaceName() + " Semibold";
    wxFont strong = font;
    if (wxFontEnumerator::IsValidFacename(face))
        strong.SetFaceName(face);
    else
        strong.MakeBold();
    return strong;
}

wxString monospacedFace() {
    return {};
}

/// Menu bars and scroll bars of this toolkit stay light here, so a dark desktop is not followed
/// without being asked for.
bool prefersDark() {
    return false;
}

DarkWatch::DarkWatch(std::function<void()> changed) : changed_(std::move(changed)) {}

DarkWatch::~DarkWatch() = default;

void setDarkFrame(wxWindow& window, bool dark) {
    using SetAttribute = HRESULT(WINAPI*)(HWND, DWORD, const void*, DWORD);
    constexpr DWORD kDarkTitle = 20;
    const HMODULE library = LoadLibraryW(L"dwmapi.dll");
    if (!library) return;
    const auto set = reinterpret_cast<SetAttribute>(
        reinterpret_cast<void*>(GetProcAddress(library, "DwmSetWindowAttribute")));
    const BOOL value = dark;
    if (set) set(window.GetHandle(), kDarkTitle, &value, sizeof value);
    FreeLibrary(library);
}

/// The system draws it.
void colourMenuBar(wxFrame&, const wxColour&, const wxColour&) {}

PaintOver::PaintOver(wxWindow&, std::function<void(wxGraphicsContext&)> paint)
    : paint_(std::move(paint)) {}

PaintOver::~PaintOver() = default;

/// The window of a script's progress may have asked for the keyboard just before the dialog came.
bool claimKeyboard(wxWindow& window) {
    const HWND dialog = static_cast<HWND>(window.GetHandle());
    if (!IsWindowVisible(dialog)) return false;
    const HWND front = GetForegroundWindow();
    DWORD process = 0;
    if (front) GetWindowThreadProcessId(front, &process);
    const bool ofHost = process == GetCurrentProcessId() && !wxFindWinFromHandle(front);
    if (!front || ofHost) SetForegroundWindow(dialog);
    return true;
}

InputGrab::InputGrab(wxWindow& window) : window_(window) {
    EnumThreadWindows(GetCurrentThreadId(), holdBack,
                      reinterpret_cast<LPARAM>(window_.GetHandle()));
}

InputGrab::~InputGrab() {
    EnumThreadWindows(GetCurrentThreadId(), letGo, 0);
}

}  // namespace korvant::ui::native
