#include "ui/editor/panels/row_field.h"

#include <wx/textctrl.h>

#include <memory>

namespace korvant::ui {
namespace {

struct Editing {
    RowList& list;
    wxTextCtrl* field;
    std::function<wxString(const wxString&)> taken;
    bool over = false;

    /// Not from inside the field's own event.
    void end(bool focusList) {
        if (std::exchange(over, true)) return;
        field->Hide();
        field->CallAfter([gone = field] { gone->Destroy(); });
        if (focusList) list.SetFocus();
    }
    void take() {
        const wxString problem = taken(field->GetValue());
        if (problem.empty()) return end(true);
        field->SetToolTip(problem);
        field->SetForegroundColour(*wxRED);
        field->SelectAll();
    }
};

}  // namespace

void editInPlace(RowList& list, const Look& look, const wxRect& place, const wxString& text,
                 std::function<wxString(const wxString&)> taken) {
    auto* field = new wxTextCtrl(&list, wxID_ANY, text, place.GetPosition(), place.GetSize(),
                                 wxTE_PROCESS_ENTER | wxBORDER_SIMPLE);
    field->SetFont(look.code);
    field->SetBackgroundColour(colourOf(look->editor));
    field->SetForegroundColour(colourOf(look->text));
    const auto editing = std::make_shared<Editing>(Editing{list, field, std::move(taken)});
    field->Bind(wxEVT_TEXT_ENTER, [editing](wxCommandEvent&) { editing->take(); });
    field->Bind(wxEVT_KEY_DOWN, [editing](wxKeyEvent& event) {
        if (event.GetKeyCode() == WXK_ESCAPE)
            editing->end(true);
        else
            event.Skip();
    });
    field->Bind(wxEVT_KILL_FOCUS, [editing](wxFocusEvent& event) {
        editing->end(false);
        event.Skip();
    });
    field->SelectAll();
    field->SetFocus();
}

}  // namespace korvant::ui
