#include <cstdlib>
#include <fstream>
#include <string>

#include "ui/boxes/progress_window.h"

namespace korvant::ui {
namespace {

std::string variable(const char* name) {
    const char* value = std::getenv(name);
    return value ? value : "";
}

bool endsInDark(const std::string& theme) {
    const std::string dark = "dark";
    return theme.size() > dark.size() &&
           theme.compare(theme.size() - dark.size(), dark.size(), dark) == 0;
}

std::string settingsFile() {
    const std::string xdg = variable("XDG_CONFIG_HOME");
    return (xdg.empty() ? variable("HOME") + "/.config" : xdg) + "/gtk-3.0/settings.ini";
}

/// One line "key = value" of the desktop's settings file.
void readSetting(const std::string& line, bool& dark) {
    const std::size_t equals = line.find('=');
    if (equals == std::string::npos) return;
    std::string key = line.substr(0, equals);
    while (!key.empty() && key.back() == ' ') key.pop_back();
    const std::size_t start = line.find_first_not_of(' ', equals + 1);
    const std::string value = start == std::string::npos ? "" : line.substr(start);
    if (key == "gtk-application-prefer-dark-theme") dark = dark || value == "1" || value == "true";
    if (key == "gtk-theme-name") dark = dark || endsInDark(value);
}

bool userWantsDark() {
    const std::string theme = variable("GTK_THEME");
    if (!theme.empty()) return endsInDark(theme);
    bool dark = false;
    std::ifstream file(settingsFile());
    for (std::string line; std::getline(file, line);) readSetting(line, dark);
    return dark;
}

}  // namespace

/// Before the toolkit runs: the colours of its default theme.
ProgressStyle guessedProgressStyle() {
    ProgressStyle style;
    if (userWantsDark()) {
        style.background = 0x353535;
        style.text = 0xEEEEEC;
    }
    const int scale = std::atoi(variable("GDK_SCALE").c_str());
    if (scale >= 1 && scale <= 8) style.scale = scale;
    return style;
}

}  // namespace korvant::ui
