// Any text as a script's source: what the scan lets pass, the compiler survives, and the next
// script builds. Nothing is run.
#include <cstdint>
#include <cstdlib>
#include <string>

#include "host/run/script_session.h"
#include "host/scan/source_scan.h"
#include "host/services/null_services.h"
#include "module/families.h"

namespace {

using namespace korvant;

struct Host {
    Host() {
        session.setServices({});
        Limits limits = strictLimits();
        limits.hardCeilingMs = 300;  // of globals, which are set as part of a build
        session.setLimits(limits);
        if (session.configure(engine, registrationOrder()) == nullptr) std::abort();
    }
    void requireBuilds(const std::string& text) {
        if (session.compile(engine, text) != 1) std::abort();
    }

    ScriptSession& session = moduleSession();
    asIScriptEngine* engine = asCreateScriptEngine();
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static Host host;
    static int units = 0;
    const std::string text(reinterpret_cast<const char*>(data), size);
    const auto refusal = scanSource(text, host.session.limits());
    const bool built = host.session.compile(host.engine, text) == 1;
    if (refusal && (built || host.session.buildMessages().count() != 1)) std::abort();
    if (++units % 32 == 0) host.requireBuilds("int main() { string s = \"a\"; return 0; }");
    return 0;
}
