// How many objects of one type a script has alive.
#pragma once

#include <vector>

#include "host/engine/engine_compat.h"

namespace korvant {

/// An engine with its assertions, as distributions build it, ends the process at a million
/// references to one type, and every object of a script refers to its type. So a run that comes
/// near is ended in time.
class ObjectCount {
  public:
    static constexpr int kMost = 700'000;

    ObjectCount() = default;
    ~ObjectCount() { forget(); }
    ObjectCount(const ObjectCount&) = delete;
    ObjectCount& operator=(const ObjectCount&) = delete;

    /// Watches the classes of the module "main" and the arrays that its variables name, until
    /// forget(). What memory is lacking for is not watched.
    void watch(asIScriptEngine& engine) noexcept;
    void forget() noexcept;
    /// The largest number of references to one of them. From any thread between watch() and
    /// forget().
    int largest() const noexcept;

  private:
    void collect(asIScriptEngine& engine);
    void add(asIScriptEngine& engine, int typeId);
    void addVariables(asIScriptEngine& engine, asIScriptFunction* function);

    std::vector<asITypeInfo*> types_;
};

}  // namespace korvant
