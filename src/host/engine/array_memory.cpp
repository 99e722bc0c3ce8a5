#include "host/engine/array_memory.h"

#include <angelscript/scriptarray.h>

#include <atomic>
#include <mutex>
#include <unordered_map>

#include "host/engine/active_context.h"
#include "host/engine/engine_records.h"
#include "host/engine/memory_budget.h"
#include "host/engine/object_count.h"

namespace korvant {

namespace {

/// Smaller buffers are not worth a look into the table.
constexpr std::size_t kCounted = std::size_t{64} << 10;

/// Sizes of the counted buffers. Behind a lock, because all engines of the process share the
/// add-on, and others may run on other threads.
class CountedBuffers {
  public:
    void add(void* buffer, std::size_t bytes) {
        const std::lock_guard lock(mutex_);
        sizes_.emplace(buffer, bytes);
        count_ = sizes_.size();
    }
    /// What was counted for it; 0 for nothing.
    std::size_t take(void* buffer) {
        if (count_.load(std::memory_order_relaxed) == 0) return 0;
        const std::lock_guard lock(mutex_);
        const auto found = sizes_.find(buffer);
        if (found == sizes_.end()) return 0;
        const std::size_t bytes = found->second;
        sizes_.erase(found);
        count_ = sizes_.size();
        return bytes;
    }

  private:
    std::mutex mutex_;
    std::unordered_map<void*, std::size_t> sizes_;
    std::atomic<std::size_t> count_{0};
};

CountedBuffers& countedBuffers() {
    static auto* const buffers = new CountedBuffers;
    return *buffers;
}

bool isOurScripts() {
    asIScriptContext* const context = activeContext();
    return context != nullptr && isObserved(context->GetEngine());
}

bool tooManyObjects(std::size_t bytes) {
    return bytes / sizeof(void*) > ObjectCount::kMost && growingArrayHoldsObjects();
}

void* allocateCounted(std::size_t bytes) {
    if (tooManyObjects(bytes) || !memoryBudget.charge(bytes)) return nullptr;
    void* const buffer = asAllocMem(bytes);
    try {
        if (buffer != nullptr) countedBuffers().add(buffer, bytes);
    } catch (...) {
        asFreeMem(buffer);
        memoryBudget.release(bytes);
        return nullptr;
    }
    if (buffer == nullptr) memoryBudget.release(bytes);
    return buffer;
}

void* allocate(std::size_t bytes) {
    return bytes >= kCounted && isOurScripts() ? allocateCounted(bytes) : asAllocMem(bytes);
}

void release(void* buffer) {
    memoryBudget.release(countedBuffers().take(buffer));
    asFreeMem(buffer);
}

}  // namespace

void countArrayMemory() {
    CScriptArray::SetMemoryFunctions(allocate, release);
}

}  // namespace korvant
