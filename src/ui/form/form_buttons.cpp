#include "ui/form/form_buttons.h"

#include <wx/button.h>
#include <wx/sizer.h>

#include <algorithm>
#include <iterator>
#include <vector>

#include "ui/kit/mnemonics.h"
#include "ui/kit/text_conversion.h"
#include "ui/kit/ui_native.h"

namespace korvant::ui {
namespace {

/// Buttons that may stand in one form together.
constexpr FormText kTogether[] = {FormText::ok,   FormText::cancel, FormText::check, FormText::add,
                                  FormText::copy, FormText::remove, FormText::order};

}  // namespace

wxString formCaption(FormText caption, std::int32_t locale) {
    return escapeLabel(toDisplay(formText(caption, locale)));
}

wxString keyedFormCaption(FormText caption, std::int32_t locale) {
    const auto place = std::find(std::begin(kTogether), std::end(kTogether), caption);
    if (place == std::end(kTogether)) return formCaption(caption, locale);
    std::vector<wxString> captions;
    for (FormText one : kTogether) captions.push_back(toDisplay(formText(one, locale)));
    return assignKeys(captions)[static_cast<std::size_t>(place - std::begin(kTogether))].label;
}

wxButton* formButton(wxWindow* parent, int id, FormText caption, std::int32_t locale) {
    return new wxButton(parent, id, keyedFormCaption(caption, locale));
}

wxSizer* okAndCancel(wxWindow* parent, std::int32_t locale) {
    auto* row = new wxBoxSizer(wxHORIZONTAL);
    wxButton* ok = formButton(parent, wxID_OK, FormText::ok, locale);
    ok->SetDefault();
    native::markDefault(*ok, true);
    row->Add(ok);
    row->AddSpacer(parent->FromDIP(6));
    row->Add(formButton(parent, wxID_CANCEL, FormText::cancel, locale));
    return row;
}

}  // namespace korvant::ui
