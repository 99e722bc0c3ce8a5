#include "language/text_document.h"

#include <algorithm>

#include "base/text/text_encoding.h"

namespace korvant {

namespace {

/// Offsets behind the line feeds of `text`, moved by `shift`.
std::vector<std::size_t> lineStartsIn(std::string_view text, std::size_t shift) {
    std::vector<std::size_t> starts;
    for (auto at = text.find('\n'); at != std::string_view::npos; at = text.find('\n', at + 1))
        starts.push_back(shift + at + 1);
    return starts;
}

struct Character {
    std::size_t bytes;
    std::uint32_t units;  ///< of UTF-16
};

Character characterAt(std::string_view text) {
    constexpr int kFourBytes = 4;
    if (static_cast<unsigned char>(text[0]) < 0x80) return {1, 1};
    const int bytes = utf8SequenceLength(text);
    if (bytes <= 0) return {1, 1};
    return {static_cast<std::size_t>(bytes), bytes == kFourBytes ? 2u : 1u};
}

}  // namespace

TextDocument::TextDocument(std::string text) : text_(std::move(text)) {
    starts_ = lineStartsIn(text_, 0);
    starts_.insert(starts_.begin(), 0);
    findWide();
}

/// The characters of more than one byte: between them bytes and units go in step.
void TextDocument::findWide() {
    wide_.clear();
    const std::string_view all = text_;
    std::size_t excess = 0;
    for (std::size_t at = 0; at < all.size();) {
        if (static_cast<unsigned char>(all[at]) < 0x80) {
            ++at;
            continue;
        }
        const Character character = characterAt(all.substr(at));
        if (character.bytes > 1) {
            wide_.push_back({at, excess, static_cast<std::uint8_t>(character.bytes),
                             static_cast<std::uint8_t>(character.units)});
            excess += character.bytes - character.units;
        }
        at += character.bytes;
    }
}

/// Units in front of `offset`, from the beginning of the text on; inside a character those in front
/// of it.
std::size_t TextDocument::unitsBefore(std::size_t offset) const {
    const auto behind = std::lower_bound(
        wide_.begin(), wide_.end(), offset,
        [](const Wide& character, std::size_t place) { return character.begin < place; });
    if (behind == wide_.begin()) return offset;
    const Wide& last = *(behind - 1);
    if (last.begin + last.bytes > offset) return last.begin - last.excess;
    return offset - last.excess - (last.bytes - last.units);
}

std::size_t TextDocument::lineStart(std::uint32_t line) const {
    return line < starts_.size() ? starts_[line] : text_.size();
}

ByteRange TextDocument::lineRange(std::uint32_t line) const {
    const std::size_t begin = lineStart(line);
    if (line + std::size_t{1} >= starts_.size()) return {begin, text_.size()};
    std::size_t end = starts_[line + 1] - 1;
    if (end > begin && text_[end - 1] == '\r') --end;
    return {begin, end};
}

std::string_view TextDocument::lineText(std::uint32_t line) const {
    const ByteRange range = lineRange(line);
    return std::string_view(text_).substr(range.begin, range.size());
}

std::uint32_t TextDocument::lineOf(std::size_t offset) const {
    const auto behind = std::upper_bound(starts_.begin(), starts_.end(), offset);
    return static_cast<std::uint32_t>(behind - starts_.begin() - 1);
}

TextPosition TextDocument::positionOf(std::size_t offset) const {
    offset = std::min(offset, text_.size());
    const std::uint32_t line = lineOf(offset);
    return {line, static_cast<std::uint32_t>(offset - starts_[line])};
}

std::size_t TextDocument::offsetOf(TextPosition position) const {
    const ByteRange line = lineRange(position.line);
    return line.begin + std::min<std::size_t>(position.column, line.size());
}

TextPosition TextDocument::utf16PositionOf(std::size_t offset) const {
    offset = std::min(offset, text_.size());
    const std::uint32_t line = lineOf(offset);
    return {line, static_cast<std::uint32_t>(unitsBefore(offset) - unitsBefore(starts_[line]))};
}

std::size_t TextDocument::offsetOfUtf16(TextPosition position) const {
    const ByteRange line = lineRange(position.line);
    const std::size_t wanted = unitsBefore(line.begin) + position.column;
    // The last of them that begins at the wanted unit or before it.
    const auto behind = std::upper_bound(wide_.begin(), wide_.end(), wanted,
                                         [](std::size_t units, const Wide& character) {
                                             return units < character.begin - character.excess;
                                         });
    std::size_t offset = wanted;
    if (behind != wide_.begin()) {
        const Wide& last = *(behind - 1);
        const std::size_t units = wanted - (last.begin - last.excess);
        offset = units < last.units ? last.begin : last.begin + last.bytes + units - last.units;
    }
    return std::min(offset, line.end);
}

void TextDocument::replace(ByteRange range, std::string_view with) {
    range.end = std::min(range.end, text_.size());
    range.begin = std::min(range.begin, range.end);
    const std::string copy(with);  // it may lie in this text
    text_.replace(range.begin, range.size(), copy);
    const auto from = std::upper_bound(starts_.begin(), starts_.end(), range.begin);
    const auto to = std::upper_bound(from, starts_.end(), range.end);
    for (auto line = to; line != starts_.end(); ++line) *line = *line - range.size() + copy.size();
    const std::vector<std::size_t> added = lineStartsIn(copy, range.begin);
    starts_.insert(starts_.erase(from, to), added.begin(), added.end());
    findWide();
    ++version_;
}

}  // namespace korvant
