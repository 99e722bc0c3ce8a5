// Property objects in windows.
#pragma once

#include "object/script/object_editor.h"

namespace korvant::ui {

/// Shows a sheet or a dialog; without a display a session counts as cancelled.
class WxObjectEditor : public ObjectEditor {
  public:
    bool run(EditSession& session) override;
    bool attended() override;
};

/// From now on objects are edited in windows.
void installFormEditor();

}  // namespace korvant::ui
