// Pictures of the screen, for people to look at.
#pragma once

#include <windows.h>

#include <string>

namespace korvant::test {

/// The screen, or the part of it where the window with this title stands, as a PNG file; the path
/// and the title are UTF-8. False when it could not be written.
bool keepScreen(const std::string& path, const std::string& title = {});
bool keepArea(const std::string& path, const RECT& area);

}  // namespace korvant::test
