// The debug server that a host starts.
#include <cstddef>
#include <cstring>
#include <memory>

#include "host/run/script_session.h"
#include "korvantide/host_interface.h"
#include "module/guarded.h"
#include "protocol/dap/debug_server.h"

using namespace korvant;

namespace {

std::unique_ptr<dap::DebugServer>& theServer() {
    // Never destroyed: nothing of it runs at exit.
    static auto* const server = new std::unique_ptr<dap::DebugServer>;
    return *server;
}

std::int32_t startServer(const KorvantDebugOptions& given) {
    if (given.size < sizeof given.size || theServer() || moduleSession().running()) return 0;
    KorvantDebugOptions record{};
    std::memcpy(&record, &given, std::min<std::size_t>(given.size, sizeof record));
    if (record.port < 0 || record.port > 65535) return 0;
    dap::DebugServer::Options options;
    options.port = static_cast<std::uint16_t>(record.port);
    if (record.token != nullptr) options.token = record.token;
    if (record.sourceFile != nullptr) options.sourcePath = record.sourceFile;
    options.waitForClient = record.waitForClient != 0;
    if (record.whileStopped != nullptr)
        options.whileStopped = [call = record.whileStopped, user = record.user] { call(user); };
    std::string error;
    theServer() = dap::DebugServer::start(std::move(options), error);
    return theServer() ? theServer()->port() : 0;
}

}  // namespace

std::int32_t KORVANTIDE_CALL StartScriptDebugServer(const KorvantDebugOptions* options) {
    return guarded(0, [options] { return options == nullptr ? 0 : startServer(*options); });
}

void KORVANTIDE_CALL StopScriptDebugServer(void) {
    guarded(0, [] {
        if (!moduleSession().running()) theServer().reset();
        return 0;
    });
}

void KORVANTIDE_CALL TellScriptDebugExit(std::int32_t exitCode) {
    guarded(0, [exitCode] {
        if (theServer()) theServer()->tellExit(exitCode);
        return 0;
    });
}
