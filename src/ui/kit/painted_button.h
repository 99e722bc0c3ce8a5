// A painted button of the editor's window: an icon, a word and its key.
#pragma once

#include <optional>

#include "ui/kit/painted_window.h"

namespace korvant::ui {

class PaintedButton : public PaintedWindow {
  public:
    enum class Kind {
        plain,   ///< no edge; a shade under the pointer
        main,    ///< the one thing to press next
        framed,  ///< an edge of its own
        option,  ///< inside a field; while it is on, in the accent's colour
        link,    ///< text in the accent's colour
        danger   ///< text in the colour of errors
    };
    struct Face {
        std::optional<Icon> icon;
        wxString label;
        wxString key;   ///< shown beside the label, and said with the name
        wxString name;  ///< for readers of the screen and the tip; empty: the label
        Rgb ThemeTable::*iconColour = nullptr;  ///< instead of the text's
        bool strong = false;
        bool endIcon = false;  ///< the icon stands behind the label
    };

    PaintedButton(wxWindow* parent, const Look& look, Kind kind, Face face,
                  std::function<void()> pressed);

    void setFace(Face face);
    void setAction(std::function<void()> pressed) { pressed_ = std::move(pressed); }
    const Face& face() const { return face_; }
    /// Words are left out where there is no room.
    void showWords(bool shown);
    void setPressed(bool pressed);
    bool isPressed() const { return toggled_; }
    /// Behind the button.
    void setBack(Rgb ThemeTable::*back) { back_ = back; }
    /// Of the icon before a link's word.
    void setIconPlace(int size, int gap) {
        iconSize_ = size;
        iconGap_ = gap;
    }
    /// Only one button of a bar is reached by Tab.
    void setTabStop(bool stop) { tabStop_ = stop; }
    bool AcceptsFocusFromKeyboard() const override { return tabStop_ && AcceptsFocus(); }

    void press();
    int wantedWidth() const;
    wxSize DoGetBestClientSize() const override { return {wantedWidth(), dip(32)}; }

  private:
    void paint(wxGraphicsContext& context) override;
    void paintBack(wxGraphicsContext& context);
    Rgb textColour() const;
    int keyGap() const;
    bool wordless() const { return !words_ || (face_.label.empty() && face_.key.empty()); }
    void onKey(wxKeyEvent& event);
    void refreshName();

    Kind kind_;
    Face face_;
    std::function<void()> pressed_;
    Rgb ThemeTable::*back_ = &ThemeTable::chrome;
    int iconSize_ = 16, iconGap_ = 8;
    bool words_ = true;
    bool toggled_ = false;
    bool down_ = false;
    bool tabStop_ = true;
};

}  // namespace korvant::ui
