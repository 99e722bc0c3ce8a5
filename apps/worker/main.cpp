// korvant-worker: compiles scripts for a program that must not die of them. Started by the module
// and by korvant, never by hand.
#include <cstdlib>

#include "base/system/child_process.h"
#include "language/worker_program.h"
#include "module/configuration.h"
#include "module/families.h"

namespace {

asIScriptContext* configure(asIScriptEngine* engine) {
    return korvant::configureEngine(engine);
}

}  // namespace

/// The first argument bounds the memory in bytes.
int main(int count, char** arguments) {
    korvant::liveWithParent(count > 1 ? std::strtoull(arguments[1], nullptr, 10) : 0);
    return korvant::runCompileWorker(configure, korvant::allFamilies());
}
