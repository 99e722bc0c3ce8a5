#include "host/engine/engine_build.h"

#include <cstdint>
#include <cstring>
#include <string_view>

#include "host/engine/library_mark.h"

namespace korvant {

namespace {

constexpr char kMark[] = "korvantEngineRevision";
constexpr asPWORD kHardened = 0x4B4F4844;
constexpr std::string_view kLibrary = "libangelscript.so";

/// The host may have a copy of the engine of its own: what tells is where this one's code lies, and
/// its table of virtual functions lies beside it.
const void* tableOf(const asIScriptEngine& engine) {
    const void* table = nullptr;
    std::memcpy(&table, static_cast<const void*>(&engine), sizeof table);
    return table;
}

}  // namespace

/// Told once for each engine: to look into its library takes longer than a short run.
bool engineIsHardened(const asIScriptEngine& engine) noexcept {
    enum : std::uintptr_t { unknown, no, yes };
    auto told = reinterpret_cast<std::uintptr_t>(engine.GetUserData(kHardened));
    if (told == unknown) {
        told = libraryAtExports(tableOf(engine), kMark) ? yes : no;
        const_cast<asIScriptEngine&>(engine).SetUserData(reinterpret_cast<void*>(told), kHardened);
    }
    return told == yes;
}

std::string engineLibraryFolder(const asIScriptEngine& engine) {
    const std::string file = libraryFileAt(tableOf(engine));
    const auto slash = file.rfind('/');
    if (slash == std::string::npos) return {};
    return file.compare(slash + 1, kLibrary.size(), kLibrary) == 0 ? file.substr(0, slash)
                                                                   : std::string();
}

bool engineIsHardened() noexcept {
    return libraryAtExports(reinterpret_cast<const void*>(&asCreateScriptEngine), kMark);
}

}  // namespace korvant
