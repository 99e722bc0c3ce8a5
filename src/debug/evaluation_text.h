// An expression as the text of a function that the compiler takes.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "debug/frame_scope.h"

namespace korvant {

/// A parameter of the function, and what it stands for in the frame.
struct EvaluationBinding {
    enum class Kind {
        local,
        thisObject,
        member,
        given  ///< nothing in the frame: `value` stays where it is
    } kind = Kind::local;
    enum class Pass {
        address,   ///< of the value itself, which the function may change
        readOnly,  ///< the same, but constant
        handle     ///< a handle or a function handle by value
    } pass = Pass::address;
    std::string name;       ///< in the frame
    std::string parameter;  ///< in the function
    TypedValue value;       ///< where it lies now
    asUINT index = 0;       ///< see NamedValue
};

struct EvaluationText {
    std::string error;  ///< why the expression is not compiled; empty: it is
    std::string body;   ///< the expression with names of the frame's object made plain
    std::vector<EvaluationBinding> bindings;
    bool calls = false;    ///< calls a function, as far as signs tell
    bool changes = false;  ///< assigns or counts up or down
    bool untyped = false;  ///< a function without a name, to which nothing gives a type
    static constexpr char kUntyped[] = "A function without a name has no type here.";

    /// "int &out a, const string &in b"
    std::string parameters(asIScriptEngine& engine) const;
};

/// Reads the names of `expression` in a frame. What the compiler would make more of than one
/// expression is refused. `late`: whether its variables are set is not asked now.
EvaluationText evaluationText(asIScriptEngine& engine, const FrameScope& scope,
                              std::string_view expression, bool late = false);

/// Whether a value of that type is a function handle, which no sign at the type tells.
bool isFunctionHandle(asIScriptEngine& engine, int typeId);

/// Whether it assigns or counts up or down, as far as its signs tell.
bool changesSomething(std::string_view expression);

}  // namespace korvant
