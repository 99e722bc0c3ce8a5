// Which buttons a message box has, and what they are called. Knows no window.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "host/services/frontend.h"

namespace korvant {

struct BoxButtons {
    std::vector<int> ids;  ///< box_button, from first to last
    int defaultId = 0;     ///< chosen by Return and by the count-down
    int closeId = 0;       ///< chosen by Escape and by closing; 0: the box has no such answer
};

/// By the bits of box_style. `offerStop` adds the button that stops the script.
BoxButtons boxButtons(std::uint32_t style, bool offerStop);

/// The caption of a button: the request's own, else the English one.
std::string buttonCaption(const MessageBoxRequest& request, int button);

}  // namespace korvant
