#include "process_display.h"

namespace korvant_app {

bool hasDisplay() {
    return true;
}

}  // namespace korvant_app
