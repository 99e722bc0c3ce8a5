#include "ui/kit/html_view.h"

#include <wx/dc.h>
#include <wx/html/htmlcell.h>
#include <wx/html/m_templ.h>
#include <wx/menu.h>

#include <algorithm>
#include <string>

#include "base/text/html_text.h"
#include "ui/kit/clipboard.h"
#include "ui/kit/readable_markup.h"
#include "ui/kit/text_conversion.h"
#include "ui/kit/theme.h"
#include "ui/kit/ui_texts.h"

namespace korvant::ui {
namespace {

constexpr int kMargin = 2;
constexpr int kFieldMargin = 8;
constexpr int kSlack = 8;  ///< lines wrap a little earlier than their widths say

/// The toolkit draws its rules in fixed greys; this one follows the theme.
class RuleCell : public wxHtmlCell {
  public:
    RuleCell(int thickness, const wxColour& colour) : colour_(colour) { m_Height = thickness; }

    void Layout(int width) override {
        m_Width = width;
        wxHtmlCell::Layout(width);
    }

    void Draw(wxDC& dc, int x, int y, int, int, wxHtmlRenderingInfo&) override {
        dc.SetBrush(wxBrush(colour_));
        dc.SetPen(*wxTRANSPARENT_PEN);
        dc.DrawRectangle(x + m_PosX, y + m_PosY, m_Width, m_Height);
    }

  private:
    wxColour colour_;
};

class RuleHandler : public wxHtmlWinTagHandler {
  public:
    wxString GetSupportedTags() override { return wxT("HR"); }

    bool HandleTag(const wxHtmlTag& tag) override {
        int thickness = 1;
        if (tag.HasParam(wxT("SIZE"))) tag.GetParamAsInt(wxT("SIZE"), &thickness);
        wxColour colour = currentTheme().rule;
        if (tag.HasParam(wxT("COLOR"))) tag.GetParamAsColour(wxT("COLOR"), &colour);
        m_WParser->CloseContainer();
        wxHtmlContainerCell* container = m_WParser->OpenContainer();
        const int space = std::max(2, m_WParser->GetCharHeight() / 4);
        container->SetIndent(space, wxHTML_INDENT_VERTICAL);
        container->SetWidthFloat(tag);
        container->InsertCell(new RuleCell(std::clamp(thickness, 1, 20), colour));
        m_WParser->CloseContainer();
        m_WParser->OpenContainer();
        return false;
    }
};

/// A place where a line may end inside a word.
class BreakCell : public wxHtmlCell {
  public:
    bool IsLinebreakAllowed() const override { return true; }
};

class BreakHandler : public wxHtmlWinTagHandler {
  public:
    wxString GetSupportedTags() override { return wxT("WBR"); }

    bool HandleTag(const wxHtmlTag&) override {
        m_WParser->GetContainer()->InsertCell(new BreakCell);
        return false;
    }
};

std::string hex(const wxColour& colour) {
    return toUtf8(colour.GetAsString(wxC2S_HTML_SYNTAX));
}

}  // namespace

HtmlView::HtmlView(wxWindow* parent, Surface surface)
    : wxHtmlWindow(
          parent, wxID_ANY, wxDefaultPosition, wxDefaultSize,
          wxHW_SCROLLBAR_AUTO | (surface == Surface::field ? wxBORDER_THEME : wxBORDER_NONE)),
      surface_(surface) {
    GetParser()->AddTagHandler(new RuleHandler);
    GetParser()->AddTagHandler(new BreakHandler);
    SetBorders(FromDIP(surface == Surface::field ? kFieldMargin : kMargin));
    setSizes();
    Bind(wxEVT_CONTEXT_MENU, &HtmlView::onContextMenu, this);
    Bind(wxEVT_KEY_DOWN, &HtmlView::onKey, this);
}

/// Sizes of <font size=1> to 7; the headings take them from the top.
void HtmlView::setSizes() {
    const wxFont font = dialogFont();
    const int base = font.GetPointSize();
    const int sizes[7] = {base - 2, base - 1, base, base + 1, base + 2, base + 4, base + 6};
    SetFonts(font.GetFaceName(), fixedFont().GetFaceName(), sizes);
}

void HtmlView::setMarkup(std::string_view bytes) {
    show(boundedHtml(bytes));
}

void HtmlView::setPlain(std::string_view bytes) {
    show(htmlFromPlain(bytes));
}

void HtmlView::show(const std::string& markup) {
    const Theme theme = currentTheme();
    const bool field = surface_ == Surface::field;
    const wxColour back = field ? theme.field : GetParent()->GetBackgroundColour();
    const wxColour& front = field ? theme.fieldText : theme.text;
    const std::string readable = readableColours(markup, back, front);
    const std::string shown = withBreaks(readable);
    longWords_ = shown.size() != readable.size();
    SetBackgroundColour(back);
    SetPage(fromUtf8("<html><body bgcolor=\"" + hex(back) + "\" text=\"" + hex(front) +
                     "\" link=\"" + hex(theme.link) + "\">" + shown + "</body></html>"));
}

int HtmlView::naturalWidth() const {
    const wxHtmlContainerCell* cell = GetInternalRepresentation();
    return cell ? cell->GetMaxTotalWidth() + 2 * m_Borders + FromDIP(kSlack) : 0;
}

int HtmlView::heightAt(int width) {
    wxHtmlContainerCell* cell = GetInternalRepresentation();
    if (!cell) return 0;
    cell->Layout(std::max(1, width));
    const int height = cell->GetHeight();
    CreateLayout();
    return height;
}

void HtmlView::hideScrollBars() {
    ShowScrollbars(wxSHOW_SB_NEVER, wxSHOW_SB_NEVER);
    // Windows hides none, and a bar that came while the view was small takes room from the text.
    SetWindowStyleFlag((GetWindowStyleFlag() & ~wxHW_SCROLLBAR_AUTO) | wxHW_SCROLLBAR_NEVER);
}

bool HtmlView::needsScrolling() const {
    const wxHtmlContainerCell* cell = GetInternalRepresentation();
    return cell && cell->GetHeight() > GetClientSize().y;
}

bool HtmlView::hasSelection() {
    return !SelectionToText().empty();
}

void HtmlView::copy() {
    copyToClipboard(hasSelection() ? SelectionToText() : ToText());
}

void HtmlView::OnLinkClicked(const wxHtmlLinkInfo& link) {
    wxString target;
    if (onLink && link.GetHref().StartsWith(wxT("#"), &target)) onLink(target);
}

wxHtmlOpeningStatus HtmlView::OnOpeningURL(wxHtmlURLType, const wxString&, wxString*) const {
    return wxHTML_BLOCK;
}

void HtmlView::onContextMenu(wxContextMenuEvent&) {
    wxMenu menu;
    menu.Append(wxID_COPY, uiText(UiText::copy));
    menu.Append(wxID_SELECTALL, uiText(UiText::selectAll));
    menu.Bind(wxEVT_MENU,
              [this](wxCommandEvent& event) { event.GetId() == wxID_COPY ? copy() : SelectAll(); });
    PopupMenu(&menu);
}

void HtmlView::onKey(wxKeyEvent& event) {
    if (event.GetModifiers() == wxMOD_CONTROL && event.GetKeyCode() == 'A')
        SelectAll();
    else
        event.Skip();
}

}  // namespace korvant::ui
