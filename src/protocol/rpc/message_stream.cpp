#include "protocol/rpc/message_stream.h"

#include "base/system/os_file.h"

namespace korvant::rpc {

MessageStream::MessageStream(std::shared_ptr<Channel> channel) : channel_(std::move(channel)) {}

void MessageStream::begin(Listener listener) {
    listener_ = std::move(listener);
    reader_ = std::thread([this] { work(); });
}

MessageStream::~MessageStream() {
    channel_->close();
    if (reader_.joinable()) reader_.join();
}

bool MessageStream::send(const Json& message) {
    const std::string frame = framed(writeJson(message));
    const std::lock_guard lock(sending_);
    return channel_->write(frame);
}

void MessageStream::work() {
    keepSignalsAway();
    try {
        FrameReader frames;
        for (std::string bytes; !frames.broken() && channel_->read(bytes); bytes.clear()) {
            frames.feed(bytes);
            takeAll(frames);
        }
    } catch (...) {
        // Without memory for a message there is no client any more.
    }
    mailbox_.end();
    if (listener_.onEnd) listener_.onEnd();
}

void MessageStream::takeAll(FrameReader& frames) {
    for (;;) {
        while (const auto body = frames.next()) takeBody(*body);
        if (!frames.broken()) return;
        if (listener_.onBroken)
            listener_.onBroken("a header that cannot be read, or a message that is too long");
        if (!listener_.forgives) return;
        frames.skipToNext();
    }
}

void MessageStream::takeBody(const std::string& body) {
    std::optional<Json> message = readJson(body);
    if (!message) {
        if (listener_.onBroken) listener_.onBroken("a message that is no JSON, or too deep");
        return;
    }
    if (listener_.onMessage && listener_.onMessage(*message)) return;
    mailbox_.post(std::move(*message));
}

}  // namespace korvant::rpc
