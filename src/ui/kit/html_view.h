// Texts with markup in windows: to be read, selected and copied.
#pragma once

#include <wx/html/htmlwin.h>

#include <functional>
#include <string_view>

namespace korvant::ui {

/// A view of a bounded HTML subset. It fetches nothing, and the only thing that a click can do is
/// what `onLink` does. Texts of any size and shape are safe; see boundedHtml().
class HtmlView : public wxHtmlWindow {
  public:
    enum class Surface { dialog, field };  ///< whose colours it takes

    HtmlView(wxWindow* parent, Surface surface);

    /// Bytes of a script with markup.
    void setMarkup(std::string_view bytes);
    /// Bytes of a script that are shown as they stand.
    void setPlain(std::string_view bytes);
    void clear() { setMarkup({}); }

    /// Width that the text wants when no line is wrapped, in pixels.
    int naturalWidth() const;
    /// Height of the text when wrapped to `width` pixels.
    int heightAt(int width);
    /// Without scroll bars until there is more text than room.
    void hideScrollBars();
    /// Has words that are cut where a line is too narrow for them.
    bool hasLongWords() const { return longWords_; }
    /// A text that fits needs no scroll bars and takes no focus by Tab.
    bool needsScrolling() const;

    /// What is selected, else the whole text, to the clipboard.
    void copy();
    bool hasSelection();
    wxString text() { return ToText(); }

    /// Called with what stands behind "#" of a link that was clicked.
    std::function<void(const wxString& target)> onLink;

    bool AcceptsFocusFromKeyboard() const override { return needsScrolling(); }

  protected:
    void OnLinkClicked(const wxHtmlLinkInfo& link) override;
    wxHtmlOpeningStatus OnOpeningURL(wxHtmlURLType type, const wxString& url,
                                     wxString* redirect) const override;

  private:
    void show(const std::string& markup);
    void setSizes();
    void onContextMenu(wxContextMenuEvent& event);
    void onKey(wxKeyEvent& event);

    Surface surface_;
    bool longWords_ = false;
};

}  // namespace korvant::ui
