#include "host/engine/active_context.h"

namespace korvant {
namespace {

thread_local asIScriptContext* executing = nullptr;

}  // namespace

asIScriptContext* activeContext() noexcept {
    asIScriptContext* const known = asGetActiveContext();
    return known ? known : executing;
}

ExecutionMark::ExecutionMark(asIScriptContext& context) noexcept : before_(executing) {
    executing = &context;
}

ExecutionMark::~ExecutionMark() {
    executing = before_;
}

}  // namespace korvant
