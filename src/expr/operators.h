// The operators, in the order in which they are tried, and the places where a text splits.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "expr/expression_text.h"
#include "expr/scratch.h"

namespace korvant::expr {

/// The canonical operators. "==" and "=" mean the same comparison.
enum class Operator : std::uint8_t {
    Or,
    And,
    NotEqual,
    GreaterEqual,
    LessEqual,
    EqualEqual,
    Equal,
    Greater,
    Less,
    Remainder,
    Add,
    Subtract,
    Multiply,
    Divide,
    Power,
};

struct OperatorRow {
    std::string_view spelling;
    Operator canonical;
};

/// The first row that splits a text wins, so the loosest operator stands first; each row is a
/// level of its own.
/// Deliberate: "%" is looser than "+" and "-", "+" looser than "-", "*" looser than "/", and
/// within a row the leftmost place splits, so that everything groups from the right: a-b-c is
/// a-(b-c). Rules that users have written rely on it. ">" stands twice; the second row can
/// never split what the first did not.
inline constexpr std::array<OperatorRow, 19> kOperatorRows = {{
    {"\\/", Operator::Or},          {"||", Operator::Or},        {"/\\", Operator::And},
    {"&&", Operator::And},          {"<>", Operator::NotEqual},  {"!=", Operator::NotEqual},
    {">=", Operator::GreaterEqual}, {"<=", Operator::LessEqual}, {"==", Operator::EqualEqual},
    {"=", Operator::Equal},         {">", Operator::Greater},    {"<", Operator::Less},
    {">", Operator::Greater},       {"%", Operator::Remainder},  {"+", Operator::Add},
    {"-", Operator::Subtract},      {"*", Operator::Multiply},   {"/", Operator::Divide},
    {"^", Operator::Power},
}};

/// The canonical spelling, such as "<>" for an operator that was written "!=".
std::string_view spellingOf(Operator op) noexcept;

/// Whether `spelling` is in the table.
bool isOperator(std::string_view spelling) noexcept;

/// A text cut in two; the parts are views into it.
struct OperatorSplit {
    bool found = false;
    std::string_view left;
    Operator op = Operator::Or;
    std::string_view right;
};

/// Cuts `text` at the leftmost `spelling` that leaves something balanced on either side.
OperatorSplit splitAtOperator(std::string_view text, std::string_view spelling, Operator canonical);

/// Cuts `text` at the operator that the table tries first.
OperatorSplit findOperator(std::string_view text);

/// What a byte is to a scan for operators: nothing, the number (from 1) of a byte that occurs
/// in spellings, or one of these.
enum ScanByte : std::uint8_t { kPlainByte = 0, kOpeningByte = 14, kEndingByte = 15 };

constexpr std::array<std::uint8_t, 256> makeScanBytes() {
    std::array<std::uint8_t, 256> classes{};
    std::uint8_t next = 1;
    for (const OperatorRow& row : kOperatorRows)
        for (const char byte : row.spelling)
            if (classes[static_cast<unsigned char>(byte)] == 0)
                classes[static_cast<unsigned char>(byte)] = next++;
    classes['('] = kOpeningByte;
    classes[')'] = classes[';'] = classes[0] = kEndingByte;
    return classes;
}
inline constexpr auto kScanBytes = makeScanBytes();

constexpr std::uint8_t scanByte(char byte) noexcept {
    return kScanBytes[static_cast<unsigned char>(byte)];
}
constexpr bool isOperatorByte(std::uint8_t found) noexcept {
    return found != kPlainByte && found < kOpeningByte;
}

/// The level (a row of the table, counted from 1) of a spelling by the numbers of its one or
/// two bytes; 0 where there is none.
constexpr std::array<std::uint8_t, 256> makeLevels() {
    std::array<std::uint8_t, 256> levels{};
    // From the last row on, so that of equal spellings the first stays.
    for (std::size_t i = kOperatorRows.size(); i-- > 0;) {
        const std::string_view spelling = kOperatorRows[i].spelling;
        const int second = spelling.size() > 1 ? scanByte(spelling[1]) : 0;
        levels[static_cast<std::size_t>(scanByte(spelling[0]) * 16 + second)] =
            static_cast<std::uint8_t>(i + 1);
    }
    return levels;
}
inline constexpr auto kLevels = makeLevels();

/// A piece of a text that is read for itself: all of it, the inside of parentheses, or a
/// parameter of a call, which ends at its ";" or at `end`.
struct Region {
    std::uint32_t begin = 0;
    std::uint32_t end = 0;
    bool isParameter = false;
};

/// A place where a region splits, or its end.
struct SplitPlace {
    static constexpr std::uint32_t kEnd = 0;

    std::uint32_t start = 0;     ///< first byte of the operator, or the region's end
    std::uint32_t right = 0;     ///< first byte after it
    std::uint32_t level = kEnd;  ///< row of the table, counted from 1; kEnd at the end
};

/// Walks over the places where a region splits, from the left to the right.
///
/// A place is fit when it lies outside parentheses and touches neither an end of the region nor
/// a place that was chosen before it, in the order of rows and then from the left. Whether
/// places touch is a matter of the few operator bytes that stand side by side, so each such
/// run is settled by itself, and one walk finds them all. The places make a tree: the region
/// splits at the one of the lowest level, the leftmost of equal ones, and so does either part.
class OperatorScan {
  public:
    /// A set of levels; bit n stands for level n.
    using Levels = std::uint32_t;
    static constexpr Levels kAllLevels = ~Levels{0};

    /// Forgets the text that was walked over before.
    void begin() noexcept { runEnd_ = 0; }
    /// The next place at or after `from`, which is the region's begin or right of a place
    /// given before. The region is balanced, and a ")", its ";" or the text's end follows it.
    SplitPlace next(const PairedText& text, const Region& region, std::uint32_t from,
                    Levels levels = kAllLevels);

    void releaseLargeBuffers();

  private:
    static bool isEnd(const char* bytes, const Region& region, std::uint32_t at) noexcept {
        return at == region.end || (region.isParameter && bytes[at] == ';');
    }
    SplitPlace settleHardRun(const char* bytes, const Region& region, std::uint32_t at,
                             std::uint32_t from, Levels levels);
    void choose(std::string_view run, Levels levels);

    Scratch<std::uint8_t> chosen_;   ///< levels by their places in the hard run
    Scratch<std::uint8_t> blocked_;  ///< the seams between its bytes that are taken
    std::uint32_t runBegin_ = 0, runEnd_ = 0;
};

[[gnu::always_inline]] inline SplitPlace OperatorScan::next(const PairedText& text,
                                                            const Region& region,
                                                            std::uint32_t from, Levels levels) {
    const char* const bytes = text.bytes().data();
    for (std::uint32_t at = from;;) {
        while (scanByte(bytes[at]) == kPlainByte) ++at;
        const std::uint8_t first = scanByte(bytes[at]);
        if (first == kOpeningByte) {
            at = text.closing(at) + 1;
        } else if (first == kEndingByte) {
            if (isEnd(bytes, region, at)) return {at, at, SplitPlace::kEnd};
            ++at;
        } else {
            // Every spelling of two bytes stands above those of its bytes, so that it settles a
            // run of two.
            const std::uint8_t second = scanByte(bytes[at + 1]);
            const bool alone = !isOperatorByte(second);
            if (alone || !isOperatorByte(scanByte(bytes[at + 2]))) {
                const std::uint32_t level = kLevels[first * 16u + (alone ? 0u : second)];
                const std::uint32_t end = at + (alone ? 1 : 2);
                const bool fits = level != 0 && (levels >> level & 1) != 0;
                if (fits && at != from && !isEnd(bytes, region, end)) return {at, end, level};
            }
            if (alone) {
                ++at;
                continue;
            }
            const SplitPlace place = settleHardRun(bytes, region, at, from, levels);
            if (place.level != SplitPlace::kEnd) return place;
            at = place.right;
        }
    }
}

}  // namespace korvant::expr
