#include <wx/frame.h>
#include <wx/msw/wrapwin.h>

#include "ui/editor/editor_ending.h"

namespace korvant::ui::native {

/// Sees the session's end before the toolkit does, which would ask the window to close.
struct EndingWatch::State {
    HWND window = nullptr;
    WNDPROC previous = nullptr;
    std::function<void()> keep;
    bool busy = false;

    static constexpr wchar_t kProperty[] = L"KorvantIDE.Ending";

    static LRESULT CALLBACK onMessage(HWND window, UINT message, WPARAM wide, LPARAM data) {
        const auto& state = *static_cast<State*>(GetPropW(window, kProperty));
        const bool ends = message == WM_QUERYENDSESSION || (message == WM_ENDSESSION && wide);
        if (ends && !state.busy) state.keep();
        return CallWindowProcW(state.previous, window, message, wide, data);
    }
};

EndingWatch::EndingWatch(wxFrame& frame, std::function<void()> keep) : state_(new State) {
    state_->window = static_cast<HWND>(frame.GetHandle());
    state_->keep = std::move(keep);
    SetPropW(state_->window, State::kProperty, state_);
    state_->previous = reinterpret_cast<WNDPROC>(SetWindowLongPtrW(
        state_->window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&State::onMessage)));
}

EndingWatch::~EndingWatch() {
    SetWindowLongPtrW(state_->window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(state_->previous));
    RemovePropW(state_->window, State::kProperty);
    delete state_;
}

void EndingWatch::setBusy(bool busy) {
    state_->busy = busy;
}

}  // namespace korvant::ui::native
