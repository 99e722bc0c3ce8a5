// The progress window in plain Xlib: a toolkit belongs to one thread, and it is not this one.
#include <unistd.h>
#include <X11/extensions/Xrender.h>
#include <X11/Xatom.h>
#include <X11/Xft/Xft.h>
#include <X11/Xlib.h>
#include <X11/Xutil.h>

#include <algorithm>
#include <cstring>
#include <mutex>
#include <vector>

#include "base/text/text_encoding.h"
#include "ui/boxes/progress_window.h"
#include "ui/kit/lost_display_posix.h"
#include "ui/kit/ui_runtime.h"

namespace korvant::ui {
namespace {

constexpr int kPadding = 24;
constexpr int kNarrowest = 280;
constexpr int kFromTop = 6;  ///< a share of the screen's height; dialogs stand in the middle

/// The drawing library keeps lists of all displays of the process without a lock.
std::mutex& drawing() {
    static std::mutex* const instance = new std::mutex;
    return *instance;
}

/// A lost connection ends the window, not the host's process.
void stayAlive(Display*, void*) {}

std::vector<std::string> linesOf(const std::string& text) {
    std::vector<std::string> lines(1);
    for (const char c : text) {
        if (c == '\n')
            lines.emplace_back();
        else if (static_cast<unsigned char>(c) >= 32)
            lines.back() += c;
    }
    return lines;
}

XRenderColor renderColour(std::uint32_t rgb) {
    const auto channel = [rgb](int shift) {
        return static_cast<unsigned short>(((rgb >> shift) & 0xFF) * 0x101);
    };
    return {channel(16), channel(8), channel(0), 0xFFFF};
}

class XlibProgressWindow : public ProgressWindow {
  public:
    XlibProgressWindow(Display* display, const ProgressStyle& style);
    ~XlibProgressWindow() override;
    XlibProgressWindow(const XlibProgressWindow&) = delete;
    XlibProgressWindow& operator=(const XlibProgressWindow&) = delete;

    void show(bool visible) override;
    void setTexts(const std::string& caption, const std::string& text) override;
    void redraw() override;
    bool pollEscape() override;

  private:
    Atom atom(const char* name) { return XInternAtom(display_, name, False); }
    void createWindow();
    void describeWindow();
    void openDrawing();
    void setTitle(const std::string& utf8);
    void setNumber(const char* property, long value);
    void setAtoms(const char* property, const std::vector<Atom>& values);
    void growToText();
    void place();
    void takeFocus();
    bool windowManagerRuns();
    void answerPing(const XClientMessageEvent& message);
    bool handle(XEvent& event);
    int lineWidth(const std::string& line);

    Display* display_;
    const ProgressStyle style_;
    Window root_;
    Window window_ = 0;
    XftFont* font_ = nullptr;
    XftDraw* draw_ = nullptr;
    Pixmap picture_ = 0;
    GC gc_ = nullptr;
    XftColor background_{};
    XftColor text_{};
    std::vector<std::string> lines_{std::string()};
    int width_;
    int height_;
    bool wanted_ = false;
};

XlibProgressWindow::XlibProgressWindow(Display* display, const ProgressStyle& style)
    : display_(display),
      style_(style),
      root_(DefaultRootWindow(display)),
      width_(kNarrowest * style.scale),
      height_(3 * kPadding * style.scale) {
    XSetIOErrorExitHandler(display_, stayAlive, nullptr);
    native::ignoreErrors(display_);
    openDrawing();
    createWindow();
    describeWindow();
}

XlibProgressWindow::~XlibProgressWindow() {
    const std::lock_guard<std::mutex> lock(drawing());
    if (draw_) XftDrawDestroy(draw_);
    if (font_) XftFontClose(display_, font_);
    XCloseDisplay(display_);
}

/// The rendering extension is asked for first, because a display's extensions are closed in reverse
/// order: closed before the fonts that are drawn with it, it would be found again by them, and the
/// next display at this address would get what is left of it.
void XlibProgressWindow::openDrawing() {
    const std::lock_guard<std::mutex> lock(drawing());
    int event = 0, error = 0;
    XRenderQueryExtension(display_, &event, &error);
    const int screen = DefaultScreen(display_);
    font_ = XftFontOpen(display_, screen, XFT_FAMILY, XftTypeString, style_.fontFamily.c_str(),
                        XFT_SIZE, XftTypeDouble, style_.fontPoints * style_.scale, nullptr);
    Visual* visual = DefaultVisual(display_, screen);
    const Colormap colours = DefaultColormap(display_, screen);
    const XRenderColor back = renderColour(style_.background), front = renderColour(style_.text);
    XftColorAllocValue(display_, visual, colours, &back, &background_);
    XftColorAllocValue(display_, visual, colours, &front, &text_);
}

void XlibProgressWindow::createWindow() {
    XSetWindowAttributes attributes{};
    attributes.background_pixel = background_.pixel;
    attributes.event_mask = ExposureMask | KeyPressMask | StructureNotifyMask;
    window_ = XCreateWindow(display_, root_, 0, 0, static_cast<unsigned>(width_),
                            static_cast<unsigned>(height_), 0, CopyFromParent, InputOutput,
                            CopyFromParent, CWBackPixel | CWEventMask, &attributes);
    gc_ = DefaultGC(display_, DefaultScreen(display_));
}

void XlibProgressWindow::describeWindow() {
    XWMHints hints{};
    hints.flags = InputHint | StateHint;
    hints.input = True;
    hints.initial_state = NormalState;
    char name[] = "korvantide", group[] = "KorvantIDE";
    XClassHint classHint{name, group};
    Xutf8SetWMProperties(display_, window_, "", "", nullptr, 0, nullptr, &hints, &classHint);
    Atom protocols[] = {atom("WM_DELETE_WINDOW"), atom("_NET_WM_PING")};
    XSetWMProtocols(display_, window_, protocols, 2);
    XSetTransientForHint(display_, window_, root_);
    setAtoms("_NET_WM_WINDOW_TYPE", {atom("_NET_WM_WINDOW_TYPE_DIALOG")});
    setNumber("_NET_WM_PID", getpid());
    setNumber("_NET_WM_USER_TIME", 0);  // it asks for the keyboard itself, or not at all
}

void XlibProgressWindow::setAtoms(const char* property, const std::vector<Atom>& values) {
    XChangeProperty(display_, window_, atom(property), XA_ATOM, 32, PropModeReplace,
                    reinterpret_cast<const unsigned char*>(values.data()),
                    static_cast<int>(values.size()));
}

void XlibProgressWindow::setNumber(const char* property, long value) {
    XChangeProperty(display_, window_, atom(property), XA_CARDINAL, 32, PropModeReplace,
                    reinterpret_cast<const unsigned char*>(&value), 1);
}

void XlibProgressWindow::setTitle(const std::string& utf8) {
    XChangeProperty(display_, window_, atom("_NET_WM_NAME"), atom("UTF8_STRING"), 8,
                    PropModeReplace, reinterpret_cast<const unsigned char*>(utf8.data()),
                    static_cast<int>(utf8.size()));
    Xutf8SetWMProperties(display_, window_, utf8.c_str(), utf8.c_str(), nullptr, 0, nullptr,
                         nullptr, nullptr);
}

void XlibProgressWindow::show(bool visible) {
    wanted_ = visible;
    if (visible) {
        place();
        XMapRaised(display_, window_);
    } else {
        XUnmapWindow(display_, window_);
    }
    XFlush(display_);
}

void XlibProgressWindow::setTexts(const std::string& caption, const std::string& text) {
    setTitle(decodeForDisplay(caption));
    lines_ = linesOf(decodeForDisplay(text));
    growToText();
}

int XlibProgressWindow::lineWidth(const std::string& line) {
    if (!font_) return 0;
    XGlyphInfo extents{};
    XftTextExtentsUtf8(display_, font_, reinterpret_cast<const FcChar8*>(line.data()),
                       static_cast<int>(line.size()), &extents);
    return extents.xOff;
}

/// Grows only: a window that changes its size with every text is hard to look at.
void XlibProgressWindow::growToText() {
    const std::lock_guard<std::mutex> lock(drawing());
    const int screen = DefaultScreen(display_);
    const int padding = kPadding * style_.scale;
    int width = width_;
    for (const std::string& line : lines_) width = std::max(width, lineWidth(line) + 2 * padding);
    const int lineHeight = font_ ? font_->height : 0;
    const int height = static_cast<int>(lines_.size()) * lineHeight + 2 * padding;
    width_ = std::min(width, DisplayWidth(display_, screen));
    height_ = std::clamp(height, height_, std::max(height_, DisplayHeight(display_, screen)));
    if (picture_) XFreePixmap(display_, picture_);
    picture_ = XCreatePixmap(display_, window_, static_cast<unsigned>(width_),
                             static_cast<unsigned>(height_),
                             static_cast<unsigned>(DefaultDepth(display_, screen)));
    if (draw_)
        XftDrawChange(draw_, picture_);
    else
        draw_ = XftDrawCreate(display_, picture_, DefaultVisual(display_, screen),
                              DefaultColormap(display_, screen));
    XResizeWindow(display_, window_, static_cast<unsigned>(width_), static_cast<unsigned>(height_));
}

void XlibProgressWindow::place() {
    const int screen = DefaultScreen(display_);
    XSizeHints hints{};
    hints.flags = PMinSize | PMaxSize | PPosition;
    hints.min_width = width_;
    hints.min_height = height_;
    hints.max_width = DisplayWidth(display_, screen);
    hints.max_height = DisplayHeight(display_, screen);
    XSetWMNormalHints(display_, window_, &hints);
    XMoveWindow(display_, window_, (hints.max_width - width_) / 2, hints.max_height / kFromTop);
}

void XlibProgressWindow::redraw() {
    if (!wanted_ || !draw_) return;
    const std::lock_guard<std::mutex> lock(drawing());
    const int padding = kPadding * style_.scale;
    XftDrawRect(draw_, &background_, 0, 0, static_cast<unsigned>(width_),
                static_cast<unsigned>(height_));
    int y = (height_ - static_cast<int>(lines_.size()) * (font_ ? font_->height : 0)) / 2;
    for (const std::string& line : lines_) {
        if (!font_) break;
        XftDrawStringUtf8(draw_, &text_, font_, padding, y + font_->ascent,
                          reinterpret_cast<const FcChar8*>(line.data()),
                          static_cast<int>(line.size()));
        y += font_->height;
    }
    XCopyArea(display_, picture_, window_, gc_, 0, 0, static_cast<unsigned>(width_),
              static_cast<unsigned>(height_), 0, 0);
    XFlush(display_);
}

bool XlibProgressWindow::pollEscape() {
    bool escape = false;
    bool exposed = false;
    while (XPending(display_) > 0) {
        XEvent event;
        XNextEvent(display_, &event);
        exposed = exposed || event.type == Expose;
        escape = handle(event) || escape;
    }
    if (exposed) redraw();
    return escape;
}

bool XlibProgressWindow::handle(XEvent& event) {
    switch (event.type) {
        case KeyPress:
            return XLookupKeysym(&event.xkey, 0) == XK_Escape;
        case MapNotify:
            takeFocus();
            return false;
        case MappingNotify:
            XRefreshKeyboardMapping(&event.xmapping);
            return false;
        case ClientMessage:
            answerPing(event.xclient);
            return false;
        default:
            return false;
    }
}

bool XlibProgressWindow::windowManagerRuns() {
    Atom type = 0;
    int format = 0;
    unsigned long items = 0, left = 0;
    unsigned char* data = nullptr;
    XGetWindowProperty(display_, root_, atom("_NET_SUPPORTING_WM_CHECK"), 0, 1, False, XA_WINDOW,
                       &type, &format, &items, &left, &data);
    if (data) XFree(data);
    return items > 0;
}

/// Only once the window is on the screen: giving the focus to a hidden one is an error. A dialog
/// that is being answered keeps it.
void XlibProgressWindow::takeFocus() {
    if (!wanted_ || dialogOpen()) return;
    if (!windowManagerRuns()) {
        XSetInputFocus(display_, window_, RevertToParent, CurrentTime);
        return;
    }
    XEvent request{};
    request.xclient.type = ClientMessage;
    request.xclient.window = window_;
    request.xclient.message_type = atom("_NET_ACTIVE_WINDOW");
    request.xclient.format = 32;
    request.xclient.data.l[0] = 2;  // on behalf of the user, who started the script
    XSendEvent(display_, root_, False, SubstructureRedirectMask | SubstructureNotifyMask, &request);
    XFlush(display_);
}

void XlibProgressWindow::answerPing(const XClientMessageEvent& message) {
    if (message.message_type != atom("WM_PROTOCOLS")) return;
    if (static_cast<Atom>(message.data.l[0]) != atom("_NET_WM_PING")) return;
    XEvent answer{};
    answer.xclient = message;
    answer.xclient.window = root_;
    XSendEvent(display_, root_, False, SubstructureRedirectMask | SubstructureNotifyMask, &answer);
}

}  // namespace

std::unique_ptr<ProgressWindow> makeProgressWindow() {
    Display* display = XOpenDisplay(nullptr);
    if (!display) return nullptr;
    return std::make_unique<XlibProgressWindow>(display, progressStyle());
}

}  // namespace korvant::ui
