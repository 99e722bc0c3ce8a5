#include "editor/editor_status.h"

#include "editor/script_editor.h"

namespace korvant {

namespace {

constexpr int kUsualSize = 10;  // points

}  // namespace

EditorStatus ScriptEditor::status() const {
    EditorStatus status;
    const int caret = editor_.caret();
    const ControlLine line = editor_.lineOf(caret);
    status.line = line.index + 1;
    status.column = 1 + static_cast<int>(editor_.send(
                            sci::kCountCharacters,
                            static_cast<std::uintptr_t>(editor_.lineStart(line)), caret));
    status.path = document_.path();
    status.encoding = document_.western() ? "Windows-1252" : "UTF-8";
    status.modified = document_.modified();
    status.canUndo = editor_.send(sci::kCanUndo) != 0;
    status.canRedo = editor_.send(sci::kCanRedo) != 0;
    status.zoom = (kUsualSize + zoom()) * 100 / kUsualSize;
    if (inspection_.held()) {
        const bool failed = inspection_.isException();
        status.run = failed ? EditorStatus::Run::exception : EditorStatus::Run::stopped;
        status.stoppedLine = inspection_.stop().place.line;
    } else if (debugger_.busy()) {
        status.run = EditorStatus::Run::running;
        status.runMilliseconds =
            static_cast<std::uint32_t>(session_.services().clock->monotonic() - runBegan_);
        status.limitMilliseconds = session_.maxRunTime();
    } else if (debugger_.debugging()) {
        status.run = EditorStatus::Run::stopped;
        status.stoppedLine = debugger_.stoppedAt();
    }
    return status;
}

}  // namespace korvant
