// How the rows of a form look.
#pragma once

#include <wx/propgrid/property.h>

#include "object/form/edit_session.h"
#include "ui/kit/theme.h"

namespace korvant::ui {

class CListCtrlEx;
class FormRow;

/// Sizes of a row, in logical pixels.
namespace form_size {
constexpr int kIndent = 4;
constexpr int kMarkSpace = 20;  ///< before every label, for the mark
constexpr int kSwatchWidth = 28;
constexpr int kBoxSize = 16;
constexpr int kGap = 6;
constexpr int kArrowWidth = 16;
constexpr int kButtonWidth = 24;
}  // namespace form_size

/// Error: red tint and mark; warning: amber tint and mark; disabled: grey in all columns; changed:
/// bold label; locked: no field behind the value; computed: slanted value. The mark carries the
/// meaning, since the selection hides the tint.
class FormRowPainter : public wxPGCellRenderer {
  public:
    explicit FormRowPainter(const CListCtrlEx& list);

    void updateTheme() { theme_ = currentTheme(); }
    const Theme& theme() const { return theme_; }

    bool Render(wxDC& dc, const wxRect& rect, const wxPropertyGrid* grid, wxPGProperty* property,
                int column, int item, int flags) const override;

    /// What the cell shows as text; empty where it shows none.
    wxString cellText(const FormRow& row, int column) const;
    /// Where its text begins and how wide it may be, from the left of the cell.
    int textOffset(const FormRow& row, int column) const;
    int textWidth(const FormRow& row, int column) const;
    /// Right end of the part of a value cell that switches when clicked.
    int switchWidth(const FormRow& row) const;
    /// Of the button at the right end of a value that is chosen in a window of its own; 0: none.
    int buttonWidth(const FormRow& row) const;

  private:
    struct Cell {
        const FormRow& row;
        const EditRow& about;
        EditRowState state;
        bool selected;
        bool focused;
        int column;
    };

    wxColour background(const Cell& cell) const;
    wxColour ink(const Cell& cell) const;
    void paintLabel(wxDC& dc, const wxRect& rect, const Cell& cell) const;
    void paintValue(wxDC& dc, const wxRect& rect, const Cell& cell) const;
    void paintText(wxDC& dc, const wxRect& rect, const Cell& cell) const;
    void paintBox(wxDC& dc, const wxRect& rect, const Cell& cell) const;
    void paintSwatch(wxDC& dc, const wxRect& rect, const Cell& cell) const;
    void paintArrow(wxDC& dc, const wxRect& rect, const Cell& cell) const;
    void paintButton(wxDC& dc, const wxRect& rect, const Cell& cell) const;

    const CListCtrlEx& list_;
    Theme theme_;
};

}  // namespace korvant::ui
