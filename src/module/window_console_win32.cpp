#include "module/window_console.h"

#include <windows.h>

#include "host/terminal/console_win32.h"

namespace korvant {
namespace {

/// Neither the toolkit nor the threads of the module can be taken down again, so the module stays
/// until the process ends, whatever its host unloads.
void stayLoaded() {
    HMODULE module = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_PIN,
                       reinterpret_cast<LPCWSTR>(&stayLoaded), &module);
}

}  // namespace

WindowConsole makeWindowConsole(Console& streams, StopQuery shouldStop) {
    stayLoaded();
    auto console = std::make_unique<SystemConsole>(streams, shouldStop);
    auto feed = [system = console.get()](const std::string& line) { system->feed(line); };
    return {std::move(console), std::move(feed)};
}

}  // namespace korvant
