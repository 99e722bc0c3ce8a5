#include "ui/form/form_sheet.h"

#include <wx/notebook.h>

#include "ui/form/form_list.h"
#include "ui/form/form_marks.h"
#include "ui/form/form_page.h"
#include "ui/kit/mnemonics.h"
#include "ui/kit/text_conversion.h"

namespace korvant::ui {
namespace {

constexpr int kTabPadding = 32;  ///< about what a tab is wider than its text

enum Picture { kWarningPicture, kErrorPicture };

}  // namespace

CListCtrlExSheet::CListCtrlExSheet(wxWindow* parent, EditSession& session)
    : FormWindow(parent, session) {
    book_ = new wxNotebook(this, wxID_ANY);
    wxBookCtrlBase::Images pictures;
    pictures.push_back(markPicture(Severity::warning));
    pictures.push_back(markPicture(Severity::error));
    book_->SetImages(pictures);
    for (int i = 0; i < session.pageCount(); ++i) {
        pages_.push_back(new CListCtrlExPage(book_, session, i, *this));
        book_->AddPage(pages_.back(), escapeLabel(toDisplay(session.page(i).caption)));
    }
    layOut(book_);
    Bind(wxEVT_NOTEBOOK_PAGE_CHANGING, &CListCtrlExSheet::onChanging, this);
    Bind(wxEVT_NOTEBOOK_PAGE_CHANGED, [this](wxBookCtrlEvent& event) {
        if (event.GetEventObject() == book_) {
            page(event.GetSelection()).activate();
            updateLinks();
        }
        event.Skip();
    });
}

/// A refused text holds its page.
void CListCtrlExSheet::onChanging(wxBookCtrlEvent& event) {
    CListCtrlEx* list =
        event.GetOldSelection() < 0 ? nullptr : page(event.GetOldSelection()).list();
    if (list && !list->commit())
        event.Veto();
    else
        event.Skip();
}

int CListCtrlExSheet::activePage() const {
    return book_->GetSelection();
}

void CListCtrlExSheet::showPage(int page) {
    book_->ChangeSelection(static_cast<std::size_t>(page));
}

/// The tabs are wider than the window, so that some are scrolled out of it.
bool CListCtrlExSheet::hidesMarks() const {
    int width = 0;
    for (std::size_t i = 0; i < book_->GetPageCount(); ++i) {
        const bool marked = book_->GetPageImage(i) != wxNotebook::NO_IMAGE;
        width += GetTextExtent(book_->GetPageText(i)).x + FromDIP(kTabPadding);
        if (marked) width += FromDIP(kMarkSize);
    }
    return width > book_->GetClientSize().x;
}

void CListCtrlExSheet::showSeverity(int page, Severity severity) {
    int picture = wxNotebook::NO_IMAGE;
    if (severity == Severity::warning) picture = kWarningPicture;
    if (severity == Severity::error) picture = kErrorPicture;
    book_->SetPageImage(static_cast<std::size_t>(page), picture);
}

}  // namespace korvant::ui
