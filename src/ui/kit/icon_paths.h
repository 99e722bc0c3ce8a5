// The icons of the editor's window: shapes on a grid of 16 by 16, as texts.
#pragma once

#include <string_view>
#include <vector>

namespace korvant::ui {

enum class Icon {
    newFile,
    open,
    save,
    undo,
    redo,
    run,
    goOn,
    pause,
    stop,
    stepOver,
    stepInto,
    stepOut,
    restart,
    check,
    find,
    outline,
    panelRight,
    panelBottom,
    panelLeft,
    help,
    close,
    down,
    right,
    up,
    plus,
    trash,
    eye,
    more,
    breakpoint,
    breakpointCondition,
    breakpointPrints,
    breakpointOff,
    breakpointUnverified,
    stopArrow,
    callerArrow,
    error,
    warning,
    note,
    question,
    bolt,
    function,
    classIcon,
    field,
    variable,
    enumIcon,
    array,
    object,
    number,
    text,
    pin,
    gear,
    copy,
    book,
    clock,
    count_
};

/// One step of a path. `move` and `line` take a point, `curve` two control points and an end,
/// `circle` centre and radius, `roundedBox` corner, width, height and radius, `close` nothing.
struct IconStep {
    enum class Kind { move, line, curve, circle, roundedBox, close } kind = Kind::move;
    double values[6] = {};
};

/// A layer is drawn with a line of this width, or filled when the width is 0.
struct IconLayer {
    double strokeWidth = 0;
    bool secondColour = false;
    std::vector<IconStep> steps;
};

/// The layers of an icon, from back to front.
const std::vector<IconLayer>& iconLayers(Icon icon);

/// Reads layers such as "stroke 1.3: M4 1.75 H9.25; fill 2nd: O 8 8 2". Letters M L H V C Z are
/// absolute; `O x y r` is a circle, `R x y w h r` a rounded box. What cannot be read is left out.
std::vector<IconLayer> readIcon(std::string_view text);

}  // namespace korvant::ui
