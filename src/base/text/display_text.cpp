#include "base/text/display_text.h"

#include <algorithm>

#include "base/text/text_encoding.h"

namespace korvant {

namespace {

constexpr unsigned char kEnquiry = 5, kShiftOut = 14, kShiftIn = 15, kEscape = 27;

bool steers(unsigned char byte) {
    return byte == kEnquiry || byte == kShiftOut || byte == kShiftIn || byte == kEscape;
}

/// A control below 0x20 as a caret and a letter; a C1 control as the escape sequence it stands for.
void appendVisible(std::string& shown, char32_t code) {
    if (code >= 0x80 && code <= 0x9F)
        shown.append("^[").push_back(static_cast<char>(code - 0x40));
    else if (code < 0x80 && steers(static_cast<unsigned char>(code)))
        shown.append("^").push_back(static_cast<char>(code + 0x40));
    else
        appendUtf8(shown, code);
}

bool isC1Control(std::string_view sequence) {
    return sequence.size() == 2 && sequence[0] == '\xC2' &&
           static_cast<unsigned char>(sequence[1]) < 0xA0;
}

/// One character from the front of `bytes`; its length, 0 when it breaks off.
std::size_t appendOne(std::string_view bytes, std::string& shown) {
    const int length = utf8SequenceLength(bytes);
    if (length < 0) return 0;
    if (length <= 1) {
        appendVisible(shown, westernCodePoint(static_cast<unsigned char>(bytes.front())));
        return 1;
    }
    const std::string_view sequence = bytes.substr(0, static_cast<std::size_t>(length));
    if (isC1Control(sequence))
        appendVisible(shown, static_cast<unsigned char>(sequence[1]));
    else
        shown.append(sequence);
    return sequence.size();
}

}  // namespace

bool isPlainText(std::string_view bytes) noexcept {
    return std::none_of(bytes.begin(), bytes.end(), [](char c) {
        const auto byte = static_cast<unsigned char>(c);
        return byte >= 0x80 || steers(byte);
    });
}

void DisplayText::append(std::string_view bytes, std::string& shown) {
    std::string joined;
    if (!pending_.empty()) {
        joined = pending_.append(bytes);
        pending_.clear();
        bytes = joined;
    }
    while (!bytes.empty()) {
        const std::size_t taken = appendOne(bytes, shown);
        if (taken == 0) {
            pending_ = bytes;
            return;
        }
        bytes.remove_prefix(taken);
    }
}

void DisplayText::finish(std::string& shown) {
    for (const char c : pending_)
        appendVisible(shown, westernCodePoint(static_cast<unsigned char>(c)));
    pending_.clear();
}

}  // namespace korvant
