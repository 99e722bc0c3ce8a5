#include "process_setup.h"

#include <windows.h>

#include <fcntl.h>
#include <io.h>

#include <cstdio>

namespace korvant_app {
namespace {

/// A stream that leads nowhere fails at every call; on the null device it is empty and silent.
void openIfClosed(DWORD which, std::FILE* stream, const char* mode) {
    const HANDLE handle = GetStdHandle(which);
    if (handle != nullptr && handle != INVALID_HANDLE_VALUE) return;
    [[maybe_unused]] const std::FILE* const opened = std::freopen("NUL", mode, stream);
}

}  // namespace

void setUpProcess() {
    openIfClosed(STD_INPUT_HANDLE, stdin, "r");
    openIfClosed(STD_OUTPUT_HANDLE, stdout, "r");
    openIfClosed(STD_ERROR_HANDLE, stderr, "w");
    // A missing disk or library is an error for the caller, not a box that waits for somebody.
    SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX);
}

void writeBytesAsTheyAre() {
    std::fflush(stdout);
    _setmode(_fileno(stdout), _O_BINARY);
}

}  // namespace korvant_app
