#include "ui/boxes/prompt_dialogs.h"

#include <wx/button.h>
#include <wx/sizer.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

#include <algorithm>
#include <cmath>
#include <limits>

#include "base/text/number_text.h"
#include "host/services/frontend.h"
#include "ui/kit/html_view.h"
#include "ui/kit/mnemonics.h"
#include "ui/kit/text_conversion.h"
#include "ui/kit/theme.h"
#include "ui/kit/ui_native.h"
#include "ui/kit/ui_runtime.h"
#include "ui/kit/ui_texts.h"
#include "ui/kit/window_place.h"

namespace korvant::ui {
namespace {

constexpr int kGap = 12;
constexpr int kLabelWidth = 380;
constexpr int kLabelHeight = 240;
constexpr int kFieldWidth = 300;
constexpr int kFieldHeight = 120;
constexpr std::size_t kPlainLabel = 800;      ///< a longer one gets scroll bars,
constexpr std::size_t kLongestWord = 30;      ///< and one with a longer word than this is cut there
constexpr std::size_t kLongestText = 64'000;  ///< fields take a second and more for longer ones,
constexpr std::size_t kLongestLine = 8'000;   ///< and for lines that are longer than this
constexpr std::size_t kLongestTyped = 60'000;  ///< fields of one line cut longer ones, unasked
constexpr std::size_t kPreview = 1'000;

bool isLong(const std::string& label) {
    return label.size() > kPlainLabel || std::count(label.begin(), label.end(), '\n') > 12;
}

bool hasLongWord(const std::string& label) {
    std::size_t letters = 0;
    for (const char c : label) {
        letters = c == ' ' || c == '\n' || c == '\t' ? 0 : letters + 1;
        if (letters > kLongestWord) return true;
    }
    return false;
}

bool needsLines(const wxString& text) {
    return text.find('\n') != wxString::npos;
}

std::size_t longestLine(const wxString& text) {
    std::size_t longest = 0, current = 0;
    for (const wxUniChar character : text) {
        current = character == '\n' ? 0 : current + 1;
        longest = std::max(longest, current);
    }
    return longest;
}

bool isEditable(const wxString& text) {
    return text.length() <= kLongestText && longestLine(text) <= kLongestLine;
}

}  // namespace

PromptDialog::PromptDialog(wxWindow* parent, const std::string& label)
    : Guarded(parent, wxID_ANY, kModuleCaption, wxDefaultPosition, wxDefaultSize,
              wxDEFAULT_DIALOG_STYLE | wxRESIZE_BORDER) {
    auto* column = new wxBoxSizer(wxVERTICAL);
    addLabel(column, label);
    fieldRow_ = new wxBoxSizer(wxVERTICAL);
    column->Add(fieldRow_, wxSizerFlags(1).Expand().Border(wxLEFT | wxRIGHT, FromDIP(kGap)));
    remark_ = new wxStaticText(this, wxID_ANY, wxString());
    remark_->SetForegroundColour(currentTheme().error);
    remark_->Hide();
    auto* below = new wxBoxSizer(wxVERTICAL);
    below->Add(remark_, wxSizerFlags().Expand().Border(wxTOP, FromDIP(kGap / 2)));
    column->Add(below, wxSizerFlags().Expand().Border(wxLEFT | wxRIGHT, FromDIP(kGap)));
    addButtons(column);
    SetSizer(column);
}

void PromptDialog::addLabel(wxBoxSizer* column, const std::string& label) {
    const auto flags = wxSizerFlags().Expand().Border(wxALL, FromDIP(kGap));
    if (isLong(label) || hasLongWord(label)) {
        column->Add(makeLabelView(label), flags);
        return;
    }
    auto* text = new wxStaticText(this, wxID_ANY, escapeLabel(toDisplay(label)));
    text->Wrap(FromDIP(kLabelWidth));
    column->Add(text, flags);
}

/// Cuts words that are wider than itself, and has scroll bars where it has to.
wxWindow* PromptDialog::makeLabelView(const std::string& label) {
    auto* view = new HtmlView(this, HtmlView::Surface::dialog);
    view->setPlain(label);
    const int width = FromDIP(kLabelWidth), tallest = FromDIP(kLabelHeight);
    const int height = view->heightAt(width);
    if (height > tallest)
        native::keepScrollBarsVisible(*view);
    else
        view->hideScrollBars();
    view->SetMinSize(wxSize(width, std::min(height, tallest)));
    return view;
}

void PromptDialog::addButtons(wxBoxSizer* column) {
    auto* row = new wxBoxSizer(wxHORIZONTAL);
    row->AddStretchSpacer();
    auto* ok = new wxButton(this, wxID_OK, escapeLabel(buttonCaption(box_button::kOk)));
    auto* cancel = new wxButton(this, wxID_CANCEL, escapeLabel(buttonCaption(box_button::kCancel)));
    ok->SetDefault();
    native::markDefault(*ok, true);
    Bind(wxEVT_BUTTON, &PromptDialog::onOk, this, wxID_OK);
    row->Add(ok, wxSizerFlags().Border(wxRIGHT, FromDIP(kGap / 2)));
    row->Add(cancel);
    column->Add(row, wxSizerFlags().Expand().Border(wxALL, FromDIP(kGap)));
}

/// What the field made of the text is what counts as unchanged: controls cut or convert.
void PromptDialog::setInitial(const wxString& text) {
    const bool editable = isEditable(text);
    const bool lines = editable && needsLines(text);
    field_ =
        new wxTextCtrl(this, wxID_ANY, editable ? text : text.Left(kPreview) + wxT("..."),
                       wxDefaultPosition, FromDIP(wxSize(kFieldWidth, lines ? kFieldHeight : -1)),
                       (lines ? wxTE_MULTILINE : 0) | (editable ? 0 : wxTE_READONLY));
    native::takeLongTexts(*field_);
    if (lines) native::padLines(*field_);
    field_->MoveBeforeInTabOrder(FindWindow(wxID_OK));
    fieldRow_->Add(field_, wxSizerFlags(lines ? 1 : 0).Expand());
    shown_ = field_->GetValue();
    Bind(wxEVT_TEXT, [this](wxCommandEvent&) { explain({}); });
    if (!editable) explain(uiText(UiText::tooLongToEdit));
}

bool PromptDialog::ask() {
    placeDialog(*this);
    field_->SetFocus();
    field_->SelectAll();
    int result = wxID_CANCEL;
    const LoopGuard guard([] {});
    const KeyboardClaim claim(*this);
    runModal([&] { result = ShowModal(); });
    return result == wxID_OK;
}

void PromptDialog::onOk(wxCommandEvent&) {
    const wxString text = field_->GetValue();
    const wxString wrong = text == shown_ ? wxString() : take(text);
    if (wrong.empty()) {
        EndModal(wxID_OK);
        return;
    }
    explain(wrong);
    field_->SetFocus();
    field_->SelectAll();
}

void PromptDialog::explain(const wxString& what) {
    if (what.empty() && !remark_->IsShown()) return;
    remark_->Show(!what.empty());
    remark_->SetLabelText(what);
    remark_->Wrap(std::max(FromDIP(kLabelWidth), GetClientSize().x - 2 * FromDIP(kGap)));
    refitInPlace(*this);
    Layout();
}

PromptString::PromptString(wxWindow* parent, const std::string& label, const std::string& initial)
    : PromptDialog(parent, label), value(initial) {
    setInitial(toDisplay(initial));
}

wxString PromptString::take(const wxString& text) {
    if (toUtf8(text).size() > kLongestTyped && !needsLines(text))
        return uiText(UiText::tooLongForField);
    value = fromTyped(text);
    return {};
}

PromptInt::PromptInt(wxWindow* parent, const std::string& label, std::int32_t initial)
    : PromptDialog(parent, label), value(initial) {
    setInitial(fromUtf8(formatInt(initial)));
}

wxString PromptInt::take(const wxString& text) {
    const auto number = parseInt(toUtf8(text));
    if (!number) return uiText(UiText::needsWholeNumber);
    value = *number;
    return {};
}

PromptFloat::PromptFloat(wxWindow* parent, const std::string& label, float initial)
    : PromptDialog(parent, label), value(initial) {
    setInitial(fromUtf8(formatShortest(initial)));
}

wxString PromptFloat::take(const wxString& text) {
    const auto number = parseNumber(toUtf8(text));
    if (!number) return uiText(UiText::needsNumber);
    if (std::fabs(*number) > static_cast<double>(std::numeric_limits<float>::max()))
        return uiText(UiText::beyondFloat);
    value = static_cast<float>(*number);
    return {};
}

PromptDouble::PromptDouble(wxWindow* parent, const std::string& label, double initial)
    : PromptDialog(parent, label), value(initial) {
    setInitial(fromUtf8(formatShortest(initial)));
}

wxString PromptDouble::take(const wxString& text) {
    const auto number = parseNumber(toUtf8(text));
    if (!number || !std::isfinite(*number)) return uiText(UiText::needsNumber);
    value = *number;
    return {};
}

}  // namespace korvant::ui
