#include "host/console_win32.h"
#include "module/window_console.h"

namespace korvant {

WindowConsole makeWindowConsole(Console& streams, StopQuery shouldStop) {
    auto console = std::make_unique<SystemConsole>(streams, shouldStop);
    auto feed = [system = console.get()](const std::string& line) { system->feed(line); };
    return {std::move(console), std::move(feed)};
}

}  // namespace korvant
