#include "support/ui_driver.h"

#include <gtest/gtest.h>
#include <wx/app.h>
#include <wx/dialog.h>
#include <wx/evtloop.h>
#include <wx/toplevel.h>

#include <cstdlib>
#include <cstring>
#include <typeinfo>
#include <utility>

#include "support/ui_recent.h"
#include "ui/kit/toolkit_asserts.h"
#include "ui/kit/ui_runtime.h"

namespace korvant::test {
namespace {

constexpr int kTickMs = 4;
/// What a step has sent arrives before the next one; windows that never come to rest get this long.
constexpr std::chrono::seconds kSettling{1};

/// Begins anew each time: a timer that is being told is not told again by the loop of a window that
/// opens meanwhile.
class Ticker : public wxTimer {
  public:
    explicit Ticker(std::function<void()> tick) : tick_(std::move(tick)) { StartOnce(kTickMs); }
    void Notify() override {
        StartOnce(kTickMs);
        tick_();
    }

  private:
    std::function<void()> tick_;
};

std::string openWindows() {
    std::string list;
    for (wxWindow* window : wxTopLevelWindows) {
        auto* top = dynamic_cast<wxTopLevelWindow*>(window);
        if (!top || !top->IsShown()) continue;
        list += " \"" + std::string(top->GetTitle().utf8_str()) + "\"";
        if (top->IsActive()) list += "*";
    }
    return list.empty() ? " none" : list;
}

std::string keyboardOwner() {
    const wxWindow* const focus = wxWindow::FindFocus();
    if (!focus) return "nothing";
    const char* const type = typeid(*focus).name();
    return std::string(type + std::strspn(type, "0123456789")) + " \"" +
           std::string(focus->GetName().utf8_str()) + "\"";
}

/// One that is worked by hand cannot be told to end.
struct EventLoop : wxEventLoopBase {
    static bool runsItself(const wxEventLoopBase& loop) {
        return (loop.*&EventLoop::IsInsideRun)();
    }
};

void closeEverything() {
    endMenus();
    for (wxWindow* window : wxTopLevelWindows) {
        auto* dialog = dynamic_cast<wxDialog*>(window);
        if (dialog && dialog->IsModal()) dialog->EndModal(wxID_CANCEL);
    }
    if (auto* loop = wxEventLoopBase::GetActive(); loop && EventLoop::runsItself(*loop))
        loop->ScheduleExit();
}

}  // namespace

wxTopLevelWindow* findWindow(const wxString& title) {
    for (wxWindow* window : wxTopLevelWindows) {
        auto* top = dynamic_cast<wxTopLevelWindow*>(window);
        if (top && top->IsShownOnScreen() && top->GetTitle() == title) return top;
    }
    return nullptr;
}

wxTopLevelWindow* findActive(const wxString& title) {
    wxTopLevelWindow* top = findWindow(title);
    return top && top->IsActive() ? top : nullptr;
}

UiDriver::UiDriver() {
    if (!ui::startToolkit()) {
        ADD_FAILURE() << "no display";
        failed_ = true;
        return;
    }
    failOnComplaints();
    ui::setAssertListener([](const char* what) { ADD_FAILURE() << what; });
    waitingSince_ = std::chrono::steady_clock::now();
    recent_ = std::make_unique<RecentEvents>();
    timer_ = std::make_unique<Ticker>([this] { step(); });
}

UiDriver::~UiDriver() = default;

UiDriver& UiDriver::when(const std::string& what, Condition ready, Action act) {
    steps_.push_back({what, std::move(ready), std::move(act)});
    return *this;
}

UiDriver& UiDriver::run(Action act) {
    return when(
        "its turn", [] { return true; }, std::move(act));
}

UiDriver& UiDriver::window(const wxString& title) {
    return when("window \"" + std::string(title.utf8_str()) + "\"",
                [title] { return findActive(title) != nullptr && wxWindow::FindFocus(); });
}

UiDriver& UiDriver::gone(const wxString& title) {
    return when("end of window \"" + std::string(title.utf8_str()) + "\"",
                [title] { return findWindow(title) == nullptr; });
}

UiDriver& UiDriver::key(int code, int modifiers) {
    return keyStep("key " + std::to_string(code),
                   [code, modifiers] { wxUIActionSimulator().Char(code, modifiers); });
}

UiDriver& UiDriver::type(const std::string& text) {
    const auto hand = std::make_shared<std::unique_ptr<wxUIActionSimulator>>();
    for (const char letter : text)
        keyStep(std::string("letter ") + letter, [letter, hand] {
            if (!*hand) *hand = std::make_unique<wxUIActionSimulator>();
            (*hand)->Text(std::string(1, letter).c_str());
        });
    return *this;
}

UiDriver& UiDriver::keyStep(const std::string& what, Action press) {
    steps_.push_back({what, [] { return true; }, std::move(press), true});
    return *this;
}

UiDriver& UiDriver::click(std::function<wxWindow*()> target, int button) {
    return when(
        "something to click", [target] { return target() != nullptr; },
        [target, button] {
            const wxRect place = target()->GetScreenRect();
            wxUIActionSimulator simulator;
            simulator.MouseMove(place.x + place.width / 2, place.y + place.height / 2);
            simulator.MouseClick(button);
        });
}

UiDriver& UiDriver::dragIn(std::function<wxWindow*()> target, wxPoint from, wxPoint to) {
    return when(
        "something to drag in", [target] { return target() != nullptr; },
        [target, from, to] {
            wxUIActionSimulator simulator;
            simulator.MouseMove(target()->ClientToScreen(from));
            simulator.MouseDown();
            simulator.MouseMove(target()->ClientToScreen((from + to) / 2));
            simulator.MouseMove(target()->ClientToScreen(to));
            simulator.MouseUp();
        });
}

UiDriver& UiDriver::close(const wxString& title) {
    return when(
        "window to close", [title] { return findWindow(title) != nullptr; },
        [title] {
            // Later: the window may ask before it closes, and the next steps answer.
            wxTopLevelWindow* window = findWindow(title);
            window->CallAfter([window] { window->Close(); });
        });
}

UiDriver& UiDriver::picture(const std::string& name) {
    const char* folder = std::getenv("KORVANT_SCREENSHOTS");
    if (!folder) return *this;
    return run([path = std::string(folder) + "/" + name + ".png"] { saveScreen(path); });
}

bool UiDriver::finish() {
    wxEventLoop loop;
    when(
        "the end", [] { return true; }, [&loop] { loop.ScheduleExit(); });
    loop.Run();
    return done();
}

void UiDriver::step() {
    // The simulator lets events pass, and with them this timer; but a window that such an event
    // opens has to be answered while it does.
    wxEventLoopBase* const loop = wxEventLoopBase::GetActive();
    if (actingIn_ && actingIn_ == loop) return;
    if (looking_) return;                   // a look at the clipboard lets events pass as well
    if (failed_) return closeEverything();  // what a test opens after that has nobody to answer it
    if (settling_ && inputIsOnItsWay() &&
        std::chrono::steady_clock::now() - waitingSince_ < kSettling)
        return;
    settling_ = false;
    if (pressedAgain(loop)) return;
    const bool waits = steps_.empty() || !holds(steps_.front().ready);
    if (waits) {
        if (std::chrono::steady_clock::now() - waitingSince_ > kPatience)
            fail(steps_.empty() ? "the call to return" : steps_.front().what);
        return;
    }
    const Step next = std::move(steps_.front());
    steps_.pop_front();
    pressed_ = next.isKey ? next.act : Action();
    pressGotLost();  // what others pressed before
    wxEventLoopBase* const outer = std::exchange(actingIn_, loop);
    take(next);
    actingIn_ = outer;
    settling_ = true;
    waitingSince_ = std::chrono::steady_clock::now();
}

/// No hand lets go of a key that it has not pressed.
bool UiDriver::pressedAgain(wxEventLoopBase* loop) {
    const Action press = std::exchange(pressed_, {});
    if (!press || !pressGotLost()) return false;
    wxEventLoopBase* const outer = std::exchange(actingIn_, loop);
    take({"a lost press", {}, press});
    actingIn_ = outer;
    settling_ = true;
    waitingSince_ = std::chrono::steady_clock::now();
    return true;
}

/// What throws holds at a later look, or the step waits too long.
bool UiDriver::holds(const Condition& ready) {
    looking_ = true;
    bool held = false;
    try {
        held = ready();
    } catch (const std::exception&) {
    }
    looking_ = false;
    return held;
}

/// Nothing is thrown through the loops of the toolkit.
void UiDriver::take(const Step& step) {
    if (!step.act) return;
    recent_->add("step after " + step.what);
    try {
        step.act();
    } catch (const std::exception& thrown) {
        ADD_FAILURE() << "after " << step.what << ": " << thrown.what();
    }
}

void UiDriver::fail(const std::string& what) {
    failed_ = true;
    ADD_FAILURE() << "waited too long for " << what << "; open windows:" << openWindows()
                  << "; the keyboard is in " << keyboardOwner() << "; lately\n"
                  << (recent_ ? recent_->text() : std::string());
    if (const char* folder = std::getenv("KORVANT_SCREENSHOTS"))
        saveScreen(std::string(folder) + "/timeout.png");
    if (onTimeout) onTimeout();
    closeEverything();
}

namespace detail {

wxWindow* nthChild(const wxWindow* parent, int& index, const std::function<bool(wxWindow*)>& test) {
    for (wxWindow* child : parent->GetChildren()) {
        if (test(child) && index-- == 0) return child;
        if (wxWindow* found = nthChild(child, index, test)) return found;
    }
    return nullptr;
}

}  // namespace detail
}  // namespace korvant::test
