#include "object/script/object_binding.h"

#include "host/engine/script_string.h"
#include "host/run/script_session.h"
#include "object/script/object_access.h"
#include "object/script/object_calls.h"
#include "object/script/object_view.h"

namespace korvant {

namespace {

static_assert(sizeof(bool) == 1 && sizeof(float) == 4 && sizeof(double) == 8,
              "script values are exchanged by reference");

ScriptObject* makeEmpty() {
    return ObjectAccess::makeForScript();
}
ScriptObject* makeCopy(const ScriptObject& other) {
    return ObjectAccess::copyForScript(other);
}

const FunctionRow kLife[] = {
    factoryRow<makeEmpty>("Object @f()", "An object without properties.", "Object form;",
                          "\"Out of memory\"."),
    factoryRow<makeCopy>("Object @f(const Object &in)", "A copy of everything in an object.",
                         "Object copy(form);", "\"Out of memory\"."),
    objectRow<&ScriptObject::addRef>("void f()", "One more handle.", "", "", asBEHAVE_ADDREF),
    objectRow<&ScriptObject::release>("void f()", "One handle less.", "", "", asBEHAVE_RELEASE),
};

/// Waiting for the user: the run's time limit stops counting, and starts afresh afterwards.
void beginWaiting() {
    moduleSession().beginInteraction();
}

/// Ends the waiting that a message box left behind as well.
void endWaiting() {
    do {
        moduleSession().endInteraction();
    } while (moduleSession().interacting());
}

}  // namespace

int registerObjectType(asIScriptEngine* engine) {
    const int results[] = {
        engine->RegisterObjectType("Object", static_cast<int>(sizeof(ScriptObject)), asOBJ_REF),
        registerMethods(engine, "Object", kLife),
        registerMethods(engine, "Object", objectMethodRows()),
    };
    setTypeView(engine, "Object", objectView());
    ScriptObject::m_before = beginWaiting;
    ScriptObject::m_after = endWaiting;
    for (const int result : results)
        if (result < 0) return result;
    return 0;
}

}  // namespace korvant
