// The editor's Go to line dialog and its About box.
#pragma once

#include <wx/dialog.h>

#include <cstdint>
#include <optional>

class wxStaticText;
class wxTextCtrl;

namespace korvant::ui {

class CGotoLineDlg final : public wxDialog {
  public:
    CGotoLineDlg(wxWindow* parent, std::int32_t line);

    /// Modal. The number that was entered; nothing on Cancel.
    std::optional<std::int32_t> ask();

  private:
    wxSizer* makeFieldRow(std::int32_t line);
    void accept();

    wxTextCtrl* field_ = nullptr;
    wxStaticText* problem_ = nullptr;
    std::optional<std::int32_t> line_;
};

/// Modal.
void showAboutBox(wxWindow* parent);
/// What a script printed, to be read and copied. Modal.
void showOutputBox(wxWindow* parent, const wxString& text);

}  // namespace korvant::ui
