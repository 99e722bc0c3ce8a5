// Keys in any order over a script that is mended and broken by them: the window stays.

#include <random>

#include "editor/control/fold_levels.h"
#include "editor_window_fixture.h"
#include "ui/editor/assist/pop_up.h"
#include "ui/editor/editor_control.h"
#include "ui/editor/editor_run.h"
#include "ui/editor/editor_settings.h"
#include "ui/kit/ui_runtime.h"

using namespace korvant;
using korvant::test::EditorWindowTest;

namespace {

const char kScript[] =
    "enum Rock { granite, schist }\n"
    "class Sample {\n"
    "    double grade = 0;\n"
    "    double weighed(double by) const { return grade * by; }\n"
    "}\n"
    "int main() {\n"
    "    Sample[] samples(3);\n"
    "    double sum = samples[0].weighed(2);\n"
    "    return sum > 0 ? 0 : 1;\n"
    "}\n";

struct Press {
    int code;
    int modifiers;
};
constexpr Press kPresses[] = {
    {'S', 0},
    {'T', 0},
    {'R', 0},
    {'F', 0},
    {'O', 0},
    {'.', 0},
    {'9', wxMOD_SHIFT},
    {'0', wxMOD_SHIFT},
    {',', 0},
    {';', 0},
    {WXK_RETURN, 0},
    {WXK_TAB, 0},
    {WXK_ESCAPE, 0},
    {WXK_UP, 0},
    {WXK_DOWN, 0},
    {WXK_LEFT, 0},
    {WXK_RIGHT, 0},
    {WXK_BACK, 0},
    {WXK_DELETE, 0},
    {WXK_HOME, 0},
    {WXK_PAGEDOWN, 0},
    {WXK_SPACE, wxMOD_CONTROL},
    {WXK_SPACE, wxMOD_CONTROL | wxMOD_SHIFT},
    {WXK_F1, wxMOD_CONTROL},
    {WXK_F2, 0},
    {WXK_F12, wxMOD_SHIFT},
    {WXK_F12, wxMOD_CONTROL},
    {'B', wxMOD_CONTROL},
    {'O', wxMOD_CONTROL | wxMOD_SHIFT},
    {'.', wxMOD_CONTROL},
    {'I', wxMOD_CONTROL | wxMOD_SHIFT},
    {'Z', wxMOD_CONTROL},
    {'Z', wxMOD_CONTROL},
    {WXK_LEFT, wxMOD_ALT},
    {WXK_RIGHT, wxMOD_ALT},
};

constexpr const char* kPieces[] = {
    "x", "\n",          "{\n",    "}\n",        "/*\n",       "*/",           "(",
    "}", "int f() {\n", "\n\n\n", "if (a) {\n", "} else {\n", "// a\n// b\n", "}\n}\n"};

std::vector<int> levelsOf(wxStyledTextCtrl& control) {
    std::vector<int> levels;
    for (int line = 0; line < control.GetLineCount(); ++line)
        levels.push_back(control.GetFoldLevel(line));
    return levels;
}

class EditorStorm : public EditorWindowTest {
  protected:
    EditorStorm() {
        ui::setEditorLayout(ui::EditorLayoutWish::full);
        ui::EditorSettings settings;
        settings.theme = ThemeChoice::light;
        settings.outline = true;
        settings.welcome = false;
        ui::saveEditorSettings(settings);
    }
};

/// What is not asked about is as it would be told.
TEST_F(EditorStorm, LinesFoldAsIfAllWereReadAnew) {
    ASSERT_TRUE(ui::startToolkit());
    wxFrame window(nullptr, wxID_ANY, "folds");
    wxStyledTextCtrl& control = *ui::makeTextControl(&window);
    const TextControl text(ui::sendTo(control));
    SyntaxFolds folds(text);
    ui::forwardNotifications(control, [&](const ControlNotification& one) { folds.notified(one); });
    control.SetText(kScript);
    std::mt19937 random(11);
    const auto upTo = [&random](int most) { return static_cast<int>(random() % (most + 1)); };
    for (int round = 0; round < 2000; ++round) {
        for (int edits = upTo(3); edits >= 0; --edits) {
            const int at = upTo(control.GetLength()), end = upTo(control.GetLength());
            switch (upTo(6)) {
                case 0:
                    control.DeleteRange(std::min(at, end), std::min(std::abs(end - at), 60));
                    break;
                case 1:
                    control.Undo();
                    break;
                default:
                    control.InsertText(at, kPieces[upTo(std::size(kPieces) - 1)]);
            }
        }
        const ScopeIndex index(text.text().value_or(""));
        folds.show(index);
        const std::vector<int> shown = levelsOf(control);
        foldBySyntax(text, index);
        ASSERT_EQ(shown, levelsOf(control)) << round << "\n" << control.GetText();
    }
}

TEST_F(EditorStorm, AnyKeysLeaveTheWindow) {
    std::mt19937 random(7);
    ready();
    for (int i = 0; i < 150; ++i) {
        const Press press = kPresses[random() % std::size(kPresses)];
        driver.run([press] {
            wxUIActionSimulator simulator;
            simulator.Char(press.code, press.modifiers);
        });
    }
    for (int i = 0; i < 6; ++i) driver.key(WXK_ESCAPE);
    ready();
    driver.run([this] { editor()->SetText(kScript); });
    driver.run([this] { editor()->GotoPos(editor()->GetLength()); });
    type("Sam");
    driver.when("an answer after all that", [this] {
        const auto list = test::findChild<ui::PopUp>(frame(), 0);
        return list != nullptr;
    });
    closeBox();
    edit(kScript);
}

}  // namespace
