// Starting the toolkit inside somebody else's program, and running dialogs there.
#pragma once

#include <wx/timer.h>
#include <wx/window.h>

#include <functional>
#include <memory>
#include <string>

class wxApp;
class wxDialog;

namespace korvant::ui {

/// Makes the application object for a host that has none. The toolkit owns the result.
using ApplicationFactory = wxApp* (*)();
/// Null puts the plain one back. To be called before the toolkit starts.
void setApplicationFactory(ApplicationFactory factory);

/// Starts the toolkit unless it runs already. False while there is no display; each call tries
/// anew. The calling thread becomes the one that windows belong to.
bool startToolkit();
/// The toolkit runs and its display has not gone away.
bool toolkitUsable();
/// The application object is the module's, not the host's.
bool ownsApplication();

/// Runs a call that has an event loop of its own (a modal dialog). A loop of the host's that the
/// toolkit does not know goes on afterwards. `modalCall` must not throw. Must not be called
/// before startToolkit() has answered true.
void runModal(const std::function<void()>& modalCall);

/// A modal call is under way: the keyboard is the dialog's. Safe from any thread.
bool dialogOpen() noexcept;

/// What a dialog should stand in front of: the active window of this program, else its main
/// window, else null.
wxWindow* dialogParent();

/// Gives the keyboard to a dialog that opens while the window of a script's progress takes it, or
/// where no window manager gives it to anybody; and back to the dialog below when it ends. Lives
/// beside the modal call; looks for a moment only and never takes the keyboard from another
/// program or from a window that can be used beside the dialog.
class KeyboardClaim : private wxTimer {
  public:
    explicit KeyboardClaim(wxWindow& dialog);
    ~KeyboardClaim() override;

  private:
    void begin();
    void Notify() override;

    wxWindow& dialog_;
    KeyboardClaim* previous_;
    int looksLeft_ = 0;
};

/// Shows a dialog that another one of the module's has opened, until it is closed. Its result is
/// that of wxDialog::ShowModal.
int showModal(wxDialog& dialog);

/// Destroys a dialog, but leaves it alone when its display has gone away: every request to that
/// display could end the process.
struct DialogDeleter {
    void operator()(wxWindow* dialog) const;
};
template <class Dialog>
using DialogOwner = std::unique_ptr<Dialog, DialogDeleter>;

/// A loop that is to end when the display goes away registers itself for that.
/// `end` must send nothing to the display: it notes an answer or leaves an event loop. The loops
/// that the toolkit runs are left from inside out beside it.
class LoopGuard {
  public:
    explicit LoopGuard(std::function<void()> end);
    ~LoopGuard();
    LoopGuard(const LoopGuard&) = delete;
    LoopGuard& operator=(const LoopGuard&) = delete;

  private:
    std::function<void()> end_;
    LoopGuard* previous_;
    bool told_ = false;
    friend bool endLoops();
};

/// Says once on standard error that there is nobody to ask.
void sayNoDisplay();

/// Brackets every entry point and built-in function that may show a window; they nest. Starts
/// nothing: a run without dialogs needs no display. Leaving the outermost gives the toolkit the
/// moment it needs to take closed windows down. Has the shape of SessionServices::uiScope.
void switchUi(bool enter);

/// Names of the module: the application's name, and the folder of its settings.
extern const char kModuleName[];
extern const char kCompanyName[];

}  // namespace korvant::ui
