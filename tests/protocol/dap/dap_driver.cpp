#include "protocol/dap/dap_driver.h"

#include <gtest/gtest.h>

#include <chrono>

namespace korvant::test {

bool DriverChannel::read(std::string& bytes) {
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [this] { return closed_ || !toServer_.empty(); });
    if (toServer_.empty()) return false;
    bytes += toServer_;
    toServer_.clear();
    return true;
}

bool DriverChannel::write(std::string_view bytes) {
    const std::lock_guard lock(mutex_);
    toClient_ += bytes;
    changed_.notify_all();
    return !closed_;
}

void DriverChannel::close() {
    const std::lock_guard lock(mutex_);
    closed_ = true;
    changed_.notify_all();
}

void DriverChannel::put(std::string_view bytes) {
    const std::lock_guard lock(mutex_);
    toServer_ += bytes;
    changed_.notify_all();
}

bool DriverChannel::take(std::string& bytes, int seconds) {
    std::unique_lock lock(mutex_);
    changed_.wait_for(lock, std::chrono::seconds(seconds),
                      [this] { return closed_ || !toClient_.empty(); });
    bytes += toClient_;
    const bool some = !toClient_.empty();
    toClient_.clear();
    return some;
}

int DapDriver::send(const std::string& command, Json arguments) {
    Json request = {{"seq", ++seq_}, {"type", "request"}, {"command", command}};
    if (!arguments.is_null()) request["arguments"] = std::move(arguments);
    put(request);
    return seq_;
}

void DapDriver::put(const Json& message) {
    const std::string frame = rpc::framed(message.dump());
    if (memory_)
        memory_->put(frame);
    else
        remote_->write(frame);
}

/// False when nothing more comes.
bool DapDriver::receive() {
    std::string bytes;
    const bool some = memory_ ? memory_->take(bytes, 20) : remote_->read(bytes);
    frames_.feed(bytes);
    while (const auto body = frames_.next()) messages_.push_back(Json::parse(*body));
    gone_ = gone_ || !some;
    return some;
}

Json DapDriver::answerTo(int request) {
    for (std::size_t at = 0;; ++at) {
        while (at >= messages_.size())
            if (!receive()) return {{"success", false}, {"message", "nothing came"}};
        const Json& message = messages_[at];
        if (message["type"] == "response" && message["request_seq"] == request) return message;
    }
}

Json DapDriver::good(const std::string& command, Json arguments) {
    const Json answer = ask(command, std::move(arguments));
    EXPECT_TRUE(answer.value("success", false)) << command << ": " << answer.dump();
    return answer.value("body", Json::object());
}

Json DapDriver::event(const std::string& name) {
    for (;; ++seen_) {
        while (seen_ >= messages_.size())
            if (!receive()) {
                ADD_FAILURE() << "no event " << name;
                return Json::object();
            }
        const Json& message = messages_[seen_];
        if (message["type"] != "event" || message["event"] != name) continue;
        ++seen_;
        return message.value("body", Json::object());
    }
}

Json DapDriver::request(const std::string& command) {
    for (std::size_t at = 0;; ++at) {
        while (at >= messages_.size())
            if (!receive()) {
                ADD_FAILURE() << "no request " << command;
                return Json::object();
            }
        if (messages_[at]["type"] == "request" && messages_[at]["command"] == command)
            return messages_[at]["arguments"];
    }
}

void DapDriver::refuse(const std::string& command, const std::string& why) {
    put({{"seq", ++seq_},
         {"type", "response"},
         {"command", command},
         {"request_seq", 1},
         {"success", false},
         {"message", why}});
}

Json DapDriver::topFrame() {
    const Json frames = good("stackTrace", {{"threadId", 1}});
    return frames.contains("stackFrames") && !frames["stackFrames"].empty()
               ? frames["stackFrames"][0]
               : Json{{"id", 0}, {"line", 0}};
}

std::map<std::string, Json> DapDriver::variables(std::int64_t reference) {
    std::map<std::string, Json> found;
    const Json body = good("variables", {{"variablesReference", reference}});
    for (const Json& one : body.value("variables", Json::array())) found[one["name"]] = one;
    return found;
}

std::map<std::string, Json> DapDriver::scope(const std::string& name) {
    const Json body = good("scopes", {{"frameId", topFrame()["id"]}});
    for (const Json& one : body.value("scopes", Json::array()))
        if (one["name"] == name) return variables(one["variablesReference"]);
    return {};
}

std::string DapDriver::value(const std::string& expression, const std::string& context) {
    const Json answer =
        ask("evaluate",
            {{"expression", expression}, {"frameId", topFrame()["id"]}, {"context", context}});
    return answer["success"] == true ? std::string(answer["body"]["result"])
                                     : "error: " + std::string(answer["message"]);
}

std::string DapDriver::output(const std::string& category) const {
    std::string text;
    for (const Json& message : messages_)
        if (message.value("event", "") == "output" && message["body"]["category"] == category)
            text += message["body"]["output"];
    return text;
}

int DapDriver::count(const std::string& event) const {
    int count = 0;
    for (const Json& message : messages_) count += message.value("event", "") == event ? 1 : 0;
    return count;
}

}  // namespace korvant::test
