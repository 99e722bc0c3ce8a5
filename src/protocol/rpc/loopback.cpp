#define ASIO_STANDALONE
#include <asio.hpp>
#include <atomic>
#include <chrono>
#include <mutex>
#if !defined(_WIN32)
#include <poll.h>
#endif

#include "protocol/rpc/channel.h"

namespace korvant::rpc {

namespace {

using asio::ip::tcp;

/// Until bytes can be read or sent, or the other side has gone; a tenth of a second at most.
void waitFor(tcp::socket& socket, short what) {
    constexpr int kTurnMs = 100;
#if defined(_WIN32)
    WSAPOLLFD place{socket.native_handle(), what, 0};
    WSAPoll(&place, 1, kTurnMs);
#else
    pollfd place{socket.native_handle(), what, 0};
    poll(&place, 1, kTurnMs);
#endif
}

/// Nobody waits inside the system for longer than a turn: that one thread shuts a socket down wakes
/// another one there on some systems only.
class SocketChannel final : public Channel {
  public:
    SocketChannel(std::shared_ptr<asio::io_context> context, tcp::socket socket)
        : context_(std::move(context)), socket_(std::move(socket)) {
        asio::error_code ignored;
        socket_.set_option(tcp::no_delay(true), ignored);
        socket_.non_blocking(true, ignored);
    }
    ~SocketChannel() override { close(); }

    bool read(std::string& bytes) override {
        char buffer[16384];
        while (!closed_) {
            asio::error_code error;
            const std::size_t got = socket_.read_some(asio::buffer(buffer), error);
            if (wouldWait(error)) {
                waitFor(socket_, POLLIN);
                continue;
            }
            if (error || closed_) return false;
            bytes.append(buffer, got);
            return true;
        }
        return false;
    }

    bool write(std::string_view bytes) override {
        const std::lock_guard lock(writing_);
        while (!closed_ && !bytes.empty()) {
            asio::error_code error;
            bytes.remove_prefix(
                socket_.write_some(asio::buffer(bytes.data(), bytes.size()), error));
            if (wouldWait(error))
                waitFor(socket_, POLLOUT);
            else if (error)
                return false;
        }
        return !closed_;
    }

    /// Shut down, not closed: the number of the socket stays ours while another thread waits in it.
    void close() override {
        if (closed_.exchange(true)) return;
        asio::error_code ignored;
        socket_.shutdown(tcp::socket::shutdown_both, ignored);
    }

  private:
    static bool wouldWait(const asio::error_code& error) {
        return error == asio::error::would_block || error == asio::error::try_again;
    }

    std::shared_ptr<asio::io_context> context_;
    tcp::socket socket_;
    std::mutex writing_;
    std::atomic<bool> closed_{false};
};

class Listener final : public LoopbackListener {
  public:
    Listener(std::uint16_t port, asio::error_code& error)
        : context_(std::make_shared<asio::io_context>()), acceptor_(*context_) {
        const tcp::endpoint place(asio::ip::address_v4::loopback(), port);
        acceptor_.open(place.protocol(), error);
        if (!error) acceptor_.bind(place, error);
        if (!error) acceptor_.listen(4, error);
        if (!error) acceptor_.non_blocking(true, error);
        if (!error) port_ = acceptor_.local_endpoint(error).port();
    }

    std::uint16_t port() const override { return port_; }

    std::unique_ptr<Channel> accept() override {
        while (!closed_) {
            tcp::socket socket(*context_);
            asio::error_code error;
            acceptor_.accept(socket, error);
            if (!error) return std::make_unique<SocketChannel>(context_, std::move(socket));
            if (error != asio::error::would_block && error != asio::error::try_again &&
                error != asio::error::connection_aborted)
                return nullptr;
            waitForClient();
        }
        return nullptr;
    }

    void close() override { closed_ = true; }

  private:
    /// Until somebody knocks, 100 ms at most.
    void waitForClient() {
        context_->restart();
        acceptor_.async_wait(tcp::acceptor::wait_read, [](const asio::error_code&) {});
        context_->run_for(std::chrono::milliseconds(100));
        asio::error_code ignored;
        acceptor_.cancel(ignored);
        context_->run_for(std::chrono::milliseconds(1));
    }

    std::shared_ptr<asio::io_context> context_;
    tcp::acceptor acceptor_;
    std::uint16_t port_ = 0;
    std::atomic<bool> closed_{false};
};

}  // namespace

std::unique_ptr<LoopbackListener> listenOnLoopback(std::uint16_t port, std::string& error) {
    asio::error_code code;
    auto listener = std::make_unique<Listener>(port, code);
    error = code ? code.message() : std::string();
    return code ? nullptr : std::move(listener);
}

std::unique_ptr<Channel> connectToLoopback(std::uint16_t port, std::string& error) {
    auto context = std::make_shared<asio::io_context>();
    tcp::socket socket(*context);
    asio::error_code code;
    socket.connect(tcp::endpoint(asio::ip::address_v4::loopback(), port), code);
    error = code ? code.message() : std::string();
    if (code) return nullptr;
    return std::make_unique<SocketChannel>(std::move(context), std::move(socket));
}

}  // namespace korvant::rpc
