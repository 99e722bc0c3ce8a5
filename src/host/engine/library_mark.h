// What a loaded program or library exports.
#pragma once

#include <string>

namespace korvant {

/// True where the program or library that `address` lies in exports `name` itself.
bool libraryAtExports(const void* address, const char* name) noexcept;

/// Its file; empty when that cannot be told.
std::string libraryFileAt(const void* address);

}  // namespace korvant
