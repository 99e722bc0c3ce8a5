#include "editor/control/workbench_layout.h"

#include <algorithm>
#include <utility>

namespace korvant {

namespace {

constexpr int kToolbar = 44, kTabs = 36, kFindBar = 44, kFindRow = 36, kHeading = 32,
              kStatusBar = 28;
constexpr int kOutline = 208, kOutlineLeast = 160;
constexpr int kSide = 372, kSideNarrow = 320, kSideLeast = 280, kWelcome = 344;
constexpr int kMiddleLeast = 480, kLineWidth = 1;
/// Bounds below which things stand otherwise.
constexpr int kWordsFrom = 1120, kSectionsFrom = 1200, kSectionsFromHeight = 760, kSideFrom = 800;
constexpr int kEditorLeast = 80, kOutputLeast = 48;

/// Cuts strips off a rectangle.
struct Room {
    Rectangle rest;

    Rectangle top(int height) {
        height = std::clamp(height, 0, rest.height);
        const Rectangle strip{rest.x, rest.y, rest.width, height};
        rest.y += height;
        rest.height -= height;
        return strip;
    }
    Rectangle bottom(int height) {
        height = std::clamp(height, 0, rest.height);
        rest.height -= height;
        return {rest.x, rest.y + rest.height, rest.width, height};
    }
    Rectangle left(int width) {
        width = std::clamp(width, 0, rest.width);
        const Rectangle strip{rest.x, rest.y, width, rest.height};
        rest.x += width;
        rest.width -= width;
        return strip;
    }
    Rectangle right(int width) {
        width = std::clamp(width, 0, rest.width);
        rest.width -= width;
        return {rest.x + rest.width, rest.y, width, rest.height};
    }
};

int sideWidth(const WorkbenchState& state, int width) {
    if (state.welcome) return kWelcome + kLineWidth;
    const int usual = width < kSectionsFrom ? kSideNarrow : kSide;
    const int wanted = state.sideWidth > 0 ? state.sideWidth : usual;
    return std::clamp(wanted, kSideLeast, std::max(kSideLeast, width - kMiddleLeast)) + kLineWidth;
}

int findBarHeight(const WorkbenchState& state) {
    return state.findBar ? kFindBar + (state.findRows - 1) * kFindRow : 0;
}

int aboveEditor(const WorkbenchState& state) {
    return findBarHeight(state) + (state.tabs ? kTabs : 0);
}

/// So low that the bars of what scrolls in it would not fit, it is left out.
int bottomHeight(const WorkbenchState& state, int room) {
    const int wanted = state.bottomHeight > 0 ? state.bottomHeight : kOutputTextHeight;
    const int others = kHeading + kEditorLeast + aboveEditor(state);
    const int height = std::clamp(wanted, 0, std::max(room - others, 0));
    return height < kOutputLeast ? 0 : height;
}

/// The output has the left part: half while stopped, two fifths otherwise.
void splitBottom(const WorkbenchState& state, WorkbenchLayout& layout) {
    const int width = layout.output.width;
    const int left = state.stopped ? width / 2 : width * 2 / 5;
    for (auto [whole, right] : {std::pair{&layout.outputHeading, &layout.rightHeading},
                                std::pair{&layout.output, &layout.right}}) {
        *right = {whole->x + left + kLineWidth, whole->y, width - left - kLineWidth, whole->height};
        whole->width = left;
    }
}

void placeBottom(const WorkbenchState& state, Room& room, WorkbenchLayout& layout) {
    if (!state.bottom) return;
    layout.output = room.bottom(bottomHeight(state, room.rest.height));
    layout.outputHeading = room.bottom(kHeading);
    if (state.right && !layout.bottomAsTabs) splitBottom(state, layout);
}

}  // namespace

WorkbenchLayout layOutWorkbench(const WorkbenchState& state, int width, int height) {
    WorkbenchLayout layout;
    layout.stepWords = width >= kWordsFrom;
    layout.sideAsTabs = layout.bottomAsTabs = width < kSectionsFrom || height < kSectionsFromHeight;
    Room room{{0, 0, width, height}};
    if (state.toolbar) layout.toolbar = room.top(kToolbar);
    if (state.statusBar) layout.statusBar = room.bottom(kStatusBar);
    // What a script prints and asks for comes before what was seen at its last stop.
    const bool sideBelow = width < kSideFrom;
    const bool takesBottom = state.side && sideBelow && !(state.running && state.bottom);
    if (state.side && !sideBelow) layout.side = room.right(sideWidth(state, width));
    if (state.outline) {
        const int wanted = state.outlineWidth > 0 ? state.outlineWidth : kOutline;
        const int most = std::max(kOutlineLeast, room.rest.width - kMiddleLeast);
        layout.outline = room.left(std::clamp(wanted, kOutlineLeast, most) + kLineWidth);
    }
    if (takesBottom)
        layout.side = room.bottom(bottomHeight(state, room.rest.height) + kHeading);
    else
        placeBottom(state, room, layout);
    if (state.tabs) layout.tabs = room.top(kTabs);
    if (state.findBar) layout.findBar = room.top(findBarHeight(state));
    layout.editor = room.rest;
    return layout;
}

}  // namespace korvant
