// What the editor's window needs of the desktop beyond the toolkit. One implementation for each
// platform.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

class wxFrame;
class wxIconBundle;
class wxMenuItem;
class wxString;
class wxWindow;

namespace korvant::ui::native {

/// The program's icon in the sizes that windows show.
wxIconBundle editorIcons();

/// Shows a key's name beside a menu item's label. The key itself does nothing: the window handles
/// its keys in one place.
void showMenuKey(wxMenuItem& item, const wxString& key);

/// Puts a separator and an item at the end of the window's system menu, where the desktop has such
/// a menu that programs may add to.
void addSystemMenuItem(wxFrame& frame, const wxString& label, std::function<void()> chosen);

/// Gives `frame` the keyboard and brings it to the front, but not over windows that belong to it.
void activate(wxFrame& frame);

/// While it lives, `frame` stands in front of the window that was active, and only `frame` and what
/// it opens can be used or closed: the host's windows cannot, whatever toolkit they are made with.
class OnlyWindow {
  public:
    explicit OnlyWindow(wxFrame& frame);
    ~OnlyWindow();
    OnlyWindow(const OnlyWindow&) = delete;
    OnlyWindow& operator=(const OnlyWindow&) = delete;

  private:
    struct State;
    std::unique_ptr<State> state_;
};

/// What the user asked for while a script is driven.
struct BusyInput {
    bool stop = false;   ///< Escape or Shift+F5
    bool pause = false;  ///< F6
};
/// What of a window can be used while a script is driven.
struct UsableParts {
    std::vector<wxWindow*> clicks;  ///< and what stands in them
    wxWindow* keys = nullptr;       ///< while it has the keyboard; may be null
};
/// For the time while a script is driven: paints what of `frame` needs it and takes its close
/// request; keys and clicks in it are dropped, but for those in `usable`. The wheel scrolls.
BusyInput pumpWhileBusy(wxFrame& frame, const UsableParts& usable);

}  // namespace korvant::ui::native
