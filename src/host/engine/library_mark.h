// What a loaded program or library exports.
#pragma once

namespace korvant {

/// True where the program or library that `address` lies in exports `name` itself.
bool libraryAtExports(const void* address, const char* name) noexcept;

}  // namespace korvant
