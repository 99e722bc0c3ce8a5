#include "host/engine/engine_memory.h"

#include <atomic>
#include <cstdlib>

#include "host/engine/engine_compat.h"

namespace korvant {

namespace {

/// Stands before every block and keeps the alignment of the system's.
struct alignas(std::max_align_t) Header {
    std::size_t bytes;
};

/// Allocations between two looks at the clock. The slow parts of a compile allocate little.
constexpr unsigned kLook = 64;

struct Watched {
    Clock* clock = nullptr;
    std::uint64_t end = 0;
    std::size_t most = 0;
    unsigned left = kLook;
};

std::atomic<bool> owned{false};
std::atomic<std::size_t> held{0};
std::atomic<std::size_t> most{~std::size_t{0}};
thread_local Watched watched;
constexpr std::size_t kReserve = std::size_t{1} << 20;
std::atomic<void*> reserve{nullptr};

/// The engine's frames are left by an exception; it has no other way out of its compiler.
void lookAtCompile() {
    if (held > watched.most) throw CompileEnded{"compile took too much memory"};
    if (--watched.left != 0) return;
    watched.left = kLook;
    if (watched.clock->monotonic() > watched.end) throw CompileEnded{"compile took too long"};
}

/// Without memory the engine does not look at what it gets. A compile is left; a run gets what was
/// laid by, and ends before its next statement.
void* takeAtLast(std::size_t bytes) {
    if (watched.clock != nullptr) throw CompileEnded{"Out of memory"};
    most = 0;
    std::free(reserve.exchange(nullptr));
    return std::malloc(bytes);
}

void* allocate(std::size_t bytes) {
    if (watched.clock != nullptr) lookAtCompile();
    void* block = std::malloc(sizeof(Header) + bytes);
    if (block == nullptr) block = takeAtLast(sizeof(Header) + bytes);
    if (block == nullptr) return nullptr;
    auto* const header = static_cast<Header*>(block);
    header->bytes = bytes;
    held += bytes;
    return header + 1;
}

void release(void* block) {
    if (block == nullptr) return;
    Header* const header = static_cast<Header*>(block) - 1;
    held -= header->bytes;
    std::free(header);
}

}  // namespace

void ownEngineMemory() {
    if (!owned.exchange(true)) asSetGlobalMemoryFunctions(allocate, release);
}

void boundEngineMemory(std::size_t bytes) noexcept {
    const std::size_t now = held;
    most = bytes < ~std::size_t{0} - now ? now + bytes : ~std::size_t{0};
    if (owned && reserve == nullptr) reserve = std::malloc(kReserve);
}

bool engineMemoryExceeded() noexcept {
    return held > most;
}

CompileGuard::CompileGuard(Clock& clock, std::uint64_t end, std::size_t bytes) {
    if (owned) watched = {&clock, end, held + bytes, kLook};
}

CompileGuard::~CompileGuard() {
    watched = {};
}

}  // namespace korvant
