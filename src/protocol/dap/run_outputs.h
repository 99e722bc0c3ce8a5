// What the end of a build or a run is to a debugging client.
#pragma once

#include "host/run/script_session.h"
#include "protocol/dap/conversation.h"

namespace korvant::dap {

/// One event each, worded as on the command line: "FILE:LINE:COLUMN: error: TEXT".
void sendBuildMessages(const BuildMessages& messages, const std::string& path,
                       const Conversation& conversation, OutputRelay& output);

/// The message of a run that failed, with file and line, and where it was called from.
void sendFailure(const RunFailure& failure, const std::string& path,
                 const Conversation& conversation, OutputRelay& output);

}  // namespace korvant::dap
