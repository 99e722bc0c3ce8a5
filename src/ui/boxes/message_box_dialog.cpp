#include "ui/boxes/message_box_dialog.h"

#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/sizer.h>
#include <wx/statbmp.h>

#include "ui/kit/html_view.h"
#include "ui/kit/icon_painter.h"
#include "ui/kit/mnemonics.h"
#include "ui/kit/text_conversion.h"
#include "ui/kit/ui_native.h"
#include "ui/kit/ui_runtime.h"
#include "ui/kit/ui_texts.h"

namespace korvant::ui {
namespace {

constexpr int kGap = 12;
constexpr int kDetailsHeight = 180;
constexpr int kPictureSize = 44;
constexpr std::size_t kLongestCaption = 200;

long styleOf(const MessageBoxRequest& request) {
    const long topMost = request.style & box_style::kTopMost ? wxSTAY_ON_TOP : 0;
    const long sizable = request.details.empty() ? 0 : wxRESIZE_BORDER;
    return wxDEFAULT_DIALOG_STYLE | sizable | topMost;
}

wxString captionOf(const MessageBoxRequest& request) {
    const wxString caption = toDisplay(request.caption).Left(kLongestCaption);
    return caption.empty() ? wxString(kModuleName) : caption;
}

/// The same shapes and colours as the marks in forms and in the editor; invalid for no icon.
wxBitmapBundle pictureOf(std::uint32_t style) {
    const wxColour blue(0x35, 0x84, 0xE4), red(0xD3, 0x22, 0x2A), amber(0xF7, 0xB2, 0x17);
    switch (style & 0xF0) {
        case box_style::kIconError:
            return iconBundle(Icon::error, kPictureSize, red, *wxWHITE);
        case box_style::kIconQuestion:
            return iconBundle(Icon::question, kPictureSize, blue, *wxWHITE);
        case box_style::kIconWarning:
            return iconBundle(Icon::warning, kPictureSize, amber, wxColour(0x2B, 0x20, 0x00));
        case box_style::kIconInformation:
            return iconBundle(Icon::note, kPictureSize, blue, *wxWHITE);
        default:
            return {};
    }
}

void setText(HtmlView& view, const std::string& text, bool plain) {
    plain ? view.setPlain(text) : view.setMarkup(text);
}

}  // namespace

MessageBoxDialog::MessageBoxDialog(wxWindow* parent, const MessageBoxRequest& request)
    : Guarded(parent, wxID_ANY, captionOf(request), wxDefaultPosition, wxDefaultSize,
              styleOf(request)),
      request_(request),
      set_(boxButtons(request.style, request.offerStop)),
      timer_(this) {
    auto* column = new wxBoxSizer(wxVERTICAL);
    messageRow_ = makeMessage();
    column->Add(
        messageRow_,
        wxSizerFlags(request.details.empty() ? 1 : 0).Expand().Border(wxALL, FromDIP(kGap)));
    if (!request.details.empty()) makeDetails(column);
    if (request.offerDoNotShow) {
        dontShow_ = new wxCheckBox(
            this, wxID_ANY,
            escapeLabel(buttonCaption(box_button::kDoNotShowAgain, request.captions)));
        column->Add(dontShow_, wxSizerFlags().Border(wxLEFT | wxRIGHT | wxBOTTOM, FromDIP(kGap)));
    }
    column->Add(makeButtonRow(),
                wxSizerFlags().Expand().Border(wxLEFT | wxRIGHT | wxBOTTOM, FromDIP(kGap)));
    SetSizer(column);
    SetEscapeId(wxID_NONE);
    connect();
    fitToText();
}

wxSizer* MessageBoxDialog::makeMessage() {
    auto* row = new wxBoxSizer(wxHORIZONTAL);
    if (const wxBitmapBundle picture = pictureOf(request_.style); picture.IsOk())
        row->Add(new wxStaticBitmap(this, wxID_ANY, picture),
                 wxSizerFlags().Border(wxRIGHT, FromDIP(kGap)));
    message_ = new HtmlView(this, HtmlView::Surface::dialog);
    setText(*message_, request_.text, request_.plain);
    row->Add(message_, wxSizerFlags(1).Expand());
    return row;
}

void MessageBoxDialog::makeDetails(wxSizer* column) {
    details_ = new HtmlView(this, HtmlView::Surface::field);
    setText(*details_, request_.details, request_.plain);
    details_->SetMinSize(wxSize(-1, FromDIP(kDetailsHeight)));
    native::keepScrollBarsVisible(*details_);
    column->Add(details_,
                wxSizerFlags(1).Expand().Border(wxLEFT | wxRIGHT | wxBOTTOM, FromDIP(kGap)));
    details_->Hide();
}

wxSizer* MessageBoxDialog::makeButtonRow() {
    auto* row = new wxBoxSizer(wxHORIZONTAL);
    if (details_) {
        more_ = new wxButton(this, wxID_ANY);
        onPress(*more_, [this] { toggleDetails(); });
        row->Add(more_, wxSizerFlags().Border(wxRIGHT, FromDIP(kGap)));
    }
    row->AddStretchSpacer();
    addChoices(row);
    return row;
}

void MessageBoxDialog::addChoices(wxSizer* row) {
    std::vector<wxString> captions;
    for (const int id : set_.ids)
        captions.push_back(buttonCaption(static_cast<unsigned long>(id), request_.captions));
    if (more_) captions.push_back(buttonCaption(box_button::kMore, request_.captions));
    const std::vector<KeyedLabel> labels = assignKeys(captions);
    for (std::size_t i = 0; i < set_.ids.size(); ++i) {
        const int id = set_.ids[i];
        auto* button = new wxButton(this, wxID_ANY, labels[i].label);
        onPress(*button, [this, id] { choose(id); });
        row->Add(button, wxSizerFlags().Border(wxLEFT, i == 0 ? 0 : FromDIP(kGap / 2)));
        choices_.push_back({id, captions[i], labels[i].key, button});
        if (id == set_.defaultId) button->SetDefault();
    }
    if (!more_) return;
    more_->SetLabel(labels.back().label);
    moreKey_ = labels.back().key;
}

}  // namespace korvant::ui
