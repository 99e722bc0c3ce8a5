#include "ui/kit/toolkit_asserts.h"

#include <wx/string.h>

#include <atomic>
#include <cstdio>
#include <string>

#include "ui/kit/ui_runtime.h"

namespace korvant::ui {
namespace {

std::atomic<AssertListener> heard{nullptr};

void say(const char* what) {
    static std::atomic<bool> told{false};
    if (ownsApplication() || told.exchange(true)) return;
    std::fprintf(stderr, "korvantide: the toolkit refused a call: %s\n", what);
}

void hear(const wxString& file, int line, const wxString&, const wxString& condition,
          const wxString& message) {
    const wxString what =
        wxString::Format("%s:%d: %s. %s", file.AfterLast('/'), line, condition, message);
    const AssertListener listener = heard;
    (listener ? listener : &say)(what.utf8_str());
}

}  // namespace

void setAssertListener(AssertListener listener) {
    heard = listener;
}

HeldAsserts::HeldAsserts() : previous_(wxSetAssertHandler(hear)) {}

HeldAsserts::~HeldAsserts() {
    wxSetAssertHandler(previous_);
}

}  // namespace korvant::ui
