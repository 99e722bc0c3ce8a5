#include "ui/kit/mnemonics.h"

#include <wx/crt.h>

namespace korvant::ui {
namespace {

wxUniChar upper(wxUniChar c) {
    return wxUniChar(wxToupper(c));
}

KeyedLabel keyed(const wxString& caption, wxString& taken) {
    for (std::size_t i = 0; i < caption.length(); ++i) {
        const wxUniChar key = upper(caption[i]);
        if (!wxIsalnum(caption[i]) || taken.find(key) != wxString::npos) continue;
        taken += key;
        return {escapeLabel(caption.Left(i)) + wxT("&") + escapeLabel(caption.Mid(i)), key};
    }
    return {escapeLabel(caption), wxUniChar(0)};
}

}  // namespace

wxString escapeLabel(const wxString& text) {
    wxString escaped = text;
    escaped.Replace(wxT("&"), wxT("&&"));
    return escaped;
}

std::vector<KeyedLabel> assignKeys(const std::vector<wxString>& captions) {
    std::vector<KeyedLabel> labels;
    wxString taken;
    for (const wxString& caption : captions) labels.push_back(keyed(caption, taken));
    return labels;
}

}  // namespace korvant::ui
