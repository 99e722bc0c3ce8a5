#include "support/editor_fixture.h"

#include <algorithm>

#include "module/families.h"

namespace korvant::test {

void EditorFixture::open(const std::string& hostText, const std::string& hostFile) {
    editor_.reset();
    window = std::make_unique<FakeEditorWindow>();
    window->watch = watch;
    window->around = around;
    editor_ = std::make_unique<ScriptEditor>(
        EditorSurroundings{session(), *window, *files, dataFolder(), programFolder, allFamilies()});
    ScriptEditor* editor = editor_.get();
    window->editor.notify = [editor](const ControlNotification& n) { editor->editorNotified(n); };
    window->output.notify = [editor](const ControlNotification& n) { editor->outputNotified(n); };
    editor->setHost(engine(), context());
    editor->setHostText(hostText);
    editor->setHostFile(hostFile);
    editor->initialise();
}

void EditorFixture::close() {
    editor_->closed();
    editor_.reset();
}

void EditorFixture::setText(const std::string& bytes) {
    window->editor.anchor = 0;
    window->editor.caret = static_cast<int>(text().size());
    window->editor.press(bytes);
    window->editor.idle();
}

void EditorFixture::caretToLine(int number) {
    TextControl(window->editor.send()).gotoLine({number - 1});
}

void EditorFixture::selectText(const std::string& what) {
    const auto at = text().find(what);
    ASSERT_NE(at, std::string::npos) << what;
    window->editor.anchor = static_cast<int>(at);
    window->editor.caret = static_cast<int>(at + what.size());
}

std::vector<std::string> EditorFixture::kept(const std::string& name) const {
    std::vector<std::string> names;
    systemFiles().list(dataFolder() + "/" + name, names);
    std::sort(names.begin(), names.end());
    return names;
}

}  // namespace korvant::test
