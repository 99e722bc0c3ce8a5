#include "host/native_call.h"

#include "host/script_session.h"

namespace korvant {

void raiseInScript(const char* description) noexcept {
    moduleSession().raise(description);
}

}  // namespace korvant
