// Writing without the signals that would end the process.
#pragma once

#include <sys/types.h>

#include <cstddef>

namespace korvant {

/// write() in which a reader that has gone is EPIPE and a limit on the size of files EFBIG, both
/// without a signal, in this thread alone: how the host handles them is not touched. The bytes
/// taken, or the negative system error.
ssize_t writeQuietly(int handle, const char* bytes, std::size_t count);

}  // namespace korvant
