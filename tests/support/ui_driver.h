// Presses real keys in real windows while a call under test shows them.
#pragma once

#include <wx/timer.h>
#include <wx/uiaction.h>
#include <wx/window.h>

#include <chrono>
#include <deque>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>

class wxEventLoopBase;
class wxImage;
class wxTopLevelWindow;

namespace korvant::test {

/// The visible top-level window with this title; null for none.
wxTopLevelWindow* findWindow(const wxString& title);
/// The same, and it is the one that gets the keys.
wxTopLevelWindow* findActive(const wxString& title);

/// What a look for a window found, perhaps nothing. To use nothing ends the test, not the process:
/// a condition does not hold yet, a step fails.
template <class Window>
class Found {
  public:
    Found(Window* window) : window_(window) {}
    operator Window*() const { return window_; }
    Window* operator->() const {
        if (window_ == nullptr) throw std::runtime_error("a window that is not there is used");
        return window_;
    }
    Window& operator*() const { return *operator->(); }

  private:
    Window* window_;
};

/// A visible descendant of `parent` of this class, the `index`-th in creation order; null for none.
template <class Control>
Found<Control> findChild(const wxWindow* parent, int index = 0);

class RecentEvents;

/// A script of steps that runs inside the event loops of the call under test. A step waits for its
/// condition and then acts; nothing ever sleeps. A step that waits too long fails the test and
/// closes whatever is open, so that the call under test returns.
///
///     UiDriver driver;
///     driver.window("Question").key(WXK_RETURN);
///     EXPECT_EQ(ask(), box_button::kYes);
///     EXPECT_TRUE(driver.done());
class UiDriver {
  public:
    using Condition = std::function<bool()>;
    using Action = std::function<void()>;

    /// Starts the toolkit; without a display the test fails.
    UiDriver();
    ~UiDriver();
    UiDriver(const UiDriver&) = delete;
    UiDriver& operator=(const UiDriver&) = delete;

    UiDriver& when(const std::string& what, Condition ready, Action act = {});
    UiDriver& run(Action act);
    /// Waits until the window with this title has the keyboard.
    UiDriver& window(const wxString& title);
    UiDriver& gone(const wxString& title);
    UiDriver& key(int code, int modifiers = wxMOD_NONE);
    /// Letters, digits and the signs of numbers.
    UiDriver& type(const std::string& text);
    /// Clicks into the middle of a window that the step finds when its turn comes.
    UiDriver& click(std::function<wxWindow*()> target, int button = wxMOUSE_BTN_LEFT);
    UiDriver& dragIn(std::function<wxWindow*()> target, wxPoint from, wxPoint to);
    /// Sends the close request of a window manager.
    UiDriver& close(const wxString& title);
    /// Keeps a picture of the whole screen as NAME.png, if KORVANT_SCREENSHOTS names a folder.
    UiDriver& picture(const std::string& name);

    /// All steps have been taken.
    bool done() const { return steps_.empty() && !failed_; }
    /// Runs a loop of its own until all steps have been taken; for windows that are not modal.
    bool finish();
    /// Called when a step has waited too long, before windows are closed.
    Action onTimeout;

    static constexpr std::chrono::seconds kPatience{20};

  private:
    struct Step {
        std::string what;
        Condition ready;
        Action act;
        bool isKey = false;
    };

    void step();
    UiDriver& keyStep(const std::string& what, Action press);
    bool pressedAgain(wxEventLoopBase* loop);
    bool holds(const Condition& ready);
    void take(const Step& step);
    void fail(const std::string& what);

    std::unique_ptr<RecentEvents> recent_;
    std::unique_ptr<wxTimer> timer_;  ///< made once the toolkit runs
    std::deque<Step> steps_;
    std::chrono::steady_clock::time_point waitingSince_;
    wxEventLoopBase* actingIn_ = nullptr;  ///< the loop whose step is under way
    Action pressed_;                       ///< the last step, if it was a key's; once
    bool looking_ = false;
    bool settling_ = false;
    bool failed_ = false;
};

// Of the system's own.

/// Writes a picture of the screen.
void saveScreen(const std::string& path);
/// The same of what shows of a window, without the frame that a window manager puts around it.
void saveWindow(wxWindow& window, const std::string& path);
/// What shows of a window now; invalid when it stands nowhere.
wxImage pictureOf(wxWindow& window);
/// Everything inside that frame gets this size.
void resizeContent(wxTopLevelWindow& window, wxSize size);
/// Keys or clicks that were sent have not been handled yet.
bool inputIsOnItsWay();
/// Since it was asked last the display has told the end of a key and not its press: a busy one does
/// that now and then.
bool pressGotLost();
/// A menu is open and takes the keys.
bool menuIsOpen();
/// Presses what leaves an open menu of the menu bar, and the bar.
void leaveMenuBar();
/// Takes open menus away where they have a loop of their own.
void endMenus();
/// The control with the keyboard is marked in this window.
bool showsFocus(wxTopLevelWindow& window);
/// The button is drawn as the one that Return presses.
bool looksDefault(wxWindow& button);
/// Chooses a font in the open dialog for it; false when there is none.
bool answerFontDialog(const std::string& face, int points);
/// As a click on the window's frame would.
void giveKeyboard(wxTopLevelWindow& window);
/// From now on a complaint of the toolkit's about a control fails the test under way.
void failOnComplaints();

namespace detail {
wxWindow* nthChild(const wxWindow* parent, int& index, const std::function<bool(wxWindow*)>& test);
}

template <class Control>
Found<Control> findChild(const wxWindow* parent, int index) {
    if (!parent) return nullptr;
    return dynamic_cast<Control*>(detail::nthChild(parent, index, [](wxWindow* window) {
        return dynamic_cast<Control*>(window) != nullptr && window->IsShown();
    }));
}

}  // namespace korvant::test
