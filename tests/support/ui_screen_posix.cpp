#include <gtest/gtest.h>
#include <gtk/gtk.h>
#include <wx/image.h>
#include <wx/toplevel.h>

#include <set>
#include <string>
#include <string_view>
#include <utility>

#include "support/ui_driver.h"

// After the others: it defines short macros.
#include <X11/extensions/XInput2.h>

namespace korvant::test {
namespace {

/// Keys as the display tells them, before the toolkit sees them.
class KeysTold {
  public:
    KeysTold() { gdk_window_add_filter(nullptr, &note, this); }
    bool takeLost() { return std::exchange(lost_, false); }

  private:
    static GdkFilterReturn note(GdkXEvent* native, GdkEvent*, gpointer self) {
        const auto& event = *static_cast<const XEvent*>(native);
        if (event.type == GenericEvent && event.xcookie.data &&
            (event.xcookie.evtype == XI_KeyPress || event.xcookie.evtype == XI_KeyRelease))
            static_cast<KeysTold*>(self)->note(
                static_cast<const XIDeviceEvent*>(event.xcookie.data)->detail,
                event.xcookie.evtype == XI_KeyPress);
        return GDK_FILTER_CONTINUE;
    }
    void note(int key, bool press) {
        if (press)
            down_.insert(key);
        else if (down_.erase(key) == 0)
            lost_ = true;
    }

    std::set<int> down_;
    bool lost_ = false;
};

/// What the toolkit itself says; empty for all others.
std::string complaintIn(const GLogField* fields, gsize count) {
    std::string domain, message;
    for (gsize i = 0; i < count; ++i) {
        const bool counted = fields[i].length >= 0;
        const auto* text = static_cast<const char*>(fields[i].value);
        const auto value = counted ? std::string(text, static_cast<std::size_t>(fields[i].length))
                                   : std::string(text);
        if (std::string_view(fields[i].key) == "GLIB_DOMAIN") domain = value;
        if (std::string_view(fields[i].key) == "MESSAGE") message = value;
    }
    return domain == "Gtk" ? message : std::string();
}

}  // namespace

void saveScreen(const std::string& path) {
    GdkWindow* root = gdk_get_default_root_window();
    GdkPixbuf* picture = gdk_pixbuf_get_from_window(root, 0, 0, gdk_window_get_width(root),
                                                    gdk_window_get_height(root));
    if (!picture) return;
    gdk_pixbuf_save(picture, path.c_str(), "png", nullptr, "compression", "9", nullptr);
    g_object_unref(picture);
}

namespace {

/// Null when it does not stand on the screen; the caller's.
GdkPixbuf* pixelsOf(wxWindow& window) {
    int x = 0, y = 0;
    wxSize size = window.GetSize();
    if (window.IsTopLevel()) {
        GdkWindow* native = gtk_widget_get_window(window.GetHandle());
        gdk_window_get_origin(native, &x, &y);
        size = {gdk_window_get_width(native), gdk_window_get_height(native)};
    } else {
        window.ClientToScreen(&x, &y);
    }
    return gdk_pixbuf_get_from_window(gdk_get_default_root_window(), x, y, size.x, size.y);
}

}  // namespace

void saveWindow(wxWindow& window, const std::string& path) {
    GdkPixbuf* picture = pixelsOf(window);
    if (!picture) return;
    gdk_pixbuf_save(picture, path.c_str(), "png", nullptr, "compression", "9", nullptr);
    g_object_unref(picture);
}

wxImage pictureOf(wxWindow& window) {
    GdkPixbuf* pixels = pixelsOf(window);
    if (!pixels) return {};
    const int width = gdk_pixbuf_get_width(pixels), height = gdk_pixbuf_get_height(pixels);
    const int each = gdk_pixbuf_get_n_channels(pixels), line = gdk_pixbuf_get_rowstride(pixels);
    const guchar* from = gdk_pixbuf_read_pixels(pixels);
    wxImage picture(width, height);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            const guchar* at = from + y * line + x * each;
            picture.SetRGB(x, y, at[0], at[1], at[2]);
        }
    g_object_unref(pixels);
    return picture;
}

void resizeContent(wxTopLevelWindow& window, wxSize size) {
    gtk_window_resize(GTK_WINDOW(window.GetHandle()), size.x, size.y);
}

bool inputIsOnItsWay() {
    GdkDisplay* display = gdk_display_get_default();
    if (!display || gdk_display_is_closed(display)) return false;
    gdk_display_sync(display);
    return gdk_events_pending() != FALSE;
}

bool pressGotLost() {
    static KeysTold keys;
    return keys.takeLost();
}

bool menuIsOpen() {
    GList* windows = gtk_window_list_toplevels();
    bool open = false;
    for (GList* one = windows; one && !open; one = one->next)
        open = gtk_widget_get_mapped(GTK_WIDGET(one->data)) &&
               GTK_IS_MENU(gtk_bin_get_child(GTK_BIN(one->data)));
    g_list_free(windows);
    return open;
}

void leaveMenuBar() {
    wxUIActionSimulator().Char(WXK_ESCAPE);
}

void endMenus() {}

void giveKeyboard(wxTopLevelWindow& window) {
    gdk_window_focus(gtk_widget_get_window(window.GetHandle()), GDK_CURRENT_TIME);
}

bool looksDefault(wxWindow& button) {
    return gtk_style_context_has_class(gtk_widget_get_style_context(button.GetHandle()),
                                       GTK_STYLE_CLASS_SUGGESTED_ACTION) != FALSE;
}

bool answerFontDialog(const std::string& face, int points) {
    GList* windows = gtk_window_list_toplevels();
    GtkDialog* dialog = nullptr;
    for (GList* one = windows; one; one = one->next)
        if (GTK_IS_FONT_CHOOSER_DIALOG(one->data) && gtk_widget_get_mapped(GTK_WIDGET(one->data)))
            dialog = GTK_DIALOG(one->data);
    g_list_free(windows);
    if (!dialog) return false;
    gtk_font_chooser_set_font(GTK_FONT_CHOOSER(dialog),
                              (face + " " + std::to_string(points)).c_str());
    gtk_dialog_response(dialog, GTK_RESPONSE_OK);
    return true;
}

void failOnComplaints() {
    static bool watching = false;
    if (watching) return;
    watching = true;
    const auto take = [](GLogLevelFlags level, const GLogField* fields, gsize count, gpointer) {
        const std::string text = complaintIn(fields, count);
        const bool squeezed = text.find("Negative content") != std::string::npos;
        if (!text.empty() && (squeezed || (level & G_LOG_LEVEL_CRITICAL) != 0))
            ADD_FAILURE() << text;
        return g_log_writer_default(level, fields, count, nullptr);
    };
    g_log_set_writer_func(take, nullptr, nullptr);
}

bool showsFocus(wxTopLevelWindow& window) {
    return gtk_window_get_focus_visible(GTK_WINDOW(window.GetHandle())) != FALSE;
}

}  // namespace korvant::test
