#include "ui/kit/ui_native.h"

#include <gdk/gdk.h>
#include <gtk/gtk.h>
#include <poll.h>
#include <unistd.h>
#include <wx/evtloop.h>
#include <wx/frame.h>
#include <wx/graphics.h>
#include <wx/menu.h>
#include <wx/settings.h>
#include <wx/window.h>
#ifdef GDK_WINDOWING_X11
#include <gdk/gdkx.h>
#include <X11/Xatom.h>
#endif

#include <atomic>
#include <clocale>
#include <cstdlib>
#include <deque>
#include <memory>
#include <string>

#include "ui/kit/lost_display_posix.h"

namespace korvant::ui::native {
namespace {

bool isSet(const char* variable) {
    const char* value = std::getenv(variable);
    return value && *value;
}

std::atomic<bool> lost{false};
bool (*lostCallback)() = nullptr;
XIOErrorHandler previousHandler = nullptr;
Display* watchedDisplay = nullptr;

/// Called by Xlib with the display locked: only notes and defers.
int onIoError(Display* display) {
    if (display != watchedDisplay) return previousHandler ? previousHandler(display) : 0;
    makeRequestsHarmless(display);
    if (lost.exchange(true)) return 0;
    g_idle_add_full(
        G_PRIORITY_HIGH,
        [](gpointer) -> gboolean {
            return lostCallback && lostCallback() ? G_SOURCE_CONTINUE : G_SOURCE_REMOVE;
        },
        nullptr, nullptr);
    return 0;
}

void stayAlive(Display*, void*) {}

gboolean connectionEnds(GSource*) {
    if (lost) return FALSE;
    pollfd connection{ConnectionNumber(watchedDisplay), 0, 0};
    return poll(&connection, 1, 0) > 0;
}

/// A source that looks at the connection before any event is handled: what was sent before the
/// display went away would otherwise be answered with questions that nobody replies to, and the
/// toolkit reads some replies without asking whether they came.
void watchConnection() {
    static GSourceFuncs functions{[](GSource* source, gint* timeout) -> gboolean {
                                      *timeout = -1;
                                      return connectionEnds(source);
                                  },
                                  connectionEnds,
                                  [](GSource*, GSourceFunc, gpointer) -> gboolean {
                                      XSync(watchedDisplay, False);  // finds the end and reports it
                                      return G_SOURCE_CONTINUE;
                                  },
                                  nullptr,
                                  nullptr,
                                  nullptr};
    GSource* source = g_source_new(&functions, sizeof(GSource));
    g_source_set_priority(source, G_PRIORITY_HIGH - 1);
    g_source_attach(source, nullptr);
    g_source_unref(source);
}

/// The process that a window says it belongs to, asked of it and of those around it.
long processOf(Display* display, Window window) {
    const Atom property = XInternAtom(display, "_NET_WM_PID", False);
    while (window > PointerRoot) {
        Atom type = 0;
        int format = 0;
        unsigned long items = 0, left = 0;
        unsigned char* data = nullptr;
        XGetWindowProperty(display, window, property, 0, 1, False, XA_CARDINAL, &type, &format,
                           &items, &left, &data);
        const long process = items > 0 ? *reinterpret_cast<long*>(data) : 0;
        if (data) XFree(data);
        Window root = 0, parent = 0, *children = nullptr;
        unsigned count = 0;
        if (process != 0 || !XQueryTree(display, window, &root, &parent, &children, &count))
            return process;
        if (children) XFree(children);
        window = parent == root ? None : parent;
    }
    return 0;
}

/// A window of the toolkit's that gets no input while the dialog is answered.
bool isBlockedBy(GdkWindow* window, GtkWidget* dialog) {
    GtkWidget* grabbing = gtk_grab_get_current();
    if (!grabbing || gtk_widget_get_toplevel(grabbing) != dialog) return false;
    gpointer owner = nullptr;
    gdk_window_get_user_data(gdk_window_get_toplevel(window), &owner);
    return owner && gtk_widget_get_toplevel(GTK_WIDGET(owner)) != dialog;
}

/// Nobody has the keyboard, or a window of this process that could not use it. It goes to the root
/// window when a window that had it leaves the screen.
bool mayClaim(GdkDisplay* gdk, GtkWidget* dialog) {
    Display* display = gdk_x11_display_get_xdisplay(gdk);
    Window focus = None;
    int revert = 0;
    XGetInputFocus(display, &focus, &revert);
    if (focus == None || focus == PointerRoot || focus == DefaultRootWindow(display)) return true;
    if (GdkWindow* own = gdk_x11_window_lookup_for_display(gdk, focus))
        return isBlockedBy(own, dialog);
    return processOf(display, focus) == static_cast<long>(getpid());
}

/// Asks the window manager on behalf of the user, who started the script; without one the display.
void activate(GdkWindow* native) {
    GdkScreen* screen = gdk_window_get_screen(native);
    const GdkAtom hint = gdk_atom_intern_static_string("_NET_ACTIVE_WINDOW");
    if (!gdk_x11_screen_supports_net_wm_hint(screen, hint)) {
        gdk_window_focus(native, GDK_CURRENT_TIME);
        return;
    }
    Display* display = gdk_x11_display_get_xdisplay(gdk_window_get_display(native));
    XEvent request{};
    request.xclient.type = ClientMessage;
    request.xclient.window = gdk_x11_window_get_xid(native);
    request.xclient.message_type = XInternAtom(display, "_NET_ACTIVE_WINDOW", False);
    request.xclient.format = 32;
    request.xclient.data.l[0] = 2;
    XSendEvent(display, DefaultRootWindow(display), False,
               SubstructureRedirectMask | SubstructureNotifyMask, &request);
}

/// A text of the desktop's settings; empty where the desktop has none of that name.
class Setting {
  public:
    Setting(const char* schema, const char* key) {
        GSettingsSchemaSource* source = g_settings_schema_source_get_default();
        GSettingsSchema* found =
            source ? g_settings_schema_source_lookup(source, schema, TRUE) : nullptr;
        if (!found) return;
        if (g_settings_schema_has_key(found, key)) read(schema, key);
        g_settings_schema_unref(found);
    }
    const std::string& text() const { return text_; }

  private:
    void read(const char* schema, const char* key) {
        GSettings* settings = g_settings_new(schema);
        gchar* value = g_settings_get_string(settings, key);
        text_ = value ? value : "";
        g_free(value);
        g_object_unref(settings);
    }

    std::string text_;
};

constexpr char kDesktopSchema[] = "org.gnome.desktop.interface", kColourKey[] = "color-scheme";

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

void surviveDisplay(bool (*callback)()) {
    GdkDisplay* display = gdk_display_get_default();
    if (!display || !GDK_IS_X11_DISPLAY(display)) return;
    lostCallback = callback;
    watchedDisplay = gdk_x11_display_get_xdisplay(display);
    previousHandler = XSetIOErrorHandler(onIoError);
    XSetIOErrorExitHandler(watchedDisplay, stayAlive, nullptr);
    watchConnection();
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

namespace {

/// A window manager takes its frame off the screen a moment after the window; without one, or with
/// one that composes the screen, there is nothing to wait for.
constexpr int kFrameGone = 40;  ///< milliseconds
constexpr int kBetweenLooks = 5;

bool isUserInput(const GdkEvent& event) {
    switch (event.type) {
        case GDK_BUTTON_PRESS:
        case GDK_2BUTTON_PRESS:
        case GDK_3BUTTON_PRESS:
        case GDK_BUTTON_RELEASE:
        case GDK_MOTION_NOTIFY:
        case GDK_KEY_PRESS:
        case GDK_KEY_RELEASE:
        case GDK_SCROLL:
            return true;
        default:
            return false;
    }
}

void paintWhatWasCovered() {
    std::deque<GdkEvent*> input;
    while (GdkEvent* event = gdk_event_get()) {
        if (isUserInput(*event)) {
            input.push_back(event);
            continue;
        }
        gtk_main_do_event(event);
        gdk_event_free(event);
    }
    for (GdkEvent* event : input) {
        gdk_event_put(event);
        gdk_event_free(event);
    }
    G_GNUC_BEGIN_IGNORE_DEPRECATIONS
    gdk_window_process_all_updates();
    G_GNUC_END_IGNORE_DEPRECATIONS
}

}  // namespace

void finishClosing() {
    GdkDisplay* const display = gdk_display_get_default();
    if (!display || displayLost()) return;
    const bool composed = gdk_screen_is_composited(gdk_display_get_default_screen(display));
    for (int waited = 0; waited <= kFrameGone; waited += kBetweenLooks) {
        gdk_display_sync(display);
        paintWhatWasCovered();
        if (composed) break;
        g_usleep(kBetweenLooks * 1000);
    }
    gdk_display_flush(display);
}

void settle(wxWindow& control) {
    GtkWidget* widget = control.GetHandle();
    GtkAllocation place{};
    gtk_widget_get_allocation(widget, &place);
    if (place.width <= 1) return;
    gtk_widget_get_preferred_size(widget, nullptr, nullptr);
    gtk_widget_size_allocate(widget, &place);
}

/// Lines of one are cut at 65,535 bytes whatever is asked for, others never.
void takeLongTexts(wxTextCtrl&) {}

void padLines(wxWindow& field) {
    GtkWidget* text = gtk_bin_get_child(GTK_BIN(field.GetHandle()));
    if (!GTK_IS_TEXT_VIEW(text)) return;
    const int room = field.FromDIP(6);
    gtk_text_view_set_left_margin(GTK_TEXT_VIEW(text), room);
    gtk_text_view_set_right_margin(GTK_TEXT_VIEW(text), room);
    gtk_text_view_set_top_margin(GTK_TEXT_VIEW(text), room);
    gtk_text_view_set_bottom_margin(GTK_TEXT_VIEW(text), room);
}

void bareField(wxWindow& field) {
    GtkCssProvider* style = gtk_css_provider_new();
    gtk_css_provider_load_from_data(
        style, "entry{border:none;box-shadow:none;outline:none;padding:0 1px;min-height:0}", -1,
        nullptr);
    gtk_style_context_add_provider(gtk_widget_get_style_context(field.GetHandle()),
                                   GTK_STYLE_PROVIDER(style),
                                   GTK_STYLE_PROVIDER_PRIORITY_APPLICATION);
    g_object_unref(style);
}

/// The desktop forgets it when the window comes to the screen, which may be long after it is shown:
/// the first window of a process waits for the window manager.
void showFocus(wxWindow& topLevel) {
    const auto mark = [](GtkWidget* window, gpointer) {
        gtk_window_set_focus_visible(GTK_WINDOW(window), TRUE);
    };
    g_signal_connect_after(topLevel.GetHandle(), "map",
                           G_CALLBACK(static_cast<void (*)(GtkWidget*, gpointer)>(mark)), nullptr);
}

void markDefault(wxWindow& button, bool isDefault) {
    GtkStyleContext* style = gtk_widget_get_style_context(button.GetHandle());
    if (isDefault)
        gtk_style_context_add_class(style, GTK_STYLE_CLASS_SUGGESTED_ACTION);
    else
        gtk_style_context_remove_class(style, GTK_STYLE_CLASS_SUGGESTED_ACTION);
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

namespace {

constexpr char kStyleKey[] = "korvant-scroll-bars";

void styleWidget(GtkWidget* widget, const std::string& css) {
    if (!widget) return;
    GtkStyleContext* context = gtk_widget_get_style_context(widget);
    auto* before = static_cast<GtkCssProvider*>(g_object_get_data(G_OBJECT(widget), kStyleKey));
    if (before) gtk_style_context_remove_provider(context, GTK_STYLE_PROVIDER(before));
    g_object_set_data(G_OBJECT(widget), kStyleKey, nullptr);
    if (css.empty()) return;
    GtkCssProvider* style = gtk_css_provider_new();
    gtk_css_provider_load_from_data(style, css.c_str(), -1, nullptr);
    gtk_style_context_add_provider(context, GTK_STYLE_PROVIDER(style),
                                   GTK_STYLE_PROVIDER_PRIORITY_APPLICATION);
    g_object_set_data_full(G_OBJECT(widget), kStyleKey, style, g_object_unref);
}

}  // namespace

void colourScrollBars(wxWindow& window, const wxColour& thumb, const wxColour& edge) {
    GtkWidget* widget = window.GetHandle();
    const std::string slider =
        thumb.IsOk()
            ? "slider{background-color:" + thumb.GetAsString(wxC2S_CSS_SYNTAX).utf8_string() +
                  ";border-color:" + edge.GetAsString(wxC2S_CSS_SYNTAX).utf8_string() + "}"
            : std::string();
    if (GTK_IS_SCROLLBAR(widget)) {
        const std::string back =
            edge.IsOk() ? edge.GetAsString(wxC2S_CSS_SYNTAX).utf8_string() : "";
        return styleWidget(widget, thumb.IsOk() ? "scrollbar,trough{background-color:" + back +
                                                      ";border-color:" + back + "}" + slider
                                                : slider);
    }
    if (!GTK_IS_SCROLLED_WINDOW(widget)) return;
    auto* scrolled = GTK_SCROLLED_WINDOW(widget);
    for (GtkWidget* bar : {gtk_scrolled_window_get_vscrollbar(scrolled),
                           gtk_scrolled_window_get_hscrollbar(scrolled)})
        styleWidget(bar, slider);
    styleWidget(widget, thumb.IsOk() ? "overshoot,undershoot{background:none;border:none}" : "");
}

void putInFront(wxWindow& window) {
    window.Raise();
}

void setAccessibleName(wxWindow& window, const wxString& name) {
    AtkObject* object = gtk_widget_get_accessible(window.GetHandle());
    if (object) atk_object_set_name(object, name.utf8_str());
}

double textScale(const wxWindow& window) {
    GtkWidget* const widget = window.GetHandle();
    return gdk_screen_get_resolution(gtk_widget_get_screen(widget)) *
           gtk_widget_get_scale_factor(widget);
}

void setAccessibleRole(wxWindow& window, AccessibleRole role) {
    static constexpr AtkRole kRoles[] = {
        ATK_ROLE_PUSH_BUTTON, ATK_ROLE_TOGGLE_BUTTON, ATK_ROLE_LIST_BOX,  ATK_ROLE_TREE,
        ATK_ROLE_TOOL_BAR,    ATK_ROLE_PAGE_TAB_LIST, ATK_ROLE_STATUSBAR, ATK_ROLE_PANEL};
    AtkObject* object = gtk_widget_get_accessible(window.GetHandle());
    if (object) atk_object_set_role(object, kRoles[static_cast<int>(role)]);
}

/// Names of desktops are found in painting as well.
wxFont paintable(const wxFont& font) {
    return font;
}

wxFont semibold(const wxFont& font) {
    wxFont strong = font;
    strong.SetNumericWeight(wxFONTWEIGHT_SEMIBOLD);
    return strong;
}

wxString monospacedFace() {
    const Setting font("org.gnome.desktop.interface", "monospace-font-name");
    if (font.text().empty()) return {};
    PangoFontDescription* description = pango_font_description_from_string(font.text().c_str());
    const char* family = pango_font_description_get_family(description);
    const wxString face = wxString::FromUTF8(family ? family : "");
    pango_font_description_free(description);
    return face;
}

bool prefersDark() {
    if (Setting(kDesktopSchema, kColourKey).text() == "prefer-dark") return true;
    return wxSystemSettings::GetAppearance().IsDark();
}

/// The toolkit does not read this setting.
DarkWatch::DarkWatch(std::function<void()> changed) : changed_(std::move(changed)) {
    if (Setting(kDesktopSchema, kColourKey).text().empty()) return;
    settings_ = g_settings_new(kDesktopSchema);
    const auto told =
        +[](GSettings*, const gchar*, gpointer data) { static_cast<DarkWatch*>(data)->changed_(); };
    g_signal_connect(settings_, "changed::color-scheme", G_CALLBACK(told), this);
}

DarkWatch::~DarkWatch() {
    if (settings_) g_object_unref(settings_);
}

void setDarkFrame(wxWindow&, bool) {}

void colourMenuBar(wxFrame& frame, const wxColour& back, const wxColour& text) {
    wxMenuBar* bar = frame.GetMenuBar();
    if (!bar) return;
    bar->SetBackgroundColour(back);
    bar->SetForegroundColour(text);
}

PaintOver::PaintOver(wxWindow& window, std::function<void(wxGraphicsContext&)> paint)
    : paint_(std::move(paint)), widget_(window.m_wxwindow) {
    const auto drawn = +[](GtkWidget* widget, cairo_t* cairo, gpointer data) -> gboolean {
        if (!gtk_cairo_should_draw_window(cairo, gtk_widget_get_window(widget))) return FALSE;
        const std::unique_ptr<wxGraphicsContext> context(
            wxGraphicsContext::CreateFromNative(cairo));
        if (context) static_cast<PaintOver*>(data)->paint_(*context);
        return FALSE;
    };
    // Behind the toolkit's own handler, and before the window's children are drawn.
    if (widget_) handler_ = g_signal_connect(widget_, "draw", G_CALLBACK(drawn), this);
}

PaintOver::~PaintOver() {
    if (widget_) g_signal_handler_disconnect(widget_, handler_);
}

bool claimKeyboard(wxWindow& window) {
    GtkWidget* top = gtk_widget_get_toplevel(window.GetHandle());
    GdkWindow* native = gtk_widget_get_window(top);
    if (!native || !gdk_window_is_viewable(native)) return false;
    if (!GDK_IS_X11_WINDOW(native)) return true;
    GdkDisplay* display = gdk_window_get_display(native);
    gdk_x11_display_error_trap_push(display);
    if (mayClaim(display, top)) activate(native);
    gdk_x11_display_error_trap_pop_ignored(display);
    return true;
}

InputGrab::InputGrab(wxWindow& window) : window_(window) {
    gtk_grab_add(window_.GetHandle());
}

InputGrab::~InputGrab() {
    gtk_grab_remove(window_.GetHandle());
}

}  // namespace korvant::ui::native
