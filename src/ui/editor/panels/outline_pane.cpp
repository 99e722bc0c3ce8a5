#include "ui/editor/panels/outline_pane.h"

#include <algorithm>

#include "ui/kit/text_conversion.h"
#include "ui/kit/window_words.h"

namespace korvant::ui {
namespace {

constexpr int kHeading = 36;

ListMetrics metrics() {
    ListMetrics places;
    places.iconX = 12;
    places.iconSize = 14;
    places.nameX = 34;
    places.indent = 16;
    places.top = 4;
    return places;
}

}  // namespace

OutlinePane::OutlinePane(wxWindow* parent, const Look& look)
    : PaintedWindow(parent, look, false),
      heading_(new PaneHeading(this, look, PaneHeading::Style::bare, {{words("Outline"), {}}})),
      list_(new RowList(this, look, metrics(), words("Outline"))) {
    heading_->setTopLine(false);
    heading_->setStrongEnd();
    heading_->addButton(Icon::close, words("Close"), [this] { onClosed(); });
    list_->count = [this] { return static_cast<int>(entries_.size()); };
    list_->row = [this](int index) { return rowOf(entries_[static_cast<std::size_t>(index)]); };
    list_->onActivated = [this](int index) {
        const OutlineEntry entry = entries_[static_cast<std::size_t>(index)];
        onChosen(entry);
    };
    Bind(wxEVT_SIZE, [this](wxSizeEvent& event) {
        const wxSize size = GetClientSize();
        const int width = std::max(size.x - 1, 0);
        heading_->SetSize(0, 0, width, dip(kHeading));
        list_->SetSize(0, dip(kHeading), width, std::max(size.y - dip(kHeading), 0));
        event.Skip();
    });
    setAccessibleName(words("Outline"));
}

ListRow OutlinePane::rowOf(const OutlineEntry& entry) const {
    ListRow row;
    row.depth = entry.depth;
    row.icon = entry.kind == OutlineEntry::Kind::function    ? Icon::function
               : entry.kind == OutlineEntry::Kind::classType ? Icon::classIcon
                                                             : Icon::enumIcon;
    row.name = fromUtf8(entry.name);
    row.right = fromUtf8(entry.type);
    return row;
}

void OutlinePane::setEntries(std::vector<OutlineEntry> entries) {
    entries_ = std::move(entries);
    list_->rowsChanged();
}

void OutlinePane::setCaret(std::size_t position) {
    if (list_->HasFocus()) return;
    const int entry = entryAt(entries_, position);
    if (entry != list_->selected()) list_->select(entry);
}

std::string OutlinePane::pathAt(std::size_t position) const {
    const int at = entryAt(entries_, position);
    if (at < 0) return {};
    const OutlineEntry& entry = entries_[static_cast<std::size_t>(at)];
    return entry.path.empty() ? entry.name : entry.path;
}

void OutlinePane::paint(wxGraphicsContext& context) {
    const wxSize size = GetClientSize();
    fill(context, wxRect(size), look()->panel);
    fill(context, {size.x - 1, 0, 1, size.y}, look()->border);
}

}  // namespace korvant::ui
