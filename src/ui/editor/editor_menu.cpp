#include "ui/editor/editor_menu.h"

#include <wx/control.h>
#include <wx/dcclient.h>
#include <wx/frame.h>

#include "ui/editor/editor_native.h"
#include "ui/kit/mnemonics.h"
#include "ui/kit/text_conversion.h"

namespace korvant::ui {
namespace {

constexpr int kWidestPath = 420;

/// The toolkit's numbers end below those of the commands: an item's number is the place of its
/// command among the records, counted from here.
constexpr int kFirstItem = wxID_HIGHEST + 1;
constexpr int kFirstRecent = kFirstItem + 200;

int itemOf(int command) {
    const EditorCommand* found = findCommand(command);
    return found ? kFirstItem + static_cast<int>(found - editorCommands().data()) : wxID_NONE;
}

int commandOf(int item) {
    if (item >= kFirstRecent) return command_id::kRecentFileFirst + item - kFirstRecent;
    return editorCommands()[static_cast<std::size_t>(item - kFirstItem)].id;
}

void appendCommand(wxMenu& menu, const EditorCommand& command) {
    const wxString label = fromUtf8(command.label).BeforeFirst('\t');
    const wxItemKind kind = command.has(kToggle) ? wxITEM_CHECK : wxITEM_NORMAL;
    if (command.has(kSeparatorBefore)) menu.AppendSeparator();
    wxMenuItem* item = menu.Append(itemOf(command.id), label, wxEmptyString, kind);
    const std::string key(command.shownKey());
    if (!key.empty()) native::showMenuKey(*item, fromUtf8(key));
    if (command.has(kSeparatorAfter)) menu.AppendSeparator();
}

wxString numbered(std::size_t index, const wxString& path) {
    const wxString number = index < 9 ? wxString::Format("&%zu", index + 1) : wxString("1&0");
    return number + " " + escapeLabel(path);
}

}  // namespace

EditorMenus::EditorMenus(wxFrame& frame, std::function<void(int)> chosen, Enabled enabled)
    : frame_(frame), bar_(new wxMenuBar), chosen_(std::move(chosen)), enabled_(std::move(enabled)) {
    for (const EditorMenu menu : {EditorMenu::file, EditorMenu::edit, EditorMenu::view,
                                  EditorMenu::debug, EditorMenu::program, EditorMenu::help})
        bar_->Append(makeMenu(menu), fromUtf8(menuTitle(menu)));
    frame.SetMenuBar(bar_);
    frame.Bind(
        wxEVT_MENU, [this](wxCommandEvent& event) { chosen_(commandOf(event.GetId())); },
        kFirstItem, kFirstRecent + command_id::kRecentFiles - 1);
    frame.Bind(wxEVT_MENU_OPEN, [this](wxMenuEvent& event) {
        if (event.GetMenu()) update(*event.GetMenu());
        event.Skip();
    });
    for (const EditorCommand& command : editorCommands()) check(command.id, command.has(kChecked));
}

/// What depends on the text is looked up when the menu opens.
void EditorMenus::update(wxMenu& menu) {
    for (const EditorCommand& command : editorCommands())
        if (wxMenuItem* item = menu.FindItem(itemOf(command.id))) item->Enable(enabled_(command));
}

wxMenu* EditorMenus::makeMenu(EditorMenu menu) {
    auto* made = new wxMenu;
    for (const EditorCommand& command : editorCommands())
        if (command.stands(menu)) appendCommand(*made, command);
    return made;
}

void EditorMenus::check(int command, bool checked) {
    checks_[command] = checked;
    wxMenuItem* item = bar_->FindItem(itemOf(command));
    if (item && item->IsCheckable()) item->Check(checked);
}

void EditorMenus::enable(int command, bool enabled) {
    if (wxMenuItem* item = bar_->FindItem(itemOf(command))) item->Enable(enabled);
}

/// They stand between the separator below Save As and Exit, with a separator of their own.
void EditorMenus::setRecentFiles(const std::vector<std::string>& paths) {
    wxMenu& file = *bar_->GetMenu(0);
    for (wxMenuItem* item : recent_) file.Destroy(item);
    recent_.clear();
    std::size_t place = 0;
    file.FindChildItem(itemOf(command_id::kExit), &place);
    const wxClientDC measure(&frame_);
    for (std::size_t i = 0; i < paths.size() && i < command_id::kRecentFiles; ++i) {
        const wxString path = wxControl::Ellipsize(fromUtf8(paths[i]), measure, wxELLIPSIZE_MIDDLE,
                                                   frame_.FromDIP(kWidestPath));
        recent_.push_back(
            file.Insert(place++, kFirstRecent + static_cast<int>(i), numbered(i, path)));
    }
    if (!recent_.empty()) recent_.push_back(file.InsertSeparator(place));
}

void EditorMenus::showContextMenu(wxWindow& window, const wxPoint& place) {
    const std::unique_ptr<wxMenu> menu(makeMenu(EditorMenu::context));
    for (const auto& [command, checked] : checks_) {
        wxMenuItem* item = menu->FindItem(itemOf(command));
        if (item && item->IsCheckable()) item->Check(checked);
    }
    update(*menu);
    const int item = window.GetPopupMenuSelectionFromUser(*menu, place);
    if (item != wxID_NONE) chosen_(commandOf(item));
}

}  // namespace korvant::ui
