#include "ui/kit/settings_store.h"

#include <wx/fileconf.h>
#include <wx/filename.h>

#include <cstdlib>

namespace korvant::ui {
namespace {

bool isName(const std::string& text) {
    return !text.empty() && text.size() <= 100 && text.front() != '.' &&
           text.find('/') == std::string::npos && text.find('\0') == std::string::npos;
}

/// XDG base directories: relative paths in the variable are to be ignored.
std::string settingsFolder() {
    const char* xdg = std::getenv("XDG_CONFIG_HOME");
    if (xdg && *xdg == '/') return xdg;
    const char* home = std::getenv("HOME");
    return home && *home == '/' ? std::string(home) + "/.config" : std::string();
}

wxString pathOf(const std::string& bytes) {
    return wxString(bytes.c_str(), *wxConvFileName);
}

}  // namespace

std::unique_ptr<wxConfigBase> openSettings(const std::string& company, const std::string& module) {
    const std::string base = settingsFolder();
    if (base.empty() || !isName(company) || !isName(module)) return nullptr;
    const wxString folder = pathOf(base + "/" + company);
    if (!wxFileName::Mkdir(folder, 0700, wxPATH_MKDIR_FULL)) return nullptr;
    auto settings = std::make_unique<wxFileConfig>(wxString(), wxString(),
                                                   folder + wxT("/") + pathOf(module + ".conf"),
                                                   wxString(), wxCONFIG_USE_LOCAL_FILE);
    settings->SetUmask(0077);
    return settings;
}

}  // namespace korvant::ui
