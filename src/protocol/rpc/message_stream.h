// Whole messages over a channel.
#pragma once

#include <functional>
#include <memory>
#include <mutex>
#include <thread>

#include "protocol/rpc/channel.h"
#include "protocol/rpc/frame_reader.h"
#include "protocol/rpc/mailbox.h"

namespace korvant::rpc {

/// Reads a client on a thread of its own and puts its messages into a mailbox; sends from any
/// thread, one message after the other.
class MessageStream {
  public:
    /// Called on the reading thread: a body that is no JSON, in words; each message before it is
    /// posted, which the listener keeps for itself by answering true; and the end.
    struct Listener {
        std::function<void(const std::string&)> onBroken;
        std::function<bool(const Json&)> onMessage;
        std::function<void()> onEnd;
        bool forgives = false;  ///< what cannot be read is passed over; else it ends the stream
    };

    /// Reads nothing before begin().
    explicit MessageStream(std::shared_ptr<Channel> channel);
    /// Closes the channel and waits for the reading thread.
    ~MessageStream();
    MessageStream(const MessageStream&) = delete;
    MessageStream& operator=(const MessageStream&) = delete;

    /// Once, when everything that the listener calls stands: a client may have sent already.
    void begin(Listener listener);
    Mailbox& mailbox() noexcept { return mailbox_; }
    /// False when the client has gone.
    bool send(const Json& message);
    void close() { channel_->close(); }

  private:
    void work();
    void takeAll(FrameReader& frames);
    void takeBody(const std::string& body);

    const std::shared_ptr<Channel> channel_;
    Listener listener_;
    Mailbox mailbox_;
    std::mutex sending_;
    std::thread reader_;
};

}  // namespace korvant::rpc
