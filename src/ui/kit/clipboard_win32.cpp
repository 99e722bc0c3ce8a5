#include <windows.h>

#include "ui/kit/clipboard.h"

namespace korvant::ui {

bool clipboardMayHaveText() {
    return IsClipboardFormatAvailable(CF_UNICODETEXT) != FALSE;
}

}  // namespace korvant::ui
