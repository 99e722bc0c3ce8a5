#include "ui/editor/editor_settings.h"

#include "ui/kit/settings_store.h"
#include "ui/kit/text_conversion.h"
#include "ui/kit/ui_runtime.h"

namespace korvant::ui {
namespace {

constexpr char kStore[] = "editor";

EditorLayoutWish wished = EditorLayoutWish::users;

/// Calls `flag` and `number` with each setting and its name.
template <class Settings, class Flag, class Number>
void forEach(Settings& s, const Flag& flag, const Number& number) {
    flag("classic", s.classic);
    flag("toolbar", s.toolbar);
    flag("status_bar", s.statusBar);
    flag("outline", s.outline);
    flag("bottom", s.bottom);
    flag("welcome", s.welcome);
    flag("tour", s.tour);
    flag("find_match_case", s.findMatchCase);
    flag("find_whole_word", s.findWholeWord);
    flag("find_expression", s.findExpression);
    flag("maximised", s.maximised);
    flag("line_counts", s.lineCounts);
    flag("time_shares", s.timeShares);
    number("outline_width", s.outlineWidth);
    number("side_width", s.sideWidth);
    number("bottom_height", s.bottomHeight);
    number("font_points", s.fontPoints);
    number("zoom", s.zoom);
    number("folded_sections", s.foldedSections);
    number("left", s.left);
    number("top", s.top);
    number("width", s.width);
    number("height", s.height);
}

}  // namespace

EditorSettings loadEditorSettings() {
    EditorSettings settings;
    const auto store = openSettings(kCompanyName, kStore);
    if (!store) return settings;
    forEach(
        settings, [&](const char* name, bool& value) { store->Read(name, &value, value); },
        [&](const char* name, int& value) { store->Read(name, &value, value); });
    settings.theme = themeOfName(store->Read("theme", themeName(settings.theme)).utf8_str());
    settings.fontFace = toUtf8(store->Read("font_face", wxString()));
    return settings;
}

void saveEditorSettings(const EditorSettings& settings) {
    const auto store = openSettings(kCompanyName, kStore);
    if (!store) return;
    forEach(
        settings, [&](const char* name, const bool& value) { store->Write(name, value); },
        [&](const char* name, const int& value) { store->Write(name, value); });
    store->Write("theme", wxString(themeName(settings.theme)));
    store->Write("font_face", fromUtf8(settings.fontFace));
    store->Flush();
}

void setEditorLayout(EditorLayoutWish wish) {
    wished = wish;
}

EditorLayoutWish editorLayout() {
    return wished;
}

}  // namespace korvant::ui
