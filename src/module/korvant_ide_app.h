// The module's application object, for hosts that have none of this toolkit's.
#pragma once

#include <wx/app.h>

namespace korvant {

/// Lives inside somebody else's program: it never ends it, shows nothing of its own accord, and
/// keeps what goes wrong inside to itself.
class CKorvantIDEApp : public wxApp {
  public:
    bool OnInit() override { return true; }
    bool OnExceptionInMainLoop() override { return true; }
    void OnUnhandledException() override {}
    void OnFatalException() override {}
    void OnAssertFailure(const wxChar*, int, const wxChar*, const wxChar*, const wxChar*) override {
    }
};

}  // namespace korvant
