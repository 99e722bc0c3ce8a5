// The commands of the View menu: what stands where, and how it looks.
#include <wx/fontdlg.h>
#include <wx/frame.h>
#include <wx/stc/stc.h>
#include <wx/utils.h>

#include <algorithm>

#include "ui/editor/editor_small_dialogs.h"
#include "ui/editor/panels/bottom_panes.h"
#include "ui/editor/panels/breakpoint_box.h"
#include "ui/editor/panels/code_marks.h"
#include "ui/editor/panels/console_pane.h"
#include "ui/editor/panels/debug_panel.h"
#include "ui/editor/panels/exception_box.h"
#include "ui/editor/panels/find_bar.h"
#include "ui/editor/panels/line_measures.h"
#include "ui/editor/panels/live_check.h"
#include "ui/editor/panels/workbench.h"
#include "ui/kit/text_conversion.h"

namespace korvant::ui {
namespace {

constexpr int kLeastPoints = 6, kMostPoints = 40;

}  // namespace

void Workbench::showChecks() {
    if (!showChecked) return;
    showChecked(command_id::kClassicLayout, settings_.classic);
    showChecked(command_id::kShowToolbar, settings_.toolbar);
    showChecked(command_id::kShowStatusBar, settings_.statusBar);
    showChecked(command_id::kShowOutline, settings_.outline);
    showChecked(command_id::kShowBottom, settings_.bottom);
    showChecked(command_id::kShowSide, sideShown_);
    showChecked(command_id::kLineCounts, settings_.lineCounts);
    showChecked(command_id::kTimeShares, settings_.timeShares);
    const int themes[] = {command_id::kThemeSystem, command_id::kThemeLight, command_id::kThemeDark,
                          command_id::kThemeClassic};
    for (int i = 0; i < 4; ++i)
        showChecked(themes[i], settings_.theme == static_cast<ThemeChoice>(i));
}

/// Not under a script, which has the console of the layout in which it began.
void Workbench::toggleClassic() {
    if (editor_.status().run != EditorStatus::Run::idle) return wxBell(), showChecks();
    settings_.classic = keepClassic_ = !settings_.classic;
    liveCheck_.reset();
    shownText_ = timedText_ = ~std::uint64_t{0};
    if (!settings_.classic) makeParts();
    if (console_) console_->lend(!settings_.classic);
    applyLook();
    shown_ = {};
    layOut();
    refresh();
    showChecks();
    keepSettings();
}

void Workbench::chooseTheme(ThemeChoice choice) {
    settings_.theme = choice;
    applyLook();
    showChecks();
    keepSettings();
}

void Workbench::toggle(bool EditorSettings::*part) {
    settings_.*part = !(settings_.*part);
    showChecks();
    layOut();
    keepSettings();
}

void Workbench::resetLayout() {
    settings_.outlineWidth = settings_.sideWidth = settings_.bottomHeight = 0;
    settings_.foldedSections = 0;
    settings_.toolbar = settings_.statusBar = settings_.bottom = true;
    showChecks();
    layOut();
    keepSettings();
}

/// With the classic look there is nothing to choose: its font is fixed.
void Workbench::chooseFont() {
    wxFontData data;
    data.SetInitialFont(look_.code);
    data.EnableEffects(false);
    wxFontDialog dialog(&frame_, data);
    if (dialog.ShowModal() != wxID_OK) return;
    const wxFont chosen = dialog.GetFontData().GetChosenFont();
    if (!chosen.IsOk()) return;
    settings_.fontFace = toUtf8(chosen.GetFaceName());
    settings_.fontPoints = std::clamp(chosen.GetPointSize(), kLeastPoints, kMostPoints);
    applyLook();
    keepSettings();
}

void Workbench::showLastOutput() {
    if (!settings_.classic) return focusPane(command_id::kConsolePane);
    showOutputBox(&frame_, fromUtf8(editor_.lastOutput()));
    if (controls_.text) controls_.text->SetFocus();
}

/// From the next run on.
void Workbench::measure(bool EditorSettings::*what) {
    if (editor_.status().run != EditorStatus::Run::idle) return wxBell(), showChecks();
    settings_.*what = !(settings_.*what);
    if (!settings_.classic) {
        editor_.measures().want(settings_.lineCounts, settings_.timeShares);
        showMeasures();
    }
    showChecks();
    keepSettings();
}

void Workbench::showMeasures() {
    if (!measures_) return;
    const bool hasLines = editor_.runIsShown();
    measures_->show(hasLines ? editor_.measures().lines() : std::vector<RunMeasures::Line>());
}

bool Workbench::viewCommand(int id) {
    switch (id) {
        case command_id::kFont:
            return chooseFont(), true;
        case command_id::kLastOutput:
            return showLastOutput(), true;
        case command_id::kLineCounts:
            return measure(&EditorSettings::lineCounts), true;
        case command_id::kTimeShares:
            return measure(&EditorSettings::timeShares), true;
        case command_id::kClassicLayout:
            return toggleClassic(), true;
        case command_id::kResetLayout:
            return resetLayout(), true;
        case command_id::kShowToolbar:
            return toggle(&EditorSettings::toolbar), true;
        case command_id::kShowStatusBar:
            return toggle(&EditorSettings::statusBar), true;
        case command_id::kShowOutline:
            return toggle(&EditorSettings::outline), true;
        case command_id::kShowBottom:
            return toggle(&EditorSettings::bottom), true;
        case command_id::kShowSide:
            if (welcomeShown_ && !sideShown_) return closeWelcome(), true;
            sideByStop_ = false;
            closedByHand_ = sideShown_;
            return showSide(!sideShown_), true;
        case command_id::kThemeSystem:
        case command_id::kThemeLight:
        case command_id::kThemeDark:
        case command_id::kThemeClassic:
            return chooseTheme(static_cast<ThemeChoice>(id - command_id::kThemeSystem)), true;
        default:
            return false;
    }
}

}  // namespace korvant::ui
