// Any bytes as an expression: the evaluator and the one written straight from the rules agree,
// whatever names come and go between the evaluations of a text.
#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "expr/evaluator.h"
#include "support/literal_evaluator.h"

namespace {

using korvant_test::LiteralNames;

/// The literal evaluator takes time in the square of the length.
constexpr std::size_t kLongestCompared = 400;

void check(bool holds) {
    if (!holds) std::abort();
}

template <class One, class Other>
void checkSame(const One& one, const Other& other) {
    check(one.error == other.error);
    if (!one.error.empty() || (std::isnan(one.value) && std::isnan(other.value))) return;
    check(std::bit_cast<std::uint64_t>(one.value) == std::bit_cast<std::uint64_t>(other.value));
}

/// One evaluator that lives as long as the program, and the names that it has.
struct Bench {
    korvant::ExpressionEvaluator evaluator;
    LiteralNames names;

    Bench() {
        for (const auto& [name, value] : LiteralNames{{"a", 1}, {"b", -2.5}, {"x", 0}})
            set(name, value);
    }
    void set(const std::string& name, double value) {
        evaluator.setValue(name, value);
        names[name] = value;
    }
    void toggle(const std::string& name) {
        if (names.erase(name) > 0)
            check(evaluator.removeValue(name));
        else
            set(name, 9);
    }
    void compare(const std::string& text, korvant::ExpressionEvaluator::Rule& rule) {
        const auto fresh = evaluator.evaluate(text);
        checkSame(fresh, evaluator.evaluate(text));
        checkSame(fresh, evaluator.evaluate(rule));
        if (text.size() <= kLongestCompared)
            checkSame(fresh, korvant_test::evaluateLiterally(text, names));
    }
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static Bench bench;
    const std::string text(reinterpret_cast<const char*>(data), size);
    korvant::ExpressionEvaluator::Rule rule(text);
    bench.compare(text, rule);
    // A name that reads like a call or an operand of this very text, or none of it.
    const std::string name = size % 3 == 0 ? "min(1;2)" : text.substr(size / 2, 6);
    bench.toggle(name);
    bench.compare(text, rule);
    bench.toggle(name);
    const auto grouping = bench.evaluator.grouping(text);
    if (grouping.error.empty() && !grouping.text.empty())
        check(bench.evaluator.grouping(grouping.text).text == grouping.text);
    return 0;
}
