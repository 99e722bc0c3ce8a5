#include <cstdlib>
#include <initializer_list>

#include "process_display.h"

namespace korvant_app {

bool hasDisplay() {
    for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY"})
        if (const char* value = std::getenv(name); value && *value) return true;
    return false;
}

}  // namespace korvant_app
