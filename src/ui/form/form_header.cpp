#include "ui/form/form_header.h"

#include <wx/dcbuffer.h>

#include "object/form/form_texts.h"
#include "ui/form/form_list.h"
#include "ui/form/form_row_painter.h"
#include "ui/kit/text_conversion.h"

namespace korvant::ui {

FormHeader::FormHeader(wxWindow* parent, const CListCtrlEx& list, std::int32_t locale)
    : list_(list), locale_(locale) {
    SetBackgroundStyle(wxBG_STYLE_PAINT);
    Create(parent, wxID_ANY);
    Bind(wxEVT_PAINT, &FormHeader::onPaint, this);
    Bind(wxEVT_SIZE, [this](wxSizeEvent& event) {
        Refresh();
        event.Skip();
    });
}

wxSize FormHeader::DoGetBestClientSize() const {
    return wxSize(FromDIP(100), GetCharHeight() + FromDIP(8));
}

void FormHeader::onPaint(wxPaintEvent&) {
    wxAutoBufferedPaintDC dc(this);
    const Theme theme = currentTheme();
    const wxSize size = GetClientSize();
    dc.SetPen(theme.window);
    dc.SetBrush(theme.window);
    dc.DrawRectangle(wxPoint(0, 0), size);
    dc.SetPen(theme.rule);
    dc.DrawLine(0, size.y - 1, size.x, size.y - 1);
    dc.SetFont(GetFont());
    dc.SetTextForeground(blend(theme.text, theme.window, 0.75));
    const FormText captions[] = {FormText::property, FormText::value, FormText::unit};
    int left = list_.GetMarginWidth();
    for (int column = 0; column < static_cast<int>(list_.GetColumnCount()); ++column) {
        const int indent = form_size::kIndent + (column == 0 ? form_size::kMarkSpace : 0);
        const int rule = column > 0 ? 1 : 0;  // cells begin behind it
        const wxRect cell(left, 0, list_.columnWidth(column), size.y - 1);
        if (column > 0) dc.DrawLine(left, 4, left, size.y - 5);
        dc.SetClippingRegion(cell);
        dc.DrawLabel(toDisplay(formText(captions[column], locale_)),
                     wxRect(left + rule + FromDIP(indent), 0, cell.width, cell.height),
                     wxALIGN_CENTRE_VERTICAL);
        dc.DestroyClippingRegion();
        left += cell.width;
    }
}

}  // namespace korvant::ui
