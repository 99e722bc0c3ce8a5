// Computing and checking.
#include <algorithm>

#include "object/form/report_text.h"
#include "object/form/rule_book.h"

namespace korvant {

/// What others wrote: the readers go stale, and so does the property's own computation.
void RuleBook::takeChanges() {
    for (const std::int32_t property : values_.changed()) {
        valueChanged(property);
        if (row(property).computation != MarkSet::kNone)
            markedComputations_.mark(row(property).computation);
    }
    values_.clearChanged();
}

void RuleBook::pass(std::int32_t edited) {
    takeChanges();
    std::uint32_t number = markedComputations_.next(0);
    for (; number != MarkSet::kNone; number = markedComputations_.next(number + 1)) {
        Computation& computation = computations_[number];
        // Its turn comes with the next pass, as it does when all are evaluated.
        if (computation.property == edited) continue;
        markedComputations_.unmark(number);
        compute(computation);
    }
    check();
}

bool RuleBook::evaluate(Computation& computation, double& value) {
    const bool faulty = !evaluator_.evaluateValue(computation.rule, value);
    if (faulty != computation.faulty) touched_.push_back(computation.property);
    computation.faulty = faulty;
    return !faulty;
}

void RuleBook::compute(Computation& computation) {
    double value = 0.0;
    if (!evaluate(computation, value)) return;
    store(computation.property, value);
    for (const std::int32_t property : values_.changed()) valueChanged(property);
    values_.clearChanged();
}

void RuleBook::store(std::int32_t property, double value) {
    switch (row(property).letter) {
        case 'b':
            values_.setBoolean(property, value != 0.0);
            break;
        case 'c':
        case 'l':
        case 'o':
            values_.setInteger(property, truncated(value));
            break;
        case 'd':
            values_.setReal(property, value);
            break;
        default:
            break;
    }
}

void RuleBook::check() {
    takeChanges();
    std::uint32_t number = markedConditions_.next(0);
    for (; number != MarkSet::kNone; number = markedConditions_.next(number + 1)) {
        markedConditions_.unmark(number);
        evaluate(number);
    }
    // Computations that wait for the next pass: whether they have a fault is told at once.
    number = markedComputations_.next(0);
    for (; number != MarkSet::kNone; number = markedComputations_.next(number + 1)) {
        double value = 0.0;
        evaluate(computations_[number], value);
    }
}

void RuleBook::evaluate(std::uint32_t number) {
    Condition& condition = conditions_[number];
    double value = 1.0;
    const bool faulty = !evaluator_.evaluateValue(condition.rule, value);
    const bool fails = !faulty && value == 0.0;
    if (fails != condition.fails || faulty != condition.faulty) settle(condition, fails, faulty);
}

void RuleBook::settle(Condition& condition, bool fails, bool faulty) {
    const int step = static_cast<int>(fails) - static_cast<int>(condition.fails);
    Row& target = rows_[static_cast<std::size_t>(condition.property)];
    if (condition.kind == Kind::enable) {
        target.failedEnables += step;
    } else if (condition.kind == Kind::error) {
        target.failedErrors += step;
        failedErrors_ += step;
    } else {
        target.failedWarnings += step;
        failedWarnings_ += step;
    }
    condition.fails = fails;
    condition.faulty = faulty;
    touched_.push_back(condition.property);
    if (!reports_.empty()) reports_.erase(condition.property);
}

std::vector<std::string> RuleBook::failing(std::int32_t property, bool errors) const {
    const Kind kind = errors ? Kind::error : Kind::warning;
    std::vector<std::string> messages;
    for (std::uint32_t i = row(property).firstCondition; i < row(property).endCondition; ++i)
        if (conditions_[i].fails && conditions_[i].kind == kind) messages.push_back(messages_[i]);
    return messages;
}

const RuleBook::Reports& RuleBook::reports(std::int32_t property) const {
    static const Reports kNone;
    if (row(property).failedErrors == 0 && row(property).failedWarnings == 0) return kNone;
    const auto known = reports_.find(property);
    if (known != reports_.end()) return known->second;
    NumberedMessages errors;
    NumberedMessages warnings;
    for (const std::string& message : failing(property, true)) errors.add(message);
    for (const std::string& message : failing(property, false)) warnings.add(message);
    Reports made{propertyReport(errors, true, locale_), propertyReport(warnings, false, locale_)};
    return reports_.emplace(property, std::move(made)).first->second;
}

const std::string& RuleBook::errorReport(std::int32_t property) const {
    return reports(property).errors;
}

const std::string& RuleBook::warningReport(std::int32_t property) const {
    return reports(property).warnings;
}

std::vector<std::string> RuleBook::failedEnables(std::int32_t property) const {
    std::vector<std::string> texts;
    for (std::uint32_t i = row(property).firstCondition; i < row(property).endCondition; ++i)
        if (conditions_[i].fails && conditions_[i].kind == Kind::enable)
            texts.push_back(conditions_[i].rule.text());
    return texts;
}

bool RuleBook::checksAnything() const noexcept {
    return std::any_of(conditions_.begin(), conditions_.end(),
                       [](const Condition& one) { return one.kind != Kind::enable; });
}

std::vector<RuleBook::Fault> RuleBook::faults(std::int32_t property) {
    std::vector<Fault> texts;
    const auto describe = [&](ExpressionEvaluator::Rule& rule) {
        texts.push_back({rule.text(), evaluator_.evaluate(rule).error});
    };
    const std::uint32_t computation = row(property).computation;
    if (computation != MarkSet::kNone && computations_[computation].faulty)
        describe(computations_[computation].rule);
    for (std::uint32_t i = row(property).firstCondition; i < row(property).endCondition; ++i)
        if (conditions_[i].faulty) describe(conditions_[i].rule);
    return texts;
}

}  // namespace korvant
