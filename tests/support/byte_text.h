// Input that a test writes down.
#pragma once

#include <string>

#include "base/text/byte_source.h"

namespace korvant::test {

/// Gives the text byte by byte, then the end, or kStopped when `endsStopped`.
class ByteText final : public ByteSource {
  public:
    explicit ByteText(std::string text, bool endsStopped = false)
        : text_(std::move(text)), end_(endsStopped ? kStopped : kEndOfInput) {}
    int readChar(StopQuery) override {
        return next_ < text_.size() ? static_cast<unsigned char>(text_[next_++]) : end_;
    }
    void unreadChar(int byte) override {
        if (byte >= 0 && next_ > 0) text_[--next_] = static_cast<char>(byte);
    }
    std::string rest() const { return text_.substr(next_); }

  private:
    std::string text_;
    int end_;
    std::size_t next_ = 0;
};

}  // namespace korvant::test
