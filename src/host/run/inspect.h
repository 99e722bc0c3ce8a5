// Looking into a stopped script: frames, variables in scope, values by type.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "host/engine/engine_compat.h"

namespace korvant {

struct FrameInfo {
    std::string function;   ///< declaration
    std::int32_t line = 0;  ///< 1-based
};

/// A local variable of one frame, parameters included.
struct VariableInfo {
    std::string name;
    std::string declaration;  ///< "int[] values"
    int typeId = 0;
    void* address = nullptr;  ///< null while it is not constructed or not in scope
    bool inScope = false;
};

/// What a value is, decided by its type number alone.
enum class ValueKind {
    uninitialised,  ///< null handle or not constructed
    boolean,
    signedInteger,
    unsignedInteger,
    enumeration,
    singleReal,
    doubleReal,
    string,  ///< the script type `string`, by value or by handle
    array,
    object,  ///< a script class; has members
    other    ///< anything that cannot be looked into
};

/// A value of a stopped script. Points into the script's memory: valid until it goes on.
struct ValueView {
    ValueKind kind = ValueKind::uninitialised;
    int typeId = 0;
    const void* address = nullptr;  ///< of the value itself, handles followed
    std::uint32_t bytes = 0;        ///< size of a primitive
    std::uint32_t elements = 0;     ///< of an array, or the number of members of an object
};

/// Reads the variables of a context. Only a context that is suspended or ended in an exception
/// may be read; every other one has no frames.
class StoppedScript {
  public:
    explicit StoppedScript(asIScriptContext* context);
    /// Values alone, of a script that stands still inside a call; there are no frames.
    explicit StoppedScript(asIScriptEngine& engine);

    bool readable() const;
    unsigned frameCount() const;
    FrameInfo frame(unsigned level) const;  ///< 0 is the innermost
    /// All variables of a frame in index order, those out of scope marked so.
    std::vector<VariableInfo> variables(unsigned level) const;
    /// Declarations are readable whatever the state of the context (names and types only).
    std::vector<VariableInfo> declarations(unsigned level) const;

    /// `address` is where a variable, element or member of type `typeId` lies.
    ValueView view(int typeId, const void* address) const;
    /// Element `index` of an array.
    ValueView element(const ValueView& array, std::uint32_t index) const;
    ValueView member(const ValueView& object, std::uint32_t index, std::string& name) const;

  private:
    ValueView viewOther(ValueView value) const;

    asIScriptContext* context_;
    asIScriptEngine* engine_;
};

/// Whether the function of a frame stands in the script or in the library; false for what the
/// engine puts between them, as the factory around a constructor, and for null.
bool isWritten(asIScriptFunction* function);

/// The integer in a signed or unsigned value or an enumeration, widened.
std::int64_t integerOf(const ValueView& value);
double realOf(const ValueView& value);
bool boolOf(const ValueView& value);
std::string_view textOf(const ValueView& value);

}  // namespace korvant
