// Bytes to and from a client.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace korvant::rpc {

/// One client's two directions. read() belongs to one thread; write() and close() may be called on
/// any.
class Channel {
  public:
    virtual ~Channel() = default;
    /// Waits for at least one byte and appends what there is. False at the end, on an error and
    /// after close().
    virtual bool read(std::string& bytes) = 0;
    /// Everything, waiting for room. False when the client has gone.
    virtual bool write(std::string_view bytes) = 0;
    /// Ends a waiting read, within 100 ms, and refuses writes. For good.
    virtual void close() = 0;
};

/// The process's standard input and output, which nobody else may use meanwhile: what other code
/// prints to standard output goes to standard error from here on.
std::unique_ptr<Channel> standardStreams();

/// A port on the loopback; clients on other machines cannot reach it.
class LoopbackListener {
  public:
    virtual ~LoopbackListener() = default;
    virtual std::uint16_t port() const = 0;
    /// Waits for the next client; null after close() and when the port is lost.
    virtual std::unique_ptr<Channel> accept() = 0;
    virtual void close() = 0;  ///< any thread
};

/// `port` 0: any free one. Null, and `error` says why, when it cannot be had.
std::unique_ptr<LoopbackListener> listenOnLoopback(std::uint16_t port, std::string& error);

/// Null, and `error` says why, when nobody listens there.
std::unique_ptr<Channel> connectToLoopback(std::uint16_t port, std::string& error);

}  // namespace korvant::rpc
