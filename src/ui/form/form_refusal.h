// Says below a field why what was typed there was refused.
#pragma once

#include <wx/window.h>

namespace korvant::ui {

/// Takes neither the keyboard nor the mouse. Made when it is needed and destroyed afterwards: a
/// hidden window in a list that scrolls makes the toolkit complain.
class FormRefusal : public wxWindow {
  public:
    /// Below `row` of the parent, or above it where there is no room.
    FormRefusal(wxWindow* parent, const wxString& message, const wxRect& row);

    const wxString& message() const { return message_; }

    bool AcceptsFocus() const override { return false; }

  private:
    void onPaint(wxPaintEvent& event);

    wxString message_;  ///< with its line breaks
};

}  // namespace korvant::ui
