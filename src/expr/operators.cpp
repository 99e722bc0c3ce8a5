#include "expr/operators.h"

namespace korvant::expr {
namespace {

/// The split of the lowest of `levels` that splits `text`, as views into it.
OperatorSplit splitBy(std::string_view text, OperatorScan::Levels levels) {
    PairedText paired;
    paired.assign(text);
    if (!paired.balanced()) return {};
    const Region region{0, paired.all().end, false};
    OperatorScan scan;
    SplitPlace best;
    for (std::uint32_t from = 0;;) {
        const SplitPlace place = scan.next(paired, region, from, levels);
        if (place.level == SplitPlace::kEnd) break;
        if (best.level == SplitPlace::kEnd || place.level < best.level) best = place;
        from = place.right;
    }
    if (best.level == SplitPlace::kEnd) return {};
    return {true, text.substr(0, best.start), kOperatorRows[best.level - 1].canonical,
            text.substr(best.right)};
}

}  // namespace

bool isOperator(std::string_view spelling) noexcept {
    for (const OperatorRow& row : kOperatorRows)
        if (row.spelling == spelling) return true;
    return false;
}

std::string_view spellingOf(Operator op) noexcept {
    static constexpr std::array<std::string_view, 15> spellings = {
        "||", "&&", "<>", ">=", "<=", "==", "=", ">", "<", "%", "+", "-", "*", "/", "^"};
    return spellings[static_cast<std::size_t>(op)];
}

OperatorSplit splitAtOperator(std::string_view text, std::string_view spelling,
                              Operator canonical) {
    OperatorScan::Levels levels = 0;
    for (std::size_t i = 0; i < kOperatorRows.size(); ++i)
        if (kOperatorRows[i].spelling == spelling) levels |= OperatorScan::Levels{2} << i;
    OperatorSplit split = splitBy(text, levels);
    if (split.found) split.op = canonical;
    return split;
}

OperatorSplit findOperator(std::string_view text) {
    return splitBy(text, OperatorScan::kAllLevels);
}

/// The next place in the run of operator bytes that `at` stands in, or its end. A run of two
/// or more bytes is settled as a whole when it is met.
SplitPlace OperatorScan::settleHardRun(const char* bytes, const Region& region, std::uint32_t at,
                                       std::uint32_t from, Levels levels) {
    if (at >= runEnd_ || at < runBegin_) {
        runBegin_ = runEnd_ = at;
        chosen_.clear();
        blocked_.clear();
        for (; isOperatorByte(scanByte(bytes[runEnd_])); ++runEnd_) {
            chosen_.push() = 0;
            blocked_.push() = runEnd_ == from ? 1 : 0;
        }
        blocked_.push() = isEnd(bytes, region, runEnd_) ? 1 : 0;
        choose({bytes + runBegin_, runEnd_ - runBegin_}, levels);
    }
    for (; at < runEnd_; ++at) {
        const std::uint32_t level = chosen_[at - runBegin_];
        if (level == 0) continue;
        const auto size = static_cast<std::uint32_t>(kOperatorRows[level - 1].spelling.size());
        return {at, at + size, level};
    }
    return {runEnd_, runEnd_, SplitPlace::kEnd};
}

/// Level by level from the left. Blocked are the seams between bytes that lie at an end of the
/// region or at or inside an operator that was chosen: another one must keep clear of them.
void OperatorScan::choose(std::string_view run, Levels levels) {
    for (std::uint8_t level = 1; level <= kOperatorRows.size(); ++level) {
        const std::string_view spelling = kOperatorRows[level - 1u].spelling;
        if ((levels >> level & 1) == 0) continue;
        for (std::size_t i = 0; i + spelling.size() <= run.size(); ++i) {
            if (run.compare(i, spelling.size(), spelling) != 0) continue;
            const std::size_t end = i + spelling.size();
            if ((blocked_[i] | blocked_[i + 1] | blocked_[end]) != 0) continue;
            blocked_[i] = blocked_[i + 1] = blocked_[end] = 1;
            chosen_[i] = level;
        }
    }
}

void OperatorScan::releaseLargeBuffers() {
    chosen_.releaseIfLarge();
    blocked_.releaseIfLarge();
}

}  // namespace korvant::expr
