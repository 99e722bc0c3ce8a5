#include "protocol/dap/output_relay.h"

#include <chrono>
#include <cstring>

#include "base/system/os_file.h"
#include "base/text/text_encoding.h"

namespace korvant::dap {

namespace {

/// Bytes at the end that begin a character and do not finish it.
std::size_t tornBytes(std::string_view text) {
    for (std::size_t back = 1; back <= 3 && back <= text.size(); ++back) {
        const int length = utf8SequenceLength(text.substr(text.size() - back));
        if (length == -1) return back;
        if (length > 0) return 0;
    }
    return 0;
}

}  // namespace

OutputRelay::OutputRelay(DapClient& client) : client_(client) {
    thread_ = std::thread([this] { work(); });
}

OutputRelay::~OutputRelay() {
    {
        const std::lock_guard lock(mutex_);
        ending_ = true;
        wake_.notify_all();
    }
    thread_.join();
    flush();
}

void OutputRelay::write(const char* category, std::string_view bytes) {
    const std::lock_guard lock(mutex_);
    if (std::strcmp(category, category_) != 0) send(true);
    category_ = category;
    while (!bytes.empty()) {
        const std::string_view part = bytes.substr(0, kFull);
        const bool wasEmpty = pending_.empty();
        pending_.append(part);
        bytes.remove_prefix(part.size());
        if (pending_.size() >= kFull) send(false);
        if (wasEmpty) wake_.notify_all();
    }
}

void OutputRelay::flush() {
    const std::lock_guard lock(mutex_);
    send(true);
}

void OutputRelay::event(Json body) {
    const std::lock_guard lock(mutex_);
    send(true);
    client_.event("output", std::move(body));
}

/// With the mutex held. `all`: what is torn goes as it is.
void OutputRelay::send(bool all) {
    const std::size_t kept = all ? 0 : tornBytes(pending_);
    const std::size_t count = pending_.size() - kept;
    if (count == 0) return;
    client_.event("output", {{"category", category_},
                             {"output", decodeForDisplay(pending_.substr(0, count))}});
    pending_.erase(0, count);
}

void OutputRelay::work() {
    keepSignalsAway();
    std::unique_lock lock(mutex_);
    while (!ending_) {
        wake_.wait(lock, [this] { return ending_ || !pending_.empty(); });
        wake_.wait_for(lock, std::chrono::milliseconds(20), [this] { return ending_; });
        send(false);
    }
}

}  // namespace korvant::dap
