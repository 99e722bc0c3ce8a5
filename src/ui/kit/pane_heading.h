// The heading of a pane: a title or several as tabs, a remark, and buttons at the right.
#pragma once

#include <vector>

#include "ui/kit/painted_button.h"

namespace korvant::ui {

class PaneHeading : public PaintedWindow {
  public:
    struct Title {
        wxString text;
        wxString badge;  ///< in a coloured pill; empty: none
    };
    /// How the heading shows which title is the chosen one.
    enum class Style {
        underlined,  ///< a line of the accent's colour
        folding,     ///< an arrow before it: a click or Left and Right fold the pane
        bare
    };

    PaneHeading(wxWindow* parent, const Look& look, Style style, std::vector<Title> titles);

    void setTitles(std::vector<Title> titles);
    void setRemark(const wxString& remark);
    void choose(int title);
    int chosen() const { return chosen_; }
    void setFolded(bool folded);
    bool folded() const { return folded_; }
    /// Without a line on top, for a heading below another line; with one below always.
    void setTopLine(bool shown) { topLine_ = shown; }
    /// The line below parts it from other chrome, not from its own rows.
    void setStrongEnd() { end_ = &ThemeTable::border; }

    /// Where the first title stands, and the distance between titles where there is room.
    void setTitlePlace(int start, int gap) {
        start_ = start;
        gap_ = gap;
    }

    /// A button at the right; the last one added is the rightmost.
    PaintedButton* addButton(Icon icon, const wxString& name, std::function<void()> pressed);
    void showButton(PaintedButton* button, bool shown);

    std::function<void(int)> onChosen;
    std::function<void(bool)> onFolded;

  private:
    void paint(wxGraphicsContext& context) override;
    int paintTitle(wxGraphicsContext& context, int index, int x);
    int titleStart() const;
    int titleGap() const;
    int titleWidth(const Title& title, bool isChosen) const;
    void placeButtons();
    void onClick(wxMouseEvent& event);
    void onKey(wxKeyEvent& event);
    void refreshName();

    Style style_;
    std::vector<Title> titles_;
    wxString remark_;
    std::vector<PaintedButton*> buttons_;
    Rgb ThemeTable::*end_ = &ThemeTable::hair;
    int chosen_ = 0;
    int start_ = 16, gap_ = 24;
    bool folded_ = false;
    bool topLine_ = true;
};

}  // namespace korvant::ui
