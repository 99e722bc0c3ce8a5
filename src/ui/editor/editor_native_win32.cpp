#include "ui/editor/editor_native.h"

#include <wx/frame.h>
#include <wx/iconbndl.h>
#include <wx/menu.h>
#include <wx/menuitem.h>
#include <wx/msw/wrapwin.h>

#include <algorithm>
#include <vector>

namespace korvant::ui::native {
namespace {

/// The system uses the lower four bits of these identifiers itself.
constexpr UINT kAboutItem = 16;
constexpr int kIconResource = 128;

bool isUserInput(UINT message) {
    return (message >= WM_KEYFIRST && message <= WM_KEYLAST) ||
           (message >= WM_MOUSEFIRST && message <= WM_MOUSELAST) ||
           (message >= WM_NCLBUTTONDOWN && message <= WM_NCMBUTTONDBLCLK);
}

/// Sees the system menu's own item before the toolkit does.
class SystemMenuHook {
  public:
    SystemMenuHook(HWND window, std::function<void()> chosen) : chosen_(std::move(chosen)) {
        SetPropW(window, kProperty, this);
        previous_ = reinterpret_cast<WNDPROC>(SetWindowLongPtrW(
            window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&SystemMenuHook::onMessage)));
    }

  private:
    static constexpr wchar_t kProperty[] = L"KorvantIDE.SystemMenu";

    static LRESULT CALLBACK onMessage(HWND window, UINT message, WPARAM wide, LPARAM data) {
        auto* self = static_cast<SystemMenuHook*>(GetPropW(window, kProperty));
        const WNDPROC previous = self->previous_;
        if (message == WM_SYSCOMMAND && (wide & 0xFFF0) == kAboutItem) {
            self->chosen_();
            return 0;
        }
        if (message == WM_NCDESTROY) {
            RemovePropW(window, kProperty);
            SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(previous));
            delete self;
        }
        return CallWindowProcW(previous, window, message, wide, data);
    }

    std::function<void()> chosen_;
    WNDPROC previous_ = nullptr;
};

}  // namespace

wxIconBundle editorIcons() {
    HMODULE module = nullptr;
    GetModuleHandleExW(
        GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
        reinterpret_cast<LPCWSTR>(&editorIcons), &module);
    wxIconBundle bundle;
    for (const int size : {16, 24, 32, 48}) {
        const HANDLE picture = LoadImageW(module, MAKEINTRESOURCEW(kIconResource), IMAGE_ICON, size,
                                          size, LR_DEFAULTCOLOR);
        wxIcon icon;
        if (picture && icon.CreateFromHICON(static_cast<WXHICON>(picture))) bundle.AddIcon(icon);
    }
    return bundle;
}

/// The label's own tab column; the accelerator that the toolkit would make of it is not made,
/// because the key stands in the text only.
void showMenuKey(wxMenuItem& item, const wxString& key) {
    const HMENU menu = item.GetMenu() ? static_cast<HMENU>(item.GetMenu()->GetHMenu()) : nullptr;
    if (!menu) return;
    const wxString label = item.GetItemLabel().BeforeFirst('\t') + "\t" + key;
    MENUITEMINFOW info{};
    info.cbSize = sizeof info;
    info.fMask = MIIM_STRING;
    info.dwTypeData = const_cast<wchar_t*>(label.wc_str());
    SetMenuItemInfoW(menu, static_cast<UINT>(item.GetMSWId()), FALSE, &info);
}

void addSystemMenuItem(wxFrame& frame, const wxString& label, std::function<void()> chosen) {
    const HWND window = static_cast<HWND>(frame.GetHandle());
    const HMENU menu = GetSystemMenu(window, FALSE);
    if (!menu) return;
    AppendMenuW(menu, MF_SEPARATOR, 0, nullptr);
    AppendMenuW(menu, MF_STRING, kAboutItem, label.wc_str());
    new SystemMenuHook(window, std::move(chosen));
}

/// The system keeps windows that belong to the frame above it.
void activate(wxFrame& frame) {
    frame.Raise();
}

/// The windows of the thread that were enabled, the host's among them.
struct OnlyWindow::State {
    std::vector<HWND> held;
    HWND own = nullptr;

    static BOOL CALLBACK hold(HWND window, LPARAM data) {
        auto& state = *reinterpret_cast<State*>(data);
        if (window == state.own || !IsWindowVisible(window) || !IsWindowEnabled(window))
            return TRUE;
        state.held.push_back(window);
        EnableWindow(window, FALSE);
        return TRUE;
    }
};

OnlyWindow::OnlyWindow(wxFrame& frame) : state_(std::make_unique<State>()) {
    state_->own = static_cast<HWND>(frame.GetHandle());
    EnumThreadWindows(GetCurrentThreadId(), State::hold, reinterpret_cast<LPARAM>(state_.get()));
}

OnlyWindow::~OnlyWindow() {
    for (const HWND window : state_->held)
        if (IsWindow(window)) EnableWindow(window, TRUE);
}

namespace {

/// Keys that open menus would need a loop.
bool isForPart(const UsableParts& usable, const MSG& message) {
    const auto isIn = [&](const wxWindow* part) {
        const HWND window = static_cast<HWND>(part->GetHandle());
        return message.hwnd == window || IsChild(window, message.hwnd);
    };
    if (message.message == WM_KEYDOWN || message.message == WM_KEYUP || message.message == WM_CHAR)
        return usable.keys && isIn(usable.keys) && message.wParam != VK_APPS;
    if (message.message == WM_RBUTTONDOWN || message.message == WM_RBUTTONUP) return false;
    return std::any_of(usable.clicks.begin(), usable.clicks.end(), isIn);
}

}  // namespace

BusyInput pumpWhileBusy(wxFrame& frame, const UsableParts& usable) {
    const HWND own = static_cast<HWND>(frame.GetHandle());
    BusyInput asked;
    for (MSG message; PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE);) {
        if (message.message == WM_QUIT) {
            PostQuitMessage(static_cast<int>(message.wParam));
            break;
        }
        const bool ours = message.hwnd == own || IsChild(own, message.hwnd);
        const bool isKey = message.message == WM_KEYDOWN;
        if (ours && isUserInput(message.message)) {
            const bool shift = GetKeyState(VK_SHIFT) < 0;
            const bool stop =
                isKey && (message.wParam == VK_ESCAPE || (message.wParam == VK_F5 && shift));
            const bool pause = isKey && message.wParam == VK_F6 && GetKeyState(VK_CONTROL) >= 0;
            asked.stop |= stop;
            asked.pause |= pause;
            if (stop || pause || !isForPart(usable, message)) continue;
        }
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    return asked;
}

}  // namespace korvant::ui::native
