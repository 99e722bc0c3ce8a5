// Any bytes as an expression: the evaluator and the one written straight from the rules agree.
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "expr/evaluator.h"
#include "support/literal_evaluator.h"

namespace {

/// The literal evaluator takes time in the square of the length.
constexpr std::size_t kLongestCompared = 400;

bool same(double a, double b) {
    return (std::isnan(a) && std::isnan(b)) ||
           std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b);
}

void check(bool holds) {
    if (!holds) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const korvant_test::LiteralNames names = {
        {"a", 1}, {"b", -2.5}, {"x", 0}, {"min(1;2)", 9}};
    static korvant::ExpressionEvaluator evaluator = [] {
        korvant::ExpressionEvaluator made;
        for (const auto& [name, value] : names) made.setValue(name, value);
        return made;
    }();
    const std::string text(reinterpret_cast<const char*>(data), size);
    const auto fresh = evaluator.evaluate(text);
    const auto kept = evaluator.evaluate(text);
    check(fresh.error == kept.error && (!fresh.error.empty() || same(fresh.value, kept.value)));
    if (size > kLongestCompared) return 0;
    const auto expected = korvant_test::evaluateLiterally(text, names);
    check(fresh.error == expected.error);
    check(!fresh.error.empty() || same(fresh.value, expected.value));
    return 0;
}
