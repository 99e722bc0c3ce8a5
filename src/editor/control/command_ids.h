// The numbers of the editor's commands: those of the menu are the resource's.
#pragma once

namespace korvant::command_id {

inline constexpr int kNew = 57600, kOpen = 57601, kSave = 57603, kSaveAs = 32773, kExit = 32774;
inline constexpr int kFind = 32784, kReplace = 57641, kGotoLine = 32785, kCrypt = 32801;
inline constexpr int kLineNumbers = 32776, kBookmarks = 32777, kFolding = 32778,
                     kBlackBackground = 32787;
inline constexpr int kToggleBreakpoint = 32779, kRemoveBreakpoint = 32780, kAddCondition = 32800,
                     kNextBreakpoint = 32781, kPreviousBreakpoint = 32782,
                     kDeleteBreakpoints = 32783;
inline constexpr int kDisplayVariable = 32798, kExecute = 32775, kBuild = 32786, kStepOver = 32793,
                     kStepInto = 32794, kStop = 32796;
inline constexpr int kHelp = 32789, kAbout = 32790;
/// The system menu's about item.
inline constexpr int kSystemAbout = 16;

/// Beyond the resource: what every editor has, the context menu, and the files under File.
inline constexpr int kUndo = 57643, kRedo = 57644, kCut = 57635, kCopy = 57634, kPaste = 57637,
                     kSelectAll = 57642;
inline constexpr int kComplete = 33001, kZoomIn = 33002, kZoomOut = 33003, kZoomReset = 33004,
                     kRecoveryCopies = 33005, kFindNext = 33006, kFindPrevious = 33007,
                     kCommentLines = 33008;
/// Of the window around the text.
inline constexpr int kContinue = 33100, kPause = 33101, kStepOut = 33102, kRestart = 33103,
                     kRunToCaret = 33104, kWatchWord = 33105, kSwitchBreakpoint = 33106,
                     kEditBreakpoint = 33107, kNextProblem = 33108, kPreviousProblem = 33109;
inline constexpr int kClassicLayout = 33110, kResetLayout = 33111, kShowToolbar = 33112,
                     kShowStatusBar = 33113, kShowOutline = 33114, kShowBottom = 33115,
                     kShowSide = 33116, kNextPane = 33117, kPreviousPane = 33118;
/// The text and the panes by number: text, Output, Console, Problems, Variables, Stack, Outline.
inline constexpr int kFirstPane = 33130, kPanes = 7;
/// What is known about the names of the text.
inline constexpr int kGoToFunction = 33140, kGoToDeclaration = 33141, kFindReferences = 33142,
                     kRename = 33143, kGoBack = 33144, kGoForward = 33145, kParameters = 33146,
                     kDocumentation = 33147, kMend = 33148, kReindent = 33149;
/// Places among the panes.
inline constexpr int kConsolePane = 2;
inline constexpr int kThemeSystem = 33120, kThemeLight = 33121, kThemeDark = 33122,
                     kThemeClassic = 33123;
inline constexpr int kLineCounts = 33160, kTimeShares = 33161, kFont = 33162, kLastOutput = 33163,
                     kStepNext = 33165, kMoveLinesUp = 33166, kMoveLinesDown = 33167;
/// Files that are open together.
inline constexpr int kCloseTab = 33170, kNextTab = 33171, kPreviousTab = 33172;
inline constexpr int kRecentFileFirst = 57616, kRecentFiles = 10;

}  // namespace korvant::command_id
