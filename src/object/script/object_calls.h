// Operations of a property object as rows of the script type.
#pragma once

#include <utility>

#include "host/engine/method_call.h"
#include "korvantide/script_object.h"

namespace korvant {

/// A member of ScriptObject, called as one. It throws nothing, although its type does not say so.
template <auto Member>
struct ObjectCall;

template <class Result, class Class, class... Arguments, Result (Class::*Member)(Arguments...)>
struct ObjectCall<Member> {
    static asSFuncPtr native() {
        using Plain = void (Class::*)();
        return asSMethodPtr<sizeof(Plain)>::Convert(Member);
    }
    static void generic(asIScriptGeneric* call) noexcept {
        invoke(call, std::index_sequence_for<Arguments...>{});
    }

  private:
    template <std::size_t... Index>
    static void invoke([[maybe_unused]] asIScriptGeneric* call, std::index_sequence<Index...>) {
        auto* object = static_cast<ScriptObject*>(call->GetObject());
        genericResult<Result>(
            call, [&] { return (object->*Member)(genericArgument<Arguments>(call, Index)...); });
    }
};

template <auto Member>
FunctionRow objectRow(const char* declaration, const char* help, const char* example = "",
                      const char* failure = "", asEBehaviours behaviour = asBEHAVE_MAX) {
    return {declaration,
            ObjectCall<Member>::native(),
            asCALL_THISCALL,
            ObjectCall<Member>::generic,
            help,
            example,
            failure,
            behaviour};
}

}  // namespace korvant
