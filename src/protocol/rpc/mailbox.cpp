#include "protocol/rpc/mailbox.h"

#include <algorithm>

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

std::optional<Json> Mailbox::takeIf(const std::function<bool(const Json&)>& wanted) {
    const std::lock_guard lock(mutex_);
    const auto found = std::find_if(messages_.begin(), messages_.end(), wanted);
    if (found == messages_.end()) return std::nullopt;
    std::optional<Json> message(std::move(*found));
    messages_.erase(found);
    return message;
}

bool Mailbox::holds(const std::function<bool(const Json&)>& wanted) const {
    const std::lock_guard lock(mutex_);
    return std::any_of(messages_.begin(), messages_.end(), wanted);
}

void Mailbox::wake() {
    const std::lock_guard lock(mutex_);
    woken_ = true;
    changed_.notify_all();
}

}  // namespace korvant::rpc
