// What forms remember from one editing to the next, for the life of the module.
#pragma once

namespace korvant {

enum class FormKind { sheet, dialog };

struct FormRectangle {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
    bool known = false;  ///< a form of this kind has been closed once
};

/// Where the last form of this kind stood when it was closed; its view keeps it up to date.
FormRectangle& rememberedRectangle(FormKind kind);

}  // namespace korvant
