#include "ui/editor/editor_control.h"

#include <wx/fontenum.h>
#include <wx/log.h>
#include <wx/stc/stc.h>
#include <wx/weakref.h>

#include <algorithm>
#include <map>
#include <string>

#include "editor/control/control_setup.h"
#include "ui/kit/text_conversion.h"
#include "ui/kit/theme.h"

namespace korvant::ui {
namespace {

/// Place and size before the first layout.
constexpr int kFirstX = 10, kFirstY = 10, kFirstWidth = 500, kFirstHeight = 400;

/// The width of the line numbers is measured by the control and is therefore right as it is.
bool isFixedMarginWidth(unsigned message, std::uintptr_t margin) {
    return message == sci::kSetMarginWidthN && margin != kNumberMargin;
}

/// Where a font is missing, desktops put one in its place that may join letters, and then columns
/// do not line up.
const std::string& installedFace(const char* wanted) {
    static auto* const faces = new std::map<std::string, std::string>;
    const auto [found, isNew] = faces->try_emplace(wanted, wanted);
    if (!isNew || wxFontEnumerator::IsValidFacename(fromUtf8(wanted))) return found->second;
    for (const char* face : {"Liberation Mono", "DejaVu Sans Mono"})
        if (wxFontEnumerator::IsValidFacename(face)) return found->second = face;
    return found->second = toUtf8(fixedFont().GetFaceName());
}

unsigned codeOf(wxEventType type) {
    if (type == wxEVT_STC_CHARADDED) return sci::kCharAdded;
    if (type == wxEVT_STC_DOUBLECLICK) return sci::kDoubleClick;
    if (type == wxEVT_STC_UPDATEUI) return sci::kUpdateUi;
    if (type == wxEVT_STC_MODIFIED) return sci::kModified;
    if (type == wxEVT_STC_MARGINCLICK) return sci::kMarginClick;
    if (type == wxEVT_STC_DWELLSTART) return sci::kDwellStart;
    if (type == wxEVT_STC_DWELLEND) return sci::kDwellEnd;
    if (type == wxEVT_STC_ZOOM) return sci::kZoom;
    if (type == wxEVT_STC_CALLTIP_CLICK) return sci::kCallTipClick;
    return 0;
}

ControlNotification plainForm(const wxStyledTextEvent& event) {
    ControlNotification notification;
    notification.code = codeOf(event.GetEventType());
    notification.position = event.GetPosition();
    notification.length = event.GetLength();
    notification.character = event.GetKey();
    notification.modificationType = event.GetModificationType();
    notification.linesAdded = event.GetLinesAdded();
    notification.margin = event.GetMargin();
    return notification;
}

/// Windows stand over the text: what is wrong in a line, why the script stopped. The toolkit
/// scrolls them along, and complains of each that is hidden; then they are moved by hand.
class TextWindow : public wxStyledTextCtrl {
  public:
    void ScrollWindow(int dx, int dy, const wxRect* rect) override {
        const wxWindowList& children = GetChildren();
        const bool allShown = std::all_of(children.begin(), children.end(),
                                          [](const wxWindow* child) { return child->IsShown(); });
        if (allShown) return wxStyledTextCtrl::ScrollWindow(dx, dy, rect);
        for (wxWindow* child : children)
            if (child->IsShown()) child->Move(child->GetPosition() + wxPoint(dx, dy));
        Refresh();
    }
};

}  // namespace

wxStyledTextCtrl* makeTextControl(wxWindow* parent) {
    const wxLogNull silence;
    auto* control = new TextWindow;
    if (control->Create(parent, wxID_ANY, parent->FromDIP(wxPoint(kFirstX, kFirstY)),
                        parent->FromDIP(wxSize(kFirstWidth, kFirstHeight)),
                        wxCLIP_CHILDREN | wxTAB_TRAVERSAL | wxBORDER_NONE))
        return control;
    delete control;
    return nullptr;
}

ControlSend sendTo(wxStyledTextCtrl& control) {
    return [weak = wxWeakRef<wxStyledTextCtrl>(&control)](unsigned message, std::uintptr_t w,
                                                          std::intptr_t l) -> std::intptr_t {
        if (!weak || weak->IsBeingDeleted()) return 0;
        if (isFixedMarginWidth(message, w)) l = weak->FromDIP(static_cast<int>(l));
        if (message == sci::kStyleSetFont)
            l = reinterpret_cast<std::intptr_t>(
                installedFace(reinterpret_cast<const char*>(l)).c_str());
        return weak->SendMsg(static_cast<int>(message), w, l);
    };
}

void forwardNotifications(wxStyledTextCtrl& control,
                          std::function<void(const ControlNotification&)> receive) {
    const auto forward = [receive = std::move(receive)](wxStyledTextEvent& event) {
        receive(plainForm(event));
        event.Skip();
    };
    for (const auto& type : {wxEVT_STC_CHARADDED, wxEVT_STC_DOUBLECLICK, wxEVT_STC_UPDATEUI,
                             wxEVT_STC_MODIFIED, wxEVT_STC_MARGINCLICK, wxEVT_STC_DWELLSTART,
                             wxEVT_STC_DWELLEND, wxEVT_STC_ZOOM, wxEVT_STC_CALLTIP_CLICK})
        control.Bind(type, forward);
}

}  // namespace korvant::ui
