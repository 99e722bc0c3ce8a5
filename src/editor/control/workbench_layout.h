// Where the parts of the editor's window stand, computed from its size and from what is open.
#pragma once

#include "editor/control/control_setup.h"

namespace korvant {

/// What the window shows. Sizes are for 96 dots per inch.
struct WorkbenchState {
    bool toolbar = true;
    bool tabs = false;
    bool findBar = false;
    int findRows = 1;  ///< of the find bar
    bool outline = false;
    bool bottom = true;
    bool right = false;    ///< Console or Problems beside the output
    bool side = false;     ///< debug panel or welcome
    bool welcome = false;  ///< what stands at the side
    bool stopped = false;
    bool running = false;
    bool statusBar = true;
    int outlineWidth = 0;  ///< 0: the usual one
    int sideWidth = 0;
    int bottomHeight = 0;  ///< of the output's text
};

/// Empty rectangles are not shown.
struct WorkbenchLayout {
    Rectangle toolbar, tabs, findBar, outline, editor;
    Rectangle outputHeading, output, rightHeading, right;
    Rectangle side, statusBar;
    bool sideAsTabs = false;    ///< stack, variables, watches, breakpoints as tabs of one pane
    bool bottomAsTabs = false;  ///< output, console and problems too
    bool stepWords = true;      ///< words beside the icons of the steps
};

inline constexpr int kOutputTextHeight = 144;
inline constexpr int kSmallestWidth = 640, kSmallestHeight = 400;

WorkbenchLayout layOutWorkbench(const WorkbenchState& state, int width, int height);

}  // namespace korvant
