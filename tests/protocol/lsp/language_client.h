// A client of the language server in the test's own process.
#pragma once

#include <gtest/gtest.h>

#include <condition_variable>
#include <deque>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>

#include "module/configuration.h"
#include "module/families.h"
#include "protocol/lsp/language_server.h"
#include "protocol/rpc/frame_reader.h"

namespace korvant::test {

using rpc::Json;

/// Both directions in memory.
class MemoryChannel final : public rpc::Channel {
  public:
    bool read(std::string& bytes) override {
        std::unique_lock lock(mutex_);
        changed_.wait(lock, [this] { return closed_ || !toServer_.empty(); });
        bytes += toServer_;
        toServer_.clear();
        return !closed_ || !bytes.empty();
    }
    bool write(std::string_view bytes) override {
        const std::lock_guard lock(mutex_);
        reader_.feed(bytes);
        while (auto body = reader_.next())
            if (auto message = rpc::readJson(*body)) fromServer_.push_back(std::move(*message));
        changed_.notify_all();
        return !closed_;
    }
    void close() override {
        const std::lock_guard lock(mutex_);
        closed_ = true;
        changed_.notify_all();
    }

    void say(const Json& message) { sayBytes(rpc::framed(rpc::writeJson(message))); }
    void sayBytes(std::string_view bytes) {
        const std::lock_guard lock(mutex_);
        toServer_ += bytes;
        changed_.notify_all();
    }
    /// The first message that `wanted` accepts, taken out; nothing within a minute.
    template <class Wanted>
    std::optional<Json> await(const Wanted& wanted) {
        std::unique_lock lock(mutex_);
        std::optional<Json> found;
        changed_.wait_for(lock, std::chrono::minutes(1), [&] {
            for (auto one = fromServer_.begin(); !found && one != fromServer_.end(); ++one)
                if (wanted(*one)) {
                    found = std::move(*one);
                    fromServer_.erase(one);
                    break;
                }
            return found.has_value();
        });
        return found;
    }

  private:
    std::mutex mutex_;
    std::condition_variable changed_;
    std::string toServer_;
    rpc::FrameReader reader_;
    std::deque<Json> fromServer_;
    bool closed_ = false;
};

/// Starts a server as `korvant lsp` does, on a thread of its own, and says initialize.
class LanguageClient {
  public:
    explicit LanguageClient(const Json& capabilities = Json::object(), bool initialize = true)
        : server_([this] {
              serve();
              asThreadCleanup();
          }) {
        if (!initialize) return;
        initialized_ = ask("initialize", {{"capabilities", capabilities}})["result"];
        tell("initialized", Json::object());
    }
    ~LanguageClient() { finish(); }

    /// The whole answer.
    Json ask(const std::string& method, const Json& params) {
        const int id = ++lastId_;
        channel_->say({{"jsonrpc", "2.0"}, {"id", id}, {"method", method}, {"params", params}});
        const auto answer = channel_->await(
            [&](const Json& message) { return message.contains("id") && message["id"] == id; });
        EXPECT_TRUE(answer.has_value()) << method << " is not answered";
        return answer.value_or(Json::object());
    }
    /// What is no message; the error by which it is answered.
    Json noise(std::string_view bytes) {
        channel_->sayBytes(bytes);
        const auto answer = channel_->await(
            [](const Json& message) { return message.contains("id") && message["id"].is_null(); });
        return answer ? (*answer)["error"] : Json();
    }
    void tell(const std::string& method, const Json& params) {
        channel_->say({{"jsonrpc", "2.0"}, {"method", method}, {"params", params}});
    }
    void open(const std::string& uri, const std::string& text, int version = 1) {
        tell("textDocument/didOpen", {{"textDocument",
                                       {{"uri", uri},
                                        {"languageId", "angelscript"},
                                        {"version", version},
                                        {"text", text}}}});
    }
    /// The messages about that version of a text.
    Json diagnosticsOf(const std::string& uri, int version = 1) {
        const auto told = channel_->await([&](const Json& message) {
            return message.value("method", "") == "textDocument/publishDiagnostics" &&
                   message["params"]["uri"] == uri &&
                   message["params"].value("version", version) == version;
        });
        EXPECT_TRUE(told.has_value()) << "no messages about " << uri;
        return told ? (*told)["params"]["diagnostics"] : Json::array();
    }
    /// The capabilities that the server announces, and more.
    const Json& initialized() const { return initialized_; }
    /// The process's exit code, once the server has left.
    int finish() {
        channel_->close();
        if (server_.joinable()) server_.join();
        return exitCode_;
    }
    /// Waits for the server to leave by itself.
    int left() {
        if (server_.joinable()) server_.join();
        return exitCode_;
    }

  private:
    static asIScriptEngine* makeEngine() {
        asIScriptEngine* const engine = asCreateScriptEngine();
        asIScriptContext* const context = engine == nullptr ? nullptr : configureEngine(engine);
        if (context != nullptr) context->Release();
        return engine;
    }
    void serve() {
        asIScriptEngine* const engine = makeEngine();
        lsp::LanguageServices services;
        services.checks = [&](CheckService::Poster poster) {
            return makeCheckService(*engine, std::move(poster));
        };
        services.engine = makeEngine;
        services.families = allFamilies();
        {
            lsp::LanguageServer server(channel_, std::move(services));
            exitCode_ = server.serve();
        }
        moduleSession().release(engine);
        engine->ShutDownAndRelease();
    }

    std::shared_ptr<MemoryChannel> channel_ = std::make_shared<MemoryChannel>();
    int lastId_ = 0;
    int exitCode_ = -1;
    Json initialized_;
    std::thread server_;
};

}  // namespace korvant::test
