// Which lines of a script a run has executed, and how often.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "debug/code_lines.h"
#include "host/engine/program_position.h"

namespace korvant {

/// While one lives nothing is counted: script code runs for somebody who looks. Script's thread.
class CountingPause {
  public:
    CountingPause() noexcept { ++depth; }
    ~CountingPause() { --depth; }
    CountingPause(const CountingPause&) = delete;
    CountingPause& operator=(const CountingPause&) = delete;

    static inline int depth = 0;
};

class Coverage {
  public:
    /// `mainSource`: the section that is the main text. Not while a script runs.
    explicit Coverage(std::string mainSource);

    /// A statement of `context` is about to run, a function is entered, or execution leaves it.
    void count(asIScriptContext& context) noexcept {
        if (CountingPause::depth > 0) return;
        const asDWORD* const position = programPosition(context);
        const std::size_t at =
            (reinterpret_cast<std::uintptr_t>(position) - reinterpret_cast<std::uintptr_t>(code_)) /
            sizeof(asDWORD);
        if (at >= length_) return enter(context, position);
        if (asksAt(position))
            countAt(context, position, at);
        else if (at == 0)
            ++*calls_;
        before_ = position;
    }
    /// Functions may have been replaced: their addresses are used again. Counts stay.
    void forgetFunctions() noexcept;
    void clear();

    struct Line {
        std::int32_t line = 0;
        std::uint64_t hits = 0;
    };
    /// Lines of a source with code or that ran, ascending, those that never ran with 0.
    std::vector<Line> lines(const CodeLines& code, const std::string& source) const;
    /// The form that lcov's tools read. `mainPath` stands for the main text.
    std::string lcov(const CodeLines& code, const std::string& mainPath) const;
    /// "12 of 15 lines (80 %)".
    std::string summary(const CodeLines& code) const;

  private:
    using Hits = std::vector<std::uint64_t>;  ///< by line
    struct Statement {
        std::uint64_t hits = 0;
        std::int32_t line = 0;  ///< 0 where no statement has run
    };
    struct Counted {
        std::string source;
        std::string declaration;
        std::uint64_t calls = 0;
        std::vector<Statement> statements;  ///< by place in the function's code
    };

    void countAt(asIScriptContext& context, const asDWORD* position, std::size_t at) noexcept {
        // The engine calls when it enters a function and again for the statement there, and once
        // more where execution leaves. One that calls itself in its first statement comes in pairs.
        if (position != before_) {
            second_ = false;
        } else {
            if (context.GetState() != asEXECUTION_ACTIVE) return;
            second_ = !second_;
            if (second_) {
                if (at == 0) ++*calls_;
                return;
            }
        }
        Statement& statement = statements_[at];
        if (statement.hits++ == 0) learn(context, statement);
    }
    static void learn(asIScriptContext& context, Statement& statement) noexcept;
    void enter(asIScriptContext& context, const asDWORD* position) noexcept;
    Counted* countedOf(asIScriptFunction& function, std::size_t length);
    Hits hitsOf(const std::string& source) const;
    std::uint64_t callsOf(const CodeLines::Function& function) const;
    std::string functionRecords(const CodeLines& code, const std::string& source) const;

    // The function that runs.
    const asDWORD* code_ = nullptr;
    std::size_t length_ = 0;
    Statement* statements_ = nullptr;
    std::uint64_t* calls_ = nullptr;
    const asDWORD* before_ = nullptr;  ///< the place of the last call
    bool second_ = false;              ///< the last call was the second one for its statement

    std::vector<std::unique_ptr<Counted>> counted_;
    std::unordered_map<asIScriptFunction*, Counted*> ofFunction_;
    std::string mainSource_;
};

}  // namespace korvant
