// What the toolkit cannot say itself about the desktop and about the program it runs in. One
// implementation for each platform.
#pragma once

#include <functional>

class wxColour;
class wxFont;
class wxFrame;
class wxGraphicsContext;
class wxString;
class wxTextCtrl;
class wxWindow;

namespace korvant::ui::native {

/// A display can be reached; cheap enough to ask before every start.
bool displayReachable();
/// Runs `start` so that the process stays as it was: its locale remains the host's.
void keepingProcess(const std::function<void()>& start);
/// From now on the process outlives its display. `lost` is called once from the event loop when
/// the display has gone away, and again while it answers true. Only for an application object that
/// is the module's own: a host decides this for its own windows.
void surviveDisplay(bool (*lost)());
bool displayLost();

/// An event loop runs that the toolkit does not know.
bool foreignLoopRuns();
/// Runs `call` from inside a loop that stands between the host's loop and those that `call` runs.
void runInOwnLoop(const std::function<void()>& call);
/// Takes what the display has sent so far, so that windows that were closed leave the screen.
/// Runs no timer and no idle work.
void drainEvents();

/// A window that was closed is off the screen when this returns, and what it covered of this
/// program is painted. Keys and clicks stay queued.
void finishClosing();

/// Handles what waits for `window` and its children, and every change of focus; everything else
/// stays queued in its order.
/// Runs no timer and no idle work, so that nothing of a host gets a turn inside a script.
void pumpWindow(wxWindow& window);

/// Scroll bars of this window do not wait for the pointer to show themselves.
void keepScrollBarsVisible(wxWindow& window);

/// What a control shows now inside its old place gets its places before it is painted.
void settle(wxWindow& control);

/// Room between the edge of a field of several lines and its text.
void padLines(wxWindow& field);

/// The field takes what is pasted whole; some systems cut it at 30,000 letters, without a word.
void takeLongTexts(wxTextCtrl& field);

/// A field of one line without an edge, for what paints one around it.
void bareField(wxWindow& field);

/// The control with the keyboard is marked as soon as the window shows, not only after a key was
/// pressed. To be called before it is shown.
void showFocus(wxWindow& topLevel);

/// The button looks like the one that Return presses, or like any other.
void markDefault(wxWindow& button, bool isDefault);

/// A child window lies over its neighbours, and they do not paint over it.
void putInFront(wxWindow& window);

/// What a reader of the screen is told of a window that the program paints.
void setAccessibleName(wxWindow& window, const wxString& name);
/// Changes when texts come to take another room in the window.
double textScale(const wxWindow& window);
/// The same for what it is: a button, a list, a row of tabs.
enum class AccessibleRole { button, toggle, list, tree, toolbar, tabs, status, panel };
void setAccessibleRole(wxWindow& window, AccessibleRole role);
/// Colours the thumbs of a scrolling window's bars, or of a bar, which follow the desktop
/// otherwise, and leaves out the shade at an end of what can be scrolled; without colours
/// everything is as the desktop has it. Where bars take no colours they are the desktop's dark or
/// light ones, as `edge`, which lies behind them, is.
void colourScrollBars(wxWindow& window, const wxColour& thumb, const wxColour& edge);
/// `font` under the name of the face that the system shows for it. A name of the desktop's can
/// stand for another face, or for one of dots; texts that are painted need an outline's own name.
wxFont paintable(const wxFont& font);
/// `font` a little stronger, for headings; bold where nothing between can be painted.
wxFont semibold(const wxFont& font);
/// The desktop's font of one width; empty when it names none.
wxString monospacedFace();
/// The desktop asks for dark windows.
bool prefersDark();
/// Calls `changed` from the event loop when the answer of prefersDark() may be another one, where
/// the desktop tells.
class DarkWatch {
  public:
    explicit DarkWatch(std::function<void()> changed);
    ~DarkWatch();
    DarkWatch(const DarkWatch&) = delete;
    DarkWatch& operator=(const DarkWatch&) = delete;

  private:
    std::function<void()> changed_;
    void* settings_ = nullptr;
};
/// The colours of the window's own edge and menu bar, where the desktop lets programs choose.
void setDarkFrame(wxWindow& window, bool dark);
/// Colours of a window's menu bar, where the desktop lets programs choose; invalid ones are its
/// own.
void colourMenuBar(wxFrame& frame, const wxColour& back, const wxColour& text);

/// While one lives `paint` is called whenever the window has painted itself, to paint over that,
/// below its children, as sharp as the screen is. The window outlives it.
class PaintOver {
  public:
    PaintOver(wxWindow& window, std::function<void(wxGraphicsContext&)> paint);
    ~PaintOver();
    PaintOver(const PaintOver&) = delete;
    PaintOver& operator=(const PaintOver&) = delete;
    /// False where the toolkit has no such moment; `paint` is never called then.
    bool works() const { return widget_ != nullptr; }

  private:
    std::function<void(wxGraphicsContext&)> paint_;
    void* widget_ = nullptr;
    unsigned long handler_ = 0;
};

/// Gives the keyboard to a dialog if nobody has it, or a window of this program that can do nothing
/// with it while the dialog is answered. False: the dialog does not stand on the screen yet.
bool claimKeyboard(wxWindow& window);

/// No window but this one gets input while the grab lives, those of a host with another toolkit
/// included.
class InputGrab {
  public:
    explicit InputGrab(wxWindow& window);
    ~InputGrab();
    InputGrab(const InputGrab&) = delete;
    InputGrab& operator=(const InputGrab&) = delete;

  private:
    wxWindow& window_;
};

}  // namespace korvant::ui::native
