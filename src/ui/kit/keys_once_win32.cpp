#include "ui/kit/keys_once.h"

#include <windows.h>

#include <utility>

namespace korvant::ui {
namespace {

/// The key that is being handled; 0 for none, and once it has been released.
WPARAM keyUnderWay = 0;

/// The toolkit hears of keys from a hook, before the message has left the queue: a loop inside of
/// its handlers finds the message once more. A key that was pressed again, or is held, is another.
LRESULT CALLBACK hearOnce(int code, WPARAM key, LPARAM about) {
    const bool released = (about & (LPARAM{1} << 31)) != 0, held = (about & (1 << 30)) != 0;
    if (code != HC_ACTION || released) {
        if (code == HC_ACTION && key == keyUnderWay) keyUnderWay = 0;
        return CallNextHookEx(nullptr, code, key, about);
    }
    if (key == keyUnderWay && !held) return 1;
    const WPARAM before = std::exchange(keyUnderWay, key);
    const LRESULT result = CallNextHookEx(nullptr, code, key, about);
    keyUnderWay = before;
    return result;
}

}  // namespace

/// Called before the toolkit's own, which was there first.
void hearKeysOnce() {
    static const HHOOK hook =
        SetWindowsHookExW(WH_KEYBOARD, hearOnce, nullptr, GetCurrentThreadId());
    static_cast<void>(hook);
}

}  // namespace korvant::ui
