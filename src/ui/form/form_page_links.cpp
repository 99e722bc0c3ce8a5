#include "ui/form/form_page_links.h"

#include <algorithm>

#include "object/form/form_texts.h"
#include "object/form/report_text.h"
#include "ui/kit/html_view.h"
#include "ui/kit/text_conversion.h"
#include "ui/kit/theme.h"

namespace korvant::ui {
namespace {

constexpr std::string_view kErrorSign = "&#10006;&nbsp;", kWarningSign = "&#9888;&nbsp;";

/// UTF-8 whatever the script's encoding, without tags.
std::string escaped(const std::string& bytes) {
    return htmlOfPlain(decodeForDisplay(bytes));
}

std::string linkTo(const EditSession& session, int page) {
    return "<a href=\"#" + std::to_string(page) + "\">" + escaped(session.page(page).caption) +
           "</a>";
}

std::string foundOn(const EditSession& session, int activePage) {
    std::string pages;
    std::int32_t total = 0;
    for (int page = 0; page < session.pageCount(); ++page) {
        const std::int32_t count = session.visibleRows(page);
        total += count;
        if (page == activePage || count == 0) continue;
        pages += " " + linkTo(session, page) + "&nbsp;(" + std::to_string(count) + ")";
    }
    if (total == 0) return escaped(formText(FormText::foundNowhere, session.locale()));
    if (pages.empty()) return pages;
    return escaped(formText(FormText::foundElsewhere, session.locale())) + pages;
}

std::string markedPages(const EditSession& session, int activePage) {
    std::string pages;
    for (const Severity severity : {Severity::error, Severity::warning})
        for (int page = 0; page < session.pageCount(); ++page) {
            if (page == activePage || session.pageSeverity(page) != severity) continue;
            pages += "&nbsp; ";
            pages += severity == Severity::error ? kErrorSign : kWarningSign;
            pages += linkTo(session, page);
        }
    if (pages.empty()) return pages;
    return escaped(formText(FormText::markedPages, session.locale())) + pages;
}

}  // namespace

FormPageLinks::FormPageLinks(wxWindow* parent, std::function<void(int page)> choose)
    : wxPanel(parent) {
    Hide();
    view_ = new HtmlView(this, HtmlView::Surface::dialog);
    view_->hideScrollBars();
    view_->onLink = [choose = std::move(choose)](const wxString& target) {
        long page = -1;
        if (target.ToLong(&page)) choose(static_cast<int>(page));
    };
    Bind(wxEVT_SIZE, [this](wxSizeEvent&) { view_->SetSize(GetClientSize()); });
}

bool FormPageLinks::update(const EditSession& session, int activePage, bool searching,
                           bool marked) {
    std::string markup;
    if (searching) markup = foundOn(session, activePage);
    const std::string marks = marked ? markedPages(session, activePage) : std::string();
    if (!markup.empty() && !marks.empty()) markup += "<br>";
    markup += marks;
    if (markup == markup_) return false;
    markup_ = markup;
    const bool shown = !markup.empty();
    view_->setMarkup(markup);
    const bool appears = shown != IsShown();
    Show(shown);
    return fit(GetParent()->GetClientSize().x) || appears;
}

bool FormPageLinks::fit(int width) {
    if (markup_.empty()) return false;
    const int most = 3 * (GetCharHeight() + FromDIP(2)) + FromDIP(4);
    const int height = std::min(most, view_->heightAt(width - FromDIP(24)) + FromDIP(2));
    if (height == height_) return false;
    height_ = height;
    SetMinSize(wxSize(-1, height));
    return true;
}

wxString FormPageLinks::text() const {
    return IsShown() ? view_->text() : wxString();
}

}  // namespace korvant::ui
