// An engine for what names and expressions of scripts mean.
#pragma once

#include <memory>
#include <string>

#include "language/meanings.h"
#include "module/families.h"
#include "support/script_fixture.h"

namespace korvant::test {

class OracleFixture : public ScriptFixture {
  protected:
    OracleFixture() : oracle_(makeEngine(), makeEngine) {}

    static asIScriptEngine* makeEngine() {
        asIScriptEngine* const engine = asCreateScriptEngine();
        asIScriptContext* const context = moduleSession().configure(engine, registrationOrder());
        if (context != nullptr) context->Release();
        return engine;
    }

    OracleEngine oracle_;
};

}  // namespace korvant::test
