// The four prompts of scripts.
#pragma once

#include <wx/dialog.h>

#include <cstdint>
#include <string>

#include "ui/kit/guarded_window.h"

class wxBoxSizer;
class wxStaticText;
class wxTextCtrl;

namespace korvant::ui {

/// A label, a field and OK. A text that is no value keeps the dialog open and is explained below
/// the field. A text that is left as it stood gives the initial value to the last bit.
class PromptDialog : public Guarded<wxDialog> {
  public:
    PromptDialog(wxWindow* parent, const std::string& label);
    /// Shows the dialog until it is closed; true when that was by OK.
    bool ask();

  protected:
    /// To be called by the derived constructor.
    void setInitial(const wxString& text);
    /// Takes the value over, or answers what is wrong with the text. Empty: it was taken.
    virtual wxString take(const wxString& text) = 0;

  private:
    void addLabel(wxBoxSizer* column, const std::string& label);
    wxWindow* makeLabelView(const std::string& label);
    void addButtons(wxBoxSizer* column);
    void onOk(wxCommandEvent& event);
    void explain(const wxString& what);

    wxTextCtrl* field_ = nullptr;
    wxStaticText* remark_ = nullptr;
    wxBoxSizer* fieldRow_ = nullptr;
    wxString shown_;
};

class PromptString : public PromptDialog {
  public:
    PromptString(wxWindow* parent, const std::string& label, const std::string& initial);
    std::string value;  ///< bytes

  protected:
    wxString take(const wxString& text) override;
};

class PromptInt : public PromptDialog {
  public:
    PromptInt(wxWindow* parent, const std::string& label, std::int32_t initial);
    std::int32_t value;

  protected:
    wxString take(const wxString& text) override;
};

class PromptFloat : public PromptDialog {
  public:
    PromptFloat(wxWindow* parent, const std::string& label, float initial);
    float value;

  protected:
    wxString take(const wxString& text) override;
};

class PromptDouble : public PromptDialog {
  public:
    PromptDouble(wxWindow* parent, const std::string& label, double initial);
    double value;

  protected:
    wxString take(const wxString& text) override;
};

}  // namespace korvant::ui
