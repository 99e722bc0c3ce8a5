// Which build of the script engine is in use.
#pragma once

#include <angelscript.h>

#include <string>

namespace korvant {

/// True where `engine` comes from the build that this project makes, whose compiler survives every
/// text (cmake/engine). Other builds need faulty texts refused ahead or compiled in a process of
/// their own. Asks the loader for a mark in the library that holds the engine; takes microseconds.
bool engineIsHardened(const asIScriptEngine& engine) noexcept;

/// The same for the library that this process makes its engines with.
bool engineIsHardened() noexcept;

/// The folder of the library file that holds the engine's code; empty where it is in no library of
/// the usual name, or that cannot be told.
std::string engineLibraryFolder(const asIScriptEngine& engine);

}  // namespace korvant
