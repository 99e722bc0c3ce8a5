#include "ui/form/form_row_editors.h"

#include <wx/dc.h>
#include <wx/odcombo.h>
#include <wx/textctrl.h>

#include "ui/form/form_list.h"
#include "ui/kit/text_conversion.h"

namespace korvant::ui {
namespace {

CListCtrlEx& listOf(wxPropertyGrid* grid) {
    return static_cast<CListCtrlEx&>(*grid);
}

class NoEditor : public wxPGEditor {
  public:
    wxPGWindowList CreateControls(wxPropertyGrid*, wxPGProperty*, const wxPoint&,
                                  const wxSize&) const override {
        return wxPGWindowList(nullptr);
    }
    void UpdateControl(wxPGProperty*, wxWindow*) const override {}
    bool OnEvent(wxPropertyGrid*, wxPGProperty*, wxWindow*, wxEvent&) const override {
        return false;
    }
};

/// A field; the list takes its text when the user is done.
class FieldEditor : public NoEditor {
  public:
    explicit FieldEditor(bool button) : button_(button) {}

    wxPGWindowList CreateControls(wxPropertyGrid* grid, wxPGProperty* property, const wxPoint& pos,
                                  const wxSize& size) const override {
        wxWindow* button = nullptr;
        wxWindow* field =
            button_
                ? grid->GenerateEditorTextCtrlAndButton(pos, size, &button, 0, property)
                : grid->GenerateEditorTextCtrl(pos, size, property->GetValueAsString(0), nullptr);
        return wxPGWindowList(field, button);
    }

    /// Deliberate: the toolkit's own would put the old value back here, and with it drop what was
    /// typed before the focus went to another window and came back.
    void OnFocus(wxPGProperty* property, wxWindow* window) const override {
        auto* field = static_cast<wxTextCtrl*>(window);
        if (field->GetValue() == property->GetValueAsString(0)) field->SelectAll();
    }

    bool OnEvent(wxPropertyGrid* grid, wxPGProperty*, wxWindow*, wxEvent& event) const override {
        if (event.GetEventType() == wxEVT_TEXT) listOf(grid).fieldChanged();
        return false;
    }

  private:
    bool button_;
};

class OptionList : public wxOwnerDrawnComboBox {
  public:
    OptionList(wxWindow* parent, const wxPoint& pos, const wxSize& size,
               const wxArrayString& options)
        : wxOwnerDrawnComboBox(parent, wxID_ANY, wxEmptyString, pos, size, options,
                               wxCB_READONLY | wxBORDER_NONE) {
        SetButtonPosition(size.y, 0, wxRIGHT);
        SetMargins(FromDIP(3));
    }

  private:
    /// As high as the rows of the form, and as far from the edge.
    wxCoord OnMeasureItem(std::size_t) const override { return GetCharHeight() + FromDIP(8); }

    void OnDrawItem(wxDC& dc, const wxRect& rect, int item, int flags) const override {
        if (item == wxNOT_FOUND) return;
        wxRect inner = rect;
        if ((flags & wxODCB_PAINTING_CONTROL) == 0) inner.x += FromDIP(4);
        dc.DrawLabel(GetString(static_cast<unsigned>(item)), inner, wxALIGN_CENTRE_VERTICAL);
    }
};

class OptionEditor : public NoEditor {
  public:
    wxPGWindowList CreateControls(wxPropertyGrid* grid, wxPGProperty* property, const wxPoint& pos,
                                  const wxSize& size) const override {
        const EditSession& session = listOf(grid).session();
        const std::int32_t index = asFormRow(property)->property();
        wxArrayString options;
        for (const std::string& option : session.row(index).options) options.Add(toDisplay(option));
        auto* list = new OptionList(grid, pos, size, options);
        const std::int32_t chosen = session.integerValue(index);
        const bool known = chosen >= 0 && chosen < static_cast<std::int32_t>(options.size());
        list->SetSelection(known ? chosen : wxNOT_FOUND);
        return wxPGWindowList(list);
    }

    bool OnEvent(wxPropertyGrid* grid, wxPGProperty*, wxWindow*, wxEvent& event) const override {
        if (event.GetEventType() == wxEVT_COMBOBOX_CLOSEUP) listOf(grid).optionsClosed();
        return false;
    }
};

}  // namespace

const wxPGEditor& noRowEditor() {
    static const NoEditor editor;
    return editor;
}

const wxPGEditor& rowEditor(RowEditor kind) {
    static const FieldEditor field(false);
    static const FieldEditor fieldAndButton(true);
    static const OptionEditor option;
    switch (kind) {
        case RowEditor::field:
            return field;
        case RowEditor::fieldAndButton:
            return fieldAndButton;
        case RowEditor::option:
            return option;
        default:
            return noRowEditor();
    }
}

}  // namespace korvant::ui
