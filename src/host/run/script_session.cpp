#include "host/run/script_session.h"

#include <algorithm>
#include <thread>

#include "base/system/fork_notice.h"
#include "base/system/os_file.h"
#include "host/engine/active_context.h"
#include "host/engine/memory_budget.h"
#include "host/engine/native_call.h"
#include "host/run/session_impl.h"
#include "host/services/null_services.h"

namespace korvant {

ScriptSession::ScriptSession() : impl_(new Impl(*this)) {
    setServices({});
}

ScriptSession::~ScriptSession() {
    for (const EngineRecord& record : impl_->engines) {
        forgetObserver(record.engine);
        if (record.context != nullptr) {
            forgetObserver(record.context);
            record.context->ClearLineCallback();
        }
        record.engine->SetContextCallbacks(nullptr, nullptr, nullptr);
        tellOfNewContexts(*record.engine, nullptr);
        record.engine->ClearMessageCallback();
    }
    delete impl_;
}

void ScriptSession::setServices(const SessionServices& services) {
    SessionServices& own = impl_->services;
    own = services;
    if (own.console == nullptr) own.console = &nullConsole();
    impl_->frontend = own.frontend != nullptr ? own.frontend : &nullFrontend();
    coverFrontend(impl_->cover);
    if (own.clock == nullptr) own.clock = &systemClock();
    impl_->limit.setClock(*own.clock);
}

const SessionServices& ScriptSession::services() const noexcept {
    return impl_->services;
}

void ScriptSession::coverFrontend(Frontend* cover) noexcept {
    impl_->cover = cover;
    impl_->services.frontend = cover != nullptr ? cover : impl_->frontend;
}

Frontend& ScriptSession::coveredFrontend() const noexcept {
    return *impl_->frontend;
}

void ScriptSession::setLimits(const Limits& limits) {
    impl_->limits = limits;
    memoryBudget.limit = limits.runBytes;
    memoryBudget.stringLimit = limits.stringBytes;
}

const Limits& ScriptSession::limits() const noexcept {
    return impl_->limits;
}
asIScriptContext* ScriptSession::currentContext() const noexcept {
    return impl_->state.currentContext;
}
void ScriptSession::forgetContext() noexcept {
    impl_->state.currentContext = nullptr;
}
void ScriptSession::forgetLine() noexcept {
    impl_->state.lastStoppedLine = 0;
}
BuildMessages& ScriptSession::buildMessages() noexcept {
    return impl_->messages;
}
const RunFailure& ScriptSession::lastFailure() const noexcept {
    return impl_->failure;
}
bool ScriptSession::running() const noexcept {
    return impl_->busy;
}

void ScriptSession::requestStop() noexcept {
    impl_->state.stopRequest = true;
    impl_->lineCallback.attend();
}

bool ScriptSession::shouldStop() {
    if (SideRun* const side = impl_->side) return side->over();
    if (impl_->policy && impl_->running && std::this_thread::get_id() == impl_->runThread) {
        impl_->lineCallback.seeAttention();
        impl_->policy->insideNative();
    }
    if (impl_->lineCallback.ending() != LineCallback::Ending::none) return true;
    if (!impl_->state.stopRequest && !impl_->limit.expired()) return false;
    impl_->lineCallback.lookNow();
    return true;
}

bool ScriptSession::stopRequested() const noexcept {
    return impl_->state.stopRequest;
}

void ScriptSession::setMaxRunTime(std::int32_t milliseconds) {
    impl_->limit.setMax(milliseconds);
    impl_->lineCallback.lookNow();
}

std::uint32_t ScriptSession::maxRunTime() const noexcept {
    return impl_->state.maxRunTime;
}

std::uint32_t ScriptSession::limitBegan() const noexcept {
    return impl_->state.deadline - impl_->state.maxRunTime;
}

bool ScriptSession::interacting() const noexcept {
    return impl_->state.interacting;
}

void ScriptSession::restartLimit() {
    impl_->limit.restart();
    impl_->lineCallback.limitMovedAway();
}

void ScriptSession::noteUnattended() noexcept {
    impl_->attended = false;
}

void ScriptSession::beginInteraction() {
    if (impl_->interactionDepth++ == 0) impl_->attended = true;
    impl_->state.interacting = true;
}

void ScriptSession::endInteraction() {
    if (impl_->attended) impl_->limit.restart();
    if (impl_->interactionDepth > 0) --impl_->interactionDepth;
    if (impl_->interactionDepth == 0) impl_->state.interacting = false;
    if (impl_->attended)
        impl_->lineCallback.limitMovedAway();
    else
        impl_->lineCallback.lookNow();
}

void ScriptSession::raise(const char* description) {
    asIScriptContext* context = activeContext();
    if (context == nullptr) context = impl_->state.currentContext;
    if (context != nullptr) context->SetException(description);
}

void ScriptSession::noteWriteFailure(const std::string& file, int systemError) {
    auto& noted = impl_->filesNoted;
    if (std::find(noted.begin(), noted.end(), file) != noted.end()) return;
    noted.push_back(file);
    impl_->failure.unwritten.push_back("could not write " + file + ": " +
                                       systemErrorText(systemError));
}

int ScriptSession::messageBox(const std::string& text, std::uint32_t style) {
    MessageBoxRequest request;
    request.caption = kModuleCaption;
    request.text = text;
    request.style = style;
    request.plain = true;
    return show(request);
}

int ScriptSession::show(const MessageBoxRequest& request) {
    void (*const uiScope)(bool) = impl_->services.uiScope;
    if (uiScope != nullptr) uiScope(true);
    int answer = 0;
    try {
        answer = impl_->services.frontend->messageBox(request);
    } catch (...) {
        // A front end that fails answers as if the box had been closed.
    }
    if (uiScope != nullptr) uiScope(false);
    return answer;
}

void ScriptSession::join(RunParticipant& participant) {
    auto& all = impl_->participants;
    if (std::find(all.begin(), all.end(), &participant) == all.end()) all.push_back(&participant);
}

void ScriptSession::loseThreads() noexcept {
    impl_->lineCallback.loseWatch();
}

ScriptSession& moduleSession() {
    static ScriptSession* forked = nullptr;
    static auto* const session = [] {
        auto* const made = new ScriptSession;
        setRaiseHook([](const char* description) { moduleSession().raise(description); });
        forked = made;
        onFork([] { forked->loseThreads(); });
        return made;
    }();
    return *session;
}

bool runShouldStop() {
    return moduleSession().shouldStop();
}

}  // namespace korvant
