#include "protocol/rpc/mailbox.h"

namespace korvant::rpc {

void Mailbox::post(Json message) {
    const std::lock_guard lock(mutex_);
    messages_.push_back(std::move(message));
    changed_.notify_all();
}

void Mailbox::end() {
    const std::lock_guard lock(mutex_);
    ended_ = true;
    changed_.notify_all();
}

bool Mailbox::ended() const {
    const std::lock_guard lock(mutex_);
    return ended_ && messages_.empty();
}

std::optional<Json> Mailbox::take(std::chrono::milliseconds wait) {
    std::unique_lock lock(mutex_);
    changed_.wait_for(lock, wait, [this] { return !messages_.empty() || ended_ || woken_; });
    woken_ = false;
    if (messages_.empty()) return std::nullopt;
    std::optional<Json> message(std::move(messages_.front()));
    messages_.pop_front();
    return message;
}

void Mailbox::await(std::chrono::milliseconds wait) {
    std::unique_lock lock(mutex_);
    changed_.wait_for(lock, wait, [this] { return !messages_.empty() || ended_ || woken_; });
}

void Mailbox::wake() {
    const std::lock_guard lock(mutex_);
    woken_ = true;
    changed_.notify_all();
}

}  // namespace korvant::rpc
