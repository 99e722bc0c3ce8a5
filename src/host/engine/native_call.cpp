#include "host/engine/native_call.h"

#include "host/run/script_session.h"

namespace korvant {

void raiseInScript(const char* description) noexcept {
    try {
        moduleSession().raise(description);
    } catch (...) {
        // There is no session and no memory to make one: then no script runs either.
    }
}

}  // namespace korvant
