// The line at the bottom of the editor's window: the state in words, and where the caret is.
#pragma once

#include <vector>

#include "ui/kit/painted_window.h"

namespace korvant::ui {

class StatusLine : public PaintedWindow {
  public:
    struct Content {
        Icon icon = Icon::check;
        Rgb ThemeTable::*iconColour = &ThemeTable::well;
        Rgb ThemeTable::*back = &ThemeTable::chrome;
        wxString text;
        wxString remark;
        std::vector<wxString> right;
        bool operator==(const Content&) const = default;
    };

    StatusLine(wxWindow* parent, const Look& look);
    void setContent(const Content& content);
    const Content& content() const { return content_; }
    std::function<void()> onPressed;  ///< a click on the text

  private:
    void paint(wxGraphicsContext& context) override;
    int endOfText() const;

    Content content_;
};

}  // namespace korvant::ui
