#include "ui/boxes/wx_frontend.h"

#include "ui/boxes/message_box_dialog.h"
#include "ui/boxes/progress_window.h"
#include "ui/boxes/prompt_dialogs.h"
#include "ui/kit/ui_runtime.h"

namespace korvant::ui {
namespace {

template <class Prompt, class Value>
Value valueOf(const std::string& label, const Value& initial) {
    const DialogOwner<Prompt> dialog(new Prompt(dialogParent(), label, initial));
    return dialog->ask() ? dialog->value : initial;
}

}  // namespace

int WxFrontend::messageBox(const MessageBoxRequest& request) {
    return startToolkit() ? showMessageBox(request) : fallback_.messageBox(request);
}

std::int32_t WxFrontend::promptInt(const std::string& label, std::int32_t initial) {
    return startToolkit() ? valueOf<PromptInt>(label, initial)
                          : fallback_.promptInt(label, initial);
}

float WxFrontend::promptFloat(const std::string& label, float initial) {
    return startToolkit() ? valueOf<PromptFloat>(label, initial)
                          : fallback_.promptFloat(label, initial);
}

double WxFrontend::promptDouble(const std::string& label, double initial) {
    return startToolkit() ? valueOf<PromptDouble>(label, initial)
                          : fallback_.promptDouble(label, initial);
}

std::string WxFrontend::promptString(const std::string& label, const std::string& initial) {
    return startToolkit() ? valueOf<PromptString>(label, initial)
                          : fallback_.promptString(label, initial);
}

bool WxFrontend::attended() {
    return startToolkit() || fallback_.attended();
}

std::unique_ptr<ProgressWindow> WxFrontend::makeProgressWindow() {
    if (auto window = ui::makeProgressWindow()) return window;
    return fallback_.makeProgressWindow();
}

}  // namespace korvant::ui
