#include "host/library/script_console.h"

#include <algorithm>
#include <cerrno>
#include <utility>

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
    return use_.allocated != nullptr && use_.allocated == &current();
}

void ScriptConsole::ensure() {
    if (!allocated()) {
        use_.allocated = nullptr;
        visible_ = false;
        use_.ready = false;
    }
    if (!use_.ready) {
        setUp();
        current().setTitle("Output");
        use_.ready = true;
    }
    if (!visible_) show();
}

void ScriptConsole::setAside() {
    hide();
    aside_ = std::exchange(use_, {});
}

void ScriptConsole::takeUp() {
    hide();
    use_ = std::exchange(aside_, {});
}

void ScriptConsole::beginRun() {
    if (!keepsText_) clear();
    hide();
}

void ScriptConsole::allocate() {
    use_.record.lastError = current().allocate(use_.record.info);
    if (use_.record.lastError != 0) return;
    use_.allocated = &current();
    current().onInterrupt([]() noexcept { moduleSession().requestStop(); });
}

void ScriptConsole::setUp() {
    if (!allocated()) allocate();
    if (allocated()) current().setUp(use_.record.info);
    use_.record.attached = true;
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
    use_.record.lastError = current().release();
    if (use_.record.lastError != 0) return false;
    use_.allocated = nullptr;
    use_.record.attached = false;
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
