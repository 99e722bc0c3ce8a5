// The editor's menus, made from its command records.
#pragma once

#include <wx/menu.h>

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "editor/editor_commands.h"

class wxFrame;

namespace korvant::ui {

class EditorMenus {
  public:
    using Enabled = std::function<bool(const EditorCommand&)>;

    /// Gives the frame its menu bar. `chosen` gets the number of the command; `enabled` is asked
    /// when a menu opens.
    EditorMenus(wxFrame& frame, std::function<void(int command)> chosen, Enabled enabled);

    void check(int command, bool checked);
    void enable(int command, bool enabled);
    /// Replaces the files under File.
    void setRecentFiles(const std::vector<std::string>& paths);

    /// Shows the context menu at `place`, in coordinates of `window`, until something is chosen.
    void showContextMenu(wxWindow& window, const wxPoint& place);

  private:
    wxMenu* makeMenu(EditorMenu menu);
    void update(wxMenu& menu);

    wxFrame& frame_;
    wxMenuBar* bar_;  ///< the frame's
    std::function<void(int)> chosen_;
    Enabled enabled_;
    std::map<int, bool> checks_;  ///< by command
    std::vector<wxMenuItem*> recent_;
};

}  // namespace korvant::ui
