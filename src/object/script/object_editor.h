// Who shows property objects to the user.
#pragma once

namespace korvant {

class EditSession;

/// Shows a session until the user closes it. A session belongs to one call; while it is shown a
/// listener or a timer may open another one.
class ObjectEditor {
  public:
    virtual ~ObjectEditor() = default;
    /// True exactly when the user confirmed. A view confirms only after session.confirm() has
    /// passed. Throws nothing.
    virtual bool run(EditSession& session) = 0;
    /// Whether somebody was there to see the last session.
    virtual bool attended() { return true; }
};

/// Cancels every session, and says so once on standard error.
class HeadlessEditor : public ObjectEditor {
  public:
    bool run(EditSession& session) override;
    bool attended() override { return false; }

  private:
    bool told_ = false;
};

/// Not owned; null puts the headless one back. Returns the one that was in place, null for the
/// headless one.
ObjectEditor* setObjectEditor(ObjectEditor* editor);
ObjectEditor& objectEditor();

}  // namespace korvant
