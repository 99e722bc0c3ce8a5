// Where the sources of this build stand.
#pragma once

#include <filesystem>

inline const std::filesystem::path kRoot = KORVANT_SOURCE_DIR;
