#include "language/worker_frames.h"

#include "language/frame_bytes.h"

namespace korvant {

namespace {

constexpr std::size_t kHeader = 5;
constexpr std::uint32_t kLongest = 256u << 20;

}  // namespace

std::string frameBytes(WorkerFrame::Kind kind, std::string_view payload) {
    std::string bytes(1, static_cast<char>(kind));
    putNumber(bytes, static_cast<std::uint32_t>(payload.size()));
    return bytes.append(payload);
}

std::optional<WorkerFrame> WorkerFrames::next() {
    if (bytes_.size() < kHeader || broken_) return std::nullopt;
    const auto size = FrameReader(std::string_view(bytes_).substr(1)).take<std::uint32_t>();
    broken_ = size > kLongest;
    if (broken_ || bytes_.size() < kHeader + size) return std::nullopt;
    WorkerFrame frame{static_cast<WorkerFrame::Kind>(bytes_[0]), bytes_.substr(kHeader, size)};
    bytes_.erase(0, kHeader + size);
    return frame;
}

std::string enginePayload(const Limits& limits, std::string_view json) {
    std::string bytes;
    putNumber(bytes, std::uint64_t{limits.scriptBytes});
    putNumber(bytes, std::uint64_t{limits.scriptTokens});
    putNumber(bytes, std::uint64_t{limits.nameBytes});
    putNumber(bytes, limits.nesting);
    putNumber(bytes, limits.callDepth);
    return bytes.append(json);
}

std::optional<std::string_view> readEngine(std::string_view payload, Limits& limits) {
    FrameReader taker(payload);
    limits.scriptBytes = static_cast<std::size_t>(taker.take<std::uint64_t>());
    limits.scriptTokens = static_cast<std::size_t>(taker.take<std::uint64_t>());
    limits.nameBytes = static_cast<std::size_t>(taker.take<std::uint64_t>());
    limits.nesting = taker.take<std::uint32_t>();
    limits.callDepth = taker.take<std::uint32_t>();
    if (!taker.whole()) return std::nullopt;
    return taker.rest();
}

std::string buildPayload(std::uint64_t number, std::string_view text) {
    std::string bytes;
    putNumber(bytes, number);
    return bytes.append(text);
}

std::optional<BuildRequest> readBuild(std::string_view payload) {
    FrameReader taker(payload);
    const auto number = taker.take<std::uint64_t>();
    if (!taker.whole()) return std::nullopt;
    return BuildRequest{number, taker.rest()};
}

std::string builtPayload(std::uint64_t number, BuildEnd end, const BuildMessages& messages) {
    std::string bytes;
    putNumber(bytes, number);
    putNumber(bytes, end);
    putNumber(bytes, static_cast<std::uint32_t>(messages.count()));
    for (const BuildMessage& message : messages.all()) {
        putNumber(bytes, static_cast<char>(message.kind));
        putNumber(bytes, message.row);
        putNumber(bytes, message.column);
        putNumber(bytes, static_cast<std::uint32_t>(message.plain.size()));
        bytes += message.plain;
    }
    return bytes;
}

std::optional<BuildAnswer> readBuilt(std::string_view payload) {
    FrameReader taker(payload);
    BuildAnswer answer;
    answer.number = taker.take<std::uint64_t>();
    answer.end = taker.take<BuildEnd>();
    const auto count = taker.take<std::uint32_t>();
    for (std::uint32_t i = 0; i < count && taker.whole(); ++i) {
        const auto kind = static_cast<BuildMessage::Kind>(taker.take<char>());
        const auto row = taker.take<std::int32_t>();
        const auto column = taker.take<std::int32_t>();
        answer.messages.add(std::string(taker.text()), row, column, kind);
    }
    if (!taker.whole()) return std::nullopt;
    return answer;
}

}  // namespace korvant
