#include "ui/kit/clipboard.h"

#include <wx/clipbrd.h>
#include <wx/dataobj.h>
#include <wx/log.h>

namespace korvant::ui {

bool copyToClipboard(const wxString& text) {
    const wxLogNull silence;
    wxClipboardLocker lock;
    if (!lock) return false;
    return wxTheClipboard->SetData(new wxTextDataObject(text));
}

wxString textFromClipboard(bool primarySelection) {
    const wxLogNull silence;
    wxTheClipboard->UsePrimarySelection(primarySelection);
    wxTextDataObject data;
    {
        wxClipboardLocker lock;
        if (!!lock) wxTheClipboard->GetData(data);
    }
    wxTheClipboard->UsePrimarySelection(false);
    return data.GetText();
}

}  // namespace korvant::ui
