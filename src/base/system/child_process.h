// A program that this process starts and talks to, and that never outlives it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace korvant {

/// The child's standard input and output are the channel; what it says elsewhere is dropped. It is
/// no part of the terminal's foreground group. One thread uses an object, but for interrupt().
class ChildProcess {
  public:
    struct Order {
        std::string program;  ///< absolute path
        std::vector<std::string> arguments;
        std::string
            libraryFolder;  ///< where the child's libraries are looked for first; may be empty
        std::size_t memoryBytes = 0;  ///< what it may take, where the system bounds it; 0: any
    };
    /// Null when it cannot be started.
    static std::unique_ptr<ChildProcess> start(const Order& order);
    /// Ends the child at once and leaves nothing of it.
    ~ChildProcess();
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    /// Sends all bytes, within `timeoutMs`; false when that failed or the child has ended.
    bool write(std::string_view bytes, std::uint32_t timeoutMs);
    enum class Read { some, nothing, interrupted, ended };
    /// Appends what there is, waiting for it at most `timeoutMs`. `ended`: the child is gone and
    /// nothing is left of it.
    Read read(std::string& bytes, std::uint32_t timeoutMs);
    /// Ends the read() that waits, or else the next one. From any thread.
    void interrupt() noexcept;
    std::int64_t id() const noexcept;  ///< the system's number of the process

  private:
    struct Impl;
    explicit ChildProcess(std::unique_ptr<Impl> impl);
    std::unique_ptr<Impl> impl_;
};

// For the child.
/// Bytes of the channel, at least one; 0 when the parent is gone. May wait without end.
std::size_t readFromParent(char* buffer, std::size_t size);
bool writeToParent(std::string_view bytes);
/// The process ends as soon as its parent does, whatever it is doing, takes no more memory than
/// `bytes` (0: any) and leaves no image of itself when it crashes. Starts a thread.
void liveWithParent(std::size_t bytes);

}  // namespace korvant
