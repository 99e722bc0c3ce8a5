// Numbers and texts as the bytes of a frame. Both ends are of one build and one machine.
#pragma once

#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

namespace korvant {

template <class Number>
void putNumber(std::string& bytes, Number number) {
    char raw[sizeof number];
    std::memcpy(raw, &number, sizeof number);
    bytes.append(raw, sizeof number);
}

/// Up to 4 GiB.
inline void putText(std::string& bytes, std::string_view text) {
    putNumber(bytes, static_cast<std::uint32_t>(text.size()));
    bytes.append(text);
}

/// Takes values off the front; what is missing is 0 and leaves a mark.
class FrameReader {
  public:
    explicit FrameReader(std::string_view bytes) : bytes_(bytes) {}

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

}  // namespace korvant
