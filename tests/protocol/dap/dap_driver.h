// A debugging client made of code, and the bytes between it and a server in this process.
#pragma once

#include <condition_variable>
#include <deque>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "protocol/rpc/channel.h"
#include "protocol/rpc/frame_reader.h"
#include "protocol/rpc/json.h"

namespace korvant::test {

using rpc::Json;

/// A channel whose other end is a test.
class DriverChannel final : public rpc::Channel {
  public:
    bool read(std::string& bytes) override;
    bool write(std::string_view bytes) override;
    void close() override;

    void put(std::string_view bytes);  ///< what the server reads next
    /// What the server has written, taken by another thread; false when nothing came in `seconds`.
    bool take(std::string& bytes, int seconds);

  private:
    std::mutex mutex_;
    std::condition_variable changed_;
    std::string toServer_;
    std::string toClient_;
    bool closed_ = false;
};

/// Sends requests and keeps what comes back, in order. Every wait ends after 20 s.
class DapDriver {
  public:
    explicit DapDriver(std::shared_ptr<rpc::Channel> channel) : remote_(std::move(channel)) {}
    explicit DapDriver(std::shared_ptr<DriverChannel> memory) : memory_(std::move(memory)) {}

    int send(const std::string& command, Json arguments = nullptr);
    Json answerTo(int request);
    Json ask(const std::string& command, Json arguments = nullptr) {
        return answerTo(send(command, std::move(arguments)));
    }
    /// The body of a request that must succeed.
    Json good(const std::string& command, Json arguments = nullptr);
    /// The body of the next event of this name, counted from the last one that was awaited.
    Json event(const std::string& name);
    Json stopped() { return event("stopped"); }
    /// The arguments of what the server asks its client.
    Json request(const std::string& command);
    void refuse(const std::string& command, const std::string& why);
    Json topFrame();
    std::map<std::string, Json> variables(std::int64_t reference);
    /// The variables of a scope of the innermost frame.
    std::map<std::string, Json> scope(const std::string& name);
    /// The result, or "error: " and why there is none.
    std::string value(const std::string& expression, const std::string& context = "watch");

    /// All text of a category so far.
    std::string output(const std::string& category) const;
    int count(const std::string& event) const;
    const std::vector<Json>& messages() const { return messages_; }
    bool gone() const { return gone_; }

  private:
    bool receive();
    void put(const Json& message);

    std::shared_ptr<rpc::Channel> remote_;
    std::shared_ptr<DriverChannel> memory_;
    rpc::FrameReader frames_;
    std::vector<Json> messages_;
    std::size_t seen_ = 0;  ///< events before this have been awaited
    int seq_ = 0;
    bool gone_ = false;
};

}  // namespace korvant::test
