// Where texts of several lines are written.
#pragma once

#include <wx/dialog.h>

#include <cstdint>

class wxStaticText;
class wxTextCtrl;

namespace korvant::ui {

/// Return makes a new line; Ctrl+Return is OK, Escape cancels.
class FormLinesDialog : public wxDialog {
  public:
    FormLinesDialog(wxWindow* parent, const wxString& title, std::int32_t locale);

    void setText(const wxString& text);
    /// The beginning of a text that is too long to be edited here.
    void setPreview(const wxString& text);
    bool editable() const;
    wxString text() const;

  private:
    wxTextCtrl* field_;
    wxStaticText* remark_;
};

}  // namespace korvant::ui
