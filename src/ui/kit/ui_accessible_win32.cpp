// What readers of the screen are told. The toolkit was built without the interface that they ask;
// the system keeps notes beside windows instead.
#include <wx/msw/wrapwin.h>
#include <wx/textctrl.h>
#include <wx/window.h>

#include <oleacc.h>

#include "ui/kit/ui_native.h"

namespace korvant::ui::native {
namespace {

constexpr GUID kService = {
    0xB5F8350B, 0x0548, 0x48B1, {0xA6, 0xEE, 0x88, 0xBD, 0x00, 0xB4, 0xA5, 0xE7}};
constexpr GUID kServiceInterface = {
    0x6E26E776, 0x04F0, 0x495D, {0x80, 0xE4, 0x33, 0x30, 0x35, 0x2E, 0x31, 0x69}};
constexpr MSAAPROPID kName = {
    0x608D3DF8, 0x8128, 0x4AA7, {0xA4, 0x28, 0xF5, 0x5E, 0x49, 0x26, 0x72, 0x91}};
constexpr MSAAPROPID kRole = {
    0xCB905FF2, 0x7BD1, 0x4C05, {0xB3, 0xC8, 0xE6, 0xC2, 0x41, 0x36, 0x4D, 0x70}};

constexpr wchar_t kNoted[] = L"KorvantIDE.Noted";

/// Null where there is none. Never released: windows are noted to their end.
IAccPropServices* notes() {
    static IAccPropServices* const service = [] {
        void* made = nullptr;
        CoCreateInstance(kService, nullptr, CLSCTX_INPROC_SERVER, kServiceInterface, &made);
        return static_cast<IAccPropServices*>(made);
    }();
    return service;
}

/// What is noted goes with the window, not with the next one of its number.
void forgetWith(wxWindow& window) {
    const HWND handle = static_cast<HWND>(window.GetHandle());
    if (GetPropW(handle, kNoted) || !SetPropW(handle, kNoted, handle)) return;
    window.Bind(wxEVT_DESTROY, [&window, handle](wxWindowDestroyEvent& event) {
        event.Skip();
        if (event.GetWindow() != &window) return;
        const MSAAPROPID all[] = {kName, kRole};
        notes()->ClearHwndProps(handle, static_cast<DWORD>(OBJID_CLIENT), CHILDID_SELF, all, 2);
        RemovePropW(handle, kNoted);
    });
}

}  // namespace

/// The text of a painted window is its name for who asks for no notes; that of a field is what the
/// user writes.
void setAccessibleName(wxWindow& window, const wxString& name) {
    const HWND handle = static_cast<HWND>(window.GetHandle());
    if (!dynamic_cast<wxTextEntry*>(&window)) SetWindowTextW(handle, name.wc_str());
    if (!notes()) return;
    notes()->SetHwndPropStr(handle, static_cast<DWORD>(OBJID_CLIENT), CHILDID_SELF, kName,
                            name.wc_str());
    forgetWith(window);
    NotifyWinEvent(EVENT_OBJECT_NAMECHANGE, handle, OBJID_CLIENT, CHILDID_SELF);
}

void setAccessibleRole(wxWindow& window, AccessibleRole role) {
    static constexpr LONG kRoles[] = {
        ROLE_SYSTEM_PUSHBUTTON, ROLE_SYSTEM_CHECKBUTTON, ROLE_SYSTEM_LIST,      ROLE_SYSTEM_OUTLINE,
        ROLE_SYSTEM_TOOLBAR,    ROLE_SYSTEM_PAGETABLIST, ROLE_SYSTEM_STATUSBAR, ROLE_SYSTEM_PANE};
    if (!notes()) return;
    VARIANT value{};
    value.vt = VT_I4;
    value.lVal = kRoles[static_cast<int>(role)];
    notes()->SetHwndProp(static_cast<HWND>(window.GetHandle()), static_cast<DWORD>(OBJID_CLIENT),
                         CHILDID_SELF, kRole, value);
    forgetWith(window);
}

}  // namespace korvant::ui::native
