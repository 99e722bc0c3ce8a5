#include "language/worker_frames.h"

#include <cstring>

namespace korvant {

namespace {

constexpr std::size_t kHeader = 5;
constexpr std::uint32_t kLongest = 256u << 20;

template <class Number>
void put(std::string& bytes, Number number) {
    char raw[sizeof number];
    std::memcpy(raw, &number, sizeof number);
    bytes.append(raw, sizeof number);
}

/// Takes values off the front; what is missing is 0 and leaves a mark.
class Taker {
  public:
    explicit Taker(std::string_view bytes) : bytes_(bytes) {}

    template <class Number>
    Number take() {
        Number number{};
        whole_ = whole_ && bytes_.size() >= sizeof number;
        if (!whole_) return number;
        std::memcpy(&number, bytes_.data(), sizeof number);
        bytes_.remove_prefix(sizeof number);
        return number;
    }
    std::string_view text() {
        const auto size = take<std::uint32_t>();
        whole_ = whole_ && bytes_.size() >= size;
        if (!whole_) return {};
        const std::string_view found = bytes_.substr(0, size);
        bytes_.remove_prefix(size);
        return found;
    }
    std::string_view rest() const { return bytes_; }
    bool whole() const { return whole_; }

  private:
    std::string_view bytes_;
    bool whole_ = true;
};

}  // namespace

std::string frameBytes(WorkerFrame::Kind kind, std::string_view payload) {
    std::string bytes(1, static_cast<char>(kind));
    put(bytes, static_cast<std::uint32_t>(payload.size()));
    return bytes.append(payload);
}

std::optional<WorkerFrame> WorkerFrames::next() {
    if (bytes_.size() < kHeader || broken_) return std::nullopt;
    const auto size = Taker(std::string_view(bytes_).substr(1)).take<std::uint32_t>();
    broken_ = size > kLongest;
    if (broken_ || bytes_.size() < kHeader + size) return std::nullopt;
    WorkerFrame frame{static_cast<WorkerFrame::Kind>(bytes_[0]), bytes_.substr(kHeader, size)};
    bytes_.erase(0, kHeader + size);
    return frame;
}

std::string enginePayload(const Limits& limits, std::string_view json) {
    std::string bytes;
    put(bytes, std::uint64_t{limits.scriptBytes});
    put(bytes, std::uint64_t{limits.scriptTokens});
    put(bytes, std::uint64_t{limits.nameBytes});
    put(bytes, limits.nesting);
    put(bytes, limits.callDepth);
    return bytes.append(json);
}

std::optional<std::string_view> readEngine(std::string_view payload, Limits& limits) {
    Taker taker(payload);
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
    put(bytes, number);
    return bytes.append(text);
}

std::optional<BuildRequest> readBuild(std::string_view payload) {
    Taker taker(payload);
    const auto number = taker.take<std::uint64_t>();
    if (!taker.whole()) return std::nullopt;
    return BuildRequest{number, taker.rest()};
}

std::string builtPayload(std::uint64_t number, BuildEnd end, const BuildMessages& messages) {
    std::string bytes;
    put(bytes, number);
    put(bytes, end);
    put(bytes, static_cast<std::uint32_t>(messages.count()));
    for (const BuildMessage& message : messages.all()) {
        put(bytes, static_cast<char>(message.kind));
        put(bytes, message.row);
        put(bytes, message.column);
        put(bytes, static_cast<std::uint32_t>(message.plain.size()));
        bytes += message.plain;
    }
    return bytes;
}

std::optional<BuildAnswer> readBuilt(std::string_view payload) {
    Taker taker(payload);
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
