// How values of a registered type show themselves to whoever looks into a stopped script.
#pragma once

#include <cstdint>
#include <string>

#include "host/engine/engine_compat.h"

namespace korvant {

/// A part of a value that has no address of its own in the script's memory.
struct ViewedPart {
    std::string name;
    std::string group;  ///< a heading over several parts; empty: none
    std::string type;   ///< as scripts write it
    std::string value;  ///< exact, UTF-8
    bool settable = false;
};

/// A value on its way into a part.
struct ViewedScalar {
    enum class Kind { boolean, integer, real, text } kind = Kind::integer;
    std::int64_t integer = 0;  ///< of boolean too: 0 or 1
    double real = 0.0;
    std::string text;
};

/// One for all objects of a type; lives as long as the process. Nothing is thrown but
/// std::bad_alloc, and no script code runs but by set().
class TypeView {
  public:
    virtual ~TypeView() = default;
    /// One line, UTF-8, at most some hundred bytes more than `longest`.
    virtual std::string text(const void* object, std::size_t longest) const = 0;
    virtual std::uint64_t count(const void* object) const {
        (void)object;
        return 0;
    }
    /// Part `index`, below count().
    virtual ViewedPart part(const void* object, std::uint64_t index) const {
        (void)object, (void)index;
        return {};
    }
    /// Changes a part as the type's own operations would. Empty, or why it did not change.
    virtual std::string set(void* object, std::uint64_t index, const ViewedScalar& value) const {
        (void)object, (void)index, (void)value;
        return "This value cannot be changed.";
    }
};

/// Registers the view of the type with this name, which `engine` has.
void setTypeView(asIScriptEngine* engine, const char* type, const TypeView& view);
/// Null when nobody registered one.
const TypeView* typeViewOf(const asITypeInfo* type);

}  // namespace korvant
