// Messages out of a stream of bytes: headers, an empty line, a body of the length that they say.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace korvant::rpc {

/// Takes bytes as they come and gives bodies. Header lines end with CR LF or LF alone; names are
/// not case sensitive; lines that are no header are passed over. Bounded in what it keeps.
class FrameReader {
  public:
    static constexpr std::size_t kLongestHeader = 16 << 10;
    static constexpr std::size_t kLongestBody = std::size_t{64} << 20;

    void feed(std::string_view bytes) { pending_.append(bytes); }
    /// The next whole body; nothing when more bytes are needed or the stream is broken.
    std::optional<std::string> next();
    /// A header or a body is longer than is allowed, or a length is no number: where the next
    /// message begins cannot be known any more.
    bool broken() const noexcept { return broken_; }
    /// Mends a broken stream: it goes on with the next length header, and all before it is lost.
    void skipToNext() noexcept;

  private:
    bool seek();
    bool readHeaders();
    bool takeHeader(std::string_view line);
    std::optional<std::string> takeBody();

    std::string pending_;
    std::size_t begin_ = 0;  ///< of what has not been taken
    std::optional<std::size_t> length_;
    std::size_t headerBytes_ = 0;
    bool inBody_ = false;
    bool broken_ = false;
    bool seeking_ = false;
};

/// The bytes by which `body` is sent.
std::string framed(std::string_view body);

}  // namespace korvant::rpc
