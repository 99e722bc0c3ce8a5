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
    /// Gives the frame its menu bar. `chosen` gets the number of the command.
    EditorMenus(wxFrame& frame, std::function<void(int command)> chosen);

    void check(int command, bool checked);
    void enable(int command, bool enabled);
    /// Replaces the files under File.
    void setRecentFiles(const std::vector<std::string>& paths);

    /// Shows the context menu at `place`, in coordinates of `window`, until something is chosen.
    void showContextMenu(wxWindow& window, const wxPoint& place,
                         const std::function<bool(const EditorCommand&)>& enabled);

  private:
    wxMenu* makeMenu(EditorMenu menu);

    wxFrame& frame_;
    wxMenuBar* bar_;  ///< the frame's
    std::function<void(int)> chosen_;
    std::map<int, bool> checks_;  ///< by command
    std::vector<wxMenuItem*> recent_;
};

}  // namespace korvant::ui
