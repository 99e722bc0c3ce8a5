#include <gtk/gtk.h>
#include <wx/toplevel.h>

#include "support/ui_driver.h"

namespace korvant::test {

void saveScreen(const std::string& path) {
    GdkWindow* root = gdk_get_default_root_window();
    GdkPixbuf* picture = gdk_pixbuf_get_from_window(root, 0, 0, gdk_window_get_width(root),
                                                    gdk_window_get_height(root));
    if (!picture) return;
    gdk_pixbuf_save(picture, path.c_str(), "png", nullptr, "compression", "9", nullptr);
    g_object_unref(picture);
}

void saveWindow(wxWindow& window, const std::string& path) {
    int x = 0, y = 0;
    wxSize size = window.GetSize();
    if (window.IsTopLevel()) {
        GdkWindow* native = gtk_widget_get_window(window.GetHandle());
        gdk_window_get_origin(native, &x, &y);
        size = {gdk_window_get_width(native), gdk_window_get_height(native)};
    } else {
        window.ClientToScreen(&x, &y);
    }
    GdkPixbuf* picture =
        gdk_pixbuf_get_from_window(gdk_get_default_root_window(), x, y, size.x, size.y);
    if (!picture) return;
    gdk_pixbuf_save(picture, path.c_str(), "png", nullptr, "compression", "9", nullptr);
    g_object_unref(picture);
}

void resizeContent(wxTopLevelWindow& window, wxSize size) {
    gtk_window_resize(GTK_WINDOW(window.GetHandle()), size.x, size.y);
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

void giveKeyboard(wxTopLevelWindow& window) {
    gdk_window_focus(gtk_widget_get_window(window.GetHandle()), GDK_CURRENT_TIME);
}

bool showsFocus(wxTopLevelWindow& window) {
    return gtk_window_get_focus_visible(GTK_WINDOW(window.GetHandle())) != FALSE;
}

}  // namespace korvant::test
