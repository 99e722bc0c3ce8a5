#include "ui/form/form_row_painter.h"

#include <wx/dc.h>
#include <wx/renderer.h>
#include <wx/settings.h>

#include <string_view>

#include "object/form/form_texts.h"
#include "ui/form/form_list.h"
#include "ui/form/form_marks.h"
#include "ui/kit/text_conversion.h"

namespace korvant::ui {
namespace {

wxRect centred(const wxRect& rect, int left, int width, int height) {
    return wxRect(rect.x + left, rect.y + (rect.height - height) / 2, width, height);
}

bool isRadio(const EditRow& about) {
    return about.letter == 'b' && about.radioGroup >= 0;
}

}  // namespace

FormRowPainter::FormRowPainter(const CListCtrlEx& list) : list_(list), theme_(currentTheme()) {}

bool FormRowPainter::Render(wxDC& dc, const wxRect& rect, const wxPropertyGrid*,
                            wxPGProperty* property, int column, int, int flags) const {
    const FormRow* row = asFormRow(property);
    if (!row) return false;
    const Cell cell{*row,
                    list_.session().row(row->property()),
                    list_.session().state(row->property()),
                    (flags & Selected) != 0,
                    list_.isFocused(),
                    column};
    const wxColour back = background(cell);
    dc.SetPen(back);
    dc.SetBrush(back);
    dc.DrawRectangle(rect);
    dc.SetTextForeground(ink(cell));
    if (column == 0)
        paintLabel(dc, rect, cell);
    else if (column == 1)
        paintValue(dc, rect, cell);
    else
        paintText(dc, rect, cell);
    return true;
}

wxColour FormRowPainter::background(const Cell& cell) const {
    if (cell.selected && !(cell.column == 1 && list_.isEdited(cell.row)))
        return cell.focused ? wxSystemSettings::GetColour(wxSYS_COLOUR_HIGHLIGHT)
                            : blend(theme_.fieldText, theme_.field, 0.14);
    if (cell.state.severity == Severity::error) return theme_.errorTint;
    if (cell.state.severity == Severity::warning) return theme_.warningTint;
    // Nothing can be entered here.
    if (cell.column == 1 && cell.state.locked) return blend(theme_.fieldText, theme_.field, 0.07);
    return theme_.field;
}

wxColour FormRowPainter::ink(const Cell& cell) const {
    const bool lit = cell.selected && cell.focused;
    const wxColour full =
        lit ? wxSystemSettings::GetColour(wxSYS_COLOUR_HIGHLIGHTTEXT) : theme_.fieldText;
    if (!cell.state.enabled) return blend(full, background(cell), 0.55);
    return cell.column == 2 ? blend(full, background(cell), 0.75) : full;
}

wxString FormRowPainter::cellText(const FormRow& row, int column) const {
    const EditRow& about = list_.session().row(row.property());
    if (column == 0) return fromUtf8(onOneLine(about.label));
    if (column == 2) return fromUtf8(onOneLine(about.unit));
    return fromUtf8(onOneLine(list_.session().state(row.property()).text));
}

int FormRowPainter::textOffset(const FormRow& row, int column) const {
    using namespace form_size;
    const char letter = list_.session().row(row.property()).letter;
    int offset = kIndent;
    if (column == 0) offset += kMarkSpace;
    if (column == 1 && letter == 'b') offset += kBoxSize + kGap;
    if (column == 1 && letter == 'c') offset += kSwatchWidth + kGap;
    return list_.FromDIP(offset);
}

int FormRowPainter::textWidth(const FormRow& row, int column) const {
    const bool arrow = column == 1 && list_.editorOf(row.property()) == RowEditor::option;
    const int right = form_size::kIndent + (arrow ? form_size::kArrowWidth : 0);
    const int button = column == 1 ? buttonWidth(row) : 0;
    return list_.columnWidth(column) - textOffset(row, column) - list_.FromDIP(right) - button;
}

int FormRowPainter::buttonWidth(const FormRow& row) const {
    const bool chosen = std::string_view("Ffce").find(list_.session().row(row.property()).letter) !=
                        std::string_view::npos;
    const bool shown = chosen && list_.session().state(row.property()).editable;
    return shown ? list_.FromDIP(form_size::kButtonWidth) : 0;
}

int FormRowPainter::switchWidth(const FormRow& row) const {
    return textOffset(row, 1) + list_.GetTextExtent(cellText(row, 1)).x;
}

void FormRowPainter::paintLabel(wxDC& dc, const wxRect& rect, const Cell& cell) const {
    const int size = list_.FromDIP(kMarkSize);
    drawMark(dc, centred(rect, list_.FromDIP(form_size::kIndent) / 2, size, size),
             cell.state.severity);
    if (!cell.state.changed) return paintText(dc, rect, cell);
    const wxFont plain = dc.GetFont();
    dc.SetFont(list_.GetCaptionFont());
    paintText(dc, rect, cell);
    dc.SetFont(plain);
}

void FormRowPainter::paintValue(wxDC& dc, const wxRect& rect, const Cell& cell) const {
    if (cell.state.empty) return;
    if (cell.about.letter == 'b') paintBox(dc, rect, cell);
    if (cell.about.letter == 'c') paintSwatch(dc, rect, cell);
    if (list_.editorOf(cell.row.property()) == RowEditor::option && cell.state.editable)
        paintArrow(dc, rect, cell);
    if (list_.isEdited(cell.row)) return;
    if (buttonWidth(cell.row) > 0) paintButton(dc, rect, cell);
    const wxFont plain = dc.GetFont();
    if (cell.state.computed) dc.SetFont(plain.Italic());
    paintText(dc, rect, cell);
    dc.SetFont(plain);
}

void FormRowPainter::paintText(wxDC& dc, const wxRect& rect, const Cell& cell) const {
    const wxString text = cellText(cell.row, cell.column);
    if (text.empty()) return;
    const bool file = cell.column == 1 && (cell.about.letter == 'F' || cell.about.letter == 'f');
    const wxString fitting =
        wxControl::Ellipsize(text, dc, file ? wxELLIPSIZE_MIDDLE : wxELLIPSIZE_END,
                             textWidth(cell.row, cell.column), wxELLIPSIZE_FLAGS_NONE);
    const int top = rect.y + (rect.height - dc.GetCharHeight()) / 2;
    dc.DrawText(fitting, rect.x + textOffset(cell.row, cell.column), top);
}

void FormRowPainter::paintBox(wxDC& dc, const wxRect& rect, const Cell& cell) const {
    const int size = list_.FromDIP(form_size::kBoxSize);
    const wxRect box = centred(rect, list_.FromDIP(form_size::kIndent), size, size);
    int flags = 0;
    if (list_.session().booleanValue(cell.row.property())) flags |= wxCONTROL_CHECKED;
    if (!cell.state.editable) flags |= wxCONTROL_DISABLED;
    wxWindow* window = const_cast<CListCtrlEx*>(&list_);
    if (isRadio(cell.about))
        wxRendererNative::Get().DrawRadioBitmap(window, dc, box, flags);
    else
        wxRendererNative::Get().DrawCheckBox(window, dc, box, flags);
}

void FormRowPainter::paintSwatch(wxDC& dc, const wxRect& rect, const Cell& cell) const {
    const auto colour =
        static_cast<std::uint32_t>(list_.session().integerValue(cell.row.property()));
    const int height = rect.height - list_.FromDIP(6);
    dc.SetPen(blend(theme_.fieldText, theme_.field, 0.5));
    dc.SetBrush(wxColour(static_cast<unsigned long>(colour & 0xFFFFFF)));
    dc.DrawRectangle(centred(rect, list_.FromDIP(form_size::kIndent),
                             list_.FromDIP(form_size::kSwatchWidth), height));
}

/// Three dots on a button.
void FormRowPainter::paintButton(wxDC& dc, const wxRect& rect, const Cell& cell) const {
    const int width = buttonWidth(cell.row), gap = list_.FromDIP(3), dot = list_.FromDIP(2);
    wxRect button(rect.GetRight() + 1 - width, rect.y, width, rect.height);
    button.Deflate(gap / 2 + 1);
    dc.SetPen(blend(theme_.text, theme_.window, 0.35));
    dc.SetBrush(theme_.window);
    dc.DrawRoundedRectangle(button, gap);
    dc.SetPen(*wxTRANSPARENT_PEN);
    dc.SetBrush(blend(theme_.text, theme_.window, 0.8));
    for (int i = -1; i <= 1; ++i)
        dc.DrawRectangle(button.x + button.width / 2 + i * 2 * dot - dot / 2,
                         button.y + button.height / 2, dot, dot);
}

void FormRowPainter::paintArrow(wxDC& dc, const wxRect& rect, const Cell& cell) const {
    const int width = list_.FromDIP(8), height = list_.FromDIP(4);
    const int left = rect.GetRight() - list_.FromDIP(form_size::kArrowWidth) + width / 4;
    const int top = rect.y + (rect.height - height) / 2;
    const wxPoint corners[] = {{left, top}, {left + width, top}, {left + width / 2, top + height}};
    const wxColour colour = blend(ink(cell), background(cell), 0.7);
    dc.SetPen(colour);
    dc.SetBrush(colour);
    dc.DrawPolygon(3, corners);
}

}  // namespace korvant::ui
