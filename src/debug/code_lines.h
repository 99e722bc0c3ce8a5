// Which lines of a built script have code. Immutable; may be read from any thread.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "debug/statement_starts.h"
#include "debug/stop_rules.h"
#include "host/engine/engine_compat.h"

namespace korvant {

class CodeLines {
  public:
    struct Function {
        std::string name;         ///< "ns::Class::method"
        std::string declaration;  ///< "int Class::method(int)"
        std::string source;
        std::vector<std::int32_t> lines;  ///< ascending, each once, never empty
        std::int32_t begin = 0;           ///< line of its declaration
        int id = 0;                       ///< the engine's number of the function
        bool foreign = false;             ///< of another module of the host's
    };
    /// Where a breakpoint that is wanted at a line stops.
    struct Resolved {
        bool verified = false;
        std::int32_t line = 0;
        std::string reason;  ///< why it is not verified
    };

    /// What `module` has been built from, and what it may call in the host's other modules, as far
    /// as that has sources of its own: `mainText` gives the statement starts that the engine
    /// does not report; `mainSource` is the name of its section, which becomes the empty one.
    static std::shared_ptr<const CodeLines> of(asIScriptModule& module,
                                               const StatementStarts& mainText,
                                               std::string_view mainSource);

    /// Ascending; empty for an unknown source.
    const std::vector<std::int32_t>& lines(const std::string& source) const;
    /// All but the main text.
    std::vector<std::string> otherSources() const;
    bool hasSource(const std::string& source) const { return lines_.count(source) > 0; }
    bool hasCode(const std::string& source, std::int32_t line) const;

    /// The line itself, or the next one with code.
    Resolved resolve(const std::string& source, std::int32_t line) const;
    /// Functions with this name: "name", "Class::name" or "ns::name"; a bare name finds functions
    /// and methods of every class.
    std::vector<const Function*> find(std::string_view name) const;
    const std::vector<Function>& functions() const noexcept { return functions_; }

  private:
    void addHeads(const StatementStarts& mainText);
    void finish();
    Function* innermost(const std::string& source, std::int32_t line);

    std::vector<Function> functions_;
    std::map<std::string, std::vector<std::int32_t>> lines_;
};

}  // namespace korvant
