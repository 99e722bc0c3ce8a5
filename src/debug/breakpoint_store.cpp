#include "debug/breakpoint_store.h"

#include <algorithm>
#include <charconv>
#include <cstdlib>

#include "base/system/file_io.h"

namespace korvant {

namespace {

constexpr std::size_t kLargestFile = std::size_t{16} << 20;
constexpr std::string_view kHead = "korvant breakpoints 1";
constexpr int kAround = 2;  // lines above and below

std::string_view trimmed(std::string_view line) {
    const auto begin = line.find_first_not_of(" \t\r");
    if (begin == std::string_view::npos) return {};
    return line.substr(begin, line.find_last_not_of(" \t\r") - begin + 1);
}

/// The lines of a text without the blanks around them.
class Lines {
  public:
    explicit Lines(std::string_view text) {
        for (;;) {
            const auto end = text.find('\n');
            lines_.push_back(trimmed(text.substr(0, end)));
            if (end == std::string_view::npos) return;
            text.remove_prefix(end + 1);
        }
    }
    std::int32_t count() const { return static_cast<std::int32_t>(lines_.size()); }
    /// Empty for a line that there is not.
    std::string_view line(std::int32_t number) const {
        if (number < 1 || number > count()) return {};
        return lines_[static_cast<std::size_t>(number) - 1];
    }
    std::uint64_t around(std::int32_t number) const {
        std::string all;
        for (std::int32_t at = number - kAround; at <= number + kAround; ++at)
            if (at != number) all += std::string(line(at)) + '\n';
        return contentHash(all);
    }

  private:
    std::vector<std::string_view> lines_;
};

/// The line that looks as it did: among the same surroundings, else the nearest one.
std::int32_t findAgain(const Lines& lines, std::int32_t wanted, std::string_view text,
                       std::string_view around) {
    std::int32_t best = 0;
    bool bestAround = false;
    for (std::int32_t line = 1; line <= lines.count(); ++line) {
        if (text.empty() || lines.line(line) != text) continue;
        const bool same = hexText(lines.around(line)) == around;
        const bool nearer = best == 0 || std::abs(line - wanted) < std::abs(best - wanted);
        if ((same && !bestAround) || (same == bestAround && nearer)) {
            best = line;
            bestAround = same;
        }
    }
    return best != 0 ? best : wanted;
}

std::string fieldsOf(const BreakpointWish& wish, const Lines& lines) {
    const std::int32_t line = wish.place.line;
    std::string bytes;
    const auto add = [&bytes](std::string_view field) {
        // A byte that parts the fields stands in none of them.
        for (const char byte : field)
            if (byte != '\0') bytes.push_back(byte);
        bytes.push_back('\0');
    };
    add(std::to_string(static_cast<int>(wish.kind)));
    add(std::to_string(line));
    add(lines.line(line));
    add(hexText(lines.around(line)));
    add(wish.enabled ? "1" : "0");
    add(wish.name);
    add(wish.classicCondition);
    add(wish.condition);
    add(wish.hitCondition);
    add(wish.logText);
    return bytes;
}

constexpr std::size_t kFields = 10;

std::int32_t numberIn(std::string_view text) {
    std::int32_t number = 0;
    std::from_chars(text.data(), text.data() + text.size(), number);
    return number;
}

BreakpointWish wishOf(const std::vector<std::string_view>& fields, const Lines& lines) {
    BreakpointWish wish;
    wish.kind = static_cast<BreakpointKind>(std::clamp(numberIn(fields[0]), 0, 2));
    wish.place.line = numberIn(fields[1]);
    if (wish.kind == BreakpointKind::line)
        wish.place.line = findAgain(lines, wish.place.line, fields[2], fields[3]);
    wish.enabled = fields[4] == "1";
    wish.name = fields[5];
    wish.classicCondition = fields[6];
    wish.condition = fields[7];
    wish.hitCondition = fields[8];
    wish.logText = fields[9];
    return wish;
}

}  // namespace

std::string BreakpointStore::fileOf(const std::string& scriptPath) const {
    if (folder_.empty() || scriptPath.empty()) return {};
    return joinPath(folder_, hexText(contentHash(scriptPath)) + ".breakpoints");
}

bool BreakpointStore::save(const std::string& scriptPath, std::string_view text,
                           const std::vector<BreakpointWish>& wishes) {
    const std::string file = fileOf(scriptPath);
    if (file.empty()) return false;
    if (wishes.empty()) {
        files_.remove(file);
        return true;
    }
    const Lines lines(text);
    std::string bytes = std::string(kHead) + '\0' + scriptPath + '\0';
    for (std::size_t i = 0; i < std::min(wishes.size(), kMost); ++i)
        bytes += fieldsOf(wishes[i], lines);
    return files_.makeFolder(folder_) == 0 && replaceSecretFile(files_, file, bytes) == 0;
}

std::vector<BreakpointWish> BreakpointStore::load(const std::string& scriptPath,
                                                  std::string_view text) {
    std::string bytes;
    const std::string file = fileOf(scriptPath);
    if (file.empty() || readFile(files_, file, kLargestFile, bytes) != 0) return {};
    std::vector<std::string_view> fields;
    std::string_view rest = bytes;
    for (auto end = rest.find('\0'); end != std::string_view::npos; end = rest.find('\0')) {
        fields.push_back(rest.substr(0, end));
        rest.remove_prefix(end + 1);
    }
    // Two paths may share a hash.
    if (fields.size() < 2 || fields[0] != kHead || fields[1] != scriptPath) return {};
    const Lines lines(text);
    std::vector<BreakpointWish> wishes;
    for (std::size_t at = 2; at + kFields <= fields.size() && wishes.size() < kMost; at += kFields)
        wishes.push_back(wishOf({fields.begin() + static_cast<std::ptrdiff_t>(at),
                                 fields.begin() + static_cast<std::ptrdiff_t>(at + kFields)},
                                lines));
    return wishes;
}

}  // namespace korvant
