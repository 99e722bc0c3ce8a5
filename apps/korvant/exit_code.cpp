#include "exit_code.h"

#include "commands.h"

namespace korvant_app {

int exitCodeOf(const korvant::RunFailure& failure) {
    using Kind = korvant::RunFailure::Kind;
    switch (failure.kind) {
        case Kind::none:
            return failure.unwritten.empty() ? kFinished : kRunFailed;
        case Kind::build:
            return kBuildFailed;
        case Kind::noMain:
        case Kind::prepare:
            return kNoMain;
        default:
            return kRunFailed;
    }
}

}  // namespace korvant_app
