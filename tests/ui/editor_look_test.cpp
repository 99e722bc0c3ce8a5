// The window with everything around the text: each state once, as a picture and as what it says.
#include "editor_window_fixture.h"
#include "ui/editor/editor_run.h"
#include "ui/editor/editor_settings.h"

using namespace korvant;
using korvant::test::EditorWindowTest;

namespace {

const char kTour[] =
    "// A tour: reads the samples of a drilling campaign, makes composites of 5 m.\n"
    "\n"
    "const double kCompositeLength = 5;  // metres\n"
    "\n"
    "class Interval {\n"
    "    double from = 0;\n"
    "    double to = 0;\n"
    "\n"
    "    double length() const { return to - from; }\n"
    "}\n"
    "\n"
    "int main() {\n"
    "    Interval[] samples;\n"
    "    string line = \"NR-01,0,2.5,0.40\";\n"
    "    for (uint i = 0; i < 3; i++) {\n"
    "        Print(line + \"\\n\");\n"
    "    }\n"
    "    return 0;\n"
    "}\n";

class EditorLook : public EditorWindowTest, public testing::WithParamInterface<ThemeChoice> {
  protected:
    EditorLook() {
        ui::setEditorLayout(ui::EditorLayoutWish::full);
        ui::EditorSettings settings;
        settings.theme = GetParam();
        settings.width = 1280;
        settings.height = 884;
        ui::saveEditorSettings(settings);
    }
    std::string named(const std::string& picture) const {
        return picture + (GetParam() == ThemeChoice::dark ? "-dark" : "");
    }
};

TEST_P(EditorLook, Idle) {
    ready();
    picture(named("look-idle"));
    closeBox();
    edit(kTour);
}

INSTANTIATE_TEST_SUITE_P(Themes, EditorLook,
                         testing::Values(ThemeChoice::light, ThemeChoice::dark));

}  // namespace
