// A host that runs a loop of its own, which the module's toolkit does not know.
#include <gtk/gtk.h>

#include "hosts/host_common.h"

namespace {

struct Host {
    host::Module module;
    GtkWidget* window;
    int ticks = 0;
    bool ended = false;
};

gboolean tick(gpointer data) {
    auto* self = static_cast<Host*>(data);
    host::check(gtk_widget_get_visible(self->window), "the host's window is gone");
    if (++self->ticks < 5) return G_SOURCE_CONTINUE;
    self->ended = true;
    gtk_main_quit();
    return G_SOURCE_REMOVE;
}

gboolean work(gpointer data) {
    auto* self = static_cast<Host*>(data);
    host::runTwice(self->module);
    host::check(gtk_main_level() == 1, "the host's loop is not the innermost any more");
    g_timeout_add(1, tick, self);
    return G_SOURCE_REMOVE;
}

}  // namespace

int main(int argc, char** argv) {
    host::check(argc == 2, "usage: gtk_host MODULE");
    gtk_init(&argc, &argv);
    host::speakFrench();
    Host self{host::Module(argv[1]), gtk_window_new(GTK_WINDOW_TOPLEVEL)};
    gtk_window_set_title(GTK_WINDOW(self.window), "Host");
    gtk_widget_show(self.window);
    g_idle_add(work, &self);
    gtk_main();
    host::check(self.ended, "somebody else has ended the host's loop");
    gtk_widget_destroy(self.window);
    return 0;
}
