#include "module/window_console.h"
#include "ui/console/console_window.h"

namespace korvant {

WindowConsole makeWindowConsole(Console& streams, StopQuery) {
    auto console = std::make_unique<ui::ConsoleWindow>(streams);
    auto feed = [window = console.get()](const std::string& line) { window->feed(line); };
    return {std::move(console), std::move(feed)};
}

}  // namespace korvant
