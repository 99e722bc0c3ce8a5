#include "ui/kit/lost_display_posix.h"

// After the others: it defines short macros.
#include <X11/Xlibint.h>

namespace korvant::ui::native {
namespace {

/// What closing a few windows takes is some kilobytes.
constexpr unsigned long kRoom = 1UL << 20;
char room[kRoom];
constexpr int kLastError = 127;

}  // namespace

void makeRequestsHarmless(_XDisplay* display) {
    display->buffer = room;
    display->bufptr = room;
    display->bufmax = room + kRoom;
}

void ignoreErrors(_XDisplay* display) {
    for (int code = 1; code <= kLastError; ++code)
        XESetWireToError(display, code,
                         [](Display*, XErrorEvent*, xError*) -> Bool { return False; });
}

}  // namespace korvant::ui::native
