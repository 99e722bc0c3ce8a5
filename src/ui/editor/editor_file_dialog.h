// The desktop's dialogs for opening and saving files.
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "editor/control/editor_window.h"

class wxWindow;

namespace korvant::ui {

using FileChooser =
    std::function<std::optional<std::string>(wxWindow* parent, const FileDialogRequest& request)>;

/// Asks with the desktop's dialog, or with what was put in its place. The path is the system's
/// bytes on POSIX and UTF-8 on Windows; nothing on Cancel.
std::optional<std::string> chooseScriptFile(wxWindow* parent, const FileDialogRequest& request);

/// Puts `chooser` in the place of the desktop's dialog, for programs that have a dialog of their
/// own and for tests; empty puts the desktop's back.
void setFileChooser(FileChooser chooser);

}  // namespace korvant::ui
