// What the parts of a form need of the window that holds them.
#pragma once

#include <cstdint>

#include "object/form/edit_session.h"

namespace korvant::ui {

class CListCtrlEx;

class FormHost {
  public:
    /// Draws what the session says has changed.
    virtual void showChanges() = 0;
    /// The user stands on another row; property -1: on none.
    virtual void rowSelected(CListCtrlEx& list, std::int32_t property) = 0;
    /// Shows the page, the row and its description. False when what is being typed was refused.
    virtual bool goTo(const EditPlace& place) = 0;
    virtual void undo() = 0;
    virtual void redo() = 0;

  protected:
    ~FormHost() = default;
};

}  // namespace korvant::ui
