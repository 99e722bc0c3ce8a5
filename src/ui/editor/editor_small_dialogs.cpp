#include "ui/editor/editor_small_dialogs.h"

#include <wx/button.h>
#include <wx/iconbndl.h>
#include <wx/sizer.h>
#include <wx/statbmp.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

#include "editor/control/search_dialogs.h"
#include "ui/editor/editor_native.h"
#include "ui/kit/text_conversion.h"
#include "ui/kit/theme.h"
#include "ui/kit/ui_runtime.h"

namespace korvant::ui {
namespace {

constexpr int kGap = 12;
constexpr int kFieldWidth = 110;
constexpr int kAboutIcon = 64;
constexpr int kOutputWidth = 680, kOutputHeight = 420;
constexpr char kNothingPrinted[] = "Nothing printed yet.";

}  // namespace

CGotoLineDlg::CGotoLineDlg(wxWindow* parent, std::int32_t line)
    : wxDialog(parent, wxID_ANY, "Goto line") {
    auto* column = new wxBoxSizer(wxVERTICAL);
    column->Add(makeFieldRow(line), wxSizerFlags().Expand().Border(wxALL, FromDIP(kGap)));
    column->Add(CreateStdDialogButtonSizer(wxOK | wxCANCEL),
                wxSizerFlags().Expand().Border(wxLEFT | wxRIGHT | wxBOTTOM, FromDIP(kGap)));
    SetSizerAndFit(column);
    CentreOnParent();
    // After the buttons, which take the keyboard when they are made.
    field_->SelectAll();
    field_->SetFocus();
    Bind(
        wxEVT_BUTTON, [this](wxCommandEvent&) { accept(); }, wxID_OK);
}

/// The room beside the field is kept for what is wrong with the number.
wxSizer* CGotoLineDlg::makeFieldRow(std::int32_t line) {
    auto* row = new wxBoxSizer(wxHORIZONTAL);
    auto* caption = new wxStaticText(this, wxID_ANY, "&Line number:");
    field_ = new wxTextCtrl(this, wxID_ANY, wxString::Format("%d", static_cast<int>(line)),
                            wxDefaultPosition, FromDIP(wxSize(kFieldWidth, -1)));
    problem_ = new wxStaticText(this, wxID_ANY, fromUtf8(kNotALine));
    problem_->SetForegroundColour(currentTheme().error);
    const wxSizerFlags place = wxSizerFlags().CentreVertical();
    row->Add(caption, wxSizerFlags(place).Border(wxRIGHT, FromDIP(kGap / 2)));
    row->Add(field_, place);
    row->Add(problem_,
             wxSizerFlags(place).Border(wxLEFT, FromDIP(kGap / 2)).ReserveSpaceEvenIfHidden());
    problem_->Hide();
    field_->Bind(wxEVT_TEXT, [this](wxCommandEvent&) { problem_->Hide(); });
    return row;
}

void CGotoLineDlg::accept() {
    line_ = lineNumberOf(toUtf8(field_->GetValue()));
    if (line_) {
        EndModal(wxID_OK);
        return;
    }
    problem_->Show();
    field_->SelectAll();
    field_->SetFocus();
}

std::optional<std::int32_t> CGotoLineDlg::ask() {
    return showModal(*this) == wxID_OK ? line_ : std::nullopt;
}

void showOutputBox(wxWindow* parent, const wxString& text) {
    wxDialog box(parent, wxID_ANY, "Last Output", wxDefaultPosition, wxDefaultSize,
                 wxDEFAULT_DIALOG_STYLE | wxRESIZE_BORDER);
    auto* shown =
        new wxTextCtrl(&box, wxID_ANY, text.empty() ? wxString(kNothingPrinted) : text,
                       wxDefaultPosition, box.FromDIP(wxSize(kOutputWidth, kOutputHeight)),
                       wxTE_MULTILINE | wxTE_READONLY | wxTE_DONTWRAP);
    shown->SetFont(fixedFont());
    auto* column = new wxBoxSizer(wxVERTICAL);
    column->Add(shown, wxSizerFlags(1).Expand().Border(wxALL, box.FromDIP(kGap)));
    column->Add(box.CreateStdDialogButtonSizer(wxOK),
                wxSizerFlags().Expand().Border(wxLEFT | wxRIGHT | wxBOTTOM, box.FromDIP(kGap)));
    box.SetSizerAndFit(column);
    box.CentreOnParent();
    box.SetEscapeId(wxID_OK);
    shown->SetFocus();
    showModal(box);
}

void showAboutBox(wxWindow* parent) {
    wxDialog box(parent, wxID_ANY, "About Script Editor");
    const wxIcon icon = native::editorIcons().GetIcon(box.FromDIP(wxSize(kAboutIcon, kAboutIcon)));
    wxBitmap picture;
    picture.CopyFromIcon(icon);
    auto* row = new wxBoxSizer(wxHORIZONTAL);
    row->Add(new wxStaticBitmap(&box, wxID_ANY, picture),
             wxSizerFlags().CentreVertical().Border(wxRIGHT, box.FromDIP(kGap)));
    row->Add(new wxStaticText(&box, wxID_ANY, "Korvant Script Editor Version 2.0"),
             wxSizerFlags(1).CentreVertical());
    auto* column = new wxBoxSizer(wxVERTICAL);
    column->Add(row, wxSizerFlags().Expand().Border(wxALL, box.FromDIP(kGap)));
    column->Add(box.CreateStdDialogButtonSizer(wxOK),
                wxSizerFlags().Expand().Border(wxLEFT | wxRIGHT | wxBOTTOM, box.FromDIP(kGap)));
    box.SetSizerAndFit(column);
    box.CentreOnParent();
    box.SetEscapeId(wxID_OK);
    showModal(box);
}

}  // namespace korvant::ui
