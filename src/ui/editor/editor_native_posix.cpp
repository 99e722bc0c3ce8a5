#include "ui/editor/editor_native.h"

#include <gdk/gdkkeysyms.h>
#include <gtk/gtk.h>
#include <gtk/gtkx.h>
#include <wx/frame.h>
#include <wx/iconbndl.h>
#include <wx/image.h>
#include <wx/menuitem.h>
#include <wx/mstream.h>

#include <algorithm>
#include <deque>
#include <string_view>

#include "ui/editor/editor_icon.h"
#include "ui/kit/text_conversion.h"

namespace korvant::ui::native {
namespace {

guint keyOf(const std::string& name) {
    if (name == "Esc") return GDK_KEY_Escape;
    if (name == "Space") return GDK_KEY_space;
    if (name.size() == 1) return gdk_unicode_to_keyval(static_cast<guint32>(name[0]));
    return gdk_keyval_from_name(name.c_str());
}

/// A key's name as the toolkit of the desktop writes it: "<Control>z" for "Ctrl+Z".
bool parseKey(std::string name, guint& key, guint& modifiers) {
    struct Modifier {
        std::string_view name;
        guint bit;
    };
    static constexpr Modifier kModifiers[] = {
        {"Ctrl+", GDK_CONTROL_MASK}, {"Shift+", GDK_SHIFT_MASK}, {"Alt+", GDK_MOD1_MASK}};
    modifiers = 0;
    for (const Modifier& modifier : kModifiers) {
        if (name.rfind(modifier.name, 0) != 0) continue;
        modifiers |= modifier.bit;
        name.erase(0, modifier.name.size());
    }
    key = keyOf(name);
    return key != GDK_KEY_VoidSymbol;
}

GtkWindow* activeWindow() {
    GList* const all = gtk_window_list_toplevels();
    GtkWindow* active = nullptr;
    for (GList* item = all; item; item = item->next) {
        auto* window = GTK_WINDOW(item->data);
        if (gtk_window_is_active(window) && gtk_widget_is_visible(GTK_WIDGET(window)))
            active = window;
    }
    g_list_free(all);
    return active;
}

/// Without one, nobody gives the keyboard to a window that opens, or keeps a dialog above the
/// window that it belongs to.
bool windowManagerRuns() {
    GdkScreen* screen = gdk_screen_get_default();
    return !GDK_IS_X11_SCREEN(screen) ||
           gdk_x11_screen_supports_net_wm_hint(screen,
                                               gdk_atom_intern_static_string("_NET_ACTIVE_WINDOW"));
}

void takeKeyboard(GtkWidget* widget) {
    GdkWindow* window = gtk_widget_get_window(widget);
    if (!window || !gdk_window_is_viewable(window)) return;
    XSetInputFocus(GDK_WINDOW_XDISPLAY(window), GDK_WINDOW_XID(window), RevertToParent,
                   CurrentTime);
}

GtkWindow* ordinaryWindow(const GValue* parameters) {
    auto* widget = static_cast<GtkWidget*>(g_value_get_object(parameters));
    const bool ordinary = GTK_IS_WINDOW(widget) &&
                          gtk_window_get_window_type(GTK_WINDOW(widget)) == GTK_WINDOW_TOPLEVEL;
    return ordinary ? GTK_WINDOW(widget) : nullptr;
}

gboolean onOpened(GSignalInvocationHint*, guint, const GValue* parameters, gpointer) {
    if (GtkWindow* window = ordinaryWindow(parameters)) takeKeyboard(GTK_WIDGET(window));
    return TRUE;
}

gboolean onClosed(GSignalInvocationHint*, guint, const GValue* parameters, gpointer) {
    GtkWindow* window = ordinaryWindow(parameters);
    GtkWindow* below = window ? gtk_window_get_transient_for(window) : nullptr;
    if (below) takeKeyboard(GTK_WIDGET(below));
    return TRUE;
}

/// Does for the windows that come and go what a window manager does.
class KeyboardHooks {
  public:
    KeyboardHooks() {
        if (windowManagerRuns()) return;
        opened_ = add("map-event", onOpened);
        closed_ = add("unmap", onClosed);
    }
    ~KeyboardHooks() {
        if (opened_ != 0) g_signal_remove_emission_hook(signal("map-event"), opened_);
        if (closed_ != 0) g_signal_remove_emission_hook(signal("unmap"), closed_);
    }
    KeyboardHooks(const KeyboardHooks&) = delete;
    KeyboardHooks& operator=(const KeyboardHooks&) = delete;

  private:
    static guint signal(const char* name) { return g_signal_lookup(name, GTK_TYPE_WIDGET); }
    static gulong add(const char* name, GSignalEmissionHook hook) {
        return g_signal_add_emission_hook(signal(name), 0, hook, nullptr, nullptr);
    }

    gulong opened_ = 0;
    gulong closed_ = 0;
};

bool isUserInput(GdkEventType type) {
    switch (type) {
        case GDK_BUTTON_PRESS:
        case GDK_2BUTTON_PRESS:
        case GDK_3BUTTON_PRESS:
        case GDK_BUTTON_RELEASE:
        case GDK_KEY_PRESS:
        case GDK_KEY_RELEASE:
        case GDK_TOUCH_BEGIN:
            return true;
        default:
            return false;
    }
}

/// What is to be placed and painted waits for the desktop's clock, which ticks only in an event
/// loop.
void paintNow(GtkWidget* top) {
    gtk_container_check_resize(GTK_CONTAINER(top));
    G_GNUC_BEGIN_IGNORE_DEPRECATIONS
    gdk_window_process_all_updates();
    G_GNUC_END_IGNORE_DEPRECATIONS
    gdk_display_flush(gdk_display_get_default());
}

/// True for a key that says something about the run.
bool note(const GdkEvent* event, BusyInput& asked) {
    if (event->type != GDK_KEY_PRESS) return false;
    const guint key = event->key.keyval;
    const bool shift = (event->key.state & GDK_SHIFT_MASK) != 0;
    const bool stop = key == GDK_KEY_Escape || (key == GDK_KEY_F5 && shift);
    const bool pause = key == GDK_KEY_F6 && (event->key.state & GDK_CONTROL_MASK) == 0;
    asked.stop |= stop;
    asked.pause |= pause;
    return stop || pause;
}

bool isIn(const wxWindow* window, GtkWidget* widget) {
    return window &&
           (widget == window->GetHandle() || gtk_widget_is_ancestor(widget, window->GetHandle()));
}

/// Keys that open menus would need a loop.
bool isForPart(const UsableParts& usable, GtkWidget* widget, const GdkEvent* event) {
    if (event->type == GDK_KEY_PRESS || event->type == GDK_KEY_RELEASE)
        return usable.keys && usable.keys == wxWindow::FindFocus() &&
               (event->key.state & GDK_MOD1_MASK) == 0 && event->key.keyval != GDK_KEY_F10 &&
               event->key.keyval != GDK_KEY_Alt_L && event->key.keyval != GDK_KEY_Menu;
    if (event->type == GDK_BUTTON_PRESS && event->button.button == 3) return false;
    return std::any_of(usable.clicks.begin(), usable.clicks.end(),
                       [widget](const wxWindow* part) { return isIn(part, widget); });
}

}  // namespace

wxIconBundle editorIcons() {
    wxIconBundle bundle;
    wxMemoryInputStream bytes(kEditorIconPng, kEditorIconPngSize);
    if (!wxImage::FindHandler(wxBITMAP_TYPE_PNG)) wxImage::AddHandler(new wxPNGHandler);
    const wxImage picture(bytes, wxBITMAP_TYPE_PNG);
    if (!picture.IsOk()) return bundle;
    for (const int size : {16, 24, 32, 48, 64, 128}) {
        wxIcon icon;
        icon.CopyFromBitmap(wxBitmap(picture.Scale(size, size, wxIMAGE_QUALITY_HIGH)));
        bundle.AddIcon(icon);
    }
    return bundle;
}

void showMenuKey(wxMenuItem& item, const wxString& key) {
    GtkWidget* widget = item.GetMenuItem();
    GtkWidget* label = widget ? gtk_bin_get_child(GTK_BIN(widget)) : nullptr;
    guint code = 0, modifiers = 0;
    if (GTK_IS_ACCEL_LABEL(label) && parseKey(toUtf8(key), code, modifiers))
        gtk_accel_label_set_accel(GTK_ACCEL_LABEL(label), code,
                                  static_cast<GdkModifierType>(modifiers));
}

/// The system menu belongs to the window manager here.
void addSystemMenuItem(wxFrame&, const wxString&, std::function<void()>) {}

/// Windows that the program opens in front of one join its group. A widget without a window holds
/// the input of all windows that are in no group, which are the host's.
struct OnlyWindow::State {
    GtkWindowGroup* group = gtk_window_group_new();
    GtkWidget* holder = gtk_invisible_new();
    KeyboardHooks keyboard;
};

void activate(wxFrame& frame) {
    if (windowManagerRuns())
        frame.Raise();
    else
        takeKeyboard(frame.GetHandle());
}

OnlyWindow::OnlyWindow(wxFrame& frame) : state_(std::make_unique<State>()) {
    auto* window = GTK_WINDOW(frame.GetHandle());
    if (GtkWindow* host = activeWindow(); host && host != window)
        gtk_window_set_transient_for(window, host);
    gtk_window_group_add_window(state_->group, window);
    g_object_ref_sink(state_->holder);
    gtk_widget_show(state_->holder);
    gtk_grab_add(state_->holder);
}

OnlyWindow::~OnlyWindow() {
    gtk_grab_remove(state_->holder);
    gtk_widget_destroy(state_->holder);
    g_object_unref(state_->holder);
    g_object_unref(state_->group);
}

BusyInput pumpWhileBusy(wxFrame& frame, const UsableParts& usable) {
    GtkWidget* const top = frame.GetHandle();
    BusyInput asked;
    std::deque<GdkEvent*> others;
    while (GdkEvent* event = gdk_event_get()) {
        GtkWidget* widget = gtk_get_event_widget(event);
        const bool ours = widget && gtk_widget_get_toplevel(widget) == top;
        if (!ours) {
            others.push_back(event);
            continue;
        }
        const bool wish = note(event, asked);
        if (!wish && (!isUserInput(event->type) || isForPart(usable, widget, event)))
            gtk_main_do_event(event);
        gdk_event_free(event);
    }
    for (GdkEvent* event : others) {
        gdk_event_put(event);
        gdk_event_free(event);
    }
    paintNow(top);
    return asked;
}

}  // namespace korvant::ui::native
