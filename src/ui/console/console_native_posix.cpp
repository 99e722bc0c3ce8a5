#include "ui/console/console_native.h"

#include <fcntl.h>
#include <gdk/gdkx.h>
#include <gtk/gtk.h>
#include <poll.h>
#include <unistd.h>
#include <wx/window.h>
#include <X11/keysym.h>
#include <X11/Xlib.h>
#include <X11/Xutil.h>

#include <cerrno>
#include <csignal>
#include <thread>

#include "ui/kit/lost_display_posix.h"

namespace korvant::ui::native {
namespace {

/// The top-level window as the display server knows it; 0 where it is another kind of display.
Window serverWindow(wxWindow& window) {
    GtkWidget* top = gtk_widget_get_toplevel(window.GetHandle());
    GdkWindow* native = top ? gtk_widget_get_window(top) : nullptr;
    return native && GDK_IS_X11_WINDOW(native) ? gdk_x11_window_get_xid(native) : 0;
}

Display* serverDisplay() {
    GdkDisplay* display = gdk_display_get_default();
    return display && GDK_IS_X11_DISPLAY(display) ? gdk_x11_display_get_xdisplay(display) : nullptr;
}

void stayAlive(Display*, void*) {}

/// A connection of its own takes the keys before the toolkit's sees them. The thread waits for the
/// display or for the pipe that ends it.
class KeyListener : public InterruptKeys {
  public:
    KeyListener(Display* display, Window window, void (*handler)() noexcept)
        : display_(display), window_(window), handler_(handler) {
        XSetIOErrorExitHandler(display_, stayAlive, nullptr);
        ignoreErrors(display_);
        grab(XK_c);
        grab(XK_Pause);
        grab(XK_Break);
        XFlush(display_);
        if (pipe2(ending_, O_CLOEXEC) == 0) thread_ = std::thread([this] { listen(); });
    }

    ~KeyListener() override {
        if (thread_.joinable()) {
            close(ending_[1]);
            thread_.join();
            close(ending_[0]);
        }
        XCloseDisplay(display_);
    }

  private:
    /// With every combination of the locks, which count as modifiers for a grab.
    void grab(KeySym symbol) {
        const KeyCode code = XKeysymToKeycode(display_, symbol);
        if (code == 0) return;
        for (const unsigned locks :
             {0U, unsigned{LockMask}, unsigned{Mod2Mask}, unsigned{LockMask} | unsigned{Mod2Mask}})
            XGrabKey(display_, code, ControlMask | locks, window_, False, GrabModeAsync,
                     GrabModeAsync);
    }

    void listen() {
        sigset_t all;
        sigfillset(&all);
        pthread_sigmask(SIG_BLOCK, &all, nullptr);
        pollfd waits[2] = {{ConnectionNumber(display_), POLLIN, 0}, {ending_[0], POLLIN, 0}};
        while (true) {
            take();
            if (poll(waits, 2, -1) < 0 && errno != EINTR) return;
            if (waits[1].revents != 0 || (waits[0].revents & (POLLHUP | POLLERR)) != 0) return;
        }
    }

    void take() {
        while (XPending(display_) > 0) {
            XEvent event;
            XNextEvent(display_, &event);
            if (event.type == KeyPress) handler_();
        }
    }

    Display* display_;
    Window window_;
    void (*handler_)() noexcept;
    int ending_[2] = {-1, -1};
    std::thread thread_;
};

}  // namespace

bool isViewable(wxWindow& window) {
    const Window native = serverWindow(window);
    if (native == 0) return window.IsShownOnScreen();
    XWindowAttributes attributes;
    return XGetWindowAttributes(serverDisplay(), native, &attributes) != 0 &&
           attributes.map_state == IsViewable;
}

void awaitDisplay(int milliseconds) {
    Display* display = serverDisplay();
    pollfd wait{display ? ConnectionNumber(display) : -1, POLLIN, 0};
    poll(&wait, 1, milliseconds);
}

/// The toolkit's clock for both runs in the event loop only, which a script keeps from running.
void paintWindow(wxWindow& window) {
    GtkWidget* top = gtk_widget_get_toplevel(window.GetHandle());
    GdkWindow* native = gtk_widget_get_window(top);
    if (!native || !GTK_IS_CONTAINER(top)) return;
    gtk_container_check_resize(GTK_CONTAINER(top));
    G_GNUC_BEGIN_IGNORE_DEPRECATIONS
    gdk_window_process_updates(native, TRUE);
    G_GNUC_END_IGNORE_DEPRECATIONS
    gdk_display_flush(gdk_window_get_display(native));
}

std::unique_ptr<InterruptKeys> listenForInterrupt(wxWindow& window, void (*handler)() noexcept) {
    const Window native = serverWindow(window);
    if (native == 0 || !handler) return nullptr;
    Display* display = XOpenDisplay(DisplayString(serverDisplay()));
    if (!display) return nullptr;
    return std::make_unique<KeyListener>(display, native, handler);
}

}  // namespace korvant::ui::native
