// What the toolkit finds wrong with a call while a window of the module is open.
#pragma once

#include <wx/debug.h>

namespace korvant::ui {

/// Hears of it instead of the default: one line on standard error for the first, silence in a
/// program whose application object is the module's. `what` names place and condition. Null puts
/// the default back.
using AssertListener = void (*)(const char* what);
void setAssertListener(AssertListener listener);

/// While one lives nobody is asked about it in a box; afterwards it is as the host has it. They
/// nest.
class HeldAsserts {
  public:
    HeldAsserts();
    ~HeldAsserts();
    HeldAsserts(const HeldAsserts&) = delete;
    HeldAsserts& operator=(const HeldAsserts&) = delete;

  private:
    wxAssertHandler_t previous_;
};

}  // namespace korvant::ui
