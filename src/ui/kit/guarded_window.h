// Windows whose handlers keep to themselves what they throw.
#pragma once

#include <wx/button.h>

#include <exception>
#include <functional>
#include <utility>

namespace korvant::ui {

/// Runs what must not throw into the toolkit's own code. False when it threw.
template <class Action>
bool guarded(Action&& action) noexcept {
    try {
        action();
        return true;
    } catch (const std::exception&) {
        return false;
    }
}

/// Inside a host of the same toolkit the host's application object would be asked what to do about
/// an exception in a handler. Here the event counts as handled and the window goes on. Covers what
/// is bound to this window and the command events that rise to it; a handler is to be bound here
/// and not to a stock control.
template <class Window>
class Guarded : public Window {
  public:
    using Window::Window;

    /// `action` runs when the button, which stands in this window, is pressed.
    void onPress(const wxButton& button, std::function<void()> action) {
        this->Bind(
            wxEVT_BUTTON, [run = std::move(action)](wxCommandEvent&) { run(); }, button.GetId());
    }

    bool ProcessEvent(wxEvent& event) override {
        try {
            return Window::ProcessEvent(event);
        } catch (const std::exception&) {
            return true;
        }
    }
};

}  // namespace korvant::ui
