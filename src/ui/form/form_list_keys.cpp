// The list without a mouse.
#include <wx/odcombo.h>
#include <wx/textctrl.h>

#include <algorithm>

#include "object/form/form_texts.h"
#include "ui/form/form_list.h"
#include "ui/kit/clipboard.h"
#include "ui/kit/text_conversion.h"

namespace korvant::ui {
namespace {

bool isReturn(int code) {
    return code == WXK_RETURN || code == WXK_NUMPAD_ENTER;
}

bool isDown(int code) {
    return code == WXK_DOWN || code == WXK_NUMPAD_DOWN;
}

bool isUp(int code) {
    return code == WXK_UP || code == WXK_NUMPAD_UP;
}

}  // namespace

/// Before any control of the row sees the key.
void CListCtrlEx::onKey(wxKeyEvent& event) {
    const int code = event.GetKeyCode();
    bool handled = false;
    fresh_ = false;
    if (field_.options())
        handled = handleOptionsKey(code);
    else
        handled =
            chooserKey(event) || (field_.isOpen() ? handleFieldKey(event)
                                                  : handleIdleKey(event) || handleMoveKey(event));
    if (!handled) event.Skip();
}

/// The open list takes its keys itself; only what would reach the window behind it is kept here.
bool CListCtrlEx::handleOptionsKey(int code) {
    if (code != WXK_ESCAPE && code != WXK_TAB) return false;
    field_.options()->Dismiss();
    field_.close();
    SetFocus();
    if (code == WXK_TAB) moveByTab(!wxGetKeyState(WXK_SHIFT));
    return true;
}

bool CListCtrlEx::chooserKey(const wxKeyEvent& key) {
    const int code = key.GetKeyCode();
    const bool plainF4 = code == WXK_F4 && !key.HasAnyModifiers();
    const bool altDown = isDown(code) && key.GetModifiers() == wxMOD_ALT;
    if (!plainF4 && !altDown) return false;
    openChooser();
    return true;
}

bool CListCtrlEx::handleFieldKey(const wxKeyEvent& key) {
    const int code = key.GetKeyCode(), modifiers = key.GetModifiers();
    if (code == WXK_TAB && (modifiers & ~wxMOD_SHIFT) == 0)
        moveByTab(modifiers == wxMOD_NONE);
    else if (code == WXK_ESCAPE)
        revert();
    else if (code == 'Z' && modifiers == wxMOD_CONTROL && field_.modified())
        field_.set(field_.original());
    else if (modifiers != wxMOD_NONE)
        return false;
    else if (isReturn(code))
        commit();
    else if (isUp(code) || isDown(code) || code == WXK_PAGEUP || code == WXK_PAGEDOWN)
        return commit() ? handleMoveKey(key) : true;
    else
        return false;
    return true;
}

bool CListCtrlEx::handleIdleKey(const wxKeyEvent& key) {
    const int code = key.GetKeyCode(), modifiers = key.GetModifiers();
    if (code == WXK_TAB && (modifiers & ~wxMOD_SHIFT) == 0) {
        moveByTab(modifiers == wxMOD_NONE);
        return true;
    }
    if (code == 'C' && modifiers == wxMOD_CONTROL) {
        copyValue();
        return true;
    }
    FormRow* row = selectedRow();
    if (modifiers != wxMOD_NONE) return false;
    if (isReturn(code) || code == WXK_F2) {
        if (row)
            beginEdit(*row);
        else
            fold(!GetSelection() || !GetSelection()->IsExpanded());
        return true;
    }
    if (!row || (code != WXK_DELETE && code != WXK_BACK)) return false;
    typeOn(*row, wxEmptyString);
    return true;
}

bool CListCtrlEx::handleMoveKey(const wxKeyEvent& key) {
    if (key.HasAnyModifiers()) return false;
    const int page = std::max(1, GetClientSize().y / GetRowHeight() - 1);
    switch (key.GetKeyCode()) {
        case WXK_UP:
        case WXK_NUMPAD_UP:
            moveBy(-1);
            return true;
        case WXK_DOWN:
        case WXK_NUMPAD_DOWN:
            moveBy(1);
            return true;
        case WXK_PAGEUP:
            moveBy(-page);
            return true;
        case WXK_PAGEDOWN:
            moveBy(page);
            return true;
        case WXK_HOME:
            moveToEnd(false);
            return true;
        case WXK_END:
            moveToEnd(true);
            return true;
        case WXK_LEFT:
            fold(false);
            return true;
        case WXK_RIGHT:
            fold(true);
            return true;
        default:
            return false;
    }
}

/// What was typed on an idle row: composed characters arrive here, not in the hook.
void CListCtrlEx::onCharacter(wxKeyEvent& event) {
    FormRow* row = selectedRow();
    const wxChar character = event.GetUnicodeKey();
    const bool command = event.ControlDown() != event.AltDown();  // both together: AltGr
    if (!row || field_.isOpen() || command || character < ' ' || character == 0x7F)
        return event.Skip();
    typeOn(*row, wxString(character));
}

void CListCtrlEx::typeOn(FormRow& row, const wxString& typed) {
    const std::int32_t property = row.property();
    if (!session_.state(property).editable) return;
    const RowEditor editor = editorOf(property);
    if (editor == RowEditor::lines) return openLines(row, typed, true);
    if (editor == RowEditor::toggle) {
        if (typed == " ") return toggle(row);
        const auto begins = [&](FormText text) {
            const wxString word = toDisplay(formText(text, session_.locale()));
            return !typed.empty() && word.Left(1).IsSameAs(typed, false);
        };
        if (begins(FormText::yes)) take(row, session_.setBoolean(property, true));
        if (begins(FormText::no)) take(row, session_.setBoolean(property, false));
        return;
    }
    beginEdit(row);
    if (field_.text()) {
        field_.set(typed);
        field_.hideRefusal();
    }
    field_.markOption(typed);
}

/// Leaves the list behind its last row and before its first.
void CListCtrlEx::moveByTab(bool forward) {
    const bool wasEditing = field_.isOpen();
    if (!commit()) return;
    std::int32_t from = selectedProperty();
    if (const wxPGProperty* caption = GetSelection(); caption && from < 0) {
        const FormRow* child = caption->GetChildCount() ? asFormRow(caption->Item(0)) : nullptr;
        from = child ? child->property() : -1;
    }
    const std::int32_t next = from >= 0 ? session_.nextEditable(from, forward) : -1;
    if (next < 0) {
        Navigate(forward ? wxNavigationKeyEvent::IsForward : wxNavigationKeyEvent::IsBackward);
        return;
    }
    if (!select(next)) return;
    const RowEditor editor = editorOf(next);
    const bool field = editor == RowEditor::field || editor == RowEditor::fieldAndButton;
    if (wasEditing && field) editSelected();
}

void CListCtrlEx::moveBy(int step) {
    wxPGProperty* item = GetSelection();
    if (!item) return moveToEnd(step < 0);
    const int direction = step < 0 ? -1 : 1;
    for (int i = 0; i != step; i += direction) {
        wxPGProperty* next =
            wxPropertyGridIterator::OneStep(m_pState, wxPG_ITERATE_VISIBLE, item, direction);
        if (!next) break;
        item = next;
    }
    DoSelectProperty(item, 0);
}

void CListCtrlEx::moveToEnd(bool last) {
    wxPGProperty* item = last ? GetLastItem(wxPG_ITERATE_VISIBLE)
                              : wxPropertyGridInterface::GetFirst(wxPG_ITERATE_VISIBLE);
    if (item) DoSelectProperty(item, 0);
}

/// Opens or closes the rows below the selected caption; from a row, left goes to its caption.
void CListCtrlEx::fold(bool open) {
    wxPGProperty* item = GetSelection();
    if (!item) return;
    if (item->IsCategory()) {
        open ? Expand(item) : Collapse(item);
    } else if (!open && item->GetParent()->IsCategory()) {
        DoSelectProperty(item->GetParent(), 0);
    }
}

void CListCtrlEx::copyValue() const {
    if (const FormRow* row = selectedRow())
        copyToClipboard(toDisplay(session_.fullText(row->property())));
}

}  // namespace korvant::ui
