#include "ui/console/console_canvas.h"

#include <wx/dcclient.h>
#include <wx/menu.h>
#include <wx/settings.h>

#include <algorithm>

#include "ui/console/console_keys.h"
#include "ui/kit/clipboard.h"
#include "ui/kit/text_conversion.h"
#include "ui/kit/theme.h"
#include "ui/kit/ui_texts.h"

namespace korvant::ui {
namespace {

/// Source: the default colours of the console of Windows 10.
constexpr unsigned kColours[16] = {0x0C0C0C, 0x0037DA, 0x13A10E, 0x3A96DD, 0xC50F1F, 0x881798,
                                   0xC19C00, 0xCCCCCC, 0x767676, 0x3B78FF, 0x16C60C, 0x61D6D6,
                                   0xE74856, 0xB4009E, 0xF9F1A5, 0xF2F2F2};
constexpr int kWheelLines = 3;

wxColour colour(unsigned rgb) {
    return wxColour((rgb >> 16) & 0xFF, (rgb >> 8) & 0xFF, rgb & 0xFF);
}

ConsoleColours makeConsoleColours() {
    ConsoleColours colours;
    for (int i = 0; i < 16; ++i) colours.front[i] = colours.back[i] = colour(kColours[i]);
    colours.cursor = colours.front[7];
    return colours;
}

wxString textOf(std::span<const ConsoleCell> cells) {
    std::string utf8;
    for (const ConsoleCell& cell : cells)
        if (cell.character != 0) appendUtf8(utf8, cell.character);
    return fromUtf8(utf8);
}

/// Cells that can be drawn as one text: same colours, and characters that surely have the width
/// of a cell.
std::size_t runLength(std::span<const ConsoleCell> cells, std::size_t start) {
    const auto narrow = [](const ConsoleCell& cell) { return cell.character < 127; };
    std::size_t end = start + 1;
    if (!narrow(cells[start])) {
        while (end < cells.size() && cells[end].character == 0) ++end;
        return end - start;
    }
    while (end < cells.size() && narrow(cells[end]) && cells[end].character != 0 &&
           cells[end].attributes == cells[start].attributes)
        ++end;
    return end - start;
}

}  // namespace

const ConsoleColours& consoleColours() {
    static const ConsoleColours colours = makeConsoleColours();
    return colours;
}

ConsoleCanvas::ConsoleCanvas(wxWindow* parent, const ConsoleGrid& grid, wxScrollBar& bar)
    : wxWindow(parent, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxWANTS_CHARS | wxBORDER_NONE),
      grid_(grid),
      bar_(bar) {
    SetBackgroundStyle(wxBG_STYLE_PAINT);
    setTextFont(fixedFont());
    SetCursor(wxCursor(wxCURSOR_IBEAM));
    connect();
}

void ConsoleCanvas::setTextFont(const wxFont& font, int beyond) {
    SetFont(font);
    strong_ = font.Bold();
    beyond_ = beyond;
    cell_ = GetTextExtent(wxT("M"));
    cell_.y += 2 * beyond;
    Refresh(false);
}

void ConsoleCanvas::setColours(const ConsoleColours& colours) {
    colours_ = colours;
    Refresh(false);
}

void ConsoleCanvas::setTyping(bool typing) {
    typing_ = typing;
    Refresh(false);
}

void ConsoleCanvas::connect() {
    Bind(wxEVT_PAINT, &ConsoleCanvas::onPaint, this);
    Bind(wxEVT_CHAR, &ConsoleCanvas::onChar, this);
    Bind(wxEVT_LEFT_DCLICK, &ConsoleCanvas::onDoubleClick, this);
    Bind(wxEVT_CONTEXT_MENU, &ConsoleCanvas::onContextMenu, this);
    for (const auto type : {wxEVT_LEFT_DOWN, wxEVT_LEFT_UP, wxEVT_MOTION, wxEVT_MIDDLE_UP})
        Bind(type, &ConsoleCanvas::onMouse, this);
    Bind(wxEVT_MOUSE_CAPTURE_LOST, [](wxMouseCaptureLostEvent&) {});
    Bind(wxEVT_MOUSEWHEEL, [this](wxMouseEvent& event) {
        const bool sideways = event.GetWheelAxis() == wxMOUSE_WHEEL_HORIZONTAL;
        if (sideways || event.ShiftDown())
            return scrollSideways((event.GetWheelRotation() > 0) == sideways ? kWheelLines
                                                                             : -kWheelLines);
        scrollTo(first_ + (event.GetWheelRotation() > 0 ? -kWheelLines : kWheelLines));
    });
    Bind(wxEVT_SIZE, [this](wxSizeEvent& event) {
        painted_ = ~std::uint64_t{0};
        update();
        event.Skip();
    });
    for (const auto type : {wxEVT_SCROLL_THUMBTRACK, wxEVT_SCROLL_CHANGED})
        bar_.Bind(type, [this](wxScrollEvent& event) {
            scrollTo(grid_.firstLine() + event.GetPosition());
        });
}

wxSize ConsoleCanvas::sizeFor(int columns, int rows) const {
    return {columns * cell_.x, rows * cell_.y};
}

int ConsoleCanvas::shownRows() const {
    return std::max(1, GetClientSize().y / cell_.y);
}

void ConsoleCanvas::update() {
    if (painted_ == grid_.version()) return;
    painted_ = grid_.version();
    if (follows_) followCursor();
    if (typing_) showColumn(grid_.cursor().column);
    first_ = std::max(first_, grid_.firstLine());
    updateBar();
    Refresh(false);
}

/// The view moves only as far as it must to keep the cursor in sight.
void ConsoleCanvas::followCursor() {
    follows_ = true;
    const std::int64_t line = grid_.cursor().line;
    first_ = std::clamp(first_, std::max(grid_.firstLine(), line - shownRows() + 1),
                        std::max(line, grid_.firstLine()));
    if (first_ < grid_.topLine() && line - grid_.topLine() < shownRows()) first_ = grid_.topLine();
    updateBar();
    Refresh(false);
}

void ConsoleCanvas::scrollTo(std::int64_t firstLine) {
    const std::int64_t last = std::max(grid_.firstLine(), grid_.endLine() - shownRows());
    first_ = std::clamp(firstLine, grid_.firstLine(), last);
    const std::int64_t cursor = grid_.cursor().line;
    follows_ = cursor >= first_ && cursor < first_ + shownRows();
    updateBar();
    Refresh(false);
}

/// Where the canvas is narrower than the lines.
void ConsoleCanvas::scrollSideways(int columns) {
    const int shown = std::max(1, (GetClientSize().x - colours_.margin) / cell_.x);
    left_ = std::clamp(left_ + columns, 0, std::max(0, grid_.columns() - shown));
    Refresh(false);
}

void ConsoleCanvas::showColumn(int column) {
    const int shown = std::max(1, (GetClientSize().x - colours_.margin) / cell_.x);
    if (column < left_) scrollSideways(column - left_);
    if (column >= left_ + shown) scrollSideways(column - left_ - shown + 1);
}

wxPoint ConsoleCanvas::cornerOf(int row, int column) const {
    return {colours_.margin + (column - left_) * cell_.x, row * cell_.y};
}

void ConsoleCanvas::updateBar() {
    const auto lines = static_cast<int>(grid_.endLine() - grid_.firstLine());
    const auto position = static_cast<int>(first_ - grid_.firstLine());
    const int rows = shownRows();
    bar_.SetScrollbar(position, rows, std::max(lines, position + rows), rows);
}

void ConsoleCanvas::onPaint(wxPaintEvent&) {
    wxPaintDC dc(this);
    dc.SetBackground(wxBrush(colours_.back[0]));
    dc.Clear();
    if (typing_ && colours_.inputLine.IsOk()) {
        dc.SetPen(*wxTRANSPARENT_PEN);
        dc.SetBrush(wxBrush(colours_.inputLine));
        const auto row = static_cast<int>(grid_.cursor().line - first_);
        dc.DrawRectangle(0, row * cell_.y, GetClientSize().x, cell_.y);
    }
    dc.SetFont(GetFont());
    const auto marked = selection();
    for (int row = 0; row <= shownRows(); ++row) paintRow(dc, row, marked);
    paintCursor(dc);
}

void ConsoleCanvas::paintRow(wxDC& dc, int row, const std::optional<Selection>& marked) {
    const std::int64_t number = first_ + row;
    const auto cells = grid_.line(number);
    std::size_t column = 0;
    const auto isMarked = [&](std::size_t at) {
        const ConsolePlace place{number, static_cast<int>(at)};
        return marked && place >= marked->first && place < marked->second;
    };
    while (column < cells.size()) {
        std::size_t length = runLength(cells, column);
        const bool inverse = isMarked(column);
        for (std::size_t i = 1; i < length; ++i)
            if (isMarked(column + i) != inverse) length = i;
        paintRun(dc, row, static_cast<int>(column), cells.subspan(column, length), inverse);
        column += length;
    }
}

void ConsoleCanvas::paintRun(wxDC& dc, int row, int column, std::span<const ConsoleCell> cells,
                             bool marked) {
    const unsigned attributes = cells.front().attributes;
    wxColour front = colours_.front[attributes & 15], back = colours_.back[attributes >> 4 & 15];
    if (marked) {
        front = wxSystemSettings::GetColour(wxSYS_COLOUR_HIGHLIGHTTEXT);
        back = wxSystemSettings::GetColour(wxSYS_COLOUR_HIGHLIGHT);
    }
    const wxPoint corner = cornerOf(row, column);
    if (marked || (attributes & 0xF0) != 0) {
        dc.SetPen(*wxTRANSPARENT_PEN);
        dc.SetBrush(wxBrush(back));
        dc.DrawRectangle(corner, wxSize(static_cast<int>(cells.size()) * cell_.x, cell_.y));
    }
    dc.SetFont(colours_.strongIntense && (attributes & 8) != 0 ? strong_ : GetFont());
    dc.SetTextForeground(front);
    dc.DrawText(textOf(cells), corner + wxPoint(0, beyond_));
}

void ConsoleCanvas::paintCursor(wxDC& dc) {
    // Where the line that is typed is marked, the cursor stands there and nowhere else.
    if (colours_.inputLine.IsOk() && !typing_) return;
    const ConsolePlace cursor = grid_.cursor();
    const auto row = static_cast<int>(cursor.line - first_);
    if (row < 0 || row > shownRows()) return;
    const int thickness = std::max(2, cell_.y / 6);
    dc.SetPen(*wxTRANSPARENT_PEN);
    dc.SetBrush(wxBrush(colours_.cursor));
    const wxPoint corner = cornerOf(row, std::min(cursor.column, grid_.columns() - 1));
    dc.DrawRectangle(corner.x, corner.y + cell_.y - thickness, cell_.x, thickness);
}

void ConsoleCanvas::onChar(wxKeyEvent& event) {
    if (handleShortcut(event) || handleScrollKey(event)) return;
    const auto key = consoleKeyOf(event);
    if (!key) {
        event.Skip();
        return;
    }
    followCursor();
    if (onKey) onKey(*key);
}

bool ConsoleCanvas::handleShortcut(const wxKeyEvent& event) {
    switch (consoleShortcutOf(event)) {
        case ConsoleShortcut::interrupt:
            if (onInterrupt) onInterrupt();
            return true;
        case ConsoleShortcut::copy:
            copy();
            return true;
        case ConsoleShortcut::paste:
            paste();
            return true;
        default:
            return false;
    }
}

bool ConsoleCanvas::handleScrollKey(const wxKeyEvent& event) {
    switch (consoleShortcutOf(event)) {
        case ConsoleShortcut::pageUp:
            scrollTo(first_ - shownRows());
            return true;
        case ConsoleShortcut::pageDown:
            scrollTo(first_ + shownRows());
            return true;
        case ConsoleShortcut::toStart:
            scrollTo(grid_.firstLine());
            return true;
        case ConsoleShortcut::toEnd:
            followCursor();
            return true;
        default:
            return false;
    }
}

ConsolePlace ConsoleCanvas::placeAt(const wxPoint& point) const {
    const int row = std::clamp(point.y, 0, GetClientSize().y) / cell_.y;
    const int x = point.x - colours_.margin + cell_.x / 2;
    const int column = std::clamp(left_ + x / cell_.x, 0, grid_.columns());
    return {std::clamp(first_ + row, grid_.firstLine(), grid_.endLine() - 1), column};
}

void ConsoleCanvas::onMouse(wxMouseEvent& event) {
    const ConsolePlace place = placeAt(event.GetPosition());
    if (event.LeftDown()) {
        SetFocus();
        CaptureMouse();
        select(place, place);
    } else if (event.Dragging() && event.LeftIsDown() && anchor_ && HasCapture()) {
        if (event.GetY() < 0) scrollTo(first_ - 1);
        if (event.GetY() > GetClientSize().y) scrollTo(first_ + 1);
        select(*anchor_, place);
    } else if (event.LeftUp() && HasCapture()) {
        ReleaseMouse();
    } else if (event.MiddleUp()) {
        paste(true);
    }
}

void ConsoleCanvas::onDoubleClick(wxMouseEvent& event) {
    const int column = std::max(0, left_ + (event.GetX() - colours_.margin) / cell_.x);
    const auto word = grid_.wordAt({placeAt(event.GetPosition()).line, column});
    select(word.first, word.second);
}

void ConsoleCanvas::onContextMenu(wxContextMenuEvent&) {
    if (mayAsk && !mayAsk()) return;
    wxMenu menu;
    menu.Append(wxID_COPY, uiText(UiText::copy) + wxT("\tCtrl+Shift+C"));
    menu.Append(wxID_PASTE, uiText(UiText::paste) + wxT("\tCtrl+V"));
    menu.Append(wxID_SELECTALL, uiText(UiText::selectAll));
    menu.Enable(wxID_COPY, hasSelection());
    menu.Bind(wxEVT_MENU, [this](wxCommandEvent& event) {
        if (event.GetId() == wxID_COPY) copy();
        if (event.GetId() == wxID_PASTE) paste();
        if (event.GetId() == wxID_SELECTALL) selectAll();
    });
    PopupMenu(&menu);
}

std::optional<ConsoleCanvas::Selection> ConsoleCanvas::selection() const {
    if (!anchor_ || *anchor_ == head_) return std::nullopt;
    return std::minmax(*anchor_, head_);
}

void ConsoleCanvas::select(ConsolePlace from, ConsolePlace to) {
    anchor_ = from;
    head_ = to;
    Refresh(false);
}

void ConsoleCanvas::selectAll() {
    select({grid_.firstLine(), 0}, {grid_.endLine(), 0});
}

std::string ConsoleCanvas::selectedText() const {
    const auto marked = selection();
    return marked ? grid_.text(marked->first, marked->second) : std::string();
}

void ConsoleCanvas::copy() {
    if (hasSelection())
        copyToClipboard(fromUtf8(selectedText()));
    else if (copiesAll_)
        copyToClipboard(fromUtf8(grid_.text()));
}

void ConsoleCanvas::paste(bool primarySelection) {
    if (mayAsk && !mayAsk()) return;
    followCursor();
    for (const wxUniChar character : textFromClipboard(primarySelection))
        if (const auto key = consoleKeyOf(character); key && onKey) onKey(*key);
}

}  // namespace korvant::ui
