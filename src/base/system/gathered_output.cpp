#include "base/system/gathered_output.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <system_error>

#include "base/system/os_file.h"

namespace korvant {

namespace {

constexpr std::chrono::milliseconds kInterval{20};
constexpr char kEraseLine[] = "\r\x1b[K";

}  // namespace

GatheredOutput::GatheredOutput(int handle)
    : handle_(openUnblocked(handle)), buffer_(new char[kBufferBytes]) {}

GatheredOutput::~GatheredOutput() {
    end();
    if (handle_ != kNoFile) closeHandle(handle_);
}

void GatheredOutput::begin() {
    failure_.store(0);
    if (thread_.joinable()) return;
    ending_ = false;
    try {
        thread_ = std::thread([this] { flushFromTimeToTime(); });
    } catch (const std::system_error&) {
        writesThrough_ = true;
    }
}

void GatheredOutput::end() {
    if (!thread_.joinable()) return;
    {
        const std::lock_guard lock(mutex_);
        ending_ = true;
    }
    wake_.notify_all();
    thread_.join();
}

void GatheredOutput::flushFromTimeToTime() {
    keepSignalsAway();
    std::unique_lock lock(mutex_);
    while (!ending_) {
        wake_.wait_for(lock, kInterval);
        pump();
    }
}

int GatheredOutput::writeSlowly(std::string_view bytes, StopQuery shouldStop) {
    while (!bytes.empty()) {
        const std::size_t filled = filled_.load(std::memory_order_relaxed);
        const std::size_t piece = std::min(bytes.size(), kBufferBytes - filled);
        bytes.copy(buffer_.get() + filled, piece);
        filled_.store(filled + piece, std::memory_order_release);
        bytes.remove_prefix(piece);
        if (!bytes.empty() && !makeRoom(shouldStop)) {
            keepRest(bytes);
            break;
        }
    }
    return writesThrough_ ? flush(shouldStop) : failure_.load();
}

/// Waits until the buffer is empty; false when stopped.
bool GatheredOutput::makeRoom(StopQuery shouldStop) {
    while (!handOver()) {
        if (shouldStop && shouldStop()) return false;
        awaitRoom(handle_);
    }
    return true;
}

void GatheredOutput::keepRest(std::string_view bytes) {
    const std::lock_guard lock(mutex_);
    const std::size_t room = kRestBytes - std::min(rest_.size(), kRestBytes);
    rest_.append(bytes.substr(0, room));
    if (bytes.size() > room) fail(ECANCELED);
}

/// Hands over what can be taken at once; true when nothing is left.
bool GatheredOutput::handOver() {
    const std::lock_guard lock(mutex_);
    pump();
    if (sent_ < filled_.load() || restSent_ < rest_.size()) return false;
    sent_ = 0;
    filled_.store(0);
    rest_.clear();
    restSent_ = 0;
    return true;
}

int GatheredOutput::flush(StopQuery shouldStop) {
    makeRoom(shouldStop);
    return failure_.load();
}

int GatheredOutput::flushWithin(unsigned patience) {
    using Steady = std::chrono::steady_clock;
    auto touched = Steady::now();
    std::size_t before = 0;
    while (!handOver()) {
        awaitRoom(handle_);
        const std::lock_guard lock(mutex_);
        if (sent_ + restSent_ != before) touched = Steady::now();
        before = sent_ + restSent_;
        if (Steady::now() - touched > std::chrono::milliseconds(patience)) fail(ECANCELED);
    }
    return failure_.load();
}

void GatheredOutput::pump() {
    const std::size_t filled = filled_.load(std::memory_order_acquire);
    if (sent_ < filled) pumpPart(std::string_view(buffer_.get(), filled), sent_);
    if (sent_ == filled && restSent_ < rest_.size()) pumpPart(rest_, restSent_);
    if (!statusShown_ && !statusHeld_ && last_ == '\n' && sent_ == filled) showStatus();
}

void GatheredOutput::pumpPart(std::string_view bytes, std::size_t& sent) {
    hideStatus();
    std::size_t written = 0;
    int error = failure_.load();
    if (error == 0) error = writeReady(handle_, bytes.substr(sent), written);
    sent += written;
    if (written > 0) last_ = bytes[sent - 1];
    if (error != 0) fail(error);
}

/// Keeps the first error and drops what is waiting.
void GatheredOutput::fail(int error) {
    int none = 0;
    failure_.compare_exchange_strong(none, error);
    sent_ = filled_.load();
    restSent_ = rest_.size();
}

void GatheredOutput::hideStatus() {
    if (!statusShown_) return;
    std::size_t written = 0;
    writeReady(handle_, kEraseLine, written);
    statusShown_ = false;
}

void GatheredOutput::showStatus() {
    if (status_.empty()) return;
    std::size_t written = 0;
    writeReady(handle_, kEraseLine + status_, written);
    statusShown_ = true;
}

void GatheredOutput::setStatus(const std::string& line) {
    const std::lock_guard lock(mutex_);
    if (line == status_) return;
    hideStatus();
    status_ = line;
    pump();
}

void GatheredOutput::holdStatus(bool hold) {
    const std::lock_guard lock(mutex_);
    statusHeld_ = hold;
    if (hold) hideStatus();
}

}  // namespace korvant
