#include "ui/form/form_choosers.h"

#include <wx/colordlg.h>
#include <wx/filedlg.h>
#include <wx/filename.h>

#include "host/services/frontend.h"
#include "korvantide/script_object.h"
#include "object/form/form_texts.h"
#include "ui/form/form_question.h"
#include "ui/kit/text_conversion.h"

namespace korvant::ui {
namespace {

std::optional<wxString> askForFile(const FileRequest& request) {
    const wxFileName path(request.path);
    const long style = request.save ? wxFD_SAVE : wxFD_OPEN | wxFD_FILE_MUST_EXIST;
    wxFileDialog dialog(request.parent, request.title, path.GetPath(), path.GetFullName(),
                        request.wildcard, style);
    if (dialog.ShowModal() != wxID_OK) return {};
    return dialog.GetPath();
}

std::optional<wxColour> askForColour(wxWindow* parent, const wxString& title,
                                     const wxColour& initial) {
    wxColourData data;
    data.SetColour(initial);
    data.SetChooseFull(true);
    wxColourDialog dialog(parent, &data);
    dialog.SetTitle(title);
    if (dialog.ShowModal() != wxID_OK) return {};
    return dialog.GetColourData().GetColour();
}

bool askBeforeOverwriting(wxWindow*, const wxString& path) {
    // In one encoding: the path may hold letters that the form's own texts have no byte for.
    const std::string text =
        toUtf8(path) + "\n\n" + toUtf8(toDisplay(formText(FormText::overwrite)));
    const std::uint32_t style = box_style::kYesNo | box_style::kIconWarning;
    return askInForm(text, style, ScriptObject::m_locale) == box_button::kYes;
}

/// A bar would end the description.
wxString withoutBars(wxString text) {
    text.Replace("|", "/");
    return text;
}

}  // namespace

FormChoosers& formChoosers() {
    static FormChoosers choosers{askForFile, askForColour, askBeforeOverwriting};
    return choosers;
}

wxString wildcardOf(const std::vector<FileFilter>& filters) {
    wxString wildcard;
    for (const FileFilter& filter : filters) {
        const wxString patterns = withoutBars(toDisplay(filter.patterns));
        wxString description = withoutBars(toDisplay(filter.description));
        if (description.empty()) description = patterns;
        if (!wildcard.empty()) wildcard += "|";
        wildcard += description + "|" + patterns;
    }
    return wildcard;
}

std::optional<wxString> chooseFormFile(const FileRequest& request) {
    FileRequest again = request;
    while (true) {
        const std::optional<wxString> path = formChoosers().file(again);
        if (!path || !request.save || !wxFileName::FileExists(*path) ||
            formChoosers().mayOverwrite(request.parent, *path))
            return path;
        again.path = *path;
    }
}

}  // namespace korvant::ui
