// What the painted parts of the editor's window have in common.
#pragma once

#include <wx/brush.h>
#include <wx/control.h>
#include <wx/graphics.h>
#include <wx/pen.h>

#include <functional>
#include <string>

#include "ui/kit/guarded_window.h"
#include "ui/kit/icon_painter.h"
#include "ui/kit/look.h"

namespace korvant::ui {

/// A control that paints itself. Sizes in its code are for 96 dots per inch.
class PaintedWindow : public Guarded<wxControl> {
  public:
    /// `look` must outlive the window.
    PaintedWindow(wxWindow* parent, const Look& look, bool focusable);

    bool AcceptsFocus() const override { return focusable_ && IsEnabled(); }
    /// The look's. The desktop's are asked for seven times at each painting, and nothing is painted
    /// with them.
    wxVisualAttributes GetDefaultAttributes() const override;
    /// What a reader of the screen says of it.
    void setAccessibleName(const wxString& name);
    const wxString& accessibleName() const { return name_; }

  protected:
    virtual void paint(wxGraphicsContext& context) = 0;
    /// Of the pointer and the focus; each change repaints.
    bool hovered() const { return hovered_; }
    bool focused() const { return HasFocus(); }
    const Look& look() const { return look_; }
    int dip(int size) const { return FromDIP(size); }

    /// `baseline` centres in a row from `y` of `height`.
    void text(wxGraphicsContext& context, const wxString& text, const wxFont& font, Rgb colour,
              double x, double y, double height) const;
    void fill(wxGraphicsContext& context, const wxRect& place, Rgb colour) const;
    void rounded(wxGraphicsContext& context, const wxRect& place, double radius, Rgb colour) const;
    /// The box of a field without an edge of its own.
    void fieldBox(wxGraphicsContext& context, const wxRect& place, bool focused,
                  bool enabled = true) const;
    void focusMark(wxGraphicsContext& context, const wxRect& place) const;

  private:
    void onPaint(wxPaintEvent& event);

    const Look& look_;
    wxString name_;
    bool focusable_;
    bool hovered_ = false;
};

/// Width of a text in a font.
int textWidth(const wxWindow& window, const wxString& text, const wxFont& font);
/// `text`, with its end replaced by dots when it is wider than `width`.
wxString shortened(const wxWindow& window, const wxString& text, const wxFont& font, int width);

}  // namespace korvant::ui
