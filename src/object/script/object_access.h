// The inside of a ScriptObject, for this folder.
#pragma once

#include <limits>
#include <new>
#include <stdexcept>

#include "host/engine/native_call.h"
#include "korvantide/script_object.h"
#include "object/model/object_model.h"

struct ScriptObject::Impl {
    korvant::ObjectModel model;
    /// References to this very object; never copied. model.reportedCount is what hosts are told.
    std::int32_t owning = 0;
    int holds = 0;              ///< calls that need the object to their end
    bool heldByScript = false;  ///< made for a script, whose handles own it
    bool orphaned = false;      ///< the last reference went while a call held it
};

namespace korvant {

/// What the rest of this folder does with an object beyond its public operations.
struct ObjectAccess {
    static ObjectModel& model(ScriptObject& object) { return object.impl_->model; }
    static const ObjectModel& model(const ScriptObject& object) { return object.impl_->model; }
    static ScriptObject::Impl& impl(ScriptObject& object) { return *object.impl_; }
    /// Null for one of somebody else's making.
    static ScriptObject* from(KorStamp& object);

    /// Objects for scripts: their count is exactly 1 and belongs to the caller, whatever the
    /// count of the object that is copied. Null, and a script exception, without memory.
    static ScriptObject* makeForScript() noexcept;
    static ScriptObject* copyForScript(const ScriptObject& other) noexcept;
    static void giveToScript(ScriptObject& object) noexcept;

    /// What assigning an object with this content does. Throws std::bad_alloc.
    static void assign(ScriptObject& object, const ObjectModel& content);

    /// Edits the object; true when the user confirmed. Throws std::bad_alloc.
    static bool runEditor(ScriptObject& object);

    /// The title as the script string that holds it, with a reference for the caller. Throws
    /// std::bad_alloc.
    static ScriptString* title(ScriptObject& object);
    /// The answer of _promptString() as the script string that holds it, with a reference for
    /// the caller. Throws std::bad_alloc.
    static ScriptString* promptString(ScriptObject& object, std::string& label,
                                      const std::string& value);
};

/// Keeps an object alive to the end of a call in which somebody may let go of it. Unlike a
/// reference it does not delete an object that nobody had a reference to.
class ObjectHold {
  public:
    explicit ObjectHold(ScriptObject& object) : object_(&object) {
        ++ObjectAccess::impl(object).holds;
    }
    ~ObjectHold() {
        auto& impl = ObjectAccess::impl(*object_);
        if (--impl.holds == 0 && impl.orphaned) delete object_;
    }
    ObjectHold(const ObjectHold&) = delete;
    ObjectHold& operator=(const ObjectHold&) = delete;

  private:
    ScriptObject* object_;
};

/// Whether an object was refused memory since a host asked.
inline bool objectMemoryRefused = false;

inline void raiseOutOfMemory() noexcept {
    objectMemoryRefused = true;
    raiseInScript("Out of memory");
}

/// Runs `body`; what it throws becomes an exception of the running script, and `fallback` the
/// answer.
template <class Result, class Body>
Result orRaise(Result fallback, Body body) noexcept {
    try {
        return body();
    } catch (const std::bad_alloc&) {
        raiseOutOfMemory();
    } catch (const std::length_error&) {
        raiseOutOfMemory();
    } catch (const NestedTooDeep&) {
        raiseInScript("Groups are nested too deep");
    } catch (...) {
        raiseInScript("Internal error");
    }
    return fallback;
}

template <class Body>
void orRaise(Body body) noexcept {
    orRaise(0, [&body] {
        body();
        return 0;
    });
}

/// True when the script that runs has been told to stop, so that it must not ask the user anything.
bool scriptIsToEnd() noexcept;

/// Script integers have 32 bits whatever a host's long has.
inline std::int32_t saturated(long value) noexcept {
    using Range = std::numeric_limits<std::int32_t>;
    if (value > Range::max()) return Range::max();
    return value < Range::min() ? Range::min() : static_cast<std::int32_t>(value);
}

}  // namespace korvant
