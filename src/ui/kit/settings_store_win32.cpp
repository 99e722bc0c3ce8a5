#include <wx/string.h>

#include <wx/msw/regconf.h>

#include "ui/kit/settings_store.h"

namespace korvant::ui {
namespace {

bool isName(const std::string& text) {
    return !text.empty() && text.size() <= 100 && text.find('\\') == std::string::npos &&
           text.find('\0') == std::string::npos;
}

}  // namespace

/// Under "Software\COMPANY\MODULE" of the current user.
std::unique_ptr<wxConfigBase> openSettings(const std::string& company, const std::string& module) {
    if (!isName(company) || !isName(module)) return nullptr;
    return std::make_unique<wxRegConfig>(wxString::FromUTF8(module), wxString::FromUTF8(company),
                                         wxString(), wxString(), wxCONFIG_USE_LOCAL_FILE);
}

}  // namespace korvant::ui
