#include "editor/editor_status.h"

#include <algorithm>

#include "editor/script_editor.h"

namespace korvant {

namespace {

constexpr int kUsualSize = 10;  // points

}  // namespace

void ScriptEditor::noteStop(EditorStatus& status) const {
    const ScriptPlace place = stopPlace();
    status.stoppedLine = place.line;
    status.stopInView = lineInView(place) > 0;
}

/// Of the time that is allowed: a question to the user stops it, and it begins anew behind that.
/// Never more than that: a run whose time is over has ended while its box is still open.
std::uint32_t ScriptEditor::millisecondsUsed() const {
    Clock& clock = *session_.services().clock;
    if (session_.maxRunTime() == 0)
        return static_cast<std::uint32_t>(clock.monotonic() - runBegan_);
    if (session_.interacting()) return 0;
    return std::min(clock.tick() - session_.limitBegan(), session_.maxRunTime());
}

bool ScriptEditor::runTimedOut() const {
    return !debugger_.busy() && !debugger_.debugging() && !changedSinceRun() &&
           session_.lastFailure().kind == RunFailure::Kind::timeOut;
}

EditorStatus ScriptEditor::status() const {
    EditorStatus status;
    const int caret = editor_.caret();
    const ControlLine line = editor_.lineOf(caret);
    status.line = line.index + 1;
    status.column = 1 + static_cast<int>(editor_.send(
                            sci::kCountCharacters,
                            static_cast<std::uintptr_t>(editor_.lineStart(line)), caret));
    status.path = document().path();
    status.western = document().encoding().western;
    status.encoding = document().encoding().name();
    status.modified = document().modified();
    status.canUndo = editor_.send(sci::kCanUndo) != 0;
    status.canRedo = editor_.send(sci::kCanRedo) != 0;
    status.zoom = (kUsualSize + zoom()) * 100 / kUsualSize;
    if (inspection_.held()) {
        const bool failed = inspection_.isException();
        status.run = failed ? EditorStatus::Run::exception : EditorStatus::Run::stopped;
        noteStop(status);
    } else if (debugger_.busy()) {
        status.run = EditorStatus::Run::running;
        status.limitMilliseconds = session_.maxRunTime();
        status.runMilliseconds = millisecondsUsed();
    } else if (debugger_.debugging()) {
        status.run = EditorStatus::Run::stopped;
        noteStop(status);
    }
    return status;
}

}  // namespace korvant
