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

bool menuIsOpen() {
    return GTK_IS_MENU(gtk_grab_get_current());
}

void giveKeyboard(wxTopLevelWindow& window) {
    gdk_window_focus(gtk_widget_get_window(window.GetHandle()), GDK_CURRENT_TIME);
}

bool showsFocus(wxTopLevelWindow& window) {
    return gtk_window_get_focus_visible(GTK_WINDOW(window.GetHandle())) != FALSE;
}

}  // namespace korvant::test
