// Messages handed on to a debug server elsewhere.
#pragma once

#include <atomic>
#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "protocol/dap/dap_client.h"
#include "protocol/rpc/message_stream.h"

namespace korvant::dap {

/// Connected to a server: what it says goes to the client with numbers of ours.
class FramePasser {
  public:
    FramePasser(std::shared_ptr<rpc::Channel> server, DapClient& client);

    /// Says who we are and attaches in the name of `request`, which may be a launch. Nothing, or
    /// why it was refused.
    std::string attach(const Json& initialize, const Json& request, std::uint16_t port,
                       const std::string& token);
    void pass(const Json& message);
    /// Requests that were passed and that the server has not answered.
    std::vector<Json> takeUnanswered();
    bool gone() { return stream_.mailbox().ended(); }
    bool sawEnd() const noexcept { return sawEnd_; }  ///< the client was told that the run is over

  private:
    bool onMessage(const Json& message);
    std::string refusalOf(const char* command);

    DapClient& client_;
    std::atomic<bool> attached_{false};
    std::atomic<bool> sawEnd_{false};
    std::mutex waiting_;
    std::map<std::int64_t, Json> unanswered_;  ///< by number; guarded by waiting_
    rpc::MessageStream stream_;                ///< last: its thread calls into all above
};

/// A port of the loopback that nobody used just now; 0 when there is none.
std::uint16_t freePort();

/// 128 bits that nobody can guess, in hexadecimal digits.
std::string newToken();

}  // namespace korvant::dap
