#include "editor_window_fixture.h"

#include <wx/menu.h>

#include "editor/control/control_messages.h"
#include "module/families.h"
#include "ui/boxes/message_box_dialog.h"
#include "ui/editor/editor_file_dialog.h"
#include "ui/editor/editor_run.h"
#include "ui/editor/editor_settings.h"
#include "ui/kit/ui_runtime.h"

namespace korvant::test {
namespace {

wxStyledTextCtrl* controlOf(const wxFrame* frame, int index) {
    return findChild<wxStyledTextCtrl>(frame, index);
}

/// Not through the control's own text function, which is made for other encodings.
std::string textOf(wxStyledTextCtrl* control) {
    if (!control) return "(no control)";
    const auto length = static_cast<std::size_t>(control->SendMsg(sci::kGetLength));
    std::string text(length + 1, '\0');
    control->SendMsg(sci::kGetText, length + 1, reinterpret_cast<wxIntPtr>(text.data()));
    text.pop_back();
    return text;
}

wxMenuItem* findItem(wxMenuBar& bar, const wxString& label) {
    for (std::size_t i = 0; i < bar.GetMenuCount(); ++i)
        for (wxMenuItem* item : bar.GetMenu(i)->GetMenuItems())
            if (item->GetItemLabel() == label) return item;
    return nullptr;
}

}  // namespace

EditorWindowTest::EditorWindowTest() : windows_(frontend) {
    ui::setEditorLayout(ui::EditorLayoutWish::classic);
    driver.onTimeout = [this] {
        if (frame()) frame()->Close();
    };
}

/// What scripts and the editor ask is asked in windows from here on.
void EditorWindowTest::useWindows() {
    moduleSession().setServices({&console, &windows_, nullptr, ui::switchUi});
}

EditorWindowTest::~EditorWindowTest() {
    ui::setFileChooser({});
}

std::string EditorWindowTest::edit(const std::string& text) {
    std::string edited = text;
    ui::runScriptEditor({engine(), context(), edited, "host", allFamilies(), ownFile});
    EXPECT_TRUE(driver.done());
    return edited;
}

korvant::test::Found<ui::CEditorDlg> EditorWindowTest::frame() const {
    for (wxWindow* window : wxTopLevelWindows)
        if (auto* found = dynamic_cast<ui::CEditorDlg*>(window); found && found->IsShown())
            return found;
    return nullptr;
}

korvant::test::Found<wxStyledTextCtrl> EditorWindowTest::editor() const {
    return controlOf(frame(), 0);
}

korvant::test::Found<wxStyledTextCtrl> EditorWindowTest::pane() const {
    return controlOf(frame(), 1);
}

std::string EditorWindowTest::text() const {
    return textOf(editor());
}

std::string EditorWindowTest::output() const {
    return textOf(pane());
}

std::string EditorWindowTest::title() const {
    return frame() ? std::string(frame()->GetTitle().utf8_str()) : std::string();
}

int EditorWindowTest::caretLine() const {
    return editor()->GetCurrentLine() + 1;
}

std::vector<int> EditorWindowTest::markedLines() const {
    std::vector<int> lines;
    for (int line = editor()->MarkerNext(0, 1); line >= 0; line = editor()->MarkerNext(line + 1, 1))
        lines.push_back(line + 1);
    return lines;
}

wxMenuItem* EditorWindowTest::menuItem(int command) const {
    const EditorCommand* record = findCommand(command);
    if (!record || !frame()) return nullptr;
    return findItem(*frame()->GetMenuBar(), wxString(record->label).BeforeFirst('\t'));
}

MarkerLook EditorWindowTest::markerLook() const {
    constexpr int kMarkerSymbolDefined = 2529;
    return static_cast<MarkerLook>(editor()->SendMsg(kMarkerSymbolDefined, 0));
}

bool EditorWindowTest::isEnabled(int command) const {
    return menuItem(command)->IsEnabled();
}

bool EditorWindowTest::isChecked(int command) const {
    return menuItem(command)->IsChecked();
}

void EditorWindowTest::ready() {
    driver.when("the editor's keyboard", [this] {
        return frame() && frame()->IsActive() && editor() && editor()->HasFocus();
    });
}

void EditorWindowTest::type(const std::string& keys) {
    ready();
    std::string line;
    const auto flush = [&] {
        if (!line.empty()) driver.type(line);
        line.clear();
    };
    for (const char key : keys) {
        if (key != '\n') {
            line += key;
            continue;
        }
        flush();
        driver.key(WXK_RETURN);
    }
    flush();
}

void EditorWindowTest::choose(int command) {
    driver.when(
        "a menu item", [this, command] { return menuItem(command) && isEnabled(command); },
        [this, command] {
            frame()->GetEventHandler()->AddPendingEvent(
                wxCommandEvent(wxEVT_MENU, menuItem(command)->GetId()));
        });
}

void EditorWindowTest::gotoLine(int line) {
    driver.run([this, line] { editor()->GotoLine(line - 1); });
}

void EditorWindowTest::untilOutput(const std::string& wanted) {
    driver.when("output " + wanted, [this, wanted] { return frame() && output() == wanted; });
}

void EditorWindowTest::untilTitle(const std::string& wanted) {
    driver.when("title " + wanted, [this, wanted] { return title() == wanted; });
}

void EditorWindowTest::untilStoppedAt(int line) {
    driver.when("a stop at line " + std::to_string(line), [this, line] {
        return frame() && isEnabled(command_id::kStepOver) && caretLine() == line &&
               markerLook() == MarkerLook::currentLine;
    });
}

void EditorWindowTest::check(std::function<void()> expectations) {
    driver.run(std::move(expectations));
}

void EditorWindowTest::untilBox() {
    driver.when("a message box", [] {
        for (wxWindow* window : wxTopLevelWindows) {
            auto* box = dynamic_cast<ui::MessageBoxDialog*>(window);
            if (box && box->IsShown() && box->IsActive() && wxWindow::FindFocus()) return true;
        }
        return false;
    });
}

void EditorWindowTest::picture(const std::string& name) {
    driver.run([this] {
        for (wxWindow* window : wxTopLevelWindows) window->Update();
        for (wxStyledTextCtrl* control : {editor(), pane()})
            if (control) control->Update();
    });
    // Parts that came or went are painted by the desktop's clock.
    driver.when("the painting", [turns = 0]() mutable { return ++turns > 20; });
    driver.picture(name);
}

void EditorWindowTest::closeBox() {
    driver.when(
        "a window to close", [this] { return frame() != nullptr; }, [this] { frame()->Close(); });
}

void EditorWindowTest::exit() {
    choose(command_id::kExit);
}

}  // namespace korvant::test
