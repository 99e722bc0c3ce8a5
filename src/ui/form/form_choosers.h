// The desktop's dialogs that forms open to choose a value.
#pragma once

#include <wx/colour.h>
#include <wx/string.h>

#include <functional>
#include <optional>
#include <vector>

#include "object/form/edit_session.h"

class wxWindow;

namespace korvant::ui {

struct FileRequest {
    wxWindow* parent = nullptr;
    wxString title;
    wxString path;      ///< to begin with; may be empty or name nothing that exists
    wxString wildcard;  ///< as the toolkit's file dialogs take it
    bool save = false;  ///< else the file must exist
};

/// Each returns nothing when the user chose nothing.
struct FormChoosers {
    std::function<std::optional<wxString>(const FileRequest&)> file;
    std::function<std::optional<wxColour>(wxWindow* parent, const wxString& title,
                                          const wxColour& initial)>
        colour;
    /// Asks before a file is overwritten.
    std::function<bool(wxWindow* parent, const wxString& path)> mayOverwrite;
};

/// In use; a test may put its own in place.
FormChoosers& formChoosers();

/// Filters as the toolkit's dialogs take them: "Text files (*.txt)|*.txt|All files (*)|*".
wxString wildcardOf(const std::vector<FileFilter>& filters);

/// Asks for a file, and before one is overwritten.
std::optional<wxString> chooseFormFile(const FileRequest& request);

}  // namespace korvant::ui
