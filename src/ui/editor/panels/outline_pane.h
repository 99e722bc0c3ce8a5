// The outline at the left: classes, enums and functions of the script.
#pragma once

#include <string>
#include <vector>

#include "editor/assist/outline.h"
#include "ui/kit/pane_heading.h"
#include "ui/kit/row_list.h"

namespace korvant::ui {

class OutlinePane : public PaintedWindow {
  public:
    OutlinePane(wxWindow* parent, const Look& look);

    void setEntries(std::vector<OutlineEntry> entries);
    /// Marks the entry around the caret.
    void setCaret(std::size_t position);
    /// Of what is around a place, the innermost; empty for nothing.
    std::string pathAt(std::size_t position) const;
    RowList* list() const { return list_; }
    PaneHeading* heading() const { return heading_; }

    std::function<void(const OutlineEntry&)> onChosen;
    std::function<void()> onClosed;

  private:
    ListRow rowOf(const OutlineEntry& entry) const;
    void paint(wxGraphicsContext& context) override;

    std::vector<OutlineEntry> entries_;
    PaneHeading* heading_;
    RowList* list_;
};

}  // namespace korvant::ui
