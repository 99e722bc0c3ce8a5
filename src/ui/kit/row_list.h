// A painted list or tree: rows of an icon, a name, a value and a remark.
#pragma once

#include <optional>
#include <vector>

#include "ui/kit/painted_window.h"

namespace korvant::ui {

struct ListRow {
    enum class Fold { none, closed, open };

    int depth = 0;
    Fold fold = Fold::none;
    std::optional<bool> check;
    std::optional<Icon> icon;
    Rgb ThemeTable::*iconColour = &ThemeTable::secondText;
    bool heading = false;  ///< the name stands where others have their icon
    wxString name;
    bool nameCode = false, nameStrong = false;
    Rgb ThemeTable::*nameColour = &ThemeTable::text;
    wxString value;
    bool valueCode = true;
    bool changed = false;  ///< since the last stop
    Rgb ThemeTable::*valueColour = &ThemeTable::text;
    wxString remark;  ///< behind the value, or behind the name where there is no value
    wxString right;   ///< at the right edge
};

/// Where things stand in a row, in sizes at 96 dots per inch.
struct ListMetrics {
    int checkX = 6, iconX = 5, nameX = 24, indent = 18;
    int foldX = 3;
    double valueShare = 0;  ///< of the width; 0: behind the name
    int rightMargin = 12;
    int rowHeight = 24;
    int iconSize = 16;
    int valueGap = 10;      ///< between name and value where they follow each other
    bool chevrons = false;  ///< thin signs of folding
    bool quietBar = false;  ///< the scroll bar shows under the pointer alone
    Rgb ThemeTable::*back = &ThemeTable::panel;
    int top = 0;      ///< above the first row
    int emptyX = 24;  ///< of what stands there without rows
};

/// Rows are asked for as they are painted, so a list of any length costs what is in view. Up, Down,
/// Home, End and the page keys move; Left and Right fold; the other keys and clicks are told by the
/// callbacks, each with the row's number.
class RowList : public PaintedWindow {
  public:
    RowList(wxWindow* parent, const Look& look, const ListMetrics& metrics, const wxString& name);

    std::function<int()> count;
    std::function<ListRow(int)> row;
    std::function<void(int)> onSelected;   ///< by the user
    std::function<void(int)> onClicked;    ///< on the row itself
    std::function<void(int)> onActivated;  ///< Enter or a double click
    std::function<void(int)> onEdit;       ///< F2
    std::function<void(int)> onRemove;     ///< Del
    std::function<void(int)> onCheck;      ///< Space or a click on the box
    std::function<void(int)> onFold;       ///< the row's fold is to change
    std::function<void(int)> onCopy;       ///< Ctrl+C
    std::function<void(int, wxPoint)> onMenu;
    std::function<void()> onMoved;  ///< rows may stand elsewhere in the list, or are others

    /// The rows may be others now; the selection stays where it is as far as it can.
    void rowsChanged();
    int selected() const { return selected_; }
    void select(int index);
    void setEmptyText(const wxString& text) { emptyText_ = text; }
    /// Of the value of a row, in the list's own pixels.
    wxRect valueRect(int index) const;
    wxRect nameRect(int index) const;
    int wantedHeight() const { return rowCount() * rowHeight() + dip(metrics_.top); }
    const ListMetrics& metrics() const { return metrics_; }
    int rowAt(int y) const;

  private:
    void paint(wxGraphicsContext& context) override;
    void paintRow(wxGraphicsContext& context, int index, int y);
    void paintFold(wxGraphicsContext& context, const ListRow& shown, int y) const;
    void paintCheck(wxGraphicsContext& context, bool checked, int y) const;
    int paintName(wxGraphicsContext& context, const ListRow& item, int y, int limit);
    int paintValue(wxGraphicsContext& context, const ListRow& item, int x, int y, int limit);
    void paintScrollBar(wxGraphicsContext& context) const;
    int rowCount() const { return count ? count() : 0; }
    int rowHeight() const { return dip(metrics_.rowHeight); }
    int valueX() const;
    int rowsInView() const;
    void scrollTo(int first);
    void moveTo(int index);
    bool moveByKey(int code);
    void onKey(wxKeyEvent& event);
    void onClick(wxMouseEvent& event);
    void tellSelection();

    ListMetrics metrics_;
    wxString listName_;
    wxString emptyText_;
    int selected_ = -1;
    int first_ = 0;
};

}  // namespace korvant::ui
