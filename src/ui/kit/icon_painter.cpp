#include "ui/kit/icon_painter.h"

#include <wx/brush.h>
#include <wx/graphics.h>
#include <wx/image.h>
#include <wx/pen.h>

#include <memory>

namespace korvant::ui {
namespace {

constexpr double kGrid = 16;
constexpr unsigned char kWeak = 110;

void addStep(wxGraphicsPath& path, const IconStep& step) {
    using Kind = IconStep::Kind;
    const double* v = step.values;
    switch (step.kind) {
        case Kind::move:
            return path.MoveToPoint(v[0], v[1]);
        case Kind::line:
            return path.AddLineToPoint(v[0], v[1]);
        case Kind::curve:
            return path.AddCurveToPoint(v[0], v[1], v[2], v[3], v[4], v[5]);
        case Kind::circle:
            return path.AddCircle(v[0], v[1], v[2]);
        case Kind::roundedBox:
            return path.AddRoundedRectangle(v[0], v[1], v[2], v[3], v[4]);
        case Kind::close:
            return path.CloseSubpath();
    }
}

void paintLayer(wxGraphicsContext& context, const IconLayer& layer, const wxColour& colour) {
    wxGraphicsPath path = context.CreatePath();
    for (const IconStep& step : layer.steps) addStep(path, step);
    if (layer.strokeWidth > 0) {
        context.SetPen(context.CreatePen(wxGraphicsPenInfo(colour)
                                             .Width(layer.strokeWidth)
                                             .Cap(wxCAP_ROUND)
                                             .Join(wxJOIN_ROUND)));
        context.StrokePath(path);
    } else {
        context.SetBrush(wxBrush(colour));
        context.SetPen(wxNullGraphicsPen);
        context.FillPath(path);
    }
}

class PaintedIcon : public wxBitmapBundleImpl {
  public:
    PaintedIcon(Icon icon, int size, const wxColour& first, const wxColour& second)
        : icon_(icon), size_(size), first_(first), second_(second) {}

    wxSize GetDefaultSize() const override { return {size_, size_}; }
    wxSize GetPreferredBitmapSizeAtScale(double scale) const override {
        return GetDefaultSize() * scale;
    }
    wxBitmap GetBitmap(const wxSize& size) override {
        wxImage image(size);
        image.InitAlpha();
        std::fill_n(image.GetAlpha(), size.x * size.y, static_cast<unsigned char>(0));
        {
            const std::unique_ptr<wxGraphicsContext> context(wxGraphicsContext::Create(image));
            paintIcon(*context, icon_, 0, 0, size.x, first_, second_);
        }
        return wxBitmap(image);
    }

  private:
    Icon icon_;
    int size_;
    wxColour first_, second_;
};

}  // namespace

void paintIcon(wxGraphicsContext& context, Icon icon, double x, double y, double size,
               const wxColour& first, const wxColour& second) {
    const wxColour weak(first.Red(), first.Green(), first.Blue(), kWeak);
    context.PushState();
    context.Translate(x, y);
    context.Scale(size / kGrid, size / kGrid);
    for (const IconLayer& layer : iconLayers(icon))
        paintLayer(context, layer, !layer.secondColour ? first : second.IsOk() ? second : weak);
    context.PopState();
}

wxBitmapBundle iconBundle(Icon icon, int size, const wxColour& first, const wxColour& second) {
    return wxBitmapBundle::FromImpl(new PaintedIcon(icon, size, first, second));
}

}  // namespace korvant::ui
