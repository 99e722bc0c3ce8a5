#include "ui/form/form_list.h"

#include <wx/odcombo.h>
#include <wx/textctrl.h>

#include <algorithm>

#include "ui/form/form_row_painter.h"
#include "ui/kit/text_conversion.h"

namespace korvant::ui {
namespace {

/// Rows without any category need no margin for folding.
long styleOf(const EditSession& session, int page) {
    const EditPage& about = session.page(page);
    const bool folds = about.last >= about.first && session.row(about.last).category >= 0;
    long style = wxPG_SPLITTER_AUTO_CENTER;
    style |= wxBORDER_NONE;
    if (!folds) style |= wxPG_HIDE_MARGIN;
    return style;
}

}  // namespace

CListCtrlEx::CListCtrlEx(wxWindow* parent, EditSession& session, int page, FormHost& host)
    : Guarded(parent, wxID_ANY, wxDefaultPosition, wxDefaultSize, styleOf(session, page)),
      session_(session),
      page_(page),
      host_(host),
      painter_(new FormRowPainter(*this)),
      field_(*this, session) {
    if (session.pageHasUnits(page)) SetColumnCount(3);
    setLook();
    Bind(wxEVT_CHAR_HOOK, &CListCtrlEx::onKey, this);
    Bind(wxEVT_CHAR, &CListCtrlEx::onCharacter, this);
    Bind(wxEVT_LEFT_DOWN, &CListCtrlEx::onClick, this);
    Bind(wxEVT_LEFT_DCLICK, &CListCtrlEx::onClick, this);
    Bind(wxEVT_MOTION, &CListCtrlEx::onMove, this);
    Bind(wxEVT_CONTEXT_MENU, &CListCtrlEx::onContextMenu, this);
    Bind(wxEVT_PG_SELECTED, &CListCtrlEx::onSelected, this);
    Bind(wxEVT_SIZE, &CListCtrlEx::onSize, this);
    Bind(wxEVT_SYS_COLOUR_CHANGED, [this](wxSysColourChangedEvent& event) {
        setLook();
        event.Skip();
    });
}

bool CListCtrlEx::ProcessEvent(wxEvent& event) {
    return event.GetEventType() != wxEVT_KEY_DOWN && Guarded::ProcessEvent(event);
}

/// The rows ask the painter's list until they are gone.
CListCtrlEx::~CListCtrlEx() {
    field_.forget();
}

void CListCtrlEx::setLook() {
    painter_->updateTheme();
    const Theme& theme = painter_->theme();
    SetVerticalSpacing(3);
    const wxColour band = blend(theme.fieldText, theme.field, 0.08);
    SetCaptionBackgroundColour(band);
    SetCaptionTextColour(theme.fieldText);
    SetMarginColour(theme.field);
    SetLineColour(blend(theme.fieldText, theme.field, 0.12));
    SetCellBackgroundColour(theme.field);
    SetCellTextColour(theme.fieldText);
    SetEmptySpaceColour(theme.field);
    if (m_pState->GetColumnCount() < 3) return;
    SetColumnProportion(0, 5);
    SetColumnProportion(1, 5);
    SetColumnProportion(2, 2);
}

void CListCtrlEx::fill() {
    if (filled_) return;
    filled_ = true;
    Freeze();
    addRows();
    Thaw();
}

void CListCtrlEx::addRows() {
    const EditPage& about = session_.page(page_);
    if (about.last < about.first) return;
    const bool captions = !HasFlag(wxPG_HIDE_MARGIN);
    std::int32_t category = -2;
    rows_.reserve(static_cast<std::size_t>(about.last - about.first + 1));
    for (std::int32_t property = about.first; property <= about.last; ++property) {
        const std::int32_t own = session_.row(property).category;
        if (captions && own != category)
            // Named by number: the toolkit merges captions of one name.
            Append(new wxPropertyCategory(toDisplay(session_.categoryCaption(own)),
                                          wxString::Format("c%d", own)));
        category = own;
        rows_.push_back(new FormRow(*this, property));
        Append(rows_.back());
    }
    applyFilter();
}

FormRow* CListCtrlEx::rowOf(std::int32_t property) const {
    const std::int32_t place = property - session_.page(page_).first;
    return place >= 0 && place < static_cast<std::int32_t>(rows_.size())
               ? rows_[static_cast<std::size_t>(place)]
               : nullptr;
}

FormRow* CListCtrlEx::selectedRow() const {
    return asFormRow(GetSelection());
}

std::int32_t CListCtrlEx::selectedProperty() const {
    const FormRow* row = selectedRow();
    return row ? row->property() : -1;
}

bool CListCtrlEx::select(std::int32_t property) {
    FormRow* row = rowOf(property);
    if (row && row->HasFlag(wxPG_PROP_HIDDEN)) row = nullptr;
    if (row && field_.row() == row) return true;
    return DoSelectProperty(row, 0);
}

void CListCtrlEx::selectFirst() {
    const auto fits = [this](const FormRow* row) {
        const EditRowState state = session_.state(row->property());
        return state.editable && state.visible;
    };
    const auto found = std::find_if(rows_.begin(), rows_.end(), fits);
    wxPGProperty* first = wxPropertyGridInterface::GetFirst(wxPG_ITERATE_VISIBLE);
    if (found != rows_.end()) first = *found;
    if (first) DoSelectProperty(first, wxPG_SEL_NONVISIBLE);
}

/// Fields that were closed stay hidden in the list until the toolkit has time to destroy them, and
/// it complains when such a window is scrolled.
void CListCtrlEx::ScrollWindow(int dx, int dy, const wxRect* rect) {
    const wxWindowList children = GetChildren();
    for (wxWindow* child : children)
        if (!child->IsShown()) child->Reparent(GetParent());
    Guarded::ScrollWindow(dx, dy, rect);
}

void CListCtrlEx::showSelected() {
    if (GetSelection()) EnsureVisible(GetSelection());
}

/// The first row is selected before the window has its size.
void CListCtrlEx::onSize(wxSizeEvent& event) {
    event.Skip();
    if (!fresh_) return;
    CallAfter([this] {
        if (!fresh_) return;
        Scroll(0, 0);
        showSelected();
    });
}

wxRect CListCtrlEx::rowRect(std::int32_t property) const {
    const FormRow* row = rowOf(property);
    if (!row || row->HasFlag(wxPG_PROP_HIDDEN)) return wxRect();
    const wxPoint top = CalcScrolledPosition(wxPoint(0, row->GetY()));
    return wxRect(0, top.y, GetClientSize().x, GetRowHeight());
}

void CListCtrlEx::onSelected(wxPropertyGridEvent&) {
    if (field_.row() != selectedRow()) field_.forget();
    field_.hideRefusal();
    host_.rowSelected(*this, selectedProperty());
}

void CListCtrlEx::apply(const EditChanges& changes) {
    if (!filled_) return;
    const EditPage& about = session_.page(page_);
    const auto first = std::lower_bound(changes.rows.begin(), changes.rows.end(), about.first);
    const bool mine = first != changes.rows.end() && *first <= about.last;
    if (changes.filter) applyFilter();
    if (mine) Refresh();
    if (field_.isOpen() && std::binary_search(first, changes.rows.end(), field_.row()->property()))
        field_.refresh();
}

void CListCtrlEx::applyFilter() {
    if (!commit()) return;
    if (const FormRow* row = selectedRow(); row && !session_.state(row->property()).visible)
        DoSelectProperty(nullptr, 0);
    Freeze();
    wxPGProperty* caption = nullptr;
    bool anyShown = false;
    const auto finishCaption = [&] {
        if (caption) HideProperty(caption, !anyShown, wxPG_DONT_RECURSE);
    };
    for (FormRow* row : rows_) {
        if (row->GetParent() != caption) {
            finishCaption();
            caption = row->GetParent()->IsCategory() ? row->GetParent() : nullptr;
            anyShown = false;
        }
        const bool shown = session_.state(row->property()).visible;
        anyShown = anyShown || shown;
        HideProperty(row, !shown, wxPG_DONT_RECURSE);
    }
    finishCaption();
    Thaw();
}

}  // namespace korvant::ui
