#include <gtk/gtk.h>
#include <wx/app.h>

#include "ui/kit/clipboard.h"

namespace korvant::ui {
namespace {

enum class Text { unknown, none, there };

/// What the desktop's clipboard holds, asked whenever its owner changes. The answer comes when it
/// comes: its owner is another program, which may be busy or stopped.
class ClipboardWatch {
  public:
    ClipboardWatch() {
        GtkClipboard* clipboard = gtk_clipboard_get(GDK_SELECTION_CLIPBOARD);
        g_signal_connect(clipboard, "owner-change", G_CALLBACK(&onOwner), this);
        ask(clipboard);
    }
    bool mayHaveText() const { return text_ != Text::none; }

  private:
    void ask(GtkClipboard* clipboard) {
        text_ = Text::unknown;
        gtk_clipboard_request_targets(clipboard, &onTargets, this);
    }
    static void onOwner(GtkClipboard* clipboard, GdkEvent*, gpointer self) {
        static_cast<ClipboardWatch*>(self)->ask(clipboard);
    }
    static void onTargets(GtkClipboard*, GdkAtom* targets, gint count, gpointer self) {
        const bool text = targets && count > 0 && gtk_targets_include_text(targets, count);
        static_cast<ClipboardWatch*>(self)->text_ = text ? Text::there : Text::none;
        wxWakeUpIdle();
    }

    Text text_ = Text::unknown;
};

}  // namespace

bool clipboardMayHaveText() {
    static ClipboardWatch watch;
    return watch.mayHaveText();
}

}  // namespace korvant::ui
