#include "process_display.h"

namespace korvant_app {

bool hasDisplay() {
    return true;
}

bool consoleIsWindow() {
    return false;
}

}  // namespace korvant_app
