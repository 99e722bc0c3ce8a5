#include "editor/editor_commands.h"

#include <algorithm>

#include "editor/script_editor.h"

namespace korvant {

namespace {

using Editor = ScriptEditor;
constexpr auto kAlways = EnabledWhen::always;
constexpr auto kDebugging = EnabledWhen::debugging;

// clang-format off
constexpr EditorCommand kCommands[] = {
    // number                           menu                 label                           key    checked separator enabled  handler
    {command_id::kNew,                EditorMenu::file,    "&New",                           0,  false, false, kAlways,    &Editor::newDocument},
    {command_id::kOpen,               EditorMenu::file,    "&Open...",                       0,  false, false, kAlways,    &Editor::openDocument},
    {command_id::kSave,               EditorMenu::file,    "Save",                           0,  false, false, kAlways,    &Editor::save},
    {command_id::kSaveAs,             EditorMenu::file,    "Save &As...",                    0,  false, true,  kAlways,    &Editor::saveAs},
    {command_id::kExit,               EditorMenu::file,    "E&xit",                          0,  false, false, kAlways,    &Editor::exit},

    {command_id::kFind,               EditorMenu::edit,    "Find...",                        0,  false, false, kAlways,    &Editor::openFind},
    {command_id::kReplace,            EditorMenu::edit,    "Replace...",                     0,  false, false, kAlways,    &Editor::openReplace},
    {command_id::kGotoLine,           EditorMenu::edit,    "Goto Line...",                   0,  false, true,  kAlways,    &Editor::gotoLine},
    {command_id::kCrypt,              EditorMenu::edit,    "Crypt / Uncrypt...",             0,  false, false, kAlways,    &Editor::crypt},

    {command_id::kLineNumbers,        EditorMenu::view,    "Display Line Numbers",           0,  true,  false, kAlways,    &Editor::toggleLineNumbers},
    {command_id::kBookmarks,          EditorMenu::view,    "Display Bookmark",               0,  true,  false, kAlways,    &Editor::toggleBookmarks},
    {command_id::kFolding,            EditorMenu::view,    "Display Folding",                0,  true,  false, kAlways,    &Editor::toggleFolding},
    {command_id::kBlackBackground,    EditorMenu::view,    "Background is black",            0,  false, false, kAlways,    &Editor::toggleBackground},

    {command_id::kToggleBreakpoint,   EditorMenu::debug,   "Toggle &Breakpoint\tF9",         9,  false, false, kAlways,    &Editor::toggleBreakpoint},
    {command_id::kAddCondition,       EditorMenu::debug,   "Add &Condition",                 0,  false, true,  kAlways,    &Editor::addCondition},
    {command_id::kNextBreakpoint,     EditorMenu::debug,   "Goto &Next Breakpoint",          0,  false, false, kAlways,    &Editor::nextBreakpoint},
    {command_id::kPreviousBreakpoint, EditorMenu::debug,   "Goto &Previous Breakpoint",      0,  false, true,  kAlways,    &Editor::previousBreakpoint},
    {command_id::kDeleteBreakpoints,  EditorMenu::debug,   "&Delete All Breakpoint",         0,  false, false, kAlways,    &Editor::deleteBreakpoints},

    {command_id::kDisplayVariable,    EditorMenu::program, "&Display Variable Value\tF4",    4,  false, true,  kAlways,    &Editor::displayVariable},
    {command_id::kExecute,            EditorMenu::program, "E&xecute\tF5",                   5,  false, false, kAlways,    &Editor::execute},
    {command_id::kBuild,              EditorMenu::program, "&Build\tF7",                     7,  false, true,  kAlways,    &Editor::build},
    {command_id::kStepOver,           EditorMenu::program, "Step &Over\tF11",                11, false, false, kDebugging, &Editor::stepOver},
    {command_id::kStepInto,           EditorMenu::program, "Step &Into\tF12",                12, false, true,  kDebugging, &Editor::stepInto},
    {command_id::kStop,               EditorMenu::program, "&Stop Debugging\tEsc",           0,  false, false, kDebugging, &Editor::stopDebugging},

    {command_id::kHelp,               EditorMenu::help,    "Help Topics\tF1",                1,  false, true,  kAlways,    &Editor::help},
    {command_id::kAbout,              EditorMenu::help,    "&About Script Editor",           0,  false, false, kAlways,    &Editor::about},

    {command_id::kUndo,               EditorMenu::context, "&Undo\tCtrl+Z",                  0,  false, false, EnabledWhen::canUndo,   &Editor::undo},
    {command_id::kRedo,               EditorMenu::context, "&Redo\tCtrl+Y",                  0,  false, true,  EnabledWhen::canRedo,   &Editor::redo},
    {command_id::kCut,                EditorMenu::context, "Cu&t\tCtrl+X",                   0,  false, false, EnabledWhen::selection, &Editor::cut},
    {command_id::kCopy,               EditorMenu::context, "&Copy\tCtrl+C",                  0,  false, false, EnabledWhen::selection, &Editor::copy},
    {command_id::kPaste,              EditorMenu::context, "&Paste\tCtrl+V",                 0,  false, false, EnabledWhen::canPaste,  &Editor::paste},
    {command_id::kSelectAll,          EditorMenu::context, "Select &All\tCtrl+A",            0,  false, true,  kAlways,    &Editor::selectAll},
    {command_id::kComplete,           EditorMenu::context, "Co&mplete Word\tCtrl+Space",     0,  false, true,  kAlways,    &Editor::complete},
    {command_id::kZoomIn,             EditorMenu::context, "Zoom &In\tCtrl++",               0,  false, false, kAlways,    &Editor::zoomIn},
    {command_id::kZoomOut,            EditorMenu::context, "Zoom &Out\tCtrl+-",              0,  false, false, kAlways,    &Editor::zoomOut},
    {command_id::kZoomReset,          EditorMenu::context, "Normal &Size\tCtrl+0",           0,  false, true,  kAlways,    &Editor::zoomReset},
    {command_id::kRecoveryCopies,     EditorMenu::context, "&Keep Recovery Copies",          0,  true,  false, kAlways,    &Editor::toggleRecoveryCopies},

    {command_id::kRemoveBreakpoint,   EditorMenu::none,    "",                               0,  false, false, kAlways,    &Editor::removeBreakpoint},
    {command_id::kSystemAbout,        EditorMenu::none,    "",                               0,  false, false, kAlways,    &Editor::about},
};
// clang-format on

constexpr const char* kMenuTitles[] = {"&File",    "&Edit", "&View", "&Debug",
                                       "&Program", "&Help", "",      ""};

}  // namespace

std::span<const EditorCommand> editorCommands() {
    return kCommands;
}

const EditorCommand* findCommand(int id) {
    const auto found =
        std::find_if(std::begin(kCommands), std::end(kCommands),
                     [id](const EditorCommand& command) { return command.id == id; });
    return found == std::end(kCommands) ? nullptr : found;
}

const char* menuTitle(EditorMenu menu) {
    return kMenuTitles[static_cast<int>(menu)];
}

}  // namespace korvant
