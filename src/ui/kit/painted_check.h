// A box or a round button with its word, in the colours of the editor's window: what the toolkit
// draws follows the desktop, not the theme that the user chose.
#pragma once

#include "ui/kit/painted_window.h"

namespace korvant::ui {

class PaintedCheck : public PaintedWindow {
  public:
    enum class Kind { box, choice };  ///< a choice is never taken back by a second click

    /// `changed` is told after the user's click or key; it may be empty.
    PaintedCheck(wxWindow* parent, const Look& look, Kind kind, const wxString& label,
                 std::function<void(bool)> changed = {});

    bool value() const { return value_; }
    void setValue(bool value);
    const wxString& label() const { return label_; }
    int wantedWidth() const;
    /// What is behind it, and the word's colour and distance; kept by the theme's name.
    void setBack(Rgb ThemeTable::*back) { back_ = back; }
    void setWord(Rgb ThemeTable::*colour, int gap);

  private:
    void press();
    void refreshName();
    int markSize() const;
    void paintMark(wxGraphicsContext& context, const wxRect& place);
    void paint(wxGraphicsContext& context) override;

    Kind kind_;
    wxString label_;
    std::function<void(bool)> changed_;
    Rgb ThemeTable::*back_ = &ThemeTable::chrome;
    Rgb ThemeTable::*wordColour_ = &ThemeTable::text;
    int gap_;
    bool value_ = false;
};

/// The box of a check or of a row.
void paintCheckMark(wxGraphicsContext& context, const Look& look, const wxRect& place,
                    double radius, bool checked);

}  // namespace korvant::ui
