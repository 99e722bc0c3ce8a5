#include "failing_memory.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>
#include <new>

namespace korvant::test {

namespace {

struct Counting {
    bool on = false;
    bool others = false;
    bool failed = false;
    Shortage shortage = Shortage::once;
    std::uint64_t left = 0;  ///< allocations until the first that fails
};

thread_local Counting counting;
std::atomic<std::int64_t> live{0};

bool mustFail() {
    if (!counting.on || counting.others) return false;
    if (counting.failed) return counting.shortage == Shortage::lasting;
    counting.failed = --counting.left == 0;
    return counting.failed;
}

void* allocate(std::size_t size, std::size_t alignment) {
    if (mustFail()) return nullptr;
    size = size == 0 ? alignment : (size + alignment - 1) / alignment * alignment;
    void* memory = std::aligned_alloc(alignment, size);
    if (memory) live.fetch_add(1, std::memory_order_relaxed);
    return memory;
}

void release(void* memory) {
    if (memory) live.fetch_sub(1, std::memory_order_relaxed);
    std::free(memory);
}

void* allocateOrThrow(std::size_t size, std::size_t alignment) {
    if (void* memory = allocate(size, alignment)) return memory;
    throw std::bad_alloc();
}

constexpr std::size_t kUsual = alignof(std::max_align_t);

}  // namespace

FailingMemory::FailingMemory(std::uint64_t which, Shortage shortage) {
    counting = {true, false, false, shortage, which};
}

FailingMemory::~FailingMemory() {
    counting.on = false;
}

bool FailingMemory::hasFailed() {
    return counting.failed;
}

MemoryOf::MemoryOf(Whose whose) : before_(counting.others) {
    counting.others = whose == Whose::others;
}

MemoryOf::~MemoryOf() {
    counting.others = before_;
}

std::int64_t liveAllocations() {
    return live.load();
}

std::uint64_t forEveryAllocation(Shortage shortage, const std::function<void()>& scenario,
                                 const std::function<void()>& check, std::uint64_t most) {
    for (std::uint64_t which = 1; which <= most; ++which) {
        {
            const FailingMemory memory(which, shortage);
            scenario();
        }
        check();
        if (!FailingMemory::hasFailed()) return which;
        if (!::testing::Test::HasFailure()) continue;
        ADD_FAILURE() << "it was allocation " << which << " that failed";
        return which;
    }
    ADD_FAILURE() << "still short of memory after " << most << " allocations";
    return most;
}

}  // namespace korvant::test

using korvant::test::allocate;
using korvant::test::allocateOrThrow;
using korvant::test::kUsual;
using korvant::test::release;

void* operator new(std::size_t size) {
    return allocateOrThrow(size, kUsual);
}
void* operator new[](std::size_t size) {
    return allocateOrThrow(size, kUsual);
}
void* operator new(std::size_t size, std::align_val_t alignment) {
    return allocateOrThrow(size, static_cast<std::size_t>(alignment));
}
void* operator new[](std::size_t size, std::align_val_t alignment) {
    return allocateOrThrow(size, static_cast<std::size_t>(alignment));
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    return allocate(size, kUsual);
}
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
    return allocate(size, kUsual);
}
void operator delete(void* memory) noexcept {
    release(memory);
}
void operator delete[](void* memory) noexcept {
    release(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
    release(memory);
}
void operator delete[](void* memory, std::size_t) noexcept {
    release(memory);
}
void operator delete(void* memory, std::align_val_t) noexcept {
    release(memory);
}
void operator delete[](void* memory, std::align_val_t) noexcept {
    release(memory);
}
void operator delete(void* memory, std::size_t, std::align_val_t) noexcept {
    release(memory);
}
void operator delete[](void* memory, std::size_t, std::align_val_t) noexcept {
    release(memory);
}
