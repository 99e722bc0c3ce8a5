// One plain function, bound for both calling conventions of the engine.
#pragma once

#include <cstring>
#include <new>
#include <type_traits>
#include <utility>

#include "host/engine/registration.h"

namespace korvant {

/// Sets a script exception on the context that runs; nothing outside a script.
void raiseInScript(const char* description) noexcept;
/// The same, for functions that then answer that they failed.
inline bool failInScript(const char* description) noexcept {
    raiseInScript(description);
    return false;
}
/// How it does that from now on; without a hook it is the context that the engine calls active.
/// `hook` may throw.
void setRaiseHook(void (*hook)(const char* description)) noexcept;

/// Argument `index` of a generic call, as the native function takes it. The script's stack is
/// aligned to four bytes only, and references lead there.
template <class Argument>
__attribute__((no_sanitize("alignment"))) Argument genericArgument(asIScriptGeneric* call,
                                                                   asUINT index) {
    using Plain = std::remove_reference_t<Argument>;
    if constexpr (std::is_reference_v<Argument>)
        return *static_cast<Plain*>(call->GetArgAddress(index));
    else if constexpr (std::is_pointer_v<Argument>)
        return static_cast<Argument>(call->GetArgAddress(index));
    else {
        Plain value;
        std::memcpy(&value, call->GetAddressOfArg(index), sizeof value);
        return value;
    }
}

/// Reals that scripts pass by reference lie on the engine's stack, which is aligned to four bytes.
inline double realAt(const double* place) noexcept {
    double value;
    std::memcpy(&value, place, sizeof value);
    return value;
}
inline void putReal(double* place, double value) noexcept {
    std::memcpy(place, &value, sizeof value);
}

/// `call` is the function with every C++ exception turned into a script exception; `generic` is
/// the same behind the engine's generic interface. Parameters: primitives by value, and pointers
/// or references for everything that the declaration passes by reference. Results: nothing, a
/// primitive, or a pointer for a handle whose reference belongs to the caller.
template <auto Function>
struct NativeCall;

template <class Result, class... Arguments, Result (*Function)(Arguments...)>
struct NativeCall<Function> {
    static Result call(Arguments... arguments) noexcept {
        try {
            return Function(std::forward<Arguments>(arguments)...);
        } catch (const std::bad_alloc&) {
            raiseInScript("Out of memory");
        } catch (...) {
            raiseInScript("Internal error");
        }
        return Result();
    }

    static void generic(asIScriptGeneric* engineCall) noexcept {
        invoke(engineCall, std::index_sequence_for<Arguments...>{});
    }

  private:
    template <std::size_t... Index>
    static void invoke([[maybe_unused]] asIScriptGeneric* engineCall,
                       std::index_sequence<Index...>) {
        if constexpr (std::is_void_v<Result>)
            call(genericArgument<Arguments>(engineCall, Index)...);
        else if constexpr (std::is_pointer_v<Result>)
            engineCall->SetReturnAddress(const_cast<void*>(
                static_cast<const void*>(call(genericArgument<Arguments>(engineCall, Index)...))));
        else
            *static_cast<Result*>(engineCall->GetAddressOfReturnLocation()) =
                call(genericArgument<Arguments>(engineCall, Index)...);
    }
};

/// Whether a function cannot change the objects that its arguments lead to. Where a declaration
/// says `string &in`, scripts may then hand over the text itself: what else could tell is an
/// argument beside it that changes that text, and the engine looks for those.
template <class Argument>
inline constexpr bool kReadsObject =
    !std::is_class_v<std::remove_pointer_t<std::remove_reference_t<Argument>>> ||
    std::is_const_v<std::remove_pointer_t<std::remove_reference_t<Argument>>>;

template <class Result, class... Arguments>
constexpr bool readsItsObjects(Result (*)(Arguments...)) {
    return (kReadsObject<Arguments> && ...);
}

/// A row for a plain function.
template <auto Function>
FunctionRow functionRow(const char* declaration, const char* help, const char* example = "",
                        const char* failure = "") {
    return {declaration,
            asFUNCTION(NativeCall<Function>::call),
            asCALL_CDECL,
            NativeCall<Function>::generic,
            help,
            example,
            failure,
            asBEHAVE_MAX,
            readsItsObjects(Function)};
}

/// A row for a function that waits for somebody, who may look into the script meanwhile and change
/// the very text that is shown: it gets a copy.
template <auto Function>
FunctionRow askingRow(const char* declaration, const char* help, const char* example = "",
                      const char* failure = "") {
    FunctionRow row = functionRow<Function>(declaration, help, example, failure);
    row.onlyReads = false;
    return row;
}

}  // namespace korvant
