#include "ui/kit/painted_window.h"

#include <wx/dcbuffer.h>
#include <wx/dcclient.h>
#include <wx/hashmap.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <unordered_map>
#include <utility>
#include <vector>

#include "ui/kit/ui_native.h"

namespace korvant::ui {
namespace {

constexpr int kFocusWidth = 2, kFieldRadius = 5;
constexpr double kFocusRadius = 4;
constexpr std::size_t kMostMeasured = 4096;

/// Texts that were measured. What is painted is measured several times for each painting, and that
/// takes longer than painting it. Never destroyed, so that nothing of it runs at exit.
class Measured {
  public:
    /// What `measure` says of the text; `kind` tells two ways of measuring apart.
    template <class Measure>
    static double of(const wxWindow& window, const wxString& text, const wxFont& font, int kind,
                     const Measure& measure) {
        static auto* const all = new std::unordered_map<Key, double, Hash>;
        Key key{text, font, native::textScale(window), kind};
        if (const auto found = all->find(key); found != all->end()) return found->second;
        if (all->size() >= kMostMeasured) all->clear();
        return all->emplace(std::move(key), measure()).first->second;
    }

  private:
    /// Holds the font, so that no other one can come to have its data's place.
    struct Key {
        wxString text;
        wxFont font;
        double scale;
        int kind;
        bool operator==(const Key& other) const {
            return font.GetRefData() == other.font.GetRefData() && scale == other.scale &&
                   kind == other.kind && text == other.text;
        }
    };
    struct Hash {
        std::size_t operator()(const Key& key) const {
            return wxStringHash()(key.text) ^ reinterpret_cast<std::size_t>(key.font.GetRefData());
        }
    };
};

enum { kWidth, kHeight };

/// Fonts for painting: to make one takes longer than to write a word with it. Never destroyed, as
/// above.
class PaintedFonts {
  public:
    static const wxGraphicsFont& of(const wxWindow& window, wxGraphicsContext& context,
                                    const wxFont& font, const wxColour& colour) {
        static auto* const all = new std::vector<PaintedFonts>;
        const double scale = native::textScale(window);
        const auto found = std::find_if(all->begin(), all->end(), [&](const PaintedFonts& one) {
            return one.font_.GetRefData() == font.GetRefData() && one.colour_ == colour &&
                   one.scale_ == scale;
        });
        if (found != all->end()) return found->painted_;
        if (all->size() >= kMostFonts) all->clear();
        all->push_back({font, colour, scale, context.CreateFont(font, colour)});
        return all->back().painted_;
    }

    PaintedFonts(const wxFont& font, const wxColour& colour, double scale, wxGraphicsFont painted)
        : font_(font), colour_(colour), scale_(scale), painted_(std::move(painted)) {}

  private:
    static constexpr std::size_t kMostFonts = 64;

    wxFont font_;  ///< held, so that no other one can come to have its data's place
    wxColour colour_;
    double scale_;
    wxGraphicsFont painted_;
};

}  // namespace

PaintedWindow::PaintedWindow(wxWindow* parent, const Look& look, bool focusable)
    : look_(look), focusable_(focusable) {
    SetBackgroundStyle(wxBG_STYLE_PAINT);
    Create(parent, wxID_ANY, wxDefaultPosition, wxSize(0, 0),
           wxBORDER_NONE | wxWANTS_CHARS | wxFULL_REPAINT_ON_RESIZE);
    SetCanFocus(focusable);
    Bind(wxEVT_PAINT, &PaintedWindow::onPaint, this);
    const auto repaint = [this](wxEvent& event) {
        Refresh();
        event.Skip();
    };
    Bind(wxEVT_SET_FOCUS, [repaint](wxFocusEvent& event) { repaint(event); });
    Bind(wxEVT_KILL_FOCUS, [repaint](wxFocusEvent& event) { repaint(event); });
    Bind(wxEVT_ENTER_WINDOW, [this, repaint](wxMouseEvent& event) {
        hovered_ = true;
        repaint(event);
    });
    Bind(wxEVT_LEAVE_WINDOW, [this, repaint](wxMouseEvent& event) {
        hovered_ = false;
        repaint(event);
    });
}

wxVisualAttributes PaintedWindow::GetDefaultAttributes() const {
    if (!look_.plain.IsOk()) return Guarded<wxControl>::GetDefaultAttributes();
    wxVisualAttributes own;
    own.font = look_.plain;
    own.colFg = colourOf(look_->text);
    own.colBg = colourOf(look_->chrome);
    return own;
}

void PaintedWindow::setAccessibleName(const wxString& name) {
    if (name == name_) return;
    name_ = name;
    native::setAccessibleName(*this, name);
}

void PaintedWindow::onPaint(wxPaintEvent&) {
    wxAutoBufferedPaintDC dc(this);
    const std::unique_ptr<wxGraphicsContext> context(wxGraphicsContext::Create(dc));
    if (!context) return;
    context->DisableOffset();  // who draws a line puts it into the middle of its pixels
    guarded([&] { paint(*context); });
}

void PaintedWindow::text(wxGraphicsContext& context, const wxString& text, const wxFont& font,
                         Rgb colour, double x, double y, double height) const {
    if (text.empty()) return;
    context.SetFont(PaintedFonts::of(*this, context, font, colourOf(colour)));
    const double tall = Measured::of(*this, text, font, kHeight, [&] {
        double width = 0, extent = 0;
        context.GetTextExtent(text, &width, &extent);
        return extent;
    });
    context.DrawText(text, x, std::ceil(y + (height - tall) / 2));
}

void PaintedWindow::fill(wxGraphicsContext& context, const wxRect& place, Rgb colour) const {
    context.SetPen(wxNullGraphicsPen);
    context.SetBrush(wxBrush(colourOf(colour)));
    context.DrawRectangle(place.x, place.y, place.width, place.height);
}

void PaintedWindow::rounded(wxGraphicsContext& context, const wxRect& place, double radius,
                            Rgb colour) const {
    context.SetPen(wxNullGraphicsPen);
    context.SetBrush(wxBrush(colourOf(colour)));
    context.DrawRoundedRectangle(place.x, place.y, place.width, place.height, radius);
}

void PaintedWindow::fieldBox(wxGraphicsContext& context, const wxRect& place, bool focused,
                             bool enabled) const {
    const double edge = focused ? dip(kFocusWidth) : 1, half = edge / 2;
    const Rgb line = focused ? look_->accent : enabled ? look_->fieldEdge : look_->border;
    context.SetPen(wxPen(colourOf(line), static_cast<int>(edge)));
    context.SetBrush(wxBrush(colourOf(enabled ? look_->editor : look_->chrome)));
    context.DrawRoundedRectangle(place.x + half, place.y + half, place.width - edge,
                                 place.height - edge, dip(kFieldRadius));
}

void PaintedWindow::focusMark(wxGraphicsContext& context, const wxRect& place) const {
    const int width = dip(kFocusWidth);
    context.SetPen(wxPen(colourOf(look_->accent), width));
    context.SetBrush(wxNullGraphicsBrush);
    context.DrawRoundedRectangle(place.x + width / 2.0, place.y + width / 2.0, place.width - width,
                                 place.height - width, FromDIP(kFocusRadius));
}

int textWidth(const wxWindow& window, const wxString& text, const wxFont& font) {
    if (text.empty()) return 0;
    return static_cast<int>(Measured::of(window, text, font, kWidth, [&] {
        int width = 0;
        window.GetTextExtent(text, &width, nullptr, nullptr, nullptr, &font);
        return width;
    }));
}

wxString shortened(const wxWindow& window, const wxString& text, const wxFont& font, int width) {
    if (textWidth(window, text, font) <= width) return text;
    wxClientDC measure(const_cast<wxWindow*>(&window));
    measure.SetFont(font);
    return wxControl::Ellipsize(text, measure, wxELLIPSIZE_END, std::max(width, 0));
}

}  // namespace korvant::ui
