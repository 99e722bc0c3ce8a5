// The expression evaluator: conditions and computations over named numbers.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>

#include "expr/kept_reading.h"
#include "expr/program.h"

namespace korvant {

/// Bounds of one evaluator. Each ends in an error text, never in a crash.
struct ExpressionLimits {
    std::size_t textBytes = std::size_t{1} << 20;  ///< longest expression text, in bytes
    int depth = 1000;                              ///< brackets and calls inside each other
    std::size_t cacheEntries = 64;                 ///< texts kept read; the oldest is dropped first
    std::size_t cacheBytes = std::size_t{1} << 20;  ///< all kept texts and programs together
};

/// What an evaluation gave. `error` is empty on success; otherwise it holds the
/// English message and `value` has no meaning.
struct ExpressionResult {
    double value = 0.0;
    std::string error;
};

/// Evaluates expression texts over a table of named double values. Not safe for
/// use from two threads at once. Copying copies names and values; the kept
/// readings are not copied.
class ExpressionEvaluator {
  public:
    /// Place of a named value; stays valid until the name is removed or the names are cleared.
    using Slot = std::uint32_t;
    static constexpr Slot kNoSlot = ~Slot{0};

    explicit ExpressionEvaluator(const ExpressionLimits& limits = {});
    ~ExpressionEvaluator();
    ExpressionEvaluator(const ExpressionEvaluator& other);
    ExpressionEvaluator& operator=(const ExpressionEvaluator& other);

    /// Value of `text`, read afresh or from the cache.
    ExpressionResult evaluate(std::string_view text) {
        if (expr::KeptReading* kept = shared_->recalled.find(text)) [[likely]]
            return {expr::runProgram(kept->steps(text.size()), shared_->run), {}};
        return evaluateOther(text);
    }

    /// Names are matched exactly and expression texts are lower-cased before the look-up, so
    /// a name with capital letters is never found. A new name makes kept texts be read afresh.
    Slot setValue(std::string_view name, double value);
    /// The slot of `name`, or kNoSlot.
    Slot findSlot(std::string_view name) const;
    void setSlotValue(Slot slot, double value) noexcept;
    double slotValue(Slot slot) const noexcept;
    bool removeValue(std::string_view name);
    void clearValues();
    std::size_t valueCount() const noexcept;

    /// `text` as it is read: in lower case, without blanks, every operation but the outermost in
    /// parentheses, as in "a-(b-c)" for "a-b-c". With `error` set when it does not read.
    struct Grouping {
        std::string text;
        std::string error;
    };
    Grouping grouping(std::string_view text);

    /// How many texts the cache may keep; dropping the oldest first if it holds more.
    void setCacheEntries(std::size_t entries);

    /// A text that its owner evaluates again and again (a rule of a form). It remembers its
    /// reading beside the text, so that an evaluation searches nothing.
    class Rule {
      public:
        Rule();
        explicit Rule(std::string text);
        ~Rule();
        Rule(const Rule& other);             ///< copies the text only
        Rule& operator=(const Rule& other);  ///< copies the text only
        Rule(Rule&&) noexcept;
        Rule& operator=(Rule&&) noexcept;
        const std::string& text() const noexcept { return text_; }

      private:
        friend class ExpressionEvaluator;
        struct Reading;
        std::string text_;
        std::unique_ptr<Reading> reading_;
        const expr::Step* program_ = nullptr;  ///< of reading_, if it became a program
        std::uint64_t programVersion_;         ///< of the names that program_ is good for
    };

    /// The same result as evaluate(rule.text()).
    ExpressionResult evaluate(Rule& rule);
    /// evaluate(rule) without making a text: false when the evaluation ended in an error.
    bool evaluateValue(Rule& rule, double& value) {
        if (rule.programVersion_ != shared_->run.namesVersion) [[unlikely]]
            return evaluateOther(rule, value);
        value = expr::runProgram(rule.program_, shared_->run);
        return true;
    }
    /// The slots that `rule` reads, each once, in ascending order; empty when its text does not
    /// read. Valid until the set of names changes or the rule is destroyed.
    std::span<const Slot> slotsRead(Rule& rule);

  private:
    struct State;

    /// The part of the state that evaluations of what was read before need.
    struct Shared {
        expr::ProgramRun run;
        expr::RecallTable recalled;
    };

    ExpressionResult evaluateOther(std::string_view text);
    bool evaluateOther(Rule& rule, double& value);

    std::unique_ptr<State> state_;
    Shared* shared_;  ///< of state_
};

}  // namespace korvant
