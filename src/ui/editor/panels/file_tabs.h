// The files that are open as tabs over the text, and the function at the caret.
#pragma once

#include <cstdint>
#include <vector>

#include "editor/open_documents.h"
#include "ui/kit/painted_button.h"

namespace korvant::ui {

class FunctionChooser;

/// One tab stop; the arrows go from tab to tab and on to the function.
class FileTabs : public PaintedWindow {
  public:
    struct Actions {
        std::function<void(std::uint64_t id)> chosen;
        std::function<void(std::uint64_t id)> closed;
        /// Before the one that is at `index` now.
        std::function<void(std::uint64_t id, std::size_t index)> moved;
        std::function<void()> toText;     ///< the keyboard goes to the text
        std::function<void()> functions;  ///< the outline is to open
    };
    FileTabs(wxWindow* parent, const Look& look, Actions actions);

    void setTabs(std::vector<DocumentTab> tabs, std::uint64_t shown);
    const std::vector<DocumentTab>& tabs() const { return tabs_; }
    std::uint64_t shown() const { return shown_; }
    /// Of the function, class or enum around the caret; empty for none.
    void setFunction(const wxString& path);
    FunctionChooser* chooser() const { return chooser_; }
    /// The list of all files; shown where not all tabs fit.
    PaintedButton* more() const { return more_; }
    /// Where a tab is painted, and the cross in it.
    wxRect tabPlace(std::size_t index) const;
    wxRect crossPlace(std::size_t index) const;

  private:
    void paint(wxGraphicsContext& context) override;
    void paintTab(wxGraphicsContext& context, std::size_t index);
    void paintCross(wxGraphicsContext& context, std::size_t index);
    void place();
    void showWhole(std::size_t index);
    void scroll(int pixels);
    int room() const;
    int tabWidth(std::size_t index) const;
    wxString nameOn(std::size_t index) const;
    std::size_t shownIndex() const;
    /// The tab at a place; none: the number of tabs.
    std::size_t tabAt(const wxPoint& place) const;
    bool isOnCross(std::size_t index, const wxPoint& place) const;
    void bindMouse();
    void onMotion(wxMouseEvent& event);
    void onRelease(wxMouseEvent& event);
    void drag(int x);
    void moveShown(int by);
    void onKey(wxKeyEvent& event);
    void step(int by);
    void openList();
    void refreshName();

    Actions actions_;
    std::vector<DocumentTab> tabs_;
    std::uint64_t shown_ = 0;
    FunctionChooser* chooser_;
    PaintedButton* more_;
    std::vector<int> ends_;      ///< of the tabs, from the left of the first
    int scrolled_ = 0;           ///< pixels
    std::uint64_t pressed_ = 0;  ///< the tab whose cross is held down
    std::uint64_t dragged_ = 0;  ///< the tab that is held down
    int dragFrom_ = 0;
    wxPoint pointer_{-1, -1};
};

}  // namespace korvant::ui
