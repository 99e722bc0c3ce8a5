#include "protocol/rpc/frame_reader.h"

#include <algorithm>
#include <charconv>

namespace korvant::rpc {

namespace {

char lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

constexpr std::string_view kName = "content-length";

bool isLengthHeader(std::string_view name) {
    return std::equal(name.begin(), name.end(), kName.begin(), kName.end(),
                      [](char c, char wanted) { return lower(c) == wanted; });
}

std::string_view trimmed(std::string_view text) {
    const auto first = text.find_first_not_of(" \t");
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

}  // namespace

std::optional<std::string> FrameReader::next() {
    if (broken_ || (seeking_ && !seek())) return std::nullopt;
    if (!inBody_ && !readHeaders()) return std::nullopt;
    return takeBody();
}

void FrameReader::skipToNext() noexcept {
    broken_ = inBody_ = false;
    seeking_ = true;
    headerBytes_ = 0;
    length_.reset();
}

/// True when the next length header has come. Of what is passed over only as much stays as may be
/// the beginning of one.
bool FrameReader::seek() {
    const auto same = [](char c, char wanted) { return lower(c) == wanted; };
    const auto from = pending_.begin() + static_cast<std::ptrdiff_t>(begin_);
    const auto found = std::search(from, pending_.end(), kName.begin(), kName.end(), same);
    seeking_ = found == pending_.end();
    const auto left = static_cast<std::size_t>(pending_.end() - found);
    const std::size_t kept = seeking_ ? std::min(kName.size() - 1, pending_.size() - begin_) : left;
    pending_.erase(0, pending_.size() - kept);
    begin_ = 0;
    return !seeking_;
}

/// True when the empty line behind the headers has been read.
bool FrameReader::readHeaders() {
    for (;;) {
        const auto end = pending_.find('\n', begin_);
        if (end == std::string::npos) {
            broken_ = headerBytes_ + pending_.size() - begin_ > kLongestHeader;
            if (broken_) ++begin_;  // whoever goes on must not find the same header again
            return false;
        }
        std::string_view line(pending_.data() + begin_, end - begin_);
        if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
        headerBytes_ += end + 1 - begin_;
        begin_ = end + 1;
        if (headerBytes_ > kLongestHeader) broken_ = true;
        if (broken_ || (!line.empty() && !takeHeader(line))) return false;
        // Empty lines between two messages do no harm.
        if (line.empty() && length_) return inBody_ = true;
    }
}

/// False when the header makes the stream unreadable.
bool FrameReader::takeHeader(std::string_view line) {
    const auto colon = line.find(':');
    if (colon == std::string_view::npos || !isLengthHeader(trimmed(line.substr(0, colon))))
        return true;
    const std::string_view digits = trimmed(line.substr(colon + 1));
    std::size_t length = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), length);
    broken_ = error != std::errc() || end != digits.data() + digits.size() || length > kLongestBody;
    length_ = length;
    return !broken_;
}

std::optional<std::string> FrameReader::takeBody() {
    if (pending_.size() - begin_ < *length_) return std::nullopt;
    std::string body = pending_.substr(begin_, *length_);
    pending_.erase(0, begin_ + *length_);
    begin_ = 0;
    length_.reset();
    headerBytes_ = 0;
    inBody_ = false;
    return body;
}

std::string framed(std::string_view body) {
    std::string frame = "Content-Length: " + std::to_string(body.size()) + "\r\n\r\n";
    frame.append(body);
    return frame;
}

}  // namespace korvant::rpc
