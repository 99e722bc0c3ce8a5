// Pictures of the screen, for people to look at.
#pragma once

#include <string>

namespace korvant::test {

/// The whole screen as a PNG file; the path is UTF-8. False when it could not be written.
bool keepScreen(const std::string& path);

}  // namespace korvant::test
