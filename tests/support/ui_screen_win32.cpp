#include <wx/bitmap.h>
#include <wx/dcmemory.h>
#include <wx/dcscreen.h>
#include <wx/image.h>

#include "support/ui_driver.h"

namespace korvant::test {

/// The toolkit is built without PNG here; the name stays the caller's.
void saveScreen(const std::string& path) {
    wxScreenDC screen;
    const wxSize size = screen.GetSize();
    wxBitmap picture(size);
    wxMemoryDC(picture).Blit(wxPoint(0, 0), size, &screen, wxPoint(0, 0));
    picture.SaveFile(path, wxBITMAP_TYPE_BMP);
}

}  // namespace korvant::test
