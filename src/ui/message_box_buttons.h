// Which buttons a message box has, and what its keys answer. Knows no window.
#pragma once

#include <cstdint>
#include <vector>

namespace korvant::ui {

struct BoxButtons {
    std::vector<int> ids;  ///< box_button, from first to last
    int defaultId = 0;     ///< chosen by Return and by the count-down
    int closeId = 0;       ///< chosen by Escape and by closing; 0: the box has no such answer
};

/// By the bits of box_style. `offerStop` adds the button that stops the script.
BoxButtons boxButtons(std::uint32_t style, bool offerStop);

/// An answer that may be kept for the next time.
bool mayBeRemembered(int button);

}  // namespace korvant::ui
