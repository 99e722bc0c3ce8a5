// Where texts of several lines are written.
#pragma once

#include <wx/dialog.h>

#include <cstdint>

class wxTextCtrl;

namespace korvant::ui {

/// Return makes a new line; Ctrl+Return is OK, Escape cancels.
class FormLinesDialog : public wxDialog {
  public:
    FormLinesDialog(wxWindow* parent, const wxString& title, std::int32_t locale);

    void setText(const wxString& text);
    wxString text() const;

  private:
    wxTextCtrl* field_;
};

}  // namespace korvant::ui
