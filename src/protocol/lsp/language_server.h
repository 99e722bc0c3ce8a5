// `korvant lsp`: a language server for one client on standard input and output.
#pragma once

#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <span>
#include <string>

#include "language/diagnostics.h"
#include "language/documentation.h"
#include "language/meanings.h"
#include "protocol/rpc/message_stream.h"

namespace korvant::lsp {

using rpc::Json;

/// What the program that serves does for it.
struct LanguageServices {
    /// Says what is wrong with texts, beside us. May make null: then nothing is said.
    std::function<std::unique_ptr<CheckService>(CheckService::Poster poster)> checks;
    /// An engine with what scripts can call, for us alone; the reference is ours. May be null.
    std::function<asIScriptEngine*()> engine;
    std::span<const FunctionFamily> families;
    /// Ends the process: the client has been gone for three seconds and a request still runs. May
    /// be empty.
    std::function<void()> abandon;
};

/// One text that the client has open.
struct OpenText {
    std::string uri;
    std::int64_t version = 0;
    TextDocument document;
    bool dirty = true;      ///< changed since it was given to the check
    bool answered = false;  ///< the messages are those of the present text
    std::vector<Diagnostic> diagnostics;
    std::unique_ptr<Meanings> meanings;  ///< of the present text; made when needed
    bool prepared = false;  ///< what the compiler knows of it stands ready, or cannot be had
};

class LanguageServer {
  public:
    LanguageServer(std::shared_ptr<rpc::Channel> channel, LanguageServices services);

    /// Serves until the client says exit or is gone. The process's exit code: 0 after shutdown,
    /// else 1.
    int serve();
    ~LanguageServer();

  private:
    struct Reply {
        Json result;
        int code = 0;  ///< 0: the result holds
        std::string error;
        static Reply failed(int code, std::string error) {
            return {nullptr, code, std::move(error)};
        }
    };
    using Handler = Reply (LanguageServer::*)(const Json& params);
    static const std::map<std::string, Handler>& requests();

    // language_server.cpp
    void handle(const Json& message);
    Reply answer(const std::string& method, const Json& params);
    void notice(const std::string& method, const Json& params);
    Reply initialize(const Json& params);
    Reply shutdown(const Json& params);
    void open(const Json& params);
    void change(const Json& params);
    void closeText(const Json& params);
    void beginChecks();
    rpc::MessageStream::Listener listener();

    // language_checking.cpp
    /// What the check has posted from its thread.
    void runPosted();
    bool holdsPosted() const;
    /// Gives the next changed text to the check; of one that is under way the newest state. False
    /// when there is none.
    bool checkDue();
    /// Asks the compiler what is declared in the text that was written last, so that the next
    /// question about it finds the answer there.
    void prepare();
    bool check(OpenText& text);
    void takeResult(const CheckResult& result);
    void publish(const OpenText& text);
    /// Waits a little for the messages of the present text.
    void awaitAnswer(OpenText& text);
    void clientIsGone();

    // language_navigation.cpp
    /// What the parameters point at.
    struct Target {
        OpenText* text = nullptr;
        Meanings* meanings = nullptr;
        const NameUse* use = nullptr;
        std::vector<int> declarations;
    };
    Target targetOf(const Json& params);
    Json declarationJson(const Target& target, int declaration) const;
    std::vector<const NameUse*> usesOf(const Target& target) const;
    Reply definition(const Json& params);
    Reply typeDefinition(const Json& params);
    Reply implementation(const Json& params);
    Reply references(const Json& params);
    Reply highlights(const Json& params);
    Reply documentSymbols(const Json& params);
    Reply workspaceSymbols(const Json& params);
    Reply prepareRename(const Json& params);
    Reply rename(const Json& params);

    // language_editing.cpp
    Reply completion(const Json& params);
    Reply resolveCompletion(const Json& params);
    Reply hover(const Json& params);
    Reply signatureHelp(const Json& params);
    Reply semanticTokens(const Json& params);
    Reply foldingRanges(const Json& params);
    Reply selectionRanges(const Json& params);
    Reply inlayHints(const Json& params);
    Reply formatting(const Json& params);
    Reply codeActions(const Json& params);

    // language_places.cpp
    OpenText* textOf(const Json& params);
    Meanings& meaningsOf(OpenText& text);
    std::size_t offsetOf(const OpenText& text, const Json& position) const;
    ByteRange rangeOf(const OpenText& text, const Json& range) const;
    Json positionJson(const OpenText& text, std::size_t offset) const;
    Json rangeJson(const OpenText& text, ByteRange range) const;
    Json locationJson(const OpenText& text, ByteRange range) const;
    /// The name that the parameters point at; false, and the reply is null, for none.
    bool place(const Json& params, OpenText*& text, std::size_t& offset);

    LanguageServices services_;
    Documentation documentation_;
    OracleEngine engine_;
    std::map<std::string, OpenText> texts_;
    std::string written_;  ///< the text that was opened or changed last
    bool utf8_ = false;
    bool hierarchical_ = true;
    bool snippets_ = false;
    bool initialized_ = false;
    bool shutDown_ = false;
    bool leaving_ = false;
    std::map<std::string, std::string> completionTexts_;  ///< documentation by key, for resolve
    struct Checking {
        std::string uri;
        std::uint64_t number = 0;
        std::chrono::steady_clock::time_point began;
    };
    std::optional<Checking> checking_;  ///< what no answer has come for
    std::uint64_t checks_ = 0;
    mutable std::mutex mutex_;  ///< of posted_ and left_
    std::deque<std::function<void()>> posted_;
    bool left_ = false;  ///< serve() is over
    std::condition_variable changed_;
    std::unique_ptr<CheckService> service_;
    std::unique_ptr<rpc::MessageStream> stream_;
};

/// Numbers of symbol and completion kinds. Source: the protocol, version 3.17.
int symbolKindOf(DeclarationKind kind);
/// Names of the semantic token types, in the order of NameColour, and of the modifiers.
Json tokenTypes();
Json tokenModifiers();
/// Everything that the server can do.
Json serverCapabilities(bool utf8);

}  // namespace korvant::lsp
