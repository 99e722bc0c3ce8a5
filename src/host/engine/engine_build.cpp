#include "host/engine/engine_build.h"

#include <cstring>

#include "host/engine/library_mark.h"

namespace korvant {

namespace {

constexpr char kMark[] = "korvantEngineRevision";

}  // namespace

bool engineIsHardened(const asIScriptEngine& engine) noexcept {
    // The host may have a copy of the engine of its own: what tells is where this one's code lies,
    // and its table of virtual functions lies beside it.
    const void* table = nullptr;
    std::memcpy(&table, static_cast<const void*>(&engine), sizeof table);
    return libraryAtExports(table, kMark);
}

bool engineIsHardened() noexcept {
    return libraryAtExports(reinterpret_cast<const void*>(&asCreateScriptEngine), kMark);
}

}  // namespace korvant
