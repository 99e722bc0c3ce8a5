#include "editor/assist/snippet.h"

#include <map>

namespace korvant {

namespace {

bool isDigit(char letter) {
    return letter >= '0' && letter <= '9';
}

/// "$1" or "${1:name}" at `at`; what stands there otherwise is text.
struct Sign {
    int number = -1;
    std::string_view inside;
    std::size_t size = 0;
};

Sign signAt(std::string_view text, std::size_t at) {
    if (text[at] != '$' || at + 1 >= text.size()) return {};
    if (isDigit(text[at + 1])) return {text[at + 1] - '0', {}, 2};
    if (text[at + 1] != '{' || at + 2 >= text.size() || !isDigit(text[at + 2])) return {};
    const std::size_t close = text.find('}', at);
    if (close == std::string_view::npos) return {};
    const std::size_t colon = text.find(':', at);
    Sign sign{text[at + 2] - '0', {}, close + 1 - at};
    if (colon < close) sign.inside = text.substr(colon + 1, close - colon - 1);
    return sign;
}

}  // namespace

SnippetText readSnippet(std::string_view snippet, std::string_view indent) {
    SnippetText read;
    std::map<int, std::vector<ByteRange>> stops;
    for (std::size_t at = 0; at < snippet.size();) {
        const Sign sign = signAt(snippet, at);
        if (sign.number >= 0) {
            const std::size_t begin = read.text.size();
            read.text += sign.inside;
            stops[sign.number].push_back({begin, read.text.size()});
            at += sign.size;
            continue;
        }
        read.text += snippet[at];
        if (snippet[at++] == '\n') read.text += indent;
    }
    const auto end = stops.find(0);
    std::vector<ByteRange> last =
        end != stops.end() ? end->second
                           : std::vector<ByteRange>{{read.text.size(), read.text.size()}};
    for (auto& [number, ranges] : stops)
        if (number > 0) read.stops.push_back(std::move(ranges));
    read.stops.push_back(std::move(last));
    return read;
}

SnippetPlaces::SnippetPlaces(const SnippetText& snippet, std::size_t begin)
    : stops_(snippet.stops) {
    for (auto& stop : stops_)
        for (ByteRange& range : stop) {
            range.begin += begin;
            range.end += begin;
        }
}

bool SnippetPlaces::next() {
    if (active()) ++at_;
    return active();
}

void SnippetPlaces::changed(std::size_t begin, std::size_t removed, std::size_t added) {
    if (!active()) return;
    bool inside = false;
    for (const ByteRange& range : present())
        inside = inside || (range.begin <= begin && begin + removed <= range.end);
    if (!inside) return end();
    const auto moved = [&](std::size_t place) { return place - removed + added; };
    bool taken = false;
    for (std::size_t i = 0; i < stops_.size(); ++i)
        for (ByteRange& range : stops_[i]) {
            const bool holds =
                i == at_ && !taken && range.begin <= begin && begin + removed <= range.end;
            if (holds) {
                taken = true;
                range.end = moved(range.end);
            } else if (range.begin >= begin + removed && range.end > begin) {
                range.begin = moved(range.begin);
                range.end = moved(range.end);
            } else if (range.begin >= begin + removed) {
                range.begin = range.end = moved(range.begin);
            }
        }
}

}  // namespace korvant
