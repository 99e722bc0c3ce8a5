#include "ui/form/form_page.h"

#include <wx/sizer.h>
#include <wx/splitter.h>

#include <algorithm>

#include "object/form/form_texts.h"
#include "ui/form/form_group_bar.h"
#include "ui/form/form_header.h"
#include "ui/form/form_list.h"
#include "ui/kit/html_view.h"
#include "ui/kit/text_conversion.h"
#include "ui/kit/theme.h"
#include "ui/kit/ui_native.h"

namespace korvant::ui {
namespace {

constexpr int kDescriptionHeight = 120;
constexpr int kLeastHeight = 50;
/// Until the window has its size: scroll bars do not fit into less, and say so.
const wxSize kFirstSize(400, 400);

void replaceAll(std::string& text, std::string_view from, const std::string& to) {
    for (std::size_t at = text.find(from); at != std::string::npos;
         at = text.find(from, at + to.size()))
        text.replace(at, from.size(), to);
}

/// The heading without the space that headings keep around them, and rules in their own colour and
/// without an empty line below.
std::string forPane(std::string markup) {
    const std::string colour = toUtf8(currentTheme().rule.GetAsString(wxC2S_HTML_SYNTAX));
    replaceAll(markup, "<center><h2>", "<center><font size=\"5\"><b>");
    replaceAll(markup, "</h2></center><br>", "</b></font></center>");
    replaceAll(markup, "<hr color=blue><br>", "<hr color=" + colour + ">");
    return markup;
}

/// Headings little larger than the text below them.
void setSizes(HtmlView& view) {
    const wxFont font = dialogFont();
    const int base = font.GetPointSize();
    const int sizes[7] = {base - 2, base - 1, base, base, base + 1, base + 2, base + 3};
    view.SetFonts(font.GetFaceName(), fixedFont().GetFaceName(), sizes);
}

}  // namespace

CListCtrlExPage::CListCtrlExPage(wxWindow* parent, EditSession& session, int page, FormHost& host)
    : wxPanel(parent), session_(session), page_(page), host_(host) {}

void CListCtrlExPage::makeContent() {
    const wxSize firstSize = FromDIP(kFirstSize);
    splitter_ = new wxSplitterWindow(this, wxID_ANY, wxDefaultPosition, firstSize,
                                     wxSP_LIVE_UPDATE | wxSP_NOBORDER);
    splitter_->SetMinimumPaneSize(FromDIP(kLeastHeight));
    splitter_->SetSashGravity(1.0);
    wxWindow* upper = makeUpper(splitter_);
    description_ = new HtmlView(splitter_, HtmlView::Surface::field);
    setSizes(*description_);
    native::keepScrollBarsVisible(*description_);
    splitter_->SplitHorizontally(upper, description_, -FromDIP(kDescriptionHeight));
    splitter_->Bind(wxEVT_SIZE, [this](wxSizeEvent& event) {
        event.Skip();
        CallAfter([this] { fitDescription(); });  // once the splitter itself has its size
    });
    // At once: rows that are left without any room for a moment complain of it.
    splitter_->Bind(wxEVT_SPLITTER_SASH_POS_RESIZE, [this](wxSplitterEvent& event) {
        event.SetSashPosition(sashPosition(event.GetNewSize()));
    });
    splitter_->Bind(wxEVT_SPLITTER_SASH_POS_CHANGING, &CListCtrlExPage::onSash, this);
    auto* column = new wxBoxSizer(wxVERTICAL);
    if (session_.page(page_).isGroup) {
        bar_ = new FormGroupBar(this, session_, *list_, host_);
        bar_->MoveBeforeInTabOrder(splitter_);
        column->Add(bar_, wxSizerFlags().Expand());
    }
    column->Add(splitter_, wxSizerFlags(1).Expand());
    SetSizer(column);
    // A page that has its size already gets no other; one of a window that is not shown yet may
    // still have to get it.
    const wxSize room = GetClientSize(), least = FromDIP(wxSize(kLeastHeight, 2 * kLeastHeight));
    if (IsShownOnScreen() || (room.x > least.x && room.y > least.y)) Layout();
}

/// As much as its text needs, but no more than a third of the page; and not less than what most
/// texts need, so that the rows stay where they are when the user walks through them.
int CListCtrlExPage::descriptionHeight(int room) {
    const int least = FromDIP(kLeastHeight), most = std::max(least, room / 3);
    if (draggedHeight_ > 0) return std::clamp(draggedHeight_, least, std::max(least, room - least));
    const wxSize frame = description_->GetSize() - description_->GetClientSize();
    const int width = splitter_->GetClientSize().x - std::max(0, frame.x);
    const int wanted = description_->heightAt(width) + std::max(0, frame.y);
    return std::clamp(wanted, std::min(FromDIP(kDescriptionHeight), most), most);
}

int CListCtrlExPage::sashPosition(int room) {
    const int position = room - descriptionHeight(room) - splitter_->GetSashSize();
    return std::max(position, splitter_->GetMinimumPaneSize());
}

void CListCtrlExPage::fitDescription() {
    const int position = sashPosition(splitter_->GetClientSize().y);
    if (position == splitter_->GetSashPosition()) return;
    splitter_->SetSashPosition(position);
    list_->showSelected();
}

/// While the user drags; resizing moves the sash as well, but not like this.
void CListCtrlExPage::onSash(wxSplitterEvent& event) {
    draggedHeight_ =
        splitter_->GetClientSize().y - event.GetSashPosition() - splitter_->GetSashSize();
    event.Skip();
}

bool CListCtrlExPage::inDescription() const {
    return description_ && description_->HasFocus();
}

void CListCtrlExPage::switchToDescription() {
    if (!list_) return;
    if (inDescription())
        list_->SetFocus();
    else
        description_->SetFocus();
}

wxWindow* CListCtrlExPage::makeUpper(wxWindow* parent) {
    auto* panel = new wxPanel(parent, wxID_ANY, wxDefaultPosition, FromDIP(kFirstSize));
    list_ = new CListCtrlEx(panel, session_, page_, host_);
    list_->SetSize(FromDIP(kFirstSize));
    header_ = new FormHeader(panel, *list_, session_.locale());
    auto* column = new wxBoxSizer(wxVERTICAL);
    column->Add(header_, wxSizerFlags().Expand());
    column->Add(list_, wxSizerFlags(1).Expand());
    panel->SetSizer(column);
    // Else the first size, which is none, counts as the least that the sash has to leave.
    panel->SetMinSize(FromDIP(wxSize(kLeastHeight, kLeastHeight)));
    const auto follow = [this](wxEvent& event) {
        header_->Refresh();
        event.Skip();
    };
    list_->Bind(wxEVT_PG_COL_DRAGGING, follow);
    list_->Bind(wxEVT_SIZE, follow);
    return panel;
}

void CListCtrlExPage::activate() {
    if (list_) return;
    makeContent();
    list_->fill();
    list_->selectFirst();
    if (list_->selectedProperty() < 0) describe(-1);
}

void CListCtrlExPage::apply(const EditChanges& changes) {
    if (!list_) return;
    list_->apply(changes);
    if (bar_ && std::binary_search(changes.pages.begin(), changes.pages.end(), page_))
        bar_->update();
    const std::int32_t property = list_->selectedProperty();
    if (std::binary_search(changes.rows.begin(), changes.rows.end(), property)) describe(property);
}

void CListCtrlExPage::describe(std::int32_t property) {
    const EditGroupBar bar = session_.groupBar(page_);
    if (property >= 0)
        description_->setMarkup(forPane(session_.description(property)));
    else if (session_.page(page_).isGroup && bar.elements.empty())
        description_->setPlain(formText(FormText::noElement, session_.locale()));
    else
        description_->clear();
    fitDescription();
}

}  // namespace korvant::ui
