// Values of a script that stands still, as a tree that is read page by page.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "debug/frame_scope.h"
#include "debug/statement_starts.h"
#include "host/engine/engine_compat.h"

namespace korvant {

/// Names what has children in a ValueTree; 0 has none. Valid until the tree is cleared.
using ValueNode = std::uint32_t;

/// One value as it is shown. Texts are UTF-8.
struct DebugValue {
    std::string name;
    std::string value;          ///< exact; "not yet set", "null"
    std::string type;           ///< as scripts write it; the dynamic type of a handle
    std::string evaluateName;   ///< an expression that gives it; empty where there is none
    ValueNode node = 0;         ///< its children; 0: none
    std::uint64_t named = 0;    ///< how many children with names
    std::uint64_t indexed = 0;  ///< how many elements
    bool changed = false;       ///< other than at the last stop
    bool settable = false;
    bool heading = false;  ///< no value: a name over those below it
};

struct ValueFormat {
    bool hex = false;             ///< integers as 0x with the width of their type
    std::size_t longest = 16384;  ///< bytes of one text; "..." behind what is cut
    /// For the clipboard: objects and arrays to their last member.
    static ValueFormat whole() { return {false, static_cast<std::size_t>(-1)}; }
};

enum class ValueScope { locals, thisObject, globals };

/// What can be assigned to.
struct ValueTarget {
    TypedValue value;             ///< address null: see `part`
    const void* owner = nullptr;  ///< the object whose view has part `part`
    const asITypeInfo* ownerType = nullptr;
    std::uint64_t part = 0;
    std::string evaluateName;
    std::string why;       ///< it cannot be set; empty: it can
    bool byPath = false;   ///< found in a frame by `evaluateName`; else it stays where it is
    unsigned level = ~0u;  ///< of that frame
};

/// Values lie in the script's memory: the tree must be ended before the script goes on. Reading
/// runs no script code. Script's thread only.
class ValueTree {
  public:
    ValueTree();
    ~ValueTree();
    ValueTree(const ValueTree&) = delete;
    ValueTree& operator=(const ValueTree&) = delete;

    /// The script stands still: all nodes of before are gone. `text` is the script's main text, by
    /// which the declaration of a variable is told from its use, and `mainSource` its section;
    /// null: unknown. So may `set` be. `module` has the global variables where there is no frame.
    /// All must live to end().
    void begin(asIScriptContext* context, asIScriptModule* module, const StatementStarts* text,
               std::string_view mainSource, SetVariables* set);
    /// The script goes on: what was shown is remembered for the marks of the next stop.
    void end();

    /// Names in a frame; `level` is the engine's number. A level beyond the last: globals alone.
    FrameScope scopeOf(unsigned level) const;

    /// The variables of a frame, the members of its object, or the global variables of its module.
    ValueNode scope(ValueScope which, unsigned level);

    enum class Filter { all, named, indexed };
    /// Children `start` ... of a node, at most `count` (0: all). Empty for unknown nodes.
    std::vector<DebugValue> children(ValueNode node, std::uint64_t start = 0,
                                     std::uint64_t count = 0, const ValueFormat& format = {},
                                     Filter filter = Filter::all);
    bool knows(ValueNode node) const;

    /// The value of a path without a call: names, "this", ".member", "[index]", "ns::name". False
    /// when the expression is something else or there is no such value.
    bool find(const FrameScope& scope, std::string_view path, ValueTarget& found) const;
    /// Shows a value that is no child of a node. It must stay where it is until end().
    DebugValue show(const ValueTarget& value, std::string name, const ValueFormat& format = {});
    /// A child as it is now; false when there is none of this name.
    bool target(ValueNode node, std::string_view child, ValueTarget& found) const;
    bool child(ValueNode node, std::string_view name, DebugValue& found,
               const ValueFormat& format = {});
    /// A variable has been set from outside: it is not unset any more.
    void touch(const void* variable, const FrameScope& scope);
    /// Code has run, which may have set and let go of anything: nodes are read anew when they are
    /// asked for, and those whose value is gone are empty.
    void readAnew();
    /// Keeps something alive until end().
    void keep(std::shared_ptr<void> what);

  private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

}  // namespace korvant
