// The list under the mouse.
#include <wx/menu.h>
#include <wx/tooltip.h>

#include "base/text/html_text.h"
#include "base/text/plain_text.h"
#include "object/form/form_texts.h"
#include "ui/form/form_list.h"
#include "ui/form/form_row_painter.h"
#include "ui/kit/text_conversion.h"

namespace korvant::ui {
namespace {

enum MenuCommand { kUndo = wxID_HIGHEST + 1, kRedo, kReset, kCopy };

}  // namespace

/// Rows are ours; captions, the margin and the lines between columns are left to the toolkit.
void CListCtrlEx::onClick(wxMouseEvent& event) {
    fresh_ = false;
    const wxPoint place = event.GetPosition();
    const wxPropertyGridHitTestResult hit = HitTest(place);
    FormRow* row = asFormRow(hit.GetProperty());
    if (!row || hit.GetSplitter() != -1) {
        if (commit()) {
            SetFocus();
            event.Skip();
        }
        return;
    }
    if (!commit() || !select(row->property())) return;
    SetFocus();
    if (hit.GetColumn() != 1) return;
    clickValue(*row, place.x - GetSplitterPosition(), event.LeftDClick());
}

void CListCtrlEx::clickValue(FormRow& row, int x, bool twice) {
    const int button = painter_->buttonWidth(row);
    if (button > 0 && x >= columnWidth(1) - button) return openChooser();
    switch (editorOf(row.property())) {
        case RowEditor::toggle:
            if (x < painter_->switchWidth(row)) beginEdit(row);
            return;
        case RowEditor::lines:
            if (twice) beginEdit(row);
            return;
        default:
            beginEdit(row);
    }
}

void CListCtrlEx::onMove(wxMouseEvent& event) {
    event.Skip();
    const wxString tip = tipAt(event.GetPosition());
    if (tip == GetToolTipText()) return;
    if (tip.empty())
        UnsetToolTip();
    else
        SetToolTip(tip);
}

/// Tool tips for what the column cuts off, and for what is wrong with the row.
wxString CListCtrlEx::tipAt(const wxPoint& place) const {
    const wxPropertyGridHitTestResult hit = HitTest(place);
    const FormRow* row = asFormRow(hit.GetProperty());
    const int column = hit.GetColumn();
    if (!row || column < 0 || isEdited(*row)) return wxString();
    const wxString text = cutOffText(*row, column), wrong = findings(*row);
    return text.empty() || wrong.empty() ? text + wrong : text + "\n" + wrong;
}

wxString CListCtrlEx::cutOffText(const FormRow& row, int column) const {
    const wxString text = painter_->cellText(row, column);
    const std::string full = session_.fullText(row.property());
    if (column == 1 && session_.row(row.property()).letter == 'd' && text != fromUtf8(full))
        return fromUtf8(full);
    const bool bold = column == 0 && session_.state(row.property()).changed;
    int width = 0;
    GetTextExtent(text, &width, nullptr, nullptr, nullptr, bold ? &GetCaptionFont() : nullptr);
    return width > painter_->textWidth(row, column) ? text : wxString();
}

/// The messages of errors, then of warnings, a line each.
wxString CListCtrlEx::findings(const FormRow& row) const {
    wxString text;
    for (const bool errors : {true, false})
        for (const std::string& message : session_.failing(row.property(), errors)) {
            if (!text.empty()) text += "\n";
            text += fromUtf8(plainFromHtml(boundedHtml(message)));
        }
    return text;
}

/// The row under the pointer becomes the selected one first; an open field has the menu of its own
/// control. False: no menu of ours.
bool CListCtrlEx::selectForMenu(const wxContextMenuEvent& event) {
    if (event.GetPosition() == wxDefaultPosition) return !field_.isOpen();
    const bool ownField = field_.isOpen() && event.GetEventObject() != this;
    if (ownField || !commit()) return false;
    if (FormRow* row = asFormRow(HitTest(ScreenToClient(event.GetPosition())).GetProperty())) {
        if (!select(row->property())) return false;
    }
    SetFocus();
    return true;
}

void CListCtrlEx::onContextMenu(wxContextMenuEvent& event) {
    fresh_ = false;
    if (!selectForMenu(event)) return event.Skip();
    const auto caption = [this](FormText text, const char* key) {
        return toDisplay(formText(text, session_.locale())) + "\t" + key;
    };
    const FormRow* row = selectedRow();
    const bool changed = row && session_.state(row->property()).changed;
    wxMenu menu;
    menu.Append(kUndo, caption(FormText::undo, "Ctrl+Z"))->Enable(session_.canUndo());
    menu.Append(kRedo, caption(FormText::redo, "Ctrl+Y"))->Enable(session_.canRedo());
    menu.Append(kReset, caption(FormText::reset, "Ctrl+R"))->Enable(changed);
    menu.AppendSeparator();
    menu.Append(kCopy, caption(FormText::copy, "Ctrl+C"))->Enable(row != nullptr);
    menu.Bind(wxEVT_MENU, [this](wxCommandEvent& chosen) { runMenuCommand(chosen.GetId()); });
    const wxPoint at = event.GetPosition();
    const bool byKey = at == wxDefaultPosition;
    PopupMenu(&menu, byKey && row ? rowRect(row->property()).GetBottomLeft()
                     : byKey      ? wxPoint(0, 0)
                                  : ScreenToClient(at));
}

void CListCtrlEx::runMenuCommand(int command) {
    if (command == kUndo) host_.undo();
    if (command == kRedo) host_.redo();
    if (command == kReset) resetSelected();
    if (command == kCopy) copyValue();
}

}  // namespace korvant::ui
