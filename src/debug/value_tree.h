// Values of a script that stands still, as a tree that is read page by page.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

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
    bool base = false;  ///< not a value but the members that a base class brings
};

struct ValueFormat {
    bool hex = false;             ///< integers as 0x with the width of their type
    std::size_t longest = 16384;  ///< bytes of one text; "..." behind what is cut
    static ValueFormat whole() { return {false, static_cast<std::size_t>(-1)}; }
};

enum class ValueScope { locals, thisObject, globals };

/// A value without a name: what an expression gave.
struct TypedValue {
    int typeId = 0;
    void* address = nullptr;  ///< of the value; of the pointer for a handle
    bool constant = false;
};

/// What the script holds of the frames of one context. Values lie in the script's memory: the tree
/// must be cleared before the script goes on. Reading runs no script code.
class ValueTree {
  public:
    ValueTree();
    ~ValueTree();
    ValueTree(const ValueTree&) = delete;
    ValueTree& operator=(const ValueTree&) = delete;

    /// The script stands still: all nodes of before are gone. `text` is the script's main text, by
    /// which the declaration of a variable is told from its use; empty when unknown.
    void begin(asIScriptContext* context, std::string_view text);
    /// The script goes on: what was shown is remembered for the marks of the next stop.
    void end();

    /// The variables of a frame (`level` is the engine's number), the members of its object, or the
    /// global variables of its module. `frame` makes marks of one frame different from another's.
    ValueNode scope(ValueScope which, unsigned level);
    bool hasThis(unsigned level) const;

    enum class Filter { all, named, indexed };
    /// Children `start` ... of a node, at most `count` (0: all). Empty for unknown nodes.
    std::vector<DebugValue> children(ValueNode node, std::uint64_t start = 0,
                                     std::uint64_t count = 0, const ValueFormat& format = {},
                                     Filter filter = Filter::all);
    bool knows(ValueNode node) const;

    /// The value of a path without a call: names, "this", ".member", "[index]", "ns::name". False
    /// when the expression is something else or there is no such value.
    bool find(unsigned level, std::string_view path, TypedValue& found) const;
    /// Shows a value that is not a child of a node. It must stay where it is until end().
    DebugValue show(const TypedValue& value, std::string name, const ValueFormat& format = {});
    /// Keeps something alive until end().
    void keep(std::shared_ptr<void> what);

    /// What a child of a node is made of; address null when it has none of its own.
    struct Target {
        TypedValue value;
        const void* owner = nullptr;  ///< of a property that is set through its type's view
        int ownerType = 0;
        std::uint64_t property = 0;
        std::string evaluateName;
    };
    bool target(ValueNode node, std::string_view child, Target& found);

  private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

}  // namespace korvant
