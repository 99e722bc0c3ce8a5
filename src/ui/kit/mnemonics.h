// Keys for buttons whose captions come from elsewhere.
#pragma once

#include <wx/string.h>

#include <vector>

namespace korvant::ui {

struct KeyedLabel {
    wxString label;    ///< for the control: "&" before the key's letter, other "&" doubled
    wxUniChar key{0};  ///< upper case; 0 when every letter was taken
};

/// One letter for each caption, the first of its own that no earlier caption took.
std::vector<KeyedLabel> assignKeys(const std::vector<wxString>& captions);

/// "&" doubled, so that a control shows the text as it stands.
wxString escapeLabel(const wxString& text);

}  // namespace korvant::ui
