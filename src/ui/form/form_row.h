// One row of a form's list.
#pragma once

#include <wx/propgrid/propgrid.h>

#include <cstdint>

#include "object/form/edit_session.h"

namespace korvant::ui {

class CListCtrlEx;

/// How a row is edited.
enum class RowEditor {
    none,            ///< not at all
    field,           ///< in a field of one line
    fieldAndButton,  ///< in a field, or chosen or written in a window of its own
    lines,           ///< only in a window of its own
    option,          ///< from a list
    toggle           ///< by switching
};

/// Holds no value and no text: whatever it shows is asked of the session when it is painted, so
/// that making 5,000 rows and changing them costs next to nothing.
class FormRow : public wxPGProperty {
  public:
    FormRow(CListCtrlEx& list, std::int32_t property);

    std::int32_t property() const { return property_; }

    wxString GetValueAsString(int flags) const override;
    wxPGCellRenderer* GetCellRenderer(int column) const override;
    const wxPGEditor* DoGetEditorClass() const override;
    wxSize OnMeasureImage(int item) const override;
    bool OnEvent(wxPropertyGrid* grid, wxWindow* control, wxEvent& event) override;

  private:
    CListCtrlEx& list_;
    std::int32_t property_;
};

/// What the toolkit leaves alone when it is not a row: a caption, or nothing.
FormRow* asFormRow(wxPGProperty* item);

}  // namespace korvant::ui
