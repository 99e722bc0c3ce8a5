#include "ui/kit/ui_runtime.h"

#include <wx/app.h>
#include <wx/dialog.h>
#include <wx/display.h>
#include <wx/evtloop.h>
#include <wx/init.h>
#include <wx/log.h>
#include <wx/module.h>
#include <wx/toplevel.h>

#include <algorithm>
#include <atomic>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <utility>

#include "ui/boxes/progress_window.h"
#include "ui/kit/keys_once.h"
#include "ui/kit/text_conversion.h"
#include "ui/kit/theme.h"
#include "ui/kit/toolkit_asserts.h"
#include "ui/kit/ui_native.h"

namespace korvant::ui {

const char kModuleName[] = "KorvantIDE";
const char kCompanyName[] = "ZVK-Korvant";

namespace {

constexpr int kLooks = 40;
constexpr int kBetweenLooks = 25;  ///< milliseconds

struct Runtime {
    ApplicationFactory factory = nullptr;
    bool owned = false;
    bool joined = false;  ///< the host's toolkit has all parts that the windows need
    bool styleKnown = false;
    bool told = false;
    int depth = 0;
    LoopGuard* innermost = nullptr;
    KeyboardClaim* claim = nullptr;  ///< of the dialog in front
};

/// Never destroyed, so that nothing of it runs at exit.
Runtime& runtime() {
    static Runtime* const instance = new Runtime;
    return *instance;
}

std::atomic<int> modalCalls{0};

wxApp* makeApplication() {
    const auto factory = runtime().factory;
    return factory ? factory() : new wxApp;
}

/// The toolkit takes its program's name from the first argument and keeps the pointers.
bool enterToolkit() {
    static wxChar name[] = wxT("KorvantIDE");
    static wxChar* arguments[] = {name, nullptr};
    static int count = 1;
    count = 1;
    return wxEntryStart(count, arguments);
}

/// An application that ends with its last window would end with the first dialog here.
bool startOwnApplication() {
    const HeldAsserts held;
    wxApp::SetInstance(makeApplication());
    bool started = false;
    native::keepingProcess([&] {
        const wxLogNull silence;
        started = enterToolkit() && wxTheApp->CallOnInit();
    });
    if (!started) return false;
    if (wxApp* application = dynamic_cast<wxApp*>(wxTheApp)) {
        application->SetExitOnFrameDelete(false);
        application->SetAppName(kModuleName);
        application->SetVendorName(kCompanyName);
    }
    return true;
}

/// A host without a loop of the toolkit's would not take closed windows down.
void settle() {
    if (!ownsApplication() || !toolkitUsable() || wxEventLoopBase::GetActive()) return;
    wxTheApp->ProcessPendingEvents();
    wxTheApp->ProcessIdle();
    native::drainEvents();
}

std::uint32_t rgbOf(const wxColour& colour) {
    return (colour.Red() << 16 | colour.Green() << 8 | colour.Blue()) & 0xFFFFFFU;
}

/// The progress thread cannot ask the toolkit; it is told once.
void tellProgressStyle() {
    if (runtime().styleKnown) return;
    runtime().styleKnown = true;
    const Theme theme = currentTheme();
    const wxFont font = dialogFont();
    setProgressStyle({rgbOf(theme.window), rgbOf(theme.text), toUtf8(font.GetFaceName()),
                      font.GetFractionalPointSize(),
                      std::max(1, static_cast<int>(std::lround(wxDisplay().GetScaleFactor())))});
}

/// The list of the toolkit's parts that are set up, which only they can see.
class KnownModules : public wxModule {
  public:
    static bool hold(const wxClassInfo* part) {
        for (wxModule* known : ms_modules)
            if (known->GetClassInfo() == part) return true;
        return false;
    }
};

/// A host of the same toolkit has set up the parts of it that were loaded then; those that came
/// with this module have not been. They are never taken down: the module stays loaded.
void setUpLateParts() {
    for (auto part = wxClassInfo::begin_classinfo(); part != wxClassInfo::end_classinfo(); ++part) {
        const wxClassInfo* info = *part;
        if (!info->IsKindOf(wxCLASSINFO(wxModule)) || KnownModules::hold(info)) continue;
        if (auto* made = dynamic_cast<wxModule*>(info->CreateObject())) made->Init();
    }
}

bool joinHost() {
    if (!runtime().joined && !runtime().owned) setUpLateParts();
    runtime().joined = true;
    tellProgressStyle();
    return true;
}

bool isShown(wxWindow* window) {
    return window && window->IsShownOnScreen();
}

}  // namespace

bool endLoops() {
    for (LoopGuard* guard = runtime().innermost; guard; guard = guard->previous_)
        if (!std::exchange(guard->told_, true)) guard->end_();
    if (wxEventLoopBase* loop = wxEventLoopBase::GetActive(); loop && loop->IsRunning())
        loop->ScheduleExit();
    return runtime().innermost != nullptr;
}

void setApplicationFactory(ApplicationFactory factory) {
    runtime().factory = factory;
}

bool startToolkit() {
    Runtime& self = runtime();
    if (wxTheApp) {
        hearKeysOnce();
        return toolkitUsable() && joinHost();
    }
    if (!native::displayReachable() || !startOwnApplication()) return false;
    self.owned = true;
    hearKeysOnce();
    native::surviveDisplay(endLoops);
    tellProgressStyle();
    return true;
}

bool toolkitUsable() {
    return wxTheApp && wxTheApp->IsGUI() && !native::displayLost();
}

bool ownsApplication() {
    return runtime().owned;
}

bool dialogOpen() noexcept {
    return modalCalls > 0;
}

void runModal(const std::function<void()>& modalCall) {
    const HeldAsserts held;
    ++modalCalls;
    if (native::foreignLoopRuns())
        native::runInOwnLoop(modalCall);
    else
        modalCall();
    --modalCalls;
    native::finishClosing();
    settle();
}

wxWindow* dialogParent() {
    wxWindow* active = wxGetTopLevelParent(wxGetActiveWindow());
    if (isShown(active)) return active;
    wxWindow* main = wxTheApp ? wxTheApp->GetTopWindow() : nullptr;
    return isShown(main) ? main : nullptr;
}

KeyboardClaim::KeyboardClaim(wxWindow& dialog)
    : dialog_(dialog), previous_(std::exchange(runtime().claim, this)) {
    begin();
}

KeyboardClaim::~KeyboardClaim() {
    runtime().claim = previous_;
    if (previous_ && toolkitUsable()) previous_->begin();
}

void KeyboardClaim::begin() {
    looksLeft_ = kLooks;
    Start(kBetweenLooks);
}

void KeyboardClaim::Notify() {
    if (toolkitUsable() && !native::claimKeyboard(dialog_)) return;
    if (--looksLeft_ <= 0) Stop();
}

int showModal(wxDialog& dialog) {
    const KeyboardClaim claim(dialog);
    return dialog.ShowModal();
}

void DialogDeleter::operator()(wxWindow* dialog) const {
    if (toolkitUsable()) delete dialog;
}

LoopGuard::LoopGuard(std::function<void()> end)
    : end_(std::move(end)), previous_(runtime().innermost) {
    runtime().innermost = this;
}

LoopGuard::~LoopGuard() {
    runtime().innermost = previous_;
}

void sayNoDisplay() {
    if (runtime().told) return;
    runtime().told = true;
    std::fputs("korvantide: no display; windows are answered as if they had been closed\n", stderr);
}

void switchUi(bool enter) {
    Runtime& self = runtime();
    if (enter)
        ++self.depth;
    else if (self.depth > 0 && --self.depth == 0)
        settle();
}

}  // namespace korvant::ui
