// A memory that runs out when a test says so. This program's operator new is the test's own.
#pragma once

#include <cstdint>
#include <functional>

namespace korvant::test {

/// How a memory runs out: once, or for good until the scenario is over.
enum class Shortage { once, lasting };
inline const char* shortageName(Shortage shortage) {
    return shortage == Shortage::once ? "once" : "lasting";
}

/// The calling thread's allocations by operator new from construction to destruction: the
/// `which`-th of them (from 1) fails, with Shortage::lasting all behind it too.
class FailingMemory {
  public:
    FailingMemory(std::uint64_t which, Shortage shortage);
    ~FailingMemory();
    FailingMemory(const FailingMemory&) = delete;
    FailingMemory& operator=(const FailingMemory&) = delete;

    /// False when fewer than `which` allocations were made.
    static bool hasFailed();
};

/// While it lives, what the calling thread allocates does not fail and is not counted, or again
/// does: for doubles that stand for code with memory of its own and call back.
class MemoryOf {
  public:
    enum class Whose { others, ours };
    explicit MemoryOf(Whose whose);
    ~MemoryOf();
    MemoryOf(const MemoryOf&) = delete;
    MemoryOf& operator=(const MemoryOf&) = delete;

  private:
    bool before_;
};

/// Allocations by operator new that are alive, of all threads.
std::int64_t liveAllocations();

/// Runs `scenario` again and again, its first, second, third... allocation failing, until one run
/// needs no more memory than it had; `check` follows each run with memory to spare. How many runs
/// it took; a failure of the test when it were more than `most`.
std::uint64_t forEveryAllocation(Shortage shortage, const std::function<void()>& scenario,
                                 const std::function<void()>& check, std::uint64_t most = 20'000);

}  // namespace korvant::test
