#include "ui/form/form_check_window.h"

#include <wx/button.h>
#include <wx/html/htmlcell.h>
#include <wx/sizer.h>

#include "ui/form/form_buttons.h"
#include "ui/kit/html_view.h"
#include "ui/kit/text_conversion.h"
#include "ui/kit/ui_native.h"
#include "ui/kit/ui_runtime.h"
#include "ui/kit/window_place.h"

namespace korvant::ui {
namespace {

constexpr std::string_view kSessionLink = "<a href=\"";
constexpr std::string_view kLink = "<a href=\"#";
/// A small triangle. By number: the text of a script may be in an encoding without it.
constexpr std::string_view kPointer = "&#9656; ";

/// Views follow only links within the text.
std::string withInnerLinks(std::string markup) {
    for (std::size_t at = markup.find(kSessionLink); at != std::string::npos;
         at = markup.find(kSessionLink, at + 1))
        markup.insert(at + kSessionLink.size(), "#");
    return markup;
}

/// Where the `wanted`-th link begins; npos for none.
std::size_t findLink(const std::string& markup, int wanted) {
    std::size_t at = markup.find(kLink);
    for (int i = 0; i < wanted && at != std::string::npos; ++i) at = markup.find(kLink, at + 1);
    return at;
}

std::vector<std::string> linksOf(const std::string& markup) {
    std::vector<std::string> links;
    for (int i = 0;; ++i) {
        const std::size_t at = findLink(markup, i);
        if (at == std::string::npos) return links;
        const std::size_t begin = at + kLink.size();
        links.push_back(markup.substr(begin, markup.find('"', begin) - begin));
    }
}

const wxHtmlCell* firstCellOf(const wxHtmlCell* cell, const wxString& href) {
    for (; cell; cell = cell->GetNext()) {
        const wxHtmlLinkInfo* link = cell->IsTerminalCell() ? cell->GetLink() : nullptr;
        if (link && link->GetHref() == href) return cell;
        if (const wxHtmlCell* inner = firstCellOf(cell->GetFirstChild(), href)) return inner;
    }
    return nullptr;
}

}  // namespace

FormCheckWindow::FormCheckWindow(wxWindow* parent, EditSession& session)
    : Guarded(parent, wxID_ANY, toDisplay(formText(FormText::check, session.locale())),
              wxDefaultPosition, wxDefaultSize, wxDEFAULT_DIALOG_STYLE | wxRESIZE_BORDER),
      summary_(withInnerLinks(session.summary())),
      links_(linksOf(summary_)) {
    view_ = new HtmlView(this, HtmlView::Surface::field);
    native::keepScrollBarsVisible(*view_);
    view_->SetMinSize(FromDIP(wxSize(440, 320)));
    view_->onLink = [this](const wxString& link) { follow(toUtf8(link)); };
    wxButton* close = formButton(this, wxID_OK, FormText::ok, session.locale());
    auto* column = new wxBoxSizer(wxVERTICAL);
    column->Add(view_, wxSizerFlags(1).Expand());
    column->Add(close, wxSizerFlags().Right().Border(wxALL, FromDIP(8)));
    SetSizer(column);
    placeDialog(*this);
    SetEscapeId(wxID_OK);
    Bind(wxEVT_CHAR_HOOK, &FormCheckWindow::onKey, this);
    native::markDefault(*close, true);
    close->SetFocus();
    if (!links_.empty()) chosen_ = 0;
    show();
}

std::string FormCheckWindow::ask() {
    showModal(*this);
    return followed_;
}

/// The chosen link stands out by a sign before it, as links have no focus of their own.
void FormCheckWindow::show() {
    std::string markup = summary_;
    const std::size_t at = chosen_ < 0 ? std::string::npos : findLink(markup, chosen_);
    if (at != std::string::npos) markup.insert(markup.find('>', at) + 1, kPointer);
    view_->setMarkup(markup);
    if (at == std::string::npos) return;
    const wxString href = fromUtf8("#" + links_[static_cast<std::size_t>(chosen_)]);
    const wxHtmlCell* cell = firstCellOf(view_->GetInternalRepresentation(), href);
    int unit = 1;
    view_->GetScrollPixelsPerUnit(nullptr, &unit);
    if (!cell || unit <= 0) return;
    const int top = cell->GetAbsPos().y, height = view_->GetClientSize().y;
    view_->Scroll(wxDefaultCoord, std::max(0, top - height / 2) / unit);
}

void FormCheckWindow::step(int by) {
    const int count = static_cast<int>(links_.size());
    if (count == 0) return;
    chosen_ = (chosen_ + by + count) % count;
    show();
}

void FormCheckWindow::follow(const std::string& link) {
    followed_ = link;
    EndModal(wxID_OK);
}

void FormCheckWindow::onKey(wxKeyEvent& event) {
    switch (event.GetKeyCode()) {
        case WXK_DOWN:
            return step(1);
        case WXK_UP:
            return step(-1);
        case WXK_TAB:
            return step(event.ShiftDown() ? -1 : 1);
        case WXK_RETURN:
        case WXK_NUMPAD_ENTER:
            if (chosen_ < 0) return EndModal(wxID_OK);
            return follow(links_[static_cast<std::size_t>(chosen_)]);
        default:
            event.Skip();
    }
}

}  // namespace korvant::ui
