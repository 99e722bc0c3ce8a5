// The part of the console window that shows the text.
#pragma once

#include <wx/scrolbar.h>
#include <wx/window.h>

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <utility>

#include "host/terminal/console_grid.h"
#include "host/terminal/console_line.h"

namespace korvant::ui {

/// What a canvas is painted with.
struct ConsoleColours {
    wxColour front[16];  ///< by attribute bits: 1 blue, 2 green, 4 red, 8 intense
    wxColour back[16];   ///< behind text; 0 behind everything
    wxColour cursor;
    wxColour inputLine;          ///< behind the line that is being typed; invalid: as the rest
    bool strongIntense = false;  ///< intense characters are bold
    int margin = 0;              ///< left of the text, in pixels
};
/// Those of a console window.
const ConsoleColours& consoleColours();

/// Paints a grid, follows its cursor or the user's scrolling, and lets text be selected. Left drag
/// selects, a double click a word; Ctrl+Shift+C, Ctrl+Insert and the menu copy; Ctrl+V,
/// Shift+Insert and the menu paste; Shift with Page Up or Down, Ctrl with Home or End, and the
/// wheel scroll. Ctrl+C and Ctrl+Break are the stop request and nothing else, whatever is selected.
class ConsoleCanvas : public wxWindow {
  public:
    ConsoleCanvas(wxWindow* parent, const ConsoleGrid& grid, wxScrollBar& bar);

    std::function<void(const ConsoleKey&)> onKey;  ///< also once for each pasted character
    std::function<void()> onInterrupt;
    /// A menu and the clipboard need an event loop: without one they would keep the script waiting.
    std::function<bool()> mayAsk;

    /// Takes over what has changed in the grid; the painting follows.
    void update();
    /// Room for so many cells.
    wxSize sizeFor(int columns, int rows) const;

    bool hasSelection() const { return selection().has_value(); }
    std::string selectedText() const;  ///< UTF-8
    /// What is selected; with nothing selected nothing, or everything where that is wanted.
    void copy();
    void setCopiesAll(bool all) { copiesAll_ = all; }
    void paste(bool primarySelection = false);
    void selectAll();
    void scrollTo(std::int64_t firstLine);
    void followCursor();
    std::int64_t firstShown() const { return first_; }
    void setColours(const ConsoleColours& colours);
    /// `beyond`: pixels above and below the letters of a row.
    void setTextFont(const wxFont& font, int beyond = 0);
    /// The cursor's line is being typed.
    void setTyping(bool typing);
    int shownRows() const;

  private:
    using Selection = std::pair<ConsolePlace, ConsolePlace>;

    void connect();
    void onPaint(wxPaintEvent& event);
    void paintRow(wxDC& dc, int row, const std::optional<Selection>& marked);
    void paintRun(wxDC& dc, int row, int column, std::span<const ConsoleCell> cells, bool marked);
    void paintCursor(wxDC& dc);
    wxPoint cornerOf(int row, int column) const;
    void scrollSideways(int columns);
    void showColumn(int column);

    void onChar(wxKeyEvent& event);
    bool handleShortcut(const wxKeyEvent& event);
    bool handleScrollKey(const wxKeyEvent& event);
    void onMouse(wxMouseEvent& event);
    void onDoubleClick(wxMouseEvent& event);
    void onContextMenu(wxContextMenuEvent& event);

    void updateBar();
    ConsolePlace placeAt(const wxPoint& point) const;
    std::optional<Selection> selection() const;
    void select(ConsolePlace from, ConsolePlace to);

    bool copiesAll_ = false;
    const ConsoleGrid& grid_;
    wxScrollBar& bar_;
    ConsoleColours colours_ = consoleColours();
    wxFont strong_;
    wxSize cell_;
    int beyond_ = 0;
    int left_ = 0;  ///< the first column that is shown
    bool typing_ = false;
    std::int64_t first_ = 0;
    bool follows_ = true;
    std::uint64_t painted_ = ~std::uint64_t{0};
    std::optional<ConsolePlace> anchor_;
    ConsolePlace head_;
};

}  // namespace korvant::ui
