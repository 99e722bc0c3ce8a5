// The field for a new name, over the old one.
#pragma once

#include "ui/kit/painted_window.h"

class wxStyledTextCtrl;
class wxTextCtrl;

namespace korvant::ui {

class RenameBox : public PaintedWindow {
  public:
    RenameBox(wxStyledTextCtrl& control, const Look& look,
              std::function<void(const std::string&)> renamed);

    /// `line`: of the old name's beginning, in the text's window.
    void open(const wxString& name, const wxRect& line);
    void refuse(const wxString& reason);
    /// The keyboard goes back to the text.
    void close();
    wxTextCtrl* field() const { return field_; }
    const wxString& reason() const { return reason_; }

  private:
    void layOut();
    void onKey(wxKeyEvent& event);
    void onTextEntered(wxFocusEvent& event);
    void paint(wxGraphicsContext& context) override;

    wxStyledTextCtrl& control_;
    bool entered_ = false;  ///< the field has had the keyboard since it was opened
    std::function<void(const std::string&)> renamed_;
    wxTextCtrl* field_;
    wxString reason_;
    std::vector<wxString> lines_;
    wxRect line_;
};

}  // namespace korvant::ui
