#include "ui/ui_native.h"

#include <gdk/gdk.h>
#include <gtk/gtk.h>
#include <wx/evtloop.h>
#include <wx/window.h>
#ifdef GDK_WINDOWING_X11
#include <gdk/gdkx.h>
#endif

#include <atomic>
#include <clocale>
#include <cstdlib>
#include <deque>
#include <string>

namespace korvant::ui::native {
namespace {

bool isSet(const char* variable) {
    const char* value = std::getenv(variable);
    return value && *value;
}

std::atomic<bool> lost{false};
void (*lostCallback)() = nullptr;
XIOErrorHandler previousHandler = nullptr;
Display* watchedDisplay = nullptr;

/// Called by Xlib with the display locked: only notes and defers.
int onIoError(Display* display) {
    if (display != watchedDisplay) return previousHandler ? previousHandler(display) : 0;
    if (lost.exchange(true)) return 0;
    g_idle_add_full(
        G_PRIORITY_HIGH,
        [](gpointer) -> gboolean {
            if (lostCallback) lostCallback();
            return G_SOURCE_REMOVE;
        },
        nullptr, nullptr);
    return 0;
}

void stayAlive(Display*, void*) {}

GtkWidget* topLevelOf(GdkEvent* event) {
    GtkWidget* widget = gtk_get_event_widget(event);
    return widget ? gtk_widget_get_toplevel(widget) : nullptr;
}

}  // namespace

bool displayReachable() {
    if (isSet("WAYLAND_DISPLAY")) return true;
    if (!isSet("DISPLAY")) return false;
    Display* display = XOpenDisplay(nullptr);
    if (!display) return false;
    XCloseDisplay(display);
    return true;
}

void keepingProcess(const std::function<void()>& start) {
    const char* current = std::setlocale(LC_ALL, nullptr);
    const std::string kept = current ? current : "C";
    start();
    std::setlocale(LC_ALL, kept.c_str());
}

void surviveDisplay(void (*callback)()) {
    GdkDisplay* display = gdk_display_get_default();
    if (!display || !GDK_IS_X11_DISPLAY(display)) return;
    lostCallback = callback;
    watchedDisplay = gdk_x11_display_get_xdisplay(display);
    previousHandler = XSetIOErrorHandler(onIoError);
    XSetIOErrorExitHandler(watchedDisplay, stayAlive, nullptr);
}

bool displayLost() {
    return lost;
}

bool foreignLoopRuns() {
    return gtk_main_level() > 0 && !wxEventLoopBase::GetActive();
}

void runInOwnLoop(const std::function<void()>& call) {
    struct Pending {
        const std::function<void()>& call;
        bool done;
    } pending{call, false};
    g_idle_add_full(
        G_PRIORITY_HIGH,
        [](gpointer data) -> gboolean {
            auto* work = static_cast<Pending*>(data);
            work->call();
            work->done = true;
            gtk_main_quit();
            return G_SOURCE_REMOVE;
        },
        &pending, nullptr);
    while (!pending.done) gtk_main();
}

void drainEvents() {
    while (GdkEvent* event = gdk_event_get()) {
        gtk_main_do_event(event);
        gdk_event_free(event);
    }
    if (GdkDisplay* display = gdk_display_get_default()) gdk_display_flush(display);
}

void pumpWindow(wxWindow& window) {
    GtkWidget* top = gtk_widget_get_toplevel(window.GetHandle());
    std::deque<GdkEvent*> others;
    while (GdkEvent* event = gdk_event_get()) {
        // a change of focus that is told late would take the focus from the wrong window
        if (topLevelOf(event) != top && event->type != GDK_FOCUS_CHANGE) {
            others.push_back(event);
            continue;
        }
        gtk_main_do_event(event);
        gdk_event_free(event);
    }
    for (GdkEvent* event : others) {
        gdk_event_put(event);
        gdk_event_free(event);
    }
}

void keepScrollBarsVisible(wxWindow& window) {
    if (GTK_IS_SCROLLED_WINDOW(window.GetHandle()))
        gtk_scrolled_window_set_overlay_scrolling(GTK_SCROLLED_WINDOW(window.GetHandle()), FALSE);
}

InputGrab::InputGrab(wxWindow& window) : window_(window) {
    gtk_grab_add(window_.GetHandle());
}

InputGrab::~InputGrab() {
    gtk_grab_remove(window_.GetHandle());
}

}  // namespace korvant::ui::native
