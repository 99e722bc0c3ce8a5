// Script files on the way in.
#pragma once

#include <optional>
#include <string>

#include "source_report.h"

namespace korvant_app {

/// Reads a script file, at most one byte more than `limit`: the build refuses longer ones. Without
/// a value the reason was given on standard error.
std::optional<Source> readScript(const std::string& name, std::size_t limit);

/// The same into `text`; false, and `error` says why, when it cannot be read.
bool readScriptText(const std::string& name, std::size_t limit, std::string& text,
                    std::string& error);

}  // namespace korvant_app
