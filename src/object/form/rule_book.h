// The rules of an object at work on values that are edited.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "expr/evaluator.h"
#include "object/form/working_copy.h"
#include "object/model/mark_set.h"
#include "object/model/object_model.h"

namespace korvant {

/// The name as an expression reads it: lower case, without bytes of 32 or less or 128 and above.
std::string expressionKey(std::string_view name);

/// `value` as an integer: the fraction is cut off, what does not fit saturates, not-a-number is 0.
std::int32_t truncated(double value) noexcept;

/// Computes and checks. Every property is bound to its name (of two with one key the one of lower
/// index) with its number: integer, option index, colour, real, 1 or 0, or the length of a text.
///
/// A change marks the rules that read it, and a pass evaluates the marked ones only. What comes
/// out is what evaluating all of them would give. An expression that cannot be evaluated computes
/// nothing, fails nothing and disables nothing.
class RuleBook {
  public:
    static constexpr std::int32_t kNoRow = -1;

    /// `values` must outlive the book. Nothing is evaluated before the first pass.
    RuleBook(const ObjectModel& object, WorkingCopy& values, std::int32_t locale);
    RuleBook(const RuleBook&) = delete;
    RuleBook& operator=(const RuleBook&) = delete;

    /// Computations in index order but for that of the row being edited, each result visible to
    /// the next; then check().
    void pass(std::int32_t edited);
    /// Enable conditions, errors and warnings.
    void check();
    /// The next pass evaluates everything.
    void markAll();

    bool enabled(std::int32_t property) const { return row(property).failedEnables == 0; }
    int failingErrors(std::int32_t property) const { return row(property).failedErrors; }
    int failingWarnings(std::int32_t property) const { return row(property).failedWarnings; }
    /// Over all properties.
    int failingErrors() const noexcept { return failedErrors_; }
    int failingWarnings() const noexcept { return failedWarnings_; }

    /// HTML; empty when nothing fails. The text stands until the next pass.
    const std::string& errorReport(std::int32_t property) const;
    const std::string& warningReport(std::int32_t property) const;
    /// Messages of what fails, in order, translated.
    std::vector<std::string> failing(std::int32_t property, bool errors) const;
    /// Enable conditions that do not hold.
    std::vector<std::string> failedEnables(std::int32_t property) const;
    bool computed(std::int32_t property) const {
        return row(property).computation != MarkSet::kNone;
    }
    /// Any error or warning could fail.
    bool checksAnything() const noexcept;
    /// A rule that could not be evaluated, and why, in English.
    struct Fault {
        std::string expression;
        std::string message;
        bool operator==(const Fault&) const = default;
    };
    std::vector<Fault> faults(std::int32_t property);

    /// Rows whose value or state changed since the last clearTouched(); some several times.
    const std::vector<std::int32_t>& touched() const noexcept { return touched_; }
    void clearTouched() noexcept { touched_.clear(); }

    /// An expression over the values as they are.
    ExpressionResult evaluate(std::string_view text) { return evaluator_.evaluate(text); }

  private:
    enum class Kind : std::uint8_t { enable, error, warning };

    struct Condition {
        ExpressionEvaluator::Rule rule;
        std::int32_t property = 0;
        Kind kind = Kind::enable;
        bool fails = false;
        bool faulty = false;
    };
    struct Computation {
        ExpressionEvaluator::Rule rule;
        std::int32_t property = 0;
        bool faulty = false;
    };
    struct Row {
        ExpressionEvaluator::Slot slot = ExpressionEvaluator::kNoSlot;
        std::uint32_t firstCondition = 0;
        std::uint32_t endCondition = 0;
        std::uint32_t computation = MarkSet::kNone;
        std::int32_t failedEnables = 0;
        std::int32_t failedErrors = 0;
        std::int32_t failedWarnings = 0;
        char letter = '?';
    };
    struct Reports {
        std::string errors;
        std::string warnings;
    };

    void bindNames(const ObjectModel& object);
    void readRules(const ObjectModel& object, std::int32_t locale);
    void addConditions(const ConstraintList& constraints, std::int32_t property, Kind kind,
                       const ObjectModel& object);
    void indexReaders();

    const Row& row(std::int32_t property) const {
        return rows_[static_cast<std::size_t>(property)];
    }
    double numberOf(std::int32_t property) const;
    void takeChanges();
    void valueChanged(std::int32_t property);
    bool evaluate(Computation& computation, double& value);
    void compute(Computation& computation);
    void store(std::int32_t property, double value);
    void evaluate(std::uint32_t number);
    void settle(Condition& condition, bool fails, bool faulty);
    const Reports& reports(std::int32_t property) const;

    WorkingCopy& values_;
    std::int32_t locale_;
    ExpressionEvaluator evaluator_;
    std::vector<Row> rows_;
    std::vector<Condition> conditions_;      ///< by property, then enable, error, warning
    std::vector<std::string> messages_;      ///< of conditions_, translated
    std::vector<Computation> computations_;  ///< in index order
    MarkSet markedConditions_;
    MarkSet markedComputations_;
    /// Rules that read a slot: readers_[readerStart_[slot]] up to the next slot's start.
    std::vector<std::uint32_t> readerStart_;
    std::vector<std::uint32_t> readers_;
    int failedErrors_ = 0;
    int failedWarnings_ = 0;
    std::vector<std::int32_t> touched_;
    mutable std::unordered_map<std::int32_t, Reports> reports_;
};

}  // namespace korvant
