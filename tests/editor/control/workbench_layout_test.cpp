// Where the parts of the window stand at the sizes at which they change their places.
#include "editor/control/workbench_layout.h"

#include <gtest/gtest.h>

using namespace korvant;

namespace {

int endX(const Rectangle& place) {
    return place.x + place.width;
}
int endY(const Rectangle& place) {
    return place.y + place.height;
}

TEST(WorkbenchLayout, PartsFromTopToBottom) {
    WorkbenchState state;
    state.tabs = state.findBar = true;
    const WorkbenchLayout layout = layOutWorkbench(state, 1280, 836);
    EXPECT_EQ(layout.toolbar.height, 44);
    EXPECT_EQ(layout.tabs.y, 44);
    EXPECT_EQ(layout.tabs.height, 36);
    EXPECT_EQ(layout.findBar.height, 44);
    EXPECT_EQ(layout.editor.y, 44 + 36 + 44);
    EXPECT_EQ(layout.outputHeading.y, endY(layout.editor));
    EXPECT_EQ(layout.outputHeading.height, 32);
    EXPECT_EQ(layout.output.height, 144);
    EXPECT_EQ(layout.output.width, 1280);
    EXPECT_EQ(layout.statusBar.y, endY(layout.output));
    EXPECT_EQ(endY(layout.statusBar), 836);
    state.findRows = 2;
    EXPECT_EQ(layOutWorkbench(state, 1280, 836).findBar.height, 80);
}

TEST(WorkbenchLayout, SideGoesFromToolbarToStatusBar) {
    WorkbenchState state;
    state.side = state.outline = state.right = state.stopped = true;
    WorkbenchLayout layout = layOutWorkbench(state, 1280, 836);
    EXPECT_EQ(layout.side.width, 373);
    EXPECT_EQ(layout.side.y, 44);
    EXPECT_EQ(endY(layout.side), layout.statusBar.y);
    EXPECT_EQ(layout.outline.width, 209);
    EXPECT_EQ(endX(layout.editor), layout.side.x);
    EXPECT_FALSE(layout.sideAsTabs);
    EXPECT_EQ(layout.output.width, layout.editor.width / 2);
    EXPECT_EQ(endX(layout.right), layout.side.x);
    state.stopped = false;
    EXPECT_EQ(layOutWorkbench(state, 1280, 836).output.width, layout.editor.width * 2 / 5);
}

TEST(WorkbenchLayout, SmallWindows) {
    WorkbenchState state;
    state.side = state.right = true;
    EXPECT_TRUE(layOutWorkbench(state, 1120, 836).stepWords);
    EXPECT_FALSE(layOutWorkbench(state, 1119, 836).stepWords);
    EXPECT_FALSE(layOutWorkbench(state, 1200, 760).sideAsTabs);
    for (const auto& [width, height] : {std::pair{1199, 760}, std::pair{1200, 759}}) {
        const WorkbenchLayout small = layOutWorkbench(state, width, height);
        EXPECT_TRUE(small.sideAsTabs && small.bottomAsTabs);
        EXPECT_EQ(small.right.width, 0);
    }
    EXPECT_EQ(layOutWorkbench(state, 1100, 676).side.width, 321);
    const WorkbenchLayout below = layOutWorkbench(state, 799, 600);
    EXPECT_EQ(below.side.width, 799);
    EXPECT_EQ(below.output.height, 0);
    EXPECT_GE(below.editor.height, 80);
    // Where a script asks for something, it can be answered.
    state.running = true;
    EXPECT_EQ(layOutWorkbench(state, 799, 600).side.width, 0);
    EXPECT_GT(layOutWorkbench(state, 799, 600).output.height, 0);
    state.bottom = false;
    EXPECT_EQ(layOutWorkbench(state, 799, 600).side.width, 799);
}

/// With tabs and both rows of the find bar eleven pixels of text were left.
TEST(WorkbenchLayout, TheSmallestWindowLeavesRoomForTheText) {
    WorkbenchState state;
    state.tabs = state.findBar = true;
    state.findRows = 2;
    for (int height = 300; height < 500; height += 7) {
        const WorkbenchLayout layout = layOutWorkbench(state, kSmallestWidth, height);
        EXPECT_GE(layout.editor.height, 80) << height;
        EXPECT_TRUE(layout.output.height == 0 || layout.output.height >= 48) << height;
    }
}

TEST(WorkbenchLayout, NothingLeavesTheWindow) {
    WorkbenchState state;
    state.tabs = state.findBar = state.side = state.outline = true;
    state.findRows = 4;
    state.bottomHeight = state.sideWidth = state.outlineWidth = 5000;
    for (int width = 0; width < 1400; width += 37)
        for (int height = 0; height < 900; height += 41) {
            const WorkbenchLayout layout = layOutWorkbench(state, width, height);
            for (const Rectangle& part :
                 {layout.toolbar, layout.tabs, layout.findBar, layout.outline, layout.editor,
                  layout.outputHeading, layout.output, layout.side, layout.statusBar}) {
                EXPECT_GE(part.width, 0);
                EXPECT_GE(part.height, 0);
                EXPECT_LE(endX(part), width);
                EXPECT_LE(endY(part), height);
            }
        }
}

}  // namespace
