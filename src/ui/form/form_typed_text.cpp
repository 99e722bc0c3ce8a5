#include "ui/form/form_typed_text.h"

#include <algorithm>

#include "base/text/text_encoding.h"

namespace korvant::ui {
namespace {

constexpr std::size_t kCellBytes = 2048;
constexpr std::string_view kReturnSign = "\xE2\x86\xB5";
constexpr std::string_view kPicturePrefix = "\xE2\x90";  // U+2400 to U+243F

bool isControl(char c) noexcept {
    const auto byte = static_cast<unsigned char>(c);
    return (byte < 0x20 && c != '\n' && c != '\t') || byte == 0x7F;
}

/// Every carriage return stands before a line feed, and every line feed behind one.
bool endsLinesWithBoth(std::string_view text) noexcept {
    bool any = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool returns = text[i] == '\r';
        if (!returns && text[i] != '\n') continue;
        if (!returns || i + 1 == text.size() || text[i + 1] != '\n') return false;
        any = true;
        ++i;
    }
    return any;
}

std::string withoutCarriageReturns(std::string text) {
    text.erase(std::remove(text.begin(), text.end(), '\r'), text.end());
    return text;
}

std::string withCarriageReturns(std::string_view text) {
    std::string result;
    for (char c : text) {
        if (c == '\n') result += '\r';
        result += c;
    }
    return result;
}

std::string withPictures(std::string_view text) {
    std::string result;
    for (char c : text) {
        if (!isControl(c)) {
            result += c;
            continue;
        }
        result += kPicturePrefix;
        result += static_cast<char>(c == 0x7F ? 0xA1 : 0x80 + c);
    }
    return result;
}

std::string withoutPictures(std::string_view text) {
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto last = i + 2 < text.size() ? static_cast<unsigned char>(text[i + 2]) : 0;
        const bool picture =
            text.substr(i, 2) == kPicturePrefix && ((last >= 0x80 && last < 0xA0) || last == 0xA1);
        if (picture) {
            result += static_cast<char>(last == 0xA1 ? 0x7F : last - 0x80);
            i += 2;
        } else {
            result += text[i];
        }
    }
    return result;
}

}  // namespace

TypedText::TypedText(std::string_view bytes) : original_(bytes), shown_(decodeForDisplay(bytes)) {
    carriageReturns_ = endsLinesWithBoth(shown_);
    if (carriageReturns_) shown_ = withoutCarriageReturns(std::move(shown_));
    const bool taken = shown_.find(kPicturePrefix) != std::string::npos;
    pictures_ = !taken && std::any_of(shown_.begin(), shown_.end(), isControl);
    if (pictures_) shown_ = withPictures(shown_);
}

std::string TypedText::toBytes(std::string_view edited) const {
    if (edited == shown_) return original_;
    std::string text = pictures_ ? withoutPictures(edited) : std::string(edited);
    if (carriageReturns_) text = withCarriageReturns(text);
    return encodeTyped(text);
}

bool needsSeveralLines(std::string_view bytes) noexcept {
    return bytes.find_first_of("\n\r") != std::string_view::npos;
}

bool isTooLongToEdit(std::string_view bytes) noexcept {
    // In Windows Western a byte may become three.
    for (std::size_t begin = 0; bytes.size() - begin > kLongestLine / 3;) {
        const std::size_t end = std::min(bytes.find('\n', begin), bytes.size());
        if (end - begin > kLongestLine / 3 &&
            decodeForDisplay(bytes.substr(begin, end - begin)).size() > kLongestLine)
            return true;
        if (end == bytes.size()) break;
        begin = end + 1;
    }
    return false;
}

std::string onOneLine(std::string_view bytes) {
    std::size_t length = std::min(bytes.size(), kCellBytes);
    while (length < bytes.size() && length > 0 && (bytes[length] & 0xC0) == 0x80) --length;
    std::string result;
    for (char c : decodeForDisplay(bytes.substr(0, length))) {
        if (c == '\n')
            result += kReturnSign;
        else if (c != '\r')
            result += isControl(c) || c == '\t' ? ' ' : c;
    }
    return result;
}

}  // namespace korvant::ui
