// What a run prints, on its way to a debugging client.
#pragma once

#include <condition_variable>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>

#include "protocol/dap/dap_client.h"

namespace korvant::dap {

/// Gathers text and sends it as output events, in order: every 20 ms, at the latest with 32 KiB,
/// and at flush(). Any thread. A character is never torn apart.
class OutputRelay {
  public:
    explicit OutputRelay(DapClient& client);
    ~OutputRelay();  ///< sends the rest
    OutputRelay(const OutputRelay&) = delete;
    OutputRelay& operator=(const OutputRelay&) = delete;

    /// Bytes as scripts print them. `category` must stay: "stdout", "stderr", "console".
    void write(const char* category, std::string_view bytes);
    void flush();
    /// One event of its own, behind what was written before.
    void event(Json body);

  private:
    static constexpr std::size_t kFull = 32 << 10;

    void work();
    void send(bool all);

    DapClient& client_;
    std::mutex mutex_;
    std::condition_variable wake_;
    std::string pending_;
    const char* category_ = "stdout";
    bool ending_ = false;
    std::thread thread_;
};

}  // namespace korvant::dap
