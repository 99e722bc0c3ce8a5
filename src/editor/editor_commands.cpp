#include "editor/editor_commands.h"

#include <algorithm>

#include "editor/script_editor.h"

namespace korvant {

namespace {

using Editor = ScriptEditor;
constexpr auto kAlways = EnabledWhen::always;

// clang-format off
constexpr EditorCommand kCommands[] = {
    // number                           menu                  label                            keys                     marks                                        enabled                  handler
    {command_id::kNew,                  EditorMenu::file,     "&New",                          "Ctrl+N",                kNoMark,                                     kAlways,                 &Editor::newDocument},
    {command_id::kOpen,                 EditorMenu::file,     "&Open...",                      "Ctrl+O",                kNoMark,                                     kAlways,                 &Editor::openDocument},
    {command_id::kSave,                 EditorMenu::file,     "Save",                          "Ctrl+S",                kNoMark,                                     kAlways,                 &Editor::save},
    {command_id::kSaveAs,               EditorMenu::file,     "Save &As...",                   "Ctrl+Shift+S",          kSeparatorAfter,                             kAlways,                 &Editor::saveAs},
    {command_id::kExit,                 EditorMenu::file,     "E&xit",                         "",                      kNoMark,                                     kAlways,                 &Editor::exit},
    {command_id::kCloseTab,             EditorMenu::file,     "&Close",                        "Ctrl+W",                kSeparatorBefore,                            EnabledWhen::tabs,       &Editor::closeDocument},

    {command_id::kUndo,                 EditorMenu::edit,     "&Undo",                         "Ctrl+Z",                kContextToo | kTextKeys,                     EnabledWhen::canUndo,    &Editor::undo},
    {command_id::kRedo,                 EditorMenu::edit,     "&Redo",                         "Ctrl+Y Ctrl+Shift+Z",   kSeparatorAfter | kContextToo | kTextKeys,   EnabledWhen::canRedo,    &Editor::redo},
    {command_id::kCut,                  EditorMenu::edit,     "Cu&t",                          "Ctrl+X",                kContextToo | kTextKeys,                     EnabledWhen::selection,  &Editor::cut},
    {command_id::kCopy,                 EditorMenu::edit,     "&Copy",                         "Ctrl+C",                kContextToo | kTextKeys,                     EnabledWhen::selection,  &Editor::copy},
    {command_id::kPaste,                EditorMenu::edit,     "&Paste",                        "Ctrl+V",                kContextToo | kTextKeys,                     EnabledWhen::canPaste,   &Editor::paste},
    {command_id::kSelectAll,            EditorMenu::edit,     "Select &All",                   "Ctrl+A",                kSeparatorAfter | kContextToo | kTextKeys,   kAlways,                 &Editor::selectAll},
    {command_id::kFind,                 EditorMenu::edit,     "Find...",                       "Ctrl+F",                kNoMark,                                     kAlways,                 &Editor::openFind},
    {command_id::kFindNext,             EditorMenu::edit,     "Find Next",                     "F3",                    kNoMark,                                     kAlways,                 &Editor::findNext},
    {command_id::kFindPrevious,         EditorMenu::edit,     "Find Previous",                 "Shift+F3",              kNoMark,                                     kAlways,                 &Editor::findPrevious},
    {command_id::kReplace,              EditorMenu::edit,     "Replace...",                    "Ctrl+H",                kNoMark,                                     kAlways,                 &Editor::openReplace},
    {command_id::kGotoLine,             EditorMenu::edit,     "Goto Line...",                  "Ctrl+G",                kSeparatorAfter,                             kAlways,                 &Editor::gotoLine},
    {command_id::kCommentLines,         EditorMenu::edit,     "Co&mment Lines",                "Ctrl+/",                kTextKeys,                                   kAlways,                 &Editor::commentLines},
    {command_id::kMoveLinesUp,          EditorMenu::edit,     "Mo&ve Lines Up",                "Alt+Up",                kTextKeys,                                   kAlways,                 &Editor::moveLinesUp},
    {command_id::kMoveLinesDown,        EditorMenu::edit,     "Move Lines &Down",              "Alt+Down",              kTextKeys,                                   kAlways,                 &Editor::moveLinesDown},
    {command_id::kCrypt,                EditorMenu::edit,     "Crypt / Uncrypt...",            "",                      kNoMark,                                     kAlways,                 &Editor::crypt},
    {command_id::kNextProblem,          EditorMenu::edit,     "Next Problem",                  "F8",                    kSeparatorBefore,                            kAlways,                 nullptr},
    {command_id::kPreviousProblem,      EditorMenu::edit,     "Previous Problem",              "Shift+F8",              kNoMark,                                     kAlways,                 nullptr},
    {command_id::kMend,                  EditorMenu::edit,     "Mend the Problem...",           "Ctrl+.",                kTextKeys,                                   kAlways,                 nullptr},
    {command_id::kGoToFunction,          EditorMenu::edit,     "Go to Fu&nction...",            "Ctrl+Shift+O",          kSeparatorBefore,                            kAlways,                 nullptr},
    {command_id::kGoToDeclaration,       EditorMenu::edit,     "Go to Dec&laration",            "Ctrl+F12 Ctrl+B",       kContextToo,                                 kAlways,                 nullptr},
    {command_id::kFindReferences,        EditorMenu::edit,     "&Find Uses",                    "Shift+F12",             kContextToo,                                 kAlways,                 nullptr},
    {command_id::kGoBack,                EditorMenu::edit,     "Go &Back",                      "Alt+Left",              kTextKeys,                                   kAlways,                 nullptr},
    {command_id::kGoForward,             EditorMenu::edit,     "Go For&ward",                   "Alt+Right",             kTextKeys,                                   kAlways,                 nullptr},
    {command_id::kRename,                EditorMenu::edit,     "R&ename...",                    "F2 Ctrl+R",             kContextToo | kTextKeys,                     kAlways,                 nullptr},
    {command_id::kReindent,              EditorMenu::edit,     "Re-&indent",                    "Ctrl+Shift+I",          kTextKeys,                                   kAlways,                 nullptr},
    {command_id::kParameters,            EditorMenu::none,     "",                              "Ctrl+Shift+Space",      kTextKeys,                                   kAlways,                 nullptr},
    {command_id::kDocumentation,         EditorMenu::none,     "",                              "Ctrl+F1",               kNoMark,                                     kAlways,                 nullptr},

    {command_id::kLineNumbers,          EditorMenu::view,     "Display Line Numbers",          "",                      kToggle | kChecked,                          kAlways,                 &Editor::toggleLineNumbers},
    {command_id::kBookmarks,            EditorMenu::view,     "Display Bookmark",              "",                      kToggle | kChecked,                          kAlways,                 &Editor::toggleBookmarks},
    {command_id::kFolding,              EditorMenu::view,     "Display Folding",               "",                      kToggle | kChecked,                          kAlways,                 &Editor::toggleFolding},
    {command_id::kBlackBackground,      EditorMenu::view,     "Background is black",           "",                      kToggle,                                     kAlways,                 &Editor::toggleBackground},
    {command_id::kClassicLayout,        EditorMenu::view,     "&Classic Layout",               "",                      kToggle | kSeparatorBefore,                  EnabledWhen::idle,       nullptr},
    {command_id::kShowToolbar,          EditorMenu::view,     "&Toolbar",                      "",                      kToggle | kChecked,                          kAlways,                 nullptr},
    {command_id::kShowStatusBar,        EditorMenu::view,     "&Status Bar",                   "",                      kToggle | kChecked,                          kAlways,                 nullptr},
    {command_id::kShowOutline,          EditorMenu::view,     "&Outline",                      "",                      kToggle,                                     kAlways,                 nullptr},
    {command_id::kShowBottom,           EditorMenu::view,     "Bottom &Panes",                 "Ctrl+J",                kToggle | kChecked,                          kAlways,                 nullptr},
    {command_id::kShowSide,             EditorMenu::view,     "&Debug Panel",                  "Ctrl+Shift+D",          kToggle,                                     kAlways,                 nullptr},
    {command_id::kLastOutput,           EditorMenu::view,     "Last O&utput",                  "",                      kNoMark,                                     kAlways,                 nullptr},
    {command_id::kLineCounts,           EditorMenu::view,     "Count Lines That Run",          "",                      kToggle | kSeparatorBefore,                  kAlways,                 nullptr},
    {command_id::kTimeShares,           EditorMenu::view,     "Measure Time of Functions",     "",                      kToggle | kSeparatorAfter,                   kAlways,                 nullptr},
    {command_id::kNextPane,             EditorMenu::view,     "&Next Pane",                    "Ctrl+F6",               kNoMark,                                     kAlways,                 nullptr},
    {command_id::kPreviousPane,         EditorMenu::view,     "Pre&vious Pane",                "Ctrl+Shift+F6",         kNoMark,                                     kAlways,                 nullptr},
    {command_id::kNextTab,              EditorMenu::view,     "Next Ta&b",                     "Ctrl+Tab",              kNoMark,                                     EnabledWhen::severalTabs, &Editor::nextTab},
    {command_id::kPreviousTab,          EditorMenu::view,     "Previous Tab",                  "Ctrl+Shift+Tab",        kNoMark,                                     EnabledWhen::severalTabs, &Editor::previousTab},
    {command_id::kResetLayout,          EditorMenu::view,     "&Reset the Layout",             "",                      kNoMark,                                     kAlways,                 nullptr},
    {command_id::kThemeSystem,          EditorMenu::view,     "Theme: Like the System",        "",                      kToggle | kSeparatorBefore,                  kAlways,                 nullptr},
    {command_id::kThemeLight,           EditorMenu::view,     "Theme: Light",                  "",                      kToggle,                                     kAlways,                 nullptr},
    {command_id::kThemeDark,            EditorMenu::view,     "Theme: Dark",                   "",                      kToggle,                                     kAlways,                 nullptr},
    {command_id::kThemeClassic,         EditorMenu::view,     "Theme: Classic",                "",                      kToggle,                                     kAlways,                 nullptr},
    {command_id::kFont,                 EditorMenu::view,     "&Font...",                      "",                      kSeparatorBefore,                            kAlways,                 nullptr},

    {command_id::kToggleBreakpoint,     EditorMenu::debug,    "Toggle &Breakpoint\tF9",        "F9",                    kNoMark,                                     kAlways,                 &Editor::toggleBreakpoint},
    {command_id::kAddCondition,         EditorMenu::debug,    "Add &Condition",                "",                      kSeparatorAfter,                             kAlways,                 &Editor::addCondition},
    {command_id::kNextBreakpoint,       EditorMenu::debug,    "Goto &Next Breakpoint",         "",                      kNoMark,                                     kAlways,                 &Editor::nextBreakpoint},
    {command_id::kPreviousBreakpoint,   EditorMenu::debug,    "Goto &Previous Breakpoint",     "",                      kSeparatorAfter,                             kAlways,                 &Editor::previousBreakpoint},
    {command_id::kDeleteBreakpoints,    EditorMenu::debug,    "&Delete All Breakpoint",        "",                      kNoMark,                                     kAlways,                 &Editor::deleteBreakpoints},
    {command_id::kSwitchBreakpoint,     EditorMenu::debug,    "Breakpoint On or O&ff",         "Ctrl+F9",               kSeparatorBefore,                            kAlways,                 &Editor::switchBreakpoint},
    {command_id::kEditBreakpoint,       EditorMenu::debug,    "&Edit Breakpoint...",           "Alt+F9",                kNoMark,                                     kAlways,                 nullptr},
    {command_id::kWatchWord,            EditorMenu::debug,    "&Watch",                        "Shift+F9",              kNoMark,                                     kAlways,                 &Editor::watchWord},

    {command_id::kDisplayVariable,      EditorMenu::program,  "&Display Variable Value\tF4",   "F4",                    kSeparatorAfter,                             kAlways,                 &Editor::displayVariable},
    {command_id::kExecute,              EditorMenu::program,  "E&xecute\tF5",                  "F5",                    kNoMark,                                     kAlways,                 &Editor::execute},
    {command_id::kBuild,                EditorMenu::program,  "&Build\tF7",                    "F7",                    kSeparatorAfter,                             kAlways,                 &Editor::build},
    {command_id::kStepOver,             EditorMenu::program,  "Step &Over\tF11",               "F11",                   kNoMark,                                     EnabledWhen::steps,      &Editor::stepOver},
    {command_id::kStepInto,             EditorMenu::program,  "Step &Into\tF12",               "F12",                   kSeparatorAfter,                             EnabledWhen::steps,      &Editor::stepInto},
    {command_id::kStop,                 EditorMenu::program,  "&Stop Debugging\tEsc",          "Shift+F5",              kNoMark,                                     EnabledWhen::stoppable,  &Editor::stopDebugging},
    {command_id::kStepNext,             EditorMenu::program,  "Step &Next",                    "F10",                   kSeparatorBefore,                            EnabledWhen::looking,    &Editor::stepNext},
    {command_id::kStepOut,              EditorMenu::program,  "Step O&ut",                     "Shift+F11",             kNoMark,                                     EnabledWhen::looking,    &Editor::stepOut},
    {command_id::kRunToCaret,           EditorMenu::program,  "Run to the &Caret",             "Ctrl+F10",              kNoMark,                                     EnabledWhen::looking,    &Editor::runToCaret},
    {command_id::kPause,                EditorMenu::program,  "&Pause",                        "F6",                    kNoMark,                                     EnabledWhen::running,    &Editor::pauseRun},
    {command_id::kRestart,              EditorMenu::program,  "&Restart",                      "Ctrl+Shift+F5",         kNoMark,                                     EnabledWhen::debugging,  &Editor::restartRun},

    {command_id::kHelp,                 EditorMenu::help,     "Help Topics\tF1",               "F1",                    kSeparatorAfter,                             kAlways,                 &Editor::help},
    {command_id::kAbout,                EditorMenu::help,     "&About Script Editor",          "",                      kNoMark,                                     kAlways,                 &Editor::about},

    {command_id::kComplete,             EditorMenu::context,  "Co&mplete Word",                "Ctrl+Space",            kSeparatorAfter | kTextKeys,                 kAlways,                 &Editor::complete},
    {command_id::kZoomIn,               EditorMenu::context,  "Zoom &In",                      "Ctrl++",                kTextKeys,                                   kAlways,                 &Editor::zoomIn},
    {command_id::kZoomOut,              EditorMenu::context,  "Zoom &Out",                     "Ctrl+-",                kTextKeys,                                   kAlways,                 &Editor::zoomOut},
    {command_id::kZoomReset,            EditorMenu::context,  "Normal &Size",                  "Ctrl+0",                kSeparatorAfter | kTextKeys,                 kAlways,                 &Editor::zoomReset},
    {command_id::kRecoveryCopies,       EditorMenu::context,  "&Keep Recovery Copies",         "",                      kToggle | kChecked,                          kAlways,                 &Editor::toggleRecoveryCopies},

    {command_id::kRemoveBreakpoint,     EditorMenu::none,     "",                              "",                      kNoMark,                                     kAlways,                 &Editor::removeBreakpoint},
    {command_id::kSystemAbout,          EditorMenu::none,     "",                              "",                      kNoMark,                                     kAlways,                 &Editor::about},
    {command_id::kFirstPane + 0,        EditorMenu::none,     "",                              "Ctrl+1",                kNoMark,                                     kAlways,                 nullptr},
    {command_id::kFirstPane + 1,        EditorMenu::none,     "",                              "Ctrl+2",                kNoMark,                                     kAlways,                 nullptr},
    {command_id::kFirstPane + 2,        EditorMenu::none,     "",                              "Ctrl+3",                kNoMark,                                     kAlways,                 nullptr},
    {command_id::kFirstPane + 3,        EditorMenu::none,     "",                              "Ctrl+4",                kNoMark,                                     kAlways,                 nullptr},
    {command_id::kFirstPane + 4,        EditorMenu::none,     "",                              "Ctrl+5",                kNoMark,                                     kAlways,                 nullptr},
    {command_id::kFirstPane + 5,        EditorMenu::none,     "",                              "Ctrl+6",                kNoMark,                                     kAlways,                 nullptr},
    {command_id::kFirstPane + 6,        EditorMenu::none,     "",                              "Ctrl+7",                kNoMark,                                     kAlways,                 nullptr},
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

namespace {

/// The first of some words between blanks, which is then taken off.
std::string_view takeWord(std::string_view& words) {
    const std::string_view word = words.substr(0, words.find(' '));
    words.remove_prefix(std::min(word.size() + 1, words.size()));
    return word;
}

bool names(const EditorCommand& command, const KeyPress& key) {
    for (std::string_view words = command.keys; !words.empty();)
        if (parseKeyPress(takeWord(words)) == key) return true;
    return false;
}

std::string_view keyInLabel(std::string_view label) {
    const std::size_t tab = label.find('\t');
    return tab == std::string_view::npos ? std::string_view() : label.substr(tab + 1);
}

}  // namespace

std::string_view EditorCommand::shownKey() const noexcept {
    std::string_view words = keys;
    const std::string_view own = keyInLabel(label);
    return own.empty() ? takeWord(words) : own;
}

const EditorCommand* commandOfKey(const KeyPress& key, bool inText) {
    for (const EditorCommand& command : kCommands)
        if ((inText || !command.has(kTextKeys)) && names(command, key)) return &command;
    if (!key.isFunctionKey() || key.alt) return nullptr;
    for (const EditorCommand& command : kCommands)
        if (parseKeyPress(keyInLabel(command.label)) == KeyPress{key.code}) return &command;
    return nullptr;
}

const char* menuTitle(EditorMenu menu) {
    return kMenuTitles[static_cast<int>(menu)];
}

}  // namespace korvant
