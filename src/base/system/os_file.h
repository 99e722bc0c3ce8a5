// The system's files, as far as scripts need them: never blocking without a look at the stop
// query, never ended by a signal.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "base/system/file_rules.h"
#include "base/text/byte_source.h"

namespace korvant {

constexpr int kNoFile = -1;

/// Opens for reading: regular files, pipes and devices, no folders. The handle is not inherited
/// by other programs. kNoFile when it cannot be opened or the rules forbid the file that the name
/// leads to in the end.
int openForReading(const std::string& name, const FileRules& rules);

/// Opens for writing, creating the file when it is missing; `append` keeps what it holds, else it
/// is emptied. A pipe that nobody reads is waited for until `shouldStop`.
int openForWriting(const std::string& name, bool append, const FileRules& rules,
                   StopQuery shouldStop);

/// What reading gives beside a number of bytes.
enum class ReadState { bytes, end, stopped };

/// Reads at least one byte, waiting for it. A read error counts as the end.
ReadState readSome(int handle, char* buffer, std::size_t room, std::size_t& got,
                   StopQuery shouldStop);

/// True when there is something to read, or the end, within so many milliseconds.
bool awaitBytes(int handle, int milliseconds);

/// Writes everything, waiting for room. `written` counts what was taken. 0, or the system's error;
/// ECANCELED when the stop query ended the wait.
int writeAll(int handle, std::string_view bytes, std::size_t& written, StopQuery shouldStop);

/// Writes what can be written at once, perhaps nothing. 0 or the system's error.
int writeReady(int handle, std::string_view bytes, std::size_t& written);

/// Waits up to 50 ms for room to write.
void awaitRoom(int handle);

/// The system's error of closing, 0 for none.
int closeHandle(int handle);

/// A handle of the same pipe or terminal that never blocks and leaves the given one as it is; a
/// duplicate where the system offers no such handle. kNoFile on failure.
int openUnblocked(int handle);

bool isTerminal(int handle);

/// The calling thread takes no signals; they go to the script's thread.
void keepSignalsAway();

/// The system's words for an error, in English.
std::string systemErrorText(int error);

}  // namespace korvant
