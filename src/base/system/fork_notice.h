// Being told that the process was copied.
#pragma once

namespace korvant {

/// `inChild` is called in every copy of this process that fork() makes, on its only thread, before
/// fork() returns there. It must not wait for anything. Where there is no fork(): nothing.
void onFork(void (*inChild)()) noexcept;

}  // namespace korvant
