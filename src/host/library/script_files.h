// The input file and the output file of a run.
#pragma once

#include <cstring>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "base/system/os_file.h"
#include "base/text/byte_source.h"

namespace korvant {

/// A file that is read byte by byte through a buffer of its own. Pipes and devices are waited for
/// until the stop query ends it.
class InputFile final : public ByteSource {
  public:
    /// Null when it cannot be opened, is a folder, or the rules forbid it.
    static std::unique_ptr<InputFile> open(std::string_view name, const FileRules& rules);
    ~InputFile() override;
    InputFile(const InputFile&) = delete;
    InputFile& operator=(const InputFile&) = delete;

    int readChar(StopQuery shouldStop) override;
    void unreadChar(int byte) override;

  private:
    explicit InputFile(int handle);
    int fill(StopQuery shouldStop);

    int handle_;
    std::vector<char> buffer_;
    std::size_t next_ = 0;
    std::size_t end_ = 0;
};

/// A file that is written through a 64 KiB buffer of its own. After the first failed write the
/// rest is dropped and failure() says why.
class OutputFile {
  public:
    enum class Mode { truncate, append };
    static constexpr std::size_t kBufferBytes = std::size_t{64} << 10;

    /// Null when it cannot be opened or the rules forbid it.
    static std::unique_ptr<OutputFile> open(std::string_view name, Mode mode,
                                            const FileRules& rules, StopQuery shouldStop);
    /// Writes out and closes, waiting for nothing and without a report.
    ~OutputFile();
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;

    void write(std::string_view bytes, StopQuery shouldStop) {
        if (bytes.size() > kBufferBytes - filled_) return writeBeyond(bytes, shouldStop);
        std::memcpy(buffer_.get() + filled_, bytes.data(), bytes.size());
        filled_ += bytes.size();
    }
    /// Writes out and closes; failure() afterwards.
    void close(StopQuery shouldStop);
    /// The system error of the first failure, ECANCELED for a wait that was stopped, 0 for none.
    int failure() const noexcept { return failure_; }
    const std::string& name() const noexcept { return name_; }

  private:
    OutputFile(int handle, std::string name);
    void writeBeyond(std::string_view bytes, StopQuery shouldStop);
    void hand(std::string_view bytes, StopQuery shouldStop);

    int handle_;
    std::string name_;
    std::unique_ptr<char[]> buffer_;
    std::size_t filled_ = 0;
    int failure_ = 0;
};

}  // namespace korvant
