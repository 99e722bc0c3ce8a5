// The toolkit's editing control behind the editor's send callables and plain notifications.
#pragma once

#include <functional>

#include "editor/control/text_control.h"

class wxStyledTextCtrl;
class wxWindow;

namespace korvant::ui {

/// A new control inside `parent`, which owns it; null when it could not be created.
wxStyledTextCtrl* makeTextControl(wxWindow* parent);

/// Sends to the control; answers 0 once the control is destroyed. Widths of margins are taken as
/// sizes at 96 dots per inch, and a font that is not installed as another of one width.
ControlSend sendTo(wxStyledTextCtrl& control);

/// Hands everything on that the editor reads of what the control reports.
void forwardNotifications(wxStyledTextCtrl& control,
                          std::function<void(const ControlNotification&)> receive);

}  // namespace korvant::ui
