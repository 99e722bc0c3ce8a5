#include "expr/operators.h"

#include <cstddef>

namespace korvant::expr {
namespace {

constexpr std::size_t kLargeCount = 4096;

/// Bytes that occur in spellings, numbered from 1; 0 for all others.
constexpr std::array<std::uint8_t, 256> makeOperatorBytes() {
    std::array<std::uint8_t, 256> numbers{};
    std::uint8_t next = 1;
    for (const OperatorRow& row : kOperatorRows)
        for (const char byte : row.spelling)
            if (numbers[static_cast<unsigned char>(byte)] == 0)
                numbers[static_cast<unsigned char>(byte)] = next++;
    return numbers;
}
constexpr auto kOperatorByte = makeOperatorBytes();

constexpr std::uint8_t operatorByte(char byte) noexcept {
    return kOperatorByte[static_cast<unsigned char>(byte)];
}

/// The row of a spelling by its one or two bytes' numbers (0 for no second byte).
constexpr std::array<std::uint8_t, 256> makeSpellings() {
    std::array<std::uint8_t, 256> rows{};
    for (std::uint8_t& row : rows) row = kNoRow;
    // From the last row on, so that of equal spellings the first stays.
    for (std::size_t i = kOperatorRows.size(); i-- > 0;) {
        const std::string_view spelling = kOperatorRows[i].spelling;
        const int second = spelling.size() > 1 ? operatorByte(spelling[1]) : 0;
        rows[static_cast<std::size_t>(operatorByte(spelling[0]) * 16 + second)] =
            static_cast<std::uint8_t>(i);
    }
    return rows;
}
constexpr auto kRowOfSpelling = makeSpellings();

std::uint8_t rowOfBytes(char first, std::uint8_t second) noexcept {
    return kRowOfSpelling[static_cast<std::size_t>(operatorByte(first) * 16 + second)];
}

/// What ends a stretch of bytes that an operator scan has no interest in.
constexpr std::array<bool, 256> makeStops() {
    std::array<bool, 256> stops{};
    for (std::size_t i = 0; i < stops.size(); ++i) stops[i] = kOperatorByte[i] != 0 || i == '(';
    return stops;
}
constexpr auto kStop = makeStops();

/// The split of the lowest of `rows` that splits `text`, as views into it.
OperatorSplit splitBy(std::string_view text, OperatorScan::Rows rows) {
    PairedText paired;
    paired.assign(text);
    if (!paired.balanced()) return {};
    OperatorScan scan;
    const std::uint32_t root = scan.scan(paired, paired.all(), rows);
    if (root == OperatorScan::kNone) return {};
    const OperatorScan::Split& split = scan[root];
    return {true, text.substr(0, split.start), kOperatorRows[split.row].canonical,
            text.substr(split.right)};
}

}  // namespace

std::uint8_t rowOf(std::string_view spelling) noexcept {
    if (spelling.empty() || spelling.size() > 2) return kNoRow;
    if (spelling.size() == 1) return rowOfBytes(spelling[0], 0);
    const std::uint8_t second = operatorByte(spelling[1]);
    return second == 0 ? kNoRow : rowOfBytes(spelling[0], second);
}

std::string_view spellingOf(Operator op) noexcept {
    constexpr std::array<std::string_view, 15> spellings = {
        "||", "&&", "<>", ">=", "<=", "==", "=", ">", "<", "%", "+", "-", "*", "/", "^"};
    return spellings[static_cast<std::size_t>(op)];
}

OperatorSplit splitAtOperator(std::string_view text, std::string_view spelling,
                              Operator canonical) {
    OperatorScan::Rows rows = 0;
    for (std::size_t i = 0; i < kOperatorRows.size(); ++i)
        if (kOperatorRows[i].spelling == spelling) rows |= OperatorScan::Rows{1} << i;
    OperatorSplit split = splitBy(text, rows);
    if (split.found) split.op = canonical;
    return split;
}

OperatorSplit findOperator(std::string_view text) {
    return splitBy(text, OperatorScan::kAllRows);
}

std::uint32_t OperatorScan::scan(const PairedText& text, TextRange range, Rows rows) {
    spine_.clear();
    const std::string_view bytes = text.bytes();
    for (std::uint32_t at = range.begin; at < range.end;) {
        if (!kStop[static_cast<unsigned char>(bytes[at])])
            ++at;
        else if (bytes[at] == '(')
            at = text.closing(at) + 1;
        else
            at = settleRun(text, range, at, rows);
    }
    return spine_.empty() ? kNone : spine_.front();
}

/// Chooses among the operators in the run of operator bytes that begins at `at`; its end.
std::uint32_t OperatorScan::settleRun(const PairedText& text, TextRange range, std::uint32_t at,
                                      Rows rows) {
    const std::string_view bytes = text.bytes();
    std::uint32_t end = at + 1;
    while (end < range.end && operatorByte(bytes[end]) != 0) ++end;
    const bool first = at == range.begin, last = end == range.end;
    if (end - at <= 2 && !first && !last) {
        // Every spelling of two bytes stands above those of its bytes, so it settles the run.
        const std::uint8_t second = end - at == 2 ? operatorByte(bytes[at + 1]) : 0;
        const std::uint8_t row = rowOfBytes(bytes[at], second);
        if (row != kNoRow && (rows >> row & 1) != 0) {
            add(at, end - at, row);
            return end;
        }
        if (end - at == 1) return end;
    }
    settleHardRun(bytes.substr(at, end - at), at, first, last, rows);
    return end;
}

/// Row by row from the left. Blocked are the seams between bytes that lie at an end of the
/// text or at or inside an operator that was chosen: another one must keep clear of them.
void OperatorScan::settleHardRun(std::string_view run, std::uint32_t at, bool first, bool last,
                                 Rows rows) {
    chosen_.assign(run.size(), kNoRow);
    blocked_.assign(run.size() + 1, 0);
    blocked_.front() = first ? 1 : 0;
    blocked_.back() = last ? 1 : 0;
    for (std::uint8_t row = 0; row < kOperatorRows.size(); ++row) {
        const std::string_view spelling = kOperatorRows[row].spelling;
        if ((rows >> row & 1) == 0) continue;
        for (std::size_t i = 0; i + spelling.size() <= run.size(); ++i) {
            if (run.compare(i, spelling.size(), spelling) != 0) continue;
            const std::size_t end = i + spelling.size();
            if ((blocked_[i] | blocked_[i + 1] | blocked_[end]) != 0) continue;
            blocked_[i] = blocked_[i + 1] = blocked_[end] = 1;
            chosen_[i] = row;
        }
    }
    for (std::size_t i = 0; i < run.size(); ++i)
        if (chosen_[i] != kNoRow)
            add(at + static_cast<std::uint32_t>(i), kOperatorRows[chosen_[i]].spelling.size(),
                chosen_[i]);
}

/// Hangs the next place from the left into the tree: below the last one of the same or a lower
/// row, above everything after that one.
void OperatorScan::add(std::uint32_t start, std::size_t size, std::uint8_t row) {
    const auto number = static_cast<std::uint32_t>(splits_.size());
    std::uint32_t below = kNone;
    while (!spine_.empty() && splits_[spine_.back()].row > row) {
        below = spine_.back();
        spine_.pop_back();
    }
    if (!spine_.empty()) splits_[spine_.back()].rightSplit = number;
    const std::uint32_t right = start + static_cast<std::uint32_t>(size);
    splits_.push_back({start, right, below, kNone, row});
    spine_.push_back(number);
}

void OperatorScan::releaseLargeBuffers() {
    if (splits_.capacity() > kLargeCount) splits_ = {};
    if (spine_.capacity() > kLargeCount) spine_ = {};
    if (chosen_.capacity() > kLargeCount) chosen_ = {};
    if (blocked_.capacity() > kLargeCount) blocked_ = {};
}

}  // namespace korvant::expr
