// Which lines of a script a run has executed, and how often.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "debug/code_lines.h"

namespace korvant {

class Coverage {
  public:
    /// `mainSource`: the section that is the main text.
    explicit Coverage(std::string mainSource) : mainSource_(std::move(mainSource)) {}

    /// One statement of `context` is about to run.
    void count(asIScriptContext& context) noexcept;
    /// Functions may have been replaced: their addresses are used again. Counts stay.
    void forgetFunctions() noexcept {
        last_ = nullptr;
        counted_ = {};
        second_ = false;
    }
    void clear();

    struct Line {
        std::int32_t line = 0;
        std::uint64_t hits = 0;
    };
    /// Lines with code of a source, ascending, those that never ran with 0.
    std::vector<Line> lines(const CodeLines& code, const std::string& source) const;
    /// The form that lcov's tools read. `mainPath` stands for the main text.
    std::string lcov(const CodeLines& code, const std::string& mainPath) const;
    /// Lines that ran and of which `code` knows nothing, "SOURCE:LINE " each; for tests.
    std::string unknownLines(const CodeLines& code) const;
    /// "12 of 15 lines (80 %)".
    std::string summary(const CodeLines& code) const;

  private:
    struct Counts {
        std::string source;
        std::vector<std::uint64_t> hits;  ///< by line
    };
    std::size_t slotOf(asIScriptFunction& function) noexcept;
    static bool grow(std::vector<std::uint64_t>& hits, std::size_t index) noexcept;
    std::string functionRecords(const CodeLines& code, const std::string& source) const;

    std::vector<Counts> counts_;
    struct Place {
        const asIScriptFunction* function = nullptr;
        std::int32_t line = 0;
        int column = 0;
        bool operator==(const Place&) const = default;
    };
    Place counted_;
    bool second_ = false;  ///< the last call was the second one for its statement
    asIScriptFunction* last_ = nullptr;
    std::size_t lastSlot_ = 0;
    std::string mainSource_;
};

}  // namespace korvant
