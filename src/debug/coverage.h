// Which lines of a script a run has executed, and how often.
#pragma once

#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

#include "debug/code_lines.h"

namespace korvant {

class Coverage {
  public:
    /// One statement of `context` is about to run.
    void count(asIScriptContext& context) noexcept;

    struct Line {
        std::int32_t line = 0;
        std::uint64_t hits = 0;
    };
    /// Lines with code of a source, ascending, those that never ran with 0.
    std::vector<Line> lines(const CodeLines& code, const std::string& source) const;
    /// The form that lcov's tools read. `mainPath` stands for the main text.
    std::string lcov(const CodeLines& code, const std::string& mainPath) const;
    /// "12 of 15 lines (80 %)".
    std::string summary(const CodeLines& code) const;
    void clear();

    /// The section that is the main text.
    void setMainSource(std::string source) { mainSource_ = std::move(source); }

  private:
    struct Counts {
        asIScriptFunction* function = nullptr;
        std::string source;
        std::vector<std::uint64_t> hits;  ///< by line
    };
    std::size_t slotOf(asIScriptContext& context, asIScriptFunction* function);

    std::unordered_map<asIScriptFunction*, std::size_t> slots_;
    std::vector<Counts> counts_;
    asIScriptFunction* last_ = nullptr;
    std::size_t lastSlot_ = 0;
    std::string mainSource_;
};

}  // namespace korvant
