// What the arrays of one type have in common: how their elements are stored, made and compared.
#pragma once

#include <cstdint>

#include "host/engine/script_calls.h"

namespace korvant {

/// What a type number says of a handle beside the type.
constexpr int kHandleBits = asTYPEID_OBJHANDLE | asTYPEID_HANDLETOCONST;

/// One for each instance of the type `array<T>` that has had an array, kept with the instance.
struct ArrayType {
    enum class Kind : std::uint8_t {
        number,  ///< also truth values and enumerations: stored by value
        handle,  ///< stored as a pointer that may be null, with a reference
        object,  ///< stored as a pointer to an object of the array's own
        text     ///< the same for the module's own strings, without asking the engine
    };

    asIScriptEngine* engine;
    asITypeInfo* type;
    asITypeInfo* element;  ///< null for numbers
    int elementId;
    Kind kind;
    std::uint8_t width;  ///< bytes of an element in the buffer
    /// Methods of the elements; null when there is none, or more than one would do.
    asIScriptFunction* compare = nullptr;
    asIScriptFunction* equal = nullptr;
    bool severalCompare = false;
    bool severalEqual = false;
    int arrays = 0;  ///< that are alive; together they keep the type

    /// Null for a type that is no instance of the module's own array type.
    static ArrayType* of(asITypeInfo* type);
    /// The same without making one: null as well for a type that never had an array.
    static ArrayType* known(const asITypeInfo* type);

    bool holdsPointers() const { return kind != Kind::number; }
    bool ownsObjects() const { return kind == Kind::object || kind == Kind::text; }

    /// An element with its default value; null when that failed, with the exception set.
    void* makeObject() const noexcept;
    void releaseObject(void* object) const noexcept;
    void addReference(void* object) const noexcept;
};

/// Compares the elements of one type. The arguments are numbers' addresses, or objects; null for
/// null handles.
class ElementOrder {
  public:
    explicit ElementOrder(const ArrayType& type) : type_(type), calls_(*type.engine) {}

    /// False as well once a comparison has failed.
    bool equal(void* left, void* right) noexcept;
    /// Whether `left` stands before `right`, by the elements' own order.
    bool before(void* left, void* right) noexcept;
    /// The same by a function that takes two references or handles: `left` and `right`.
    bool before(asIScriptFunction& less, void* left, void* right) noexcept;
    bool failed() const noexcept { return calls_.failed(); }

  private:
    asIScriptContext* call(asIScriptFunction& method, void* object, void* argument) noexcept;

    const ArrayType& type_;
    ScriptCalls calls_;
};

/// Calls `visit` with a value of the C++ type of numbers of script type `typeId`.
template <class Visit>
decltype(auto) withNumber(int typeId, Visit visit) {
    switch (typeId) {
        case asTYPEID_BOOL:
        case asTYPEID_UINT8:
            return visit(std::uint8_t{});
        case asTYPEID_INT8:
            return visit(std::int8_t{});
        case asTYPEID_INT16:
            return visit(std::int16_t{});
        case asTYPEID_UINT16:
            return visit(std::uint16_t{});
        case asTYPEID_UINT32:
            return visit(std::uint32_t{});
        case asTYPEID_INT64:
            return visit(std::int64_t{});
        case asTYPEID_UINT64:
            return visit(std::uint64_t{});
        case asTYPEID_FLOAT:
            return visit(float{});
        case asTYPEID_DOUBLE:
            return visit(double{});
        default:
            return visit(std::int32_t{});  // enumerations too
    }
}

/// The template `array<T>` of an engine is the module's own when it bears this mark.
inline constexpr char kArrayName[] = "array";

}  // namespace korvant
