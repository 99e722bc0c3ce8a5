// What an evaluation gave, kept while the script stands still.
#pragma once

#include <cstdint>
#include <memory>

#include "debug/frame_scope.h"
#include "host/engine/engine_compat.h"

namespace korvant {

/// Holds a copy of a primitive or of a value object, or a reference to an object or a function.
class KeptValue {
  public:
    /// What lies at `address` (of the value; of the pointer for a handle). Empty when the engine
    /// cannot keep it.
    static std::shared_ptr<KeptValue> of(asIScriptEngine& engine, int typeId, const void* address);
    ~KeptValue();
    KeptValue(const KeptValue&) = delete;
    KeptValue& operator=(const KeptValue&) = delete;

    TypedValue value() noexcept;

  private:
    KeptValue(asIScriptEngine& engine, int typeId) : engine_(engine), typeId_(typeId) {}
    bool keepObject(void* object);

    asIScriptEngine& engine_;
    int typeId_;
    std::uint64_t plain_ = 0;
    void* object_ = nullptr;
    bool isFunction_ = false;
};

/// Registers the function that evaluations hand their value to, once for an engine; only what is
/// compiled with evaluationBits() sees it. False when the engine refuses.
bool registerShow(asIScriptEngine& engine);
inline constexpr char kShow[] = "debugShow_";
inline constexpr std::uint32_t kShowBits = 0x80000000u;

/// While it lives, what an evaluation shows comes here.
class ShowScope {
  public:
    ShowScope();
    ~ShowScope();
    static ShowScope* innermost() noexcept;  ///< null: none lives
    ShowScope(const ShowScope&) = delete;
    ShowScope& operator=(const ShowScope&) = delete;

    /// Null when nothing was shown.
    std::shared_ptr<KeptValue> take() { return std::move(shown); }
    /// Numbers alone are wanted: `number` and `isNumber` are all that is kept.
    bool truth = false;
    bool isNumber = false;
    double number = 0.0;
    std::shared_ptr<KeptValue> shown;

  private:
    ShowScope* before_;
};

}  // namespace korvant
