#include "protocol/rpc/json.h"

#include <charconv>
#include <cmath>
#include <string>

namespace korvant::rpc {

namespace {

/// Counted before anything is made: a tree of a hundred thousand levels is dear to build and to
/// take down.
bool tooDeep(std::string_view text) {
    int depth = 0;
    bool inString = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (inString) {
            if (c == '\\') ++i;
            if (c == '"') inString = false;
        } else if (c == '"') {
            inString = true;
        } else if (c == '[' || c == '{') {
            if (++depth > kDeepestMessage) return true;
        } else if (c == ']' || c == '}') {
            --depth;
        }
    }
    return false;
}

/// Of an escape "\uXXXX" at `at`; 0 for anything else.
unsigned unitAt(std::string_view text, std::size_t at) {
    constexpr std::size_t kSize = 6;
    if (text.size() < at + kSize || text[at] != '\\' || text[at + 1] != 'u') return 0;
    unsigned unit = 0;
    const char* const end = text.data() + at + kSize;
    const auto read = std::from_chars(text.data() + at + 2, end, unit, 16);
    return read.ec == std::errc() && read.ptr == end ? unit : 0;
}

/// A client that counts in units may cut a character in two: each half becomes one that stands for
/// what is unknown, and the places behind it stay. True when there was one.
bool mendHalves(std::string& text) {
    constexpr std::string_view kUnknown = "\\ufffd";
    const auto isHigh = [](unsigned unit) { return unit >= 0xD800 && unit < 0xDC00; };
    const auto isLow = [](unsigned unit) { return unit >= 0xDC00 && unit < 0xE000; };
    bool mended = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '\\') continue;
        const unsigned unit = unitAt(text, i);
        if (isHigh(unit) && isLow(unitAt(text, i + kUnknown.size()))) {
            i += 2 * kUnknown.size() - 1;
        } else if (isHigh(unit) || isLow(unit)) {
            text.replace(i, kUnknown.size(), kUnknown);
            mended = true;
        } else {
            ++i;
        }
    }
    return mended;
}

}  // namespace

std::optional<Json> readJson(std::string_view text) {
    if (tooDeep(text)) return std::nullopt;
    Json value = Json::parse(text, nullptr, false);
    if (!value.is_discarded()) return value;
    std::string halves(text);
    if (mendHalves(halves)) value = Json::parse(halves, nullptr, false);
    if (value.is_discarded()) return std::nullopt;
    return value;
}

std::string writeJson(const Json& value) {
    return value.dump(-1, ' ', false, Json::error_handler_t::replace);
}

const Json& memberOf(const Json& object, const char* name) {
    static const Json kNull;
    if (!object.is_object()) return kNull;
    const auto found = object.find(name);
    return found == object.end() ? kNull : *found;
}

std::string textOf(const Json& object, const char* name, std::string otherwise) {
    const Json& member = memberOf(object, name);
    return member.is_string() ? member.get<std::string>() : std::move(otherwise);
}

std::int64_t numberOf(const Json& object, const char* name, std::int64_t otherwise) {
    const Json& member = memberOf(object, name);
    if (member.is_number_integer()) return member.get<std::int64_t>();
    if (!member.is_number_float()) return otherwise;
    const double number = member.get<double>();
    return std::abs(number) < 9e15 ? static_cast<std::int64_t>(number) : otherwise;
}

bool truthOf(const Json& object, const char* name, bool otherwise) {
    const Json& member = memberOf(object, name);
    return member.is_boolean() ? member.get<bool>() : otherwise;
}

}  // namespace korvant::rpc
