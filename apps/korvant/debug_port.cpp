#include "debug_port.h"

#include <cstdio>
#include <cstdlib>

#include "base/system/user_folders.h"
#include "protocol/dap/frame_passer.h"
#include "source_report.h"

namespace korvant_app {

bool openDebugPort(int port, const std::string& script,
                   decltype(&StartScriptDebugServer) startDebugServer) {
    const char* const given = std::getenv("KORVANT_DEBUG_TOKEN");
    const bool made = given == nullptr || *given == 0;
    const std::string token = made ? korvant::dap::newToken() : given;
    const std::string path = korvant::absolutePath(script);
    KorvantDebugOptions options{};
    options.size = sizeof options;
    options.port = port;
    options.token = token.c_str();
    options.sourceFile = path.c_str();
    options.waitForClient = 1;
    const int open = startDebugServer(&options);
    if (open == 0) {
        complain("cannot listen at port " + std::to_string(port) + " of 127.0.0.1");
        return false;
    }
    std::fprintf(stderr, "debug: listening on 127.0.0.1:%d\n", open);
    if (made) std::fprintf(stderr, "debug: the token is %s\n", token.c_str());
    std::fflush(stderr);
    return true;
}

}  // namespace korvant_app
