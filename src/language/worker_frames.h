// What a program and its compile worker say to each other.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "host/engine/limits.h"
#include "host/run/build_messages.h"

namespace korvant {

/// A kind, four bytes of length, and that many bytes. Both ends are of one build and one machine.
struct WorkerFrame {
    enum class Kind : char {
        ready = 'R',   ///< worker: whether its engine is the hardened one (one byte)
        engine = 'E',  ///< limits, and a description of the engine to mirror as JSON
        build = 'B',   ///< number of the request, and a script's text
        built = 'D',   ///< worker: number, what became of it, and the messages
        ask = 'A',     ///< number of the request, and a question about a text
        answer = 'N',  ///< worker: number, and the answer
        failed = 'F',  ///< worker: the engine could not be mirrored; the reason
    };
    Kind kind = Kind::ready;
    std::string payload;
};

std::string frameBytes(WorkerFrame::Kind kind, std::string_view payload);

/// Puts frames together from pieces as they come.
class WorkerFrames {
  public:
    std::string& incoming() noexcept { return bytes_; }  ///< new bytes go to its end
    /// The next whole frame; nothing while there is none.
    std::optional<WorkerFrame> next();
    bool broken() const noexcept { return broken_; }  ///< these are no frames

  private:
    std::string bytes_;
    bool broken_ = false;
};

std::string enginePayload(const Limits& limits, std::string_view json);
/// Writes the limits that concern building; the JSON. Nothing for other payloads.
std::optional<std::string_view> readEngine(std::string_view payload, Limits& limits);

/// Of questions and answers as well, whose bytes are the text.
std::string buildPayload(std::uint64_t number, std::string_view text);
struct BuildRequest {
    std::uint64_t number = 0;
    std::string_view text;
};
std::optional<BuildRequest> readBuild(std::string_view payload);

enum class BuildEnd : char { failed, built, endedByLimits };
std::string builtPayload(std::uint64_t number, BuildEnd end, const BuildMessages& messages);
struct BuildAnswer {
    std::uint64_t number = 0;
    BuildEnd end = BuildEnd::failed;
    BuildMessages messages;
};
std::optional<BuildAnswer> readBuilt(std::string_view payload);

}  // namespace korvant
