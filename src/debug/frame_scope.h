// What the names in a frame of a script that stands still mean.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "debug/set_variables.h"
#include "debug/statement_starts.h"
#include "host/engine/engine_compat.h"

namespace korvant {

/// A value without a name: what a variable holds or an expression gave.
struct TypedValue {
    int typeId = 0;
    void* address = nullptr;  ///< of the value; of the pointer for a handle; null: not yet set
    bool constant = false;
    bool unset = false;  ///< a variable of a plain type that nothing has set: it may be, not read
    bool gone = false;   ///< an object whose block is being left: it has been destroyed
};

/// Why the variable `name` has no value that can be read.
std::string whyNoValue(std::string_view name, const TypedValue& value);
class FrameScope;
/// The same of a local variable of a frame.
std::string whyNoValue(std::string_view name, const FrameScope& scope);

/// A variable, a member of the frame's object, or a global variable.
struct NamedValue {
    std::string name;         ///< with its namespace
    std::string declaration;  ///< "int[] values"; empty for members and globals
    TypedValue value;
    asUINT index = 0;  ///< of the variable in its frame, or of the member in its object
};

/// Reads names in one frame. Valid while the script stands still.
class FrameScope {
  public:
    /// `context` may be null and `level` beyond the last frame: the globals of `module` then.
    /// `text` may be null; it is that of the section `mainSource`. So may `set`.
    FrameScope(asIScriptContext* context, unsigned level, asIScriptModule* module,
               const StatementStarts* text, std::string_view mainSource,
               const SetVariables* set = nullptr);
    /// Of the innermost frame of a context that stands at a statement, whose place is known.
    struct Place {
        const asIScriptFunction* function;
        int line;
        int column;
        const char* section;
    };
    FrameScope(const Place& place, asIScriptContext& context, asIScriptModule* module,
               const StatementStarts* text, std::string_view mainSource, const SetVariables* set);

    asIScriptContext* context() const noexcept { return context_; }
    unsigned level() const noexcept { return level_; }
    int line() const noexcept { return line_; }
    int column() const noexcept { return column_; }
    asIScriptFunction* function() const noexcept { return function_; }
    asIScriptModule* module() const noexcept { return module_; }
    std::string nameSpace() const;
    /// The global variables as a function of that namespace finds them.
    FrameScope globalsWithin(std::string nameSpace) const;

    /// Parameters and locals in order of declaration, one for each name: the innermost in scope.
    /// `among`: those alone whose names stand in it, where it is not empty.
    std::vector<NamedValue> locals(std::string_view among = {}) const;
    bool hasThis() const;
    TypedValue thisObject() const;
    /// Members of the frame's object, those of its base classes among them.
    std::vector<NamedValue> members() const;
    std::vector<NamedValue> globals() const;

    /// A local, "this", a member, a global variable as the frame's function would find it; false
    /// for any other name. `name` may have a namespace.
    bool find(std::string_view name, TypedValue& found) const;
    /// Whether nothing has set a local variable that was found at this statement, perhaps at an
    /// earlier pass, and lies at `address` now.
    bool isUnset(const TypedValue& local, asUINT index, const void* address) const;
    bool findLocal(std::string_view name, NamedValue& found) const;
    bool findMember(std::string_view name, NamedValue& found) const;
    bool findGlobal(std::string_view name, TypedValue& found) const;

  private:
    std::string_view localName(asUINT index) const;
    /// Which one a variable is of those with its name in the function.
    struct Namesake {
        std::size_t nth = 0;
        std::size_t count = 0;
    };
    Namesake namesakeOf(asUINT index) const;
    enum class Known { no, yes, declared };
    Known known(asUINT index, const Namesake& which) const;
    bool begun() const;
    NamedValue local(asUINT index, Known known) const;
    bool notYetSet(std::string_view name) const;
    bool neverSet(const NamedValue& variable) const;

    asIScriptContext* context_;
    unsigned level_;
    asIScriptFunction* function_ = nullptr;
    asIScriptModule* module_;
    const StatementStarts* text_;
    const SetVariables* set_;
    int line_ = 0;
    int column_ = 0;
    std::string nameSpace_;
};

}  // namespace korvant
