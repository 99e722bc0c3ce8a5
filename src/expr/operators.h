// The operators, in the order in which they are tried, and the places where a text splits.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>
#include <vector>

#include "expr/expression_text.h"

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

/// No row of the table.
inline constexpr std::uint8_t kNoRow = 0xFF;

/// The first row with that spelling, or kNoRow.
std::uint8_t rowOf(std::string_view spelling) noexcept;

/// The canonical spelling, such as "<>" for an operator that was written "!=".
std::string_view spellingOf(Operator op) noexcept;

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

/// Finds every place where a text and then its parts split, in one walk over its bytes.
///
/// A place is fit when it lies outside parentheses and touches neither an end of the text nor
/// a place that was chosen before it, in the order of rows and then from the left. Whether
/// places touch is a matter of the few operator bytes that stand side by side, so each such
/// run is settled by itself, and the places that are left form a tree: the root is the one of
/// the lowest row, the leftmost of equal ones, and so on in either part.
class OperatorScan {
  public:
    static constexpr std::uint32_t kNone = ~std::uint32_t{0};

    /// A set of rows of the table; bit n stands for kOperatorRows[n].
    using Rows = std::uint32_t;
    static constexpr Rows kAllRows = (Rows{1} << kOperatorRows.size()) - 1;

    struct Split {
        std::uint32_t start = 0;           ///< first byte of the operator
        std::uint32_t right = 0;           ///< first byte after it
        std::uint32_t leftSplit = kNone;   ///< how the left part splits
        std::uint32_t rightSplit = kNone;  ///< how the right part splits
        std::uint8_t row = 0;
    };

    /// Forgets all splits.
    void clear() noexcept { splits_.clear(); }
    /// The splits of `range`, which must be balanced: the number of the first one, or kNone.
    /// Numbers stay valid until clear().
    std::uint32_t scan(const PairedText& text, TextRange range, Rows rows = kAllRows);
    const Split& operator[](std::uint32_t number) const noexcept { return splits_[number]; }

    void releaseLargeBuffers();

  private:
    std::uint32_t settleRun(const PairedText& text, TextRange range, std::uint32_t at, Rows rows);
    void settleHardRun(std::string_view run, std::uint32_t at, bool first, bool last, Rows rows);
    void add(std::uint32_t start, std::size_t size, std::uint8_t row);

    std::vector<Split> splits_;
    std::vector<std::uint32_t> spine_;  ///< from the root along right parts
    std::vector<std::uint8_t> chosen_, blocked_;
};

}  // namespace korvant::expr
