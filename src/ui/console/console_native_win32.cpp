#include "ui/console/console_native.h"

#include <wx/msw/wrapwin.h>
#include <wx/window.h>

namespace korvant::ui::native {

bool isViewable(wxWindow& window) {
    return IsWindowVisible(static_cast<HWND>(window.GetHandle())) != 0;
}

void awaitDisplay(int milliseconds) {
    MsgWaitForMultipleObjects(0, nullptr, FALSE, static_cast<DWORD>(milliseconds), QS_ALLINPUT);
}

void paintWindow(wxWindow& window) {
    RedrawWindow(static_cast<HWND>(window.GetHandle()), nullptr, nullptr,
                 RDW_UPDATENOW | RDW_ALLCHILDREN);
}

/// Keys belong to the thread of the window that has them.
std::unique_ptr<InterruptKeys> listenForInterrupt(wxWindow&, void (*)() noexcept) {
    return nullptr;
}

}  // namespace korvant::ui::native
