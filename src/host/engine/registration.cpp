#include "host/engine/registration.h"

#include <cstring>

namespace korvant {

namespace {

bool forcedPortable = false;

bool builtForPortability() {
    return std::strstr(asGetLibraryOptions(), "AS_MAX_PORTABILITY");
}

/// The function and convention of a row as this engine library takes them.
struct Callable {
    explicit Callable(const FunctionRow& row)
        : function(portableConventions() ? asFunctionPtr(row.generic) : row.native),
          convention(portableConventions() ? asCALL_GENERIC : row.convention) {}
    asSFuncPtr function;
    asDWORD convention;
};

/// Our engine asks for this mark of a function; to others it means nothing.
void markReader(asIScriptEngine& engine, int function) {
    constexpr asPWORD kNumber = 0x4B6F7252;  // as in the engine
    static char mark;
    asIScriptFunction* const marked = function > 0 ? engine.GetFunctionById(function) : nullptr;
    if (marked != nullptr) marked->SetUserData(&mark, kNumber);
}

int registerMember(asIScriptEngine* engine, const char* type, const FunctionRow& row) {
    const Callable callable(row);
    if (row.behaviour == asBEHAVE_MAX)
        return engine->RegisterObjectMethod(type, row.declaration, callable.function,
                                            callable.convention);
    return engine->RegisterObjectBehaviour(type, row.behaviour, row.declaration, callable.function,
                                           callable.convention);
}

}  // namespace

int registerGlobalFunctions(asIScriptEngine* engine, std::span<const FunctionRow> rows) {
    int first = 0;
    for (const FunctionRow& row : rows) {
        const Callable callable(row);
        const int result =
            engine->RegisterGlobalFunction(row.declaration, callable.function, callable.convention);
        if (row.onlyReads) markReader(*engine, result);
        if (result < 0 && first == 0) first = result;
    }
    return first;
}

int registerMethods(asIScriptEngine* engine, const char* type, std::span<const FunctionRow> rows) {
    int first = 0;
    for (const FunctionRow& row : rows) {
        const int result = registerMember(engine, type, row);
        if (result < 0 && first == 0) first = result;
    }
    return first;
}

bool portableConventions() {
    return forcedPortable || builtForPortability();
}

void forcePortableConventions(bool force) {
    forcedPortable = force;
}

}  // namespace korvant
