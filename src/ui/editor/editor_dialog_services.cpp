// What the editor asks of its window.
#include <wx/evtloop.h>
#include <wx/filedlg.h>
#include <wx/stc/stc.h>
#include <wx/utils.h>

#include "base/system/user_folders.h"
#include "host/services/frontend.h"
#include "ui/boxes/message_box_dialog.h"
#include "ui/editor/editor_dialog.h"
#include "ui/editor/editor_ending.h"
#include "ui/editor/editor_file_dialog.h"
#include "ui/editor/editor_native.h"
#include "ui/editor/editor_search_dialogs.h"
#include "ui/editor/editor_small_dialogs.h"
#include "ui/editor/panels/workbench.h"
#include "ui/kit/clipboard.h"
#include "ui/kit/text_conversion.h"
#include "ui/kit/ui_native.h"

namespace korvant::ui {
namespace {

int showBox(const std::string& text, std::uint32_t style) {
    MessageBoxRequest request;
    request.caption = kModuleCaption;
    request.text = encodeTyped(text);
    request.style = style;
    request.plain = true;
    return showMessageBox(request);
}

}  // namespace

void CEditorDlg::setTitle(const std::string& title) {
    const wxString text = fromUtf8(title);
    if (text != GetTitle()) SetTitle(text);
}

std::optional<std::string> CEditorDlg::askFile(const FileDialogRequest& request) {
    return chooseScriptFile(this, request);
}

/// Where nobody can answer any more the text goes to the backups.
Answer CEditorDlg::ask(const std::string& question, bool withCancel) {
    if (native::displayLost()) return Answer::no;
    const std::uint32_t buttons = withCancel ? box_style::kYesNoCancel : box_style::kYesNo;
    switch (showBox(question, buttons | box_style::kIconQuestion)) {
        case box_button::kYes:
            return Answer::yes;
        case box_button::kNo:
            return Answer::no;
        default:
            return withCancel ? Answer::cancel : Answer::no;
    }
}

void CEditorDlg::errorBox(const std::string& text) {
    showBox(text, box_style::kOk | box_style::kIconError);
}

void CEditorDlg::showAbout() {
    showAboutBox(this);
}

std::optional<std::int32_t> CEditorDlg::askLine(std::int32_t line) {
    return CGotoLineDlg(this, line).ask();
}

void CEditorDlg::openFind(std::unique_ptr<FindDialog> dialog) {
    new CFindDlg(this, std::move(dialog), [this](wxKeyEvent& event) { onKey(event); });
}

void CEditorDlg::openReplace(std::unique_ptr<ReplaceDialog> dialog) {
    new CReplaceDlg(this, std::move(dialog), [this](wxKeyEvent& event) { onKey(event); });
}

bool CEditorDlg::openDocument(const std::string& path) {
    return openWithDesktop(path);
}

bool CEditorDlg::clipboardMayHaveText() {
    return ui::clipboardMayHaveText();
}

void CEditorDlg::windowCommand(int command) {
    if (workbench_) workbench_->command(command);
}

void CEditorDlg::beep() {
    wxBell();
}

void CEditorDlg::activate() {
    native::activate(*this);
}

void CEditorDlg::focusEditor() {
    if (editorControl_) editorControl_->SetFocus();
}

void CEditorDlg::setRunning(bool running) {
    if (ending_) ending_->setBusy(running);
}

void CEditorDlg::textLeaves() {
    if (workbench_) workbench_->textLeaves();
}

void CEditorDlg::textShown() {
    if (workbench_) workbench_->textShown();
}

/// A loop inside the window's own, of a box or of what is typed into the console, does all this
/// itself.
bool CEditorDlg::pumpEvents() {
    if (wxEventLoopBase::GetActive() != loop_) return editor_.closing();
    if (workbench_) workbench_->refresh();
    const native::BusyInput asked = native::pumpWhileBusy(
        *this, workbench_ ? workbench_->usableWhileBusy() : native::UsableParts());
    if (asked.pause) editor_.command(command_id::kPause);
    return asked.stop || editor_.closing();
}

}  // namespace korvant::ui
