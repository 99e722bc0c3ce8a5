#include "host/library/script_console.h"

#include <algorithm>
#include <cerrno>

#include "host/run/script_session.h"

namespace korvant {

ScriptConsole& scriptConsole() {
    static ScriptConsole* const console = new ScriptConsole;
    return *console;
}

Console& ScriptConsole::current() {
    return *moduleSession().services().console;
}

bool ScriptConsole::allocated() const {
    return allocated_ != nullptr && allocated_ == &current();
}

void ScriptConsole::ensure() {
    if (!allocated()) {
        allocated_ = nullptr;
        visible_ = false;
        ready_ = false;
    }
    if (!ready_) {
        setUp();
        current().setTitle("Output");
        ready_ = true;
    }
    if (!visible_) show();
}

void ScriptConsole::beginRun() {
    clear();
    hide();
}

void ScriptConsole::allocate() {
    record_.lastError = current().allocate(record_.info);
    if (record_.lastError != 0) return;
    allocated_ = &current();
    current().onInterrupt([]() noexcept { moduleSession().requestStop(); });
}

void ScriptConsole::setUp() {
    if (!allocated()) allocate();
    if (allocated()) current().setUp(record_.info);
    record_.attached = true;
}

void ScriptConsole::show() {
    current().show();
    visible_ = true;
}

void ScriptConsole::hide() {
    if (!visible_) return;
    visible_ = false;
    current().hide();
    flush();  // tells what could not be handed over
}

void ScriptConsole::clear() {
    if (allocated()) current().clear();
}

bool ScriptConsole::release() {
    if (!allocated()) return true;
    hide();
    record_.lastError = current().release();
    if (record_.lastError != 0) return false;
    allocated_ = nullptr;
    record_.attached = false;
    return true;
}

void ScriptConsole::noteFailure(bool written) {
    if (!written) moduleSession().noteWriteFailure("standard output", errno);
}

bool ScriptConsole::taken(std::string_view bytes) const {
    return std::any_of(listeners_.begin(), listeners_.end(),
                       [&](PrintListener* listener) { return listener->takes(bytes); });
}

void ScriptConsole::write(std::string_view bytes) {
    if (!taken(bytes)) {
        ensure();
        noteFailure(current().write(bytes));
    }
    for (PrintListener* const listener : listeners_) listener->printed(bytes);
}

void ScriptConsole::flush() {
    if (allocated()) noteFailure(current().flush());
}

std::uint16_t ScriptConsole::attributes() {
    return allocated() ? current().attributes() : 0;
}

void ScriptConsole::setAttributes(std::uint16_t attributes) {
    if (allocated()) current().setAttributes(attributes);
}

void ScriptConsole::moveCursor(std::int16_t column, std::int16_t row) {
    if (allocated()) current().moveCursor(column, row);
}

}  // namespace korvant
