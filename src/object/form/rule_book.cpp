// Reading the rules of an object.
#include "object/form/rule_book.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace korvant {

namespace {

/// In the list of readers: the number is that of a computation.
constexpr std::uint32_t kComputation = 0x80000000U;

}  // namespace

std::string expressionKey(std::string_view name) {
    std::string key;
    for (const char c : name) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte <= 32 || byte >= 128) continue;
        key += c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    }
    return key;
}

std::int32_t truncated(double value) noexcept {
    using Range = std::numeric_limits<std::int32_t>;
    if (std::isnan(value)) return 0;
    if (value >= static_cast<double>(Range::max())) return Range::max();
    if (value <= static_cast<double>(Range::min())) return Range::min();
    return static_cast<std::int32_t>(value);
}

RuleBook::RuleBook(const ObjectModel& object, WorkingCopy& values, std::int32_t locale)
    : values_(values), locale_(locale), rows_(object.properties.size()) {
    bindNames(object);
    readRules(object, locale);
    indexReaders();
    markAll();
}

void RuleBook::bindNames(const ObjectModel& object) {
    for (std::size_t i = 0; i < object.properties.size(); ++i) {
        const PropertyRecord& property = object.properties[i];
        rows_[i].letter = property.letter;
        const std::string key = expressionKey(property.name);
        const bool bindable = !key.empty() && property.letter != '?';
        if (!bindable || evaluator_.findSlot(key) != ExpressionEvaluator::kNoSlot) continue;
        rows_[i].slot = evaluator_.setValue(key, numberOf(static_cast<std::int32_t>(i)));
    }
}

void RuleBook::readRules(const ObjectModel& object, std::int32_t locale) {
    for (std::int32_t index = 0; index < object.count(); ++index) {
        const PropertyRecord& property = object.properties[static_cast<std::size_t>(index)];
        Row& target = rows_[static_cast<std::size_t>(index)];
        target.firstCondition = static_cast<std::uint32_t>(conditions_.size());
        const PropertyRules& rules = object.rulesOf(property);
        addConditions(rules.enables, index, Kind::enable, object);
        addConditions(rules.errors, index, Kind::error, object);
        addConditions(rules.warnings, index, Kind::warning, object);
        target.endCondition = static_cast<std::uint32_t>(conditions_.size());
        // A computation of a text has no effect.
        const std::int32_t type = property_type::ofLetter(property.letter);
        if (!rules.computation || type == property_type::kText || type == property_type::kNone)
            continue;
        target.computation = static_cast<std::uint32_t>(computations_.size());
        computations_.push_back({ExpressionEvaluator::Rule(*rules.computation), index});
    }
    locale_ = locale;
}

void RuleBook::addConditions(const ConstraintList& constraints, std::int32_t property, Kind kind,
                             const ObjectModel& object) {
    for (const Constraint& one : constraints) {
        conditions_.push_back({ExpressionEvaluator::Rule(one.expression), property, kind});
        messages_.push_back(object.translate(one.message, locale_));
    }
}

/// Counts first and fills then, so that the readers of a slot lie side by side.
void RuleBook::indexReaders() {
    std::vector<std::pair<ExpressionEvaluator::Slot, std::uint32_t>> pairs;
    const auto collect = [&](ExpressionEvaluator::Rule& rule, std::uint32_t number) {
        for (const ExpressionEvaluator::Slot slot : evaluator_.slotsRead(rule))
            pairs.emplace_back(slot, number);
    };
    for (std::size_t i = 0; i < computations_.size(); ++i)
        collect(computations_[i].rule, static_cast<std::uint32_t>(i) | kComputation);
    for (std::size_t i = 0; i < conditions_.size(); ++i)
        collect(conditions_[i].rule, static_cast<std::uint32_t>(i));
    ExpressionEvaluator::Slot highest = 0;
    for (const Row& one : rows_)
        if (one.slot != ExpressionEvaluator::kNoSlot) highest = std::max(highest, one.slot);
    readerStart_.assign(std::size_t{highest} + 2, 0);
    for (const auto& [slot, number] : pairs) ++readerStart_[std::size_t{slot} + 1];
    for (std::size_t i = 1; i < readerStart_.size(); ++i) readerStart_[i] += readerStart_[i - 1];
    readers_.resize(pairs.size());
    std::vector<std::uint32_t> next = readerStart_;
    for (const auto& [slot, number] : pairs) readers_[next[slot]++] = number;
}

void RuleBook::markAll() {
    markedConditions_ = MarkSet(static_cast<std::uint32_t>(conditions_.size()));
    markedComputations_ = MarkSet(static_cast<std::uint32_t>(computations_.size()));
    for (std::uint32_t i = 0; i < conditions_.size(); ++i) markedConditions_.mark(i);
    for (std::uint32_t i = 0; i < computations_.size(); ++i) markedComputations_.mark(i);
}

double RuleBook::numberOf(std::int32_t property) const {
    switch (property_type::ofLetter(row(property).letter)) {
        case property_type::kInteger:
            return values_.integer(property);
        case property_type::kReal:
            return values_.real(property);
        case property_type::kBoolean:
            return values_.boolean(property) ? 1.0 : 0.0;
        default:
            return static_cast<double>(values_.text(property).size());
    }
}

void RuleBook::valueChanged(std::int32_t property) {
    touched_.push_back(property);
    const ExpressionEvaluator::Slot slot = row(property).slot;
    if (slot == ExpressionEvaluator::kNoSlot) return;
    evaluator_.setSlotValue(slot, numberOf(property));
    for (std::uint32_t i = readerStart_[slot]; i < readerStart_[slot + 1]; ++i) {
        if ((readers_[i] & kComputation) != 0)
            markedComputations_.mark(readers_[i] & ~kComputation);
        else
            markedConditions_.mark(readers_[i]);
    }
}

}  // namespace korvant
