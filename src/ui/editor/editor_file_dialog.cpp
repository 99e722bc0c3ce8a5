#include "ui/editor/editor_file_dialog.h"

#include <wx/filedlg.h>
#include <wx/filename.h>

#include <string_view>

#include "ui/kit/text_conversion.h"

namespace korvant::ui {
namespace {

/// Never destroyed, so that nothing of it runs at exit.
FileChooser& replacement() {
    static auto* const chooser = new FileChooser;
    return *chooser;
}

/// "*.*" means every file, also one without a dot.
wxString patternOf(const DialogFileType& filter) {
    const bool everything = std::string_view(filter.pattern) == "*.*";
    return everything ? wxString(wxALL_FILES_PATTERN) : wxString(filter.pattern);
}

wxString dialogWildcard(const FileDialogRequest& request) {
    wxString wildcard;
    for (const DialogFileType& filter : request.filters) {
        if (!wildcard.empty()) wildcard += "|";
        wildcard += wxString(filter.label) + "|" + patternOf(filter);
    }
    return wildcard;
}

std::string systemPath(const wxString& path) {
    const auto bytes = path.fn_str();
#ifdef _WIN32
    return toUtf8(wxString(bytes));
#else
    return std::string(bytes);
#endif
}

std::optional<std::string> askDesktop(wxWindow* parent, const FileDialogRequest& request) {
    const bool mustExist = request.fileMustExist && !request.saving;
    const bool asksOver = request.saving && !request.fileMustExist;
    const long style = (request.saving ? wxFD_SAVE : wxFD_OPEN) |
                       (mustExist ? wxFD_FILE_MUST_EXIST : 0) |
                       (asksOver ? wxFD_OVERWRITE_PROMPT : 0);
#ifdef _WIN32
    const wxString folder = fromUtf8(request.folder);
#else
    const wxString folder(request.folder.c_str(), *wxConvFileName);
#endif
    wxFileDialog dialog(parent, fromUtf8(request.title), folder, fromUtf8(request.suggestedName),
                        dialogWildcard(request), style);
    if (dialog.ShowModal() != wxID_OK) return std::nullopt;
    return systemPath(dialog.GetPath());
}

}  // namespace

std::optional<std::string> chooseScriptFile(wxWindow* parent, const FileDialogRequest& request) {
    return replacement() ? replacement()(parent, request) : askDesktop(parent, request);
}

void setFileChooser(FileChooser chooser) {
    replacement() = std::move(chooser);
}

}  // namespace korvant::ui
