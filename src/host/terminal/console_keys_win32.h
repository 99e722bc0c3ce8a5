// Keys as the system console tells them.
#pragma once

#include <windows.h>

#include <optional>

#include "base/text/byte_source.h"
#include "host/terminal/console_line.h"

namespace korvant {

/// The next event of the console's input. 0, ByteSource::kStopped as soon as `shouldStop` answers
/// true, or kEndOfInput when the console is gone.
int awaitConsoleEvent(HANDLE input, StopQuery shouldStop, INPUT_RECORD& record);

/// The character that a key going down gives; 0 for none.
wchar_t characterOf(const INPUT_RECORD& record);

/// The key that goes down; nothing for other events and for keys that say nothing by themselves.
std::optional<ConsoleKey> consoleKeyOf(const INPUT_RECORD& record);

}  // namespace korvant
