// Where a step ends.
#pragma once

#include <cstdint>

#include "debug/stop_rules.h"
#include "host/engine/engine_compat.h"

namespace korvant {

/// Where a statement stands, and in which call.
struct StatementPlace {
    const asIScriptContext* context = nullptr;
    const asIScriptFunction* function = nullptr;
    unsigned depth = 0;
    std::int32_t line = 0;
    int column = 0;
    const char* section = nullptr;  ///< of the statement, while its module lasts

    static StatementPlace of(asIScriptContext& context);
    bool sameLine(const StatementPlace& other) const noexcept {
        return function == other.function && line == other.line;
    }
    bool operator==(const StatementPlace&) const = default;
};

/// One step, from the place where it began. By depth of calls, not by what is above or below.
class StepRule {
  public:
    enum class Mode { none, over, into, out };

    void begin(Mode mode, const StatementPlace& from, bool byStatement) noexcept {
        mode_ = mode;
        from_ = from;
        byStatement_ = byStatement;
    }
    void end() noexcept { mode_ = Mode::none; }
    bool active() const noexcept { return mode_ != Mode::none; }
    /// Whether the step ends at the statement that is about to run. `newCall`: a call has begun
    /// there since the statement before.
    bool endsAt(const StatementPlace& here, bool newCall) const noexcept;

  private:
    bool elsewhere(const StatementPlace& here) const noexcept {
        return byStatement_ ? !(here.function == from_.function && here.line == from_.line &&
                                here.column == from_.column)
                            : !here.sameLine(from_);
    }

    Mode mode_ = Mode::none;
    StatementPlace from_;
    bool byStatement_ = false;
};

/// Tells a new pass through a line from further statements on it, and from the second call for the
/// first statement of a function. A loop on one line is one pass.
class LinePass {
  public:
    /// `again`: no statement on another line came between. True when a pass begins.
    bool begins(const StatementPlace& here, bool again) noexcept;
    void forget() noexcept { last_ = {}; }

  private:
    StatementPlace last_;
};

}  // namespace korvant
