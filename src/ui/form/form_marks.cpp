#include "ui/form/form_marks.h"

#include <wx/dc.h>
#include <wx/graphics.h>
#include <wx/image.h>

#include <algorithm>
#include <memory>

namespace korvant::ui {
namespace {

const wxColour kErrorFill(0xD3, 0x22, 0x2A);
const wxColour kWarningFill(0xF7, 0xB2, 0x17);
const wxColour kWarningInk(0x2B, 0x20, 0x00);

/// A disc with a white cross.
void paintError(wxGraphicsContext& context, double left, double top, double size) {
    context.SetPen(*wxTRANSPARENT_PEN);
    context.SetBrush(wxBrush(kErrorFill));
    context.DrawEllipse(left + size * 0.06, top + size * 0.06, size * 0.88, size * 0.88);
    context.SetPen(
        context.CreatePen(wxGraphicsPenInfo(*wxWHITE).Width(size * 0.13).Cap(wxCAP_ROUND)));
    const double low = 0.34, high = 0.66;
    context.StrokeLine(left + size * low, top + size * low, left + size * high, top + size * high);
    context.StrokeLine(left + size * low, top + size * high, left + size * high, top + size * low);
}

/// A triangle with an exclamation mark.
void paintWarning(wxGraphicsContext& context, double left, double top, double size) {
    wxGraphicsPath path = context.CreatePath();
    path.MoveToPoint(left + size * 0.5, top + size * 0.13);
    path.AddLineToPoint(left + size * 0.93, top + size * 0.87);
    path.AddLineToPoint(left + size * 0.07, top + size * 0.87);
    path.CloseSubpath();
    context.SetBrush(wxBrush(kWarningFill));
    context.SetPen(
        context.CreatePen(wxGraphicsPenInfo(kWarningFill).Width(size * 0.1).Join(wxJOIN_ROUND)));
    context.DrawPath(path);
    context.SetPen(*wxTRANSPARENT_PEN);
    context.SetBrush(wxBrush(kWarningInk));
    context.DrawRoundedRectangle(left + size * 0.44, top + size * 0.36, size * 0.12, size * 0.27,
                                 size * 0.05);
    context.DrawEllipse(left + size * 0.43, top + size * 0.69, size * 0.14, size * 0.14);
}

void paintMark(wxGraphicsContext& context, const wxRect& square, Severity severity) {
    const double size = std::min(square.width, square.height);
    if (severity == Severity::error)
        paintError(context, square.x, square.y, size);
    else if (severity == Severity::warning)
        paintWarning(context, square.x, square.y, size);
}

/// With some room behind the mark, which tabs do not leave.
wxBitmap markBitmap(Severity severity, int size) {
    const int width = size + size / 4;
    wxImage image(width, size);
    image.InitAlpha();
    std::fill_n(image.GetAlpha(), width * size, static_cast<unsigned char>(0));
    {
        const std::unique_ptr<wxGraphicsContext> context(wxGraphicsContext::Create(image));
        if (context) paintMark(*context, wxRect(0, 0, size, size), severity);
    }
    return wxBitmap(image);
}

}  // namespace

void drawMark(wxDC& dc, const wxRect& square, Severity severity) {
    if (severity == Severity::none) return;
    const std::unique_ptr<wxGraphicsContext> context(wxGraphicsContext::CreateFromUnknownDC(dc));
    if (context) paintMark(*context, square, severity);
}

wxBitmapBundle markPicture(Severity severity) {
    return wxBitmapBundle::FromBitmaps(markBitmap(severity, kMarkSize),
                                       markBitmap(severity, 2 * kMarkSize));
}

}  // namespace korvant::ui
