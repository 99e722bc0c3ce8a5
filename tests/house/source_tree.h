// Where the sources of this build stand.
#pragma once

#include <filesystem>

#include "support/tree.h"

inline const std::filesystem::path kRoot = korvant::test::sourceFolder();
