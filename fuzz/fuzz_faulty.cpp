// Scripts of the generators of faulty texts, whose choices are the input's bytes: whatever comes
// out is compiled and run, and the next good script builds.
#include <cstdint>
#include <cstdlib>
#include <string>

#include "host/run/script_session.h"
#include "host/services/null_services.h"
#include "module/families.h"
#include "support/script_generators.h"

namespace {

using namespace korvant;

struct Host {
    Host() {
        session.setServices({});
        Limits limits = strictLimits();
        limits.stringBytes = std::size_t{64} << 10;
        limits.runBytes = std::size_t{1} << 20;
        limits.hardCeilingMs = 300;
        session.setLimits(limits);
        context = session.configure(engine, registrationOrder());
        if (context == nullptr) std::abort();
    }

    ScriptSession& session = moduleSession();
    asIScriptEngine* engine = asCreateScriptEngine();
    asIScriptContext* context = nullptr;
};

std::string scriptOf(const std::uint8_t* data, std::size_t size) {
    test::ByteChoices choices(data, size);
    switch (choices.below(4)) {
        case 0:
            return test::faultyExpressions(choices);
        case 1:
            return test::brokenProgram(choices);
        case 2:
            return test::edgeProgram(choices);
        default:
            return test::systematicScript(choices.below(65536) * 31 + choices.below(31));
    }
}

}  // namespace

extern "C" const char* __asan_default_options() {
    return "detect_leaks=0";
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static Host host;
    static int units = 0;
    host.session.runApplication(host.engine, host.context, scriptOf(data, size), nullptr);
    host.session.abandon(host.context);
    if (++units % 32 == 0 && host.session.compile(host.engine, "int main() { return 0; }") != 1)
        std::abort();
    return 0;
}
