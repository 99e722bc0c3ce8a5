// The heads of a list's columns.
#pragma once

#include <wx/window.h>

#include <cstdint>

namespace korvant::ui {

class CListCtrlEx;

/// Follows the widths of the list's columns.
class FormHeader : public wxWindow {
  public:
    FormHeader(wxWindow* parent, const CListCtrlEx& list, std::int32_t locale);

    bool AcceptsFocus() const override { return false; }

  protected:
    wxSize DoGetBestClientSize() const override;

  private:
    void onPaint(wxPaintEvent& event);

    const CListCtrlEx& list_;
    const std::int32_t locale_;
};

}  // namespace korvant::ui
