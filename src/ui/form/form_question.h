// Questions that a form asks about itself.
#pragma once

#include <cstdint>
#include <string>

namespace korvant::ui {

/// Asks in the language of `locale`. `text` is bytes as of formText(), shown as it stands; `style`
/// as in box_style. The chosen box_button.
int askInForm(const std::string& text, std::uint32_t style, std::int32_t locale);

}  // namespace korvant::ui
