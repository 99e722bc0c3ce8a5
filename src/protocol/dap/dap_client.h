// What goes to a debugging client, and what is known of it.
#pragma once

#include <cstdint>
#include <functional>
#include <mutex>
#include <string>

#include "protocol/rpc/json.h"

namespace korvant::dap {

using rpc::Json;

/// The outcome of a request.
struct Answer {
    bool done = true;
    bool later = false;  ///< it will be answered at another place
    std::string error;
    Json body;

    static Answer refused(std::string why) { return {false, false, std::move(why), nullptr}; }
    static Answer with(Json body) { return {true, false, {}, std::move(body)}; }
    static Answer postponed() { return {true, true, {}, nullptr}; }
};

/// Numbers what it sends, from any thread, in the order in which it is sent.
class DapClient {
  public:
    /// `send` answers false when the client has gone.
    explicit DapClient(std::function<bool(const Json&)> send) : send_(std::move(send)) {}

    void answer(const Json& request, const Answer& answer);
    void event(const char* name, Json body = nullptr);
    /// A request to the client; its answer comes as a message of type "response".
    void ask(const char* command, Json arguments);
    /// A message made elsewhere, with a number of ours.
    void pass(Json message);

    /// What initialize says.
    void learn(const Json& arguments);
    /// Places as the client counts them.
    std::int64_t line(std::int64_t scriptLine) const { return scriptLine + lineShift_; }
    std::int64_t column(std::int64_t scriptColumn) const { return scriptColumn + columnShift_; }
    std::int64_t scriptLine(std::int64_t line) const { return line - lineShift_; }
    std::int64_t scriptColumn(std::int64_t column) const { return column - columnShift_; }
    bool runsInTerminal() const noexcept { return runsInTerminal_; }

  private:
    std::function<bool(const Json&)> send_;
    std::mutex mutex_;
    std::int64_t seq_ = 0;
    int lineShift_ = 0;  ///< -1 for clients that count from 0
    int columnShift_ = 0;
    bool runsInTerminal_ = false;
};

/// What the adapter can do, exactly.
Json capabilities();

}  // namespace korvant::dap
