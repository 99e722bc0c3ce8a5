#include "support/ui_x_keys.h"

#include <poll.h>
#include <X11/extensions/XTest.h>
#include <X11/Xlib.h>
#include <X11/Xutil.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <functional>
#include <memory>
#include <vector>

namespace korvant::test {
namespace {

using Connection = std::unique_ptr<Display, int (*)(Display*)>;

Connection connect() {
    return {XOpenDisplay(nullptr), XCloseDisplay};
}

/// Windows come and go between a question and its answer.
int ignoreError(Display*, XErrorEvent*) {
    return 0;
}

std::string titleOf(Display* display, Window window) {
    Atom type = 0;
    int format = 0;
    unsigned long items = 0, left = 0;
    unsigned char* data = nullptr;
    XGetWindowProperty(display, window, XInternAtom(display, "_NET_WM_NAME", False), 0, 1024, False,
                       AnyPropertyType, &type, &format, &items, &left, &data);
    const std::string title = data ? reinterpret_cast<char*>(data) : "";
    if (data) XFree(data);
    return title;
}

bool viewable(Display* display, Window window) {
    XWindowAttributes attributes;
    return XGetWindowAttributes(display, window, &attributes) != 0 &&
           attributes.map_state == IsViewable;
}

Window find(Display* display, Window window, const std::string& title) {
    if (titleOf(display, window) == title && viewable(display, window)) return window;
    Window root = 0, parent = 0;
    Window* children = nullptr;
    unsigned count = 0;
    if (!XQueryTree(display, window, &root, &parent, &children, &count)) return 0;
    Window found = 0;
    for (unsigned i = 0; i < count && !found; ++i) found = find(display, children[i], title);
    if (children) XFree(children);
    return found;
}

Window find(Display* display, const std::string& title) {
    return find(display, DefaultRootWindow(display), title);
}

bool isInside(Display* display, Window inner, Window outer) {
    while (inner > PointerRoot && inner != outer) {
        Window root = 0, parent = 0;
        Window* children = nullptr;
        unsigned count = 0;
        if (!XQueryTree(display, inner, &root, &parent, &children, &count)) return false;
        if (children) XFree(children);
        if (inner == root) return false;
        inner = parent;
    }
    return inner == outer;
}

bool hasKeyboard(Display* display, const std::string& title) {
    const Window window = find(display, title);
    Window focus = 0;
    int revert = 0;
    XGetInputFocus(display, &focus, &revert);
    return window != 0 && isInside(display, focus, window);
}

bool await(const std::function<bool()>& condition) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end) return false;
        poll(nullptr, 0, 2);
    }
    return true;
}

void press(Display* display, KeySym symbol, bool control) {
    const KeyCode key = XKeysymToKeycode(display, symbol);
    const KeyCode modifier = XKeysymToKeycode(display, XStringToKeysym("Control_L"));
    if (control) XTestFakeKeyEvent(display, modifier, True, 0);
    XTestFakeKeyEvent(display, key, True, 0);
    XTestFakeKeyEvent(display, key, False, 0);
    if (control) XTestFakeKeyEvent(display, modifier, False, 0);
    XSync(display, False);
}

/// Presses every key of the chord in turn and lets them go in the other direction.
void pressChord(Display* display, const std::string& chord) {
    std::vector<KeyCode> held;
    for (std::size_t from = 0; from <= chord.size();) {
        const std::size_t end = std::min(chord.find('+', from), chord.size());
        const std::string name = chord.substr(from, end - from);
        held.push_back(XKeysymToKeycode(display, XStringToKeysym(name.c_str())));
        XTestFakeKeyEvent(display, held.back(), True, 0);
        from = end + 1;
    }
    for (; !held.empty(); held.pop_back()) XTestFakeKeyEvent(display, held.back(), False, 0);
    XSync(display, False);
}

}  // namespace

bool pressInWindow(const std::string& title, const std::string& key, bool control) {
    const Connection display = connect();
    if (!display) return false;
    XSetErrorHandler(ignoreError);
    if (!await([&] { return hasKeyboard(display.get(), title); })) return false;
    press(display.get(), XStringToKeysym(key.c_str()), control);
    return true;
}

bool awaitRest(const std::string& title) {
    constexpr int kLooks = 20, kBetween = 10;
    unsigned long before = 0;
    int same = 0;
    return await([&] {
        poll(nullptr, 0, kBetween);
        const unsigned long now = windowFingerprint(title);
        same = now > 1 && now == before ? same + 1 : 0;
        before = now;
        return same >= kLooks;
    });
}

bool typeInWindow(const std::string& title, const std::vector<std::string>& keys) {
    const Connection display = connect();
    if (!display) return false;
    XSetErrorHandler(ignoreError);
    if (!await([&] { return hasKeyboard(display.get(), title); })) return false;
    const Window window = find(display.get(), title);
    for (const std::string& chord : keys) {
        if (!await([&] { return hasKeyboard(display.get(), title); })) return false;
        pressChord(display.get(), chord);
        if (&chord != &keys.back() && chord.find('+') != std::string::npos) awaitRest(title);
    }
    return await([&] { return !viewable(display.get(), window); });
}

void turnWheel(bool up) {
    const Connection display = connect();
    if (!display) return;
    const unsigned button = up ? Button4 : Button5;
    XTestFakeButtonEvent(display.get(), button, True, 0);
    XTestFakeButtonEvent(display.get(), button, False, 0);
    XSync(display.get(), False);
}

bool answerWindow(const std::string& title, const std::string& key) {
    const Connection display = connect();
    if (!display) return false;
    XSetErrorHandler(ignoreError);
    if (!await([&] { return hasKeyboard(display.get(), title); })) return false;
    const Window window = find(display.get(), title);
    press(display.get(), XStringToKeysym(key.c_str()), false);
    return await([&] { return !viewable(display.get(), window); });
}

bool awaitWindow(const std::string& title, bool present) {
    const Connection display = connect();
    if (!display) return false;
    XSetErrorHandler(ignoreError);
    return await([&] { return (find(display.get(), title) != 0) == present; });
}

unsigned long windowFingerprint(const std::string& title) {
    const Connection display = connect();
    XSetErrorHandler(ignoreError);
    const Window window = display ? find(display.get(), title) : 0;
    XWindowAttributes shape;
    if (!window || !XGetWindowAttributes(display.get(), window, &shape)) return 0;
    XImage* image = XGetImage(display.get(), window, 0, 0, static_cast<unsigned>(shape.width),
                              static_cast<unsigned>(shape.height), AllPlanes, ZPixmap);
    if (!image) return 0;
    unsigned long sum = 1;
    for (int y = 0; y < image->height; ++y)
        for (int x = 0; x < image->width; ++x) sum = sum * 31 + XGetPixel(image, x, y);
    XDestroyImage(image);
    return sum;
}

int distanceFromCentre(const std::string& title) {
    const Connection display = connect();
    XSetErrorHandler(ignoreError);
    const Window window = display ? find(display.get(), title) : 0;
    XWindowAttributes shape;
    if (!window || !XGetWindowAttributes(display.get(), window, &shape)) return -1;
    int x = 0, y = 0;
    Window child = 0;
    XTranslateCoordinates(display.get(), window, shape.root, 0, 0, &x, &y, &child);
    return std::abs(x + shape.width / 2 - WidthOfScreen(shape.screen) / 2);
}

SilentClipboard::SilentClipboard() : connection_(XOpenDisplay(nullptr)) {
    auto* display = static_cast<Display*>(connection_);
    const Window window =
        XCreateSimpleWindow(display, DefaultRootWindow(display), 0, 0, 1, 1, 0, 0, 0);
    XSetSelectionOwner(display, XInternAtom(display, "CLIPBOARD", False), window, CurrentTime);
    XSync(display, False);
}

SilentClipboard::~SilentClipboard() {
    XCloseDisplay(static_cast<Display*>(connection_));
}

}  // namespace korvant::test
