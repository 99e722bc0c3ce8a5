// What the arguments of a request must look like.
#pragma once

#include <string>

#include "protocol/rpc/json.h"

namespace korvant::dap {

/// What is missing in the arguments of `command` or has the wrong type, in words; empty where
/// nothing is. Members that nobody reads may be anything, and one that need not be there may be
/// null.
std::string wrongArgument(const std::string& command, const rpc::Json& arguments);

}  // namespace korvant::dap
