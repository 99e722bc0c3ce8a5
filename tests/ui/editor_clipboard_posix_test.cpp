// The clipboard of a desktop belongs to other programs, which may be busy or stopped.
#include "editor_full_window.h"
#include "support/ui_x_keys.h"

using korvant::test::FullWindow;

namespace {

using EditorClipboard = FullWindow;

TEST_F(EditorClipboard, OwnerThatDoesNotAnswerStopsNoMenu) {
    const korvant::test::SilentClipboard owner;
    ready();
    driver.key('E', wxMOD_ALT);
    driver.when("the menu", [] { return korvant::test::menuIsOpen(); });
    driver.run([] { korvant::test::leaveMenuBar(); });
    driver.when("no menu", [] { return !korvant::test::menuIsOpen(); });
    driver.type("ab");
    driver.when("the letters", [this] { return text().starts_with("ab"); });
    check([this] { EXPECT_TRUE(isEnabled(korvant::command_id::kPaste)); });
    choose(korvant::command_id::kSelectAll);
    driver.key('C', wxMOD_CONTROL).key(WXK_DOWN, wxMOD_CONTROL).key(WXK_END, wxMOD_CONTROL);
    driver.key('V', wxMOD_CONTROL);
    driver.when("the copy", [this] { return text() == "abint i;\nabint i;\n"; });
    closeBox();
    edit("int i;\n");
}

}  // namespace
