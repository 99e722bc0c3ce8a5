// Where the windows keep what the user chose.
#pragma once

#include <wx/confbase.h>

#include <memory>
#include <string>

namespace korvant::ui {

/// The settings under these two names; null when one of them is empty or is no name for a folder,
/// or when there is no place to keep settings.
std::unique_ptr<wxConfigBase> openSettings(const std::string& company, const std::string& module);

}  // namespace korvant::ui
