#include "ui/kit/row_list.h"

#include <algorithm>

#include "ui/kit/painted_check.h"
#include "ui/kit/ui_native.h"

namespace korvant::ui {
namespace {

constexpr int kCheck = 14, kGap = 10, kRemarkGap = 12, kFoldSize = 12, kChevron = 14, kBar = 3,
              kWheelRows = 3;

}  // namespace

RowList::RowList(wxWindow* parent, const Look& look, const ListMetrics& metrics,
                 const wxString& name)
    : PaintedWindow(parent, look, true), metrics_(metrics), listName_(name) {
    Bind(wxEVT_KEY_DOWN, &RowList::onKey, this);
    Bind(wxEVT_LEFT_DOWN, &RowList::onClick, this);
    Bind(wxEVT_LEFT_DCLICK, [this](wxMouseEvent& event) {
        const int index = rowAt(event.GetY());
        if (index >= 0 && onActivated) onActivated(index);
    });
    Bind(wxEVT_RIGHT_DOWN, [this](wxMouseEvent& event) {
        const int index = rowAt(event.GetY());
        if (index < 0 || !onMenu) return;
        moveTo(index);
        onMenu(index, event.GetPosition());
    });
    Bind(wxEVT_MOUSEWHEEL, [this](wxMouseEvent& event) {
        scrollTo(first_ + (event.GetWheelRotation() < 0 ? kWheelRows : -kWheelRows));
    });
    Bind(wxEVT_SIZE, [this](wxSizeEvent& event) {
        scrollTo(first_);
        event.Skip();
    });
    native::setAccessibleRole(*this, native::AccessibleRole::list);
    setAccessibleName(name);
}

void RowList::rowsChanged() {
    selected_ = std::min(selected_, rowCount() - 1);
    scrollTo(first_);
    tellSelection();
    Refresh();
}

void RowList::tellSelection() {
    if (selected_ < 0 || selected_ >= rowCount()) return setAccessibleName(listName_);
    const ListRow shown = row(selected_);
    wxString words = listName_ + ": " + shown.name;
    for (const wxString& part : {shown.value, shown.remark, shown.right})
        if (!part.empty()) words += ", " + part;
    if (shown.check) words += *shown.check ? ", on" : ", off";
    setAccessibleName(words);
}

void RowList::select(int index) {
    selected_ = std::clamp(index, -1, rowCount() - 1);
    if (selected_ >= 0) {
        if (selected_ < first_) first_ = selected_;
        if (selected_ >= first_ + rowsInView()) scrollTo(selected_ - rowsInView() + 1);
    }
    if (onMoved) onMoved();
    tellSelection();
    Refresh();
}

void RowList::moveTo(int index) {
    if (rowCount() == 0) return;
    select(std::clamp(index, 0, rowCount() - 1));
    if (onSelected) onSelected(selected_);
}

int RowList::rowsInView() const {
    return std::max((GetClientSize().y - dip(metrics_.top)) / rowHeight(), 1);
}

void RowList::scrollTo(int first) {
    const int limit = std::max(rowCount() - rowsInView(), 0);
    first_ = std::clamp(first, 0, limit);
    if (onMoved) onMoved();
    Refresh();
}

int RowList::rowAt(int y) const {
    if (y < dip(metrics_.top)) return -1;
    const int index = first_ + (y - dip(metrics_.top)) / rowHeight();
    return index < rowCount() ? index : -1;
}

int RowList::valueX() const {
    return static_cast<int>(GetClientSize().x * metrics_.valueShare);
}

wxRect RowList::valueRect(int index) const {
    const int y = dip(metrics_.top) + (index - first_) * rowHeight();
    return {valueX(), y, GetClientSize().x - valueX() - dip(metrics_.rightMargin), rowHeight()};
}

wxRect RowList::nameRect(int index) const {
    const int y = dip(metrics_.top) + (index - first_) * rowHeight();
    const int x = dip(metrics_.nameX);
    const int end = metrics_.valueShare > 0 ? valueX() : GetClientSize().x - dip(4);
    return {x, y, end - x, rowHeight()};
}

bool RowList::moveByKey(int code) {
    switch (code) {
        case WXK_UP:
            return moveTo(selected_ - 1), true;
        case WXK_DOWN:
            return moveTo(selected_ + 1), true;
        case WXK_PAGEUP:
            return moveTo(selected_ - rowsInView()), true;
        case WXK_PAGEDOWN:
            return moveTo(selected_ + rowsInView()), true;
        case WXK_HOME:
            return moveTo(0), true;
        case WXK_END:
            return moveTo(rowCount() - 1), true;
        default:
            return false;
    }
}

void RowList::onKey(wxKeyEvent& event) {
    const int code = event.GetKeyCode();
    if (event.ControlDown() && code == 'C' && selected_ >= 0 && onCopy) return onCopy(selected_);
    if (event.HasAnyModifiers()) return event.Skip();
    if (moveByKey(code)) return;
    if (selected_ < 0 || selected_ >= rowCount()) return event.Skip();
    const ListRow::Fold fold = row(selected_).fold;
    const auto tell = [&](const std::function<void(int)>& callback) {
        callback ? callback(selected_) : event.Skip();
    };
    if (code == WXK_RIGHT && fold == ListRow::Fold::closed) return tell(onFold);
    if (code == WXK_LEFT && fold == ListRow::Fold::open) return tell(onFold);
    if (code == WXK_RETURN || code == WXK_NUMPAD_ENTER) return tell(onActivated);
    if (code == WXK_F2) return tell(onEdit);
    if (code == WXK_DELETE) return tell(onRemove);
    if (code == WXK_SPACE) return tell(onCheck);
    event.Skip();
}

void RowList::onClick(wxMouseEvent& event) {
    SetFocus();
    const int index = rowAt(event.GetY());
    if (index < 0) return;
    const ListRow shown = row(index);
    const int x = event.GetX();
    const int foldEnd = dip(metrics_.iconX + metrics_.indent * shown.depth);
    if (shown.fold != ListRow::Fold::none && x < foldEnd && onFold) {
        select(index);
        return onFold(index);
    }
    if (shown.check && x < dip(metrics_.checkX + kCheck + 4) && onCheck) {
        select(index);
        return onCheck(index);
    }
    moveTo(index);
    if (onClicked) onClicked(index);
}

void RowList::paintFold(wxGraphicsContext& context, const ListRow& shown, int y) const {
    const double x = dip(metrics_.foldX + metrics_.indent * shown.depth);
    const double size = dip(kFoldSize), middle = y + rowHeight() / 2.0;
    if (metrics_.chevrons) {
        const int chevron = dip(kChevron);
        return paintIcon(context, shown.fold == ListRow::Fold::open ? Icon::down : Icon::right, x,
                         y + (rowHeight() - chevron) / 2, chevron, colourOf(look()->secondText));
    }
    wxGraphicsPath path = context.CreatePath();
    if (shown.fold == ListRow::Fold::open) {
        path.MoveToPoint(x, middle - size / 4);
        path.AddLineToPoint(x + size, middle - size / 4);
        path.AddLineToPoint(x + size / 2, middle + size / 4);
    } else {
        path.MoveToPoint(x + size / 4, middle - size / 2);
        path.AddLineToPoint(x + size * 3 / 4, middle);
        path.AddLineToPoint(x + size / 4, middle + size / 2);
    }
    path.CloseSubpath();
    context.SetPen(wxNullGraphicsPen);
    context.SetBrush(wxBrush(colourOf(look()->text)));
    context.FillPath(path);
}

void RowList::paintCheck(wxGraphicsContext& context, bool checked, int y) const {
    const int size = dip(kCheck);
    paintCheckMark(context, look(),
                   {dip(metrics_.checkX), y + (rowHeight() - size) / 2, size, size}, dip(3),
                   checked);
}

int RowList::paintName(wxGraphicsContext& context, const ListRow& item, int y, int limit) {
    const int x =
        dip((item.heading ? metrics_.iconX : metrics_.nameX) + metrics_.indent * item.depth);
    const wxFont& font = item.nameCode     ? look().code
                         : item.nameStrong ? look().strong
                                           : look().plain;
    const wxString shown = shortened(*this, item.name, font, limit - x);
    text(context, shown, font, (*look()).*item.nameColour, x, y, rowHeight());
    return x + textWidth(*this, shown, font);
}

int RowList::paintValue(wxGraphicsContext& context, const ListRow& item, int x, int y, int limit) {
    const wxFont& font = item.changed     ? look().codeStrong
                         : item.valueCode ? look().code
                                          : look().plain;
    const wxString shown = shortened(*this, item.value, font, limit - x);
    const int width = textWidth(*this, shown, font);
    if (item.changed && !shown.empty()) {
        const int pad = dip(3);
        rounded(context, {x - pad, y + dip(3), width + 2 * pad, rowHeight() - dip(6)}, dip(4),
                look()->changedFill);
    }
    const Rgb colour = item.changed ? look()->changedText : (*look()).*item.valueColour;
    text(context, shown, font, colour, x, y, rowHeight());
    return x + width;
}

void RowList::paintRow(wxGraphicsContext& context, int index, int y) {
    const ListRow shown = row(index);
    const int width = GetClientSize().x;
    const bool isSelected = index == selected_;
    if (isSelected) fill(context, {0, y, width, rowHeight()}, look()->selected);
    if (shown.fold != ListRow::Fold::none) paintFold(context, shown, y);
    if (shown.check) paintCheck(context, *shown.check, y);
    if (shown.icon) {
        const int x = dip(metrics_.iconX + metrics_.indent * shown.depth);
        const int size = dip(metrics_.iconSize);
        paintIcon(context, *shown.icon, x, y + (rowHeight() - size) / 2, size,
                  colourOf((*look()).*(isSelected && shown.iconColour == &ThemeTable::stopMark
                                           ? &ThemeTable::warning
                                           : shown.iconColour)),
                  shown.icon == Icon::breakpointCondition || shown.icon == Icon::breakpointPrints
                      ? *wxWHITE
                      : colourOf((*look()).*metrics_.back));
    }
    const int rightWidth = textWidth(*this, shown.right, look().small);
    const int rightX = width - dip(metrics_.rightMargin) - rightWidth;
    const Rgb second = isSelected ? look()->secondOnSelected : look()->secondText;
    text(context, shown.right, look().small, second, rightX, y, rowHeight());
    const int limit = shown.right.empty() ? width - dip(4) : rightX - dip(kGap);
    const bool column = metrics_.valueShare > 0 && !shown.value.empty();
    int end = paintName(context, shown, y, column ? valueX() - dip(6) : limit);
    if (!shown.value.empty())
        end =
            paintValue(context, shown, column ? valueX() : end + dip(metrics_.valueGap), y, limit);
    const int gap = dip(shown.value.empty() ? kGap : kRemarkGap);
    const wxString remark = shortened(*this, shown.remark, look().small, limit - end - gap);
    text(context, remark, look().small, second, end + gap, y, rowHeight());
    if (isSelected && focused()) focusMark(context, {0, y, width, rowHeight()});
}

void RowList::paintScrollBar(wxGraphicsContext& context) const {
    const int rows = rowCount(), seen = rowsInView();
    if (rows <= seen || (metrics_.quietBar && !hovered())) return;
    const wxSize size = GetClientSize();
    const int height = std::max(size.y * seen / rows, dip(24));
    const int y = (size.y - height) * first_ / std::max(rows - seen, 1);
    rounded(context, {size.x - dip(kBar + 1), y, dip(kBar), height}, dip(kBar) / 2.0,
            look()->disabled);
}

void RowList::paint(wxGraphicsContext& context) {
    const wxSize size = GetClientSize();
    fill(context, wxRect(size), (*look()).*metrics_.back);
    const int rows = rowCount();
    int y = dip(metrics_.top);
    for (int i = first_; i < rows && y < size.y; ++i, y += rowHeight()) paintRow(context, i, y);
    if (rows == 0)
        text(context, emptyText_, look().plain, look()->secondText, dip(metrics_.emptyX),
             dip(metrics_.top), rowHeight());
    if (rows == 0 && focused()) focusMark(context, wxRect(size));
    paintScrollBar(context);
}

}  // namespace korvant::ui
