// Methods of script types, bound for both calling conventions of the engine.
#pragma once

#include <type_traits>
#include <utility>

#include "host/engine/native_call.h"

namespace korvant {

/// Runs `invoke` and hands its result to the engine. A pointer is a reference or a handle whose
/// reference belongs to the caller.
template <class Result, class Invoke>
void genericResult(asIScriptGeneric* call, Invoke invoke) {
    if constexpr (std::is_void_v<Result>)
        invoke();
    else if constexpr (std::is_pointer_v<Result>)
        call->SetReturnAddress(const_cast<void*>(static_cast<const void*>(invoke())));
    else
        *static_cast<Result*>(call->GetAddressOfReturnLocation()) = invoke();
}

/// A member function that throws nothing, called with the object as its own.
template <auto Member>
struct SelfCall;

template <class Result, class Object, class... Arguments,
          Result (Object::*Member)(Arguments...) noexcept>
struct SelfCall<Member> {
    static asSFuncPtr native() {
        using Plain = void (Object::*)();
        return asSMethodPtr<sizeof(Plain)>::Convert(Member);
    }
    static void generic(asIScriptGeneric* call) noexcept {
        invoke(call, std::index_sequence_for<Arguments...>{});
    }

  private:
    template <std::size_t... Index>
    static void invoke(asIScriptGeneric* call, std::index_sequence<Index...>) {
        auto* object = static_cast<Object*>(call->GetObject());
        genericResult<Result>(
            call, [&] { return (object->*Member)(genericArgument<Arguments>(call, Index)...); });
    }
};

/// A plain function that takes the object first.
template <auto Function>
struct FirstCall;

template <class Result, class Object, class... Arguments, Result (*Function)(Object*, Arguments...)>
struct FirstCall<Function> {
    static void generic(asIScriptGeneric* call) noexcept {
        invoke(call, std::index_sequence_for<Arguments...>{});
    }

  private:
    template <std::size_t... Index>
    static void invoke(asIScriptGeneric* call, std::index_sequence<Index...>) {
        auto* object = static_cast<Object*>(call->GetObject());
        genericResult<Result>(call, [&] {
            return NativeCall<Function>::call(object, genericArgument<Arguments>(call, Index)...);
        });
    }
};

/// A plain function of one argument that takes the object last.
template <auto Function>
struct LastCall;

template <class Result, class Object, class Argument, Result (*Function)(Argument, Object*)>
struct LastCall<Function> {
    static void generic(asIScriptGeneric* call) noexcept {
        auto* object = static_cast<Object*>(call->GetObject());
        genericResult<Result>(call, [&] {
            return NativeCall<Function>::call(genericArgument<Argument>(call, 0), object);
        });
    }
};

/// Rows of a script type. `behaviour` is asBEHAVE_MAX for a method.
template <auto Member>
FunctionRow selfRow(const char* declaration, const char* help, const char* example = "",
                    const char* failure = "", asEBehaviours behaviour = asBEHAVE_MAX) {
    return {declaration,
            SelfCall<Member>::native(),
            asCALL_THISCALL,
            SelfCall<Member>::generic,
            help,
            example,
            failure,
            behaviour};
}

template <auto Function>
FunctionRow firstRow(const char* declaration, const char* help, const char* example = "",
                     const char* failure = "") {
    return {declaration,
            asFUNCTION(NativeCall<Function>::call),
            asCALL_CDECL_OBJFIRST,
            FirstCall<Function>::generic,
            help,
            example,
            failure};
}

template <auto Function>
FunctionRow lastRow(const char* declaration, const char* help, const char* example = "",
                    const char* failure = "") {
    return {declaration,
            asFUNCTION(NativeCall<Function>::call),
            asCALL_CDECL_OBJLAST,
            LastCall<Function>::generic,
            help,
            example,
            failure};
}

/// A factory: a plain function without an object.
template <auto Function>
FunctionRow factoryRow(const char* declaration, const char* help, const char* example = "",
                       const char* failure = "") {
    return {declaration,  asFUNCTION(NativeCall<Function>::call),
            asCALL_CDECL, NativeCall<Function>::generic,
            help,         example,
            failure,      asBEHAVE_FACTORY};
}

}  // namespace korvant
