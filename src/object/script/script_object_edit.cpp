// Showing a property object to the user.
#include "host/library/dialog_functions.h"
#include "host/library/script_console.h"
#include "host/run/quiet_frontend.h"
#include "host/run/script_session.h"
#include "object/form/edit_state.h"
#include "object/script/object_access.h"
#include "object/script/object_editor.h"

using korvant::ObjectAccess;
using korvant::orRaise;

namespace {

void tellListener(ScriptObject& object, std::int32_t index) {
    const korvant::ObjectModel& model = ObjectAccess::model(object);
    if (!model.holds(index)) return;
    KorStampListener* listener = model.listeners[static_cast<std::size_t>(index)];
    const std::string name = model.properties[static_cast<std::size_t>(index)].name;
    if (listener != nullptr) listener->propertyChanged(object, name);
}

/// The listener of a property may change the object, so each is looked up when its turn comes.
/// What one throws reaches no other.
void tellListeners(ScriptObject& object, const std::vector<std::int32_t>& changed) {
    for (const std::int32_t index : changed) orRaise([&] { tellListener(object, index); });
}

}  // namespace

namespace korvant {

bool scriptIsToEnd() noexcept {
    return moduleSession().running() && moduleSession().stopRequested();
}

bool ObjectAccess::runEditor(ScriptObject& object) {
    if (scriptIsToEnd()) return false;
    if (moduleSession().quiet()) {
        raiseInScript(kQuietRefusal);
        return false;
    }
    EditSession session(model(object));
    const bool confirmed = objectEditor().run(session);
    if (!objectEditor().attended()) moduleSession().noteUnattended();
    if (!confirmed) return false;
    const std::vector<std::int32_t> changed = copyBack(session.state_->core, model(object));
    tellListeners(object, changed);
    return true;
}

}  // namespace korvant

bool ScriptObject::edit() {
    const korvant::ObjectHold hold(*this);
    const korvant::UiScopeGuard scope;
    const Hook after = m_after;
    const bool confirmed = orRaise(false, [this] {
        if (m_before != nullptr) m_before();
        korvant::scriptConsole().flush();
        return ObjectAccess::runEditor(*this);
    });
    orRaise([after] {
        // The hook that was there at the beginning, if one is there now.
        if (m_after != nullptr && after != nullptr) after();
    });
    return confirmed;
}
