// Where the sources and the programs of this build stand. They are functions, so that no test's
// object file differs from clone to clone and the compiler cache serves them all.
#pragma once

#include <string>

namespace korvant::test {

/// The clone, without a slash at the end.
const std::string& sourceFolder();

/// What the build made, without a slash at the end.
const std::string& binFolder();

}  // namespace korvant::test
