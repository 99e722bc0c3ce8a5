#include "protocol/lsp/language_server.h"

#include <chrono>
namespace korvant::lsp {

namespace {

// Source: the protocol's error codes.
constexpr int kNotInitialized = -32002, kUnknownMethod = -32601, kInvalidRequest = -32600,
              kInvalidParams = -32602, kNoJson = -32700;

constexpr std::size_t kMostPosted = 1000;

/// A text is looked at when nothing has come for so long.
constexpr std::chrono::milliseconds kPause{120};

Json errorJson(const Json& id, int code, const std::string& message) {
    return {{"jsonrpc", "2.0"}, {"id", id}, {"error", {{"code", code}, {"message", message}}}};
}

bool offersUtf8(const Json& params) {
    const Json& encodings = rpc::memberOf(
        rpc::memberOf(rpc::memberOf(params, "capabilities"), "general"), "positionEncodings");
    return encodings.is_array() && !encodings.empty() && encodings[0] == "utf-8";
}

}  // namespace

LanguageServer::LanguageServer(std::shared_ptr<rpc::Channel> channel, LanguageServices services)
    : services_(std::move(services)),
      documentation_(services_.families),
      engine_(services_.engine(), services_.engine),
      stream_(std::make_unique<rpc::MessageStream>(std::move(channel))) {
    if (services_.checks) beginChecks();
    stream_->begin(listener());
}

void LanguageServer::beginChecks() {
    service_ = services_.checks([this](std::function<void()> work) {
        const std::lock_guard lock(mutex_);
        posted_.push_back(std::move(work));
        changed_.notify_all();
        stream_->mailbox().wake();
    });
    if (service_) service_->onResult([this](const CheckResult& result) { takeResult(result); });
}

/// What is no message is answered by an error without a number, and what comes behind it is served.
rpc::MessageStream::Listener LanguageServer::listener() {
    rpc::MessageStream::Listener listener;
    listener.onEnd = [this] { clientIsGone(); };
    listener.forgives = true;
    listener.onBroken = [this](const std::string& why) {
        const std::lock_guard lock(mutex_);
        if (posted_.size() < kMostPosted)
            posted_.push_back([this, why] { stream_->send(errorJson({}, kNoJson, why)); });
    };
    return listener;
}

/// The check first, which posts into the stream.
LanguageServer::~LanguageServer() {
    service_.reset();
}

const std::map<std::string, LanguageServer::Handler>& LanguageServer::requests() {
    using S = LanguageServer;
    static const std::map<std::string, Handler> rows = {
        {"initialize", &S::initialize},
        {"shutdown", &S::shutdown},
        {"textDocument/definition", &S::definition},
        {"textDocument/declaration", &S::definition},
        {"textDocument/typeDefinition", &S::typeDefinition},
        {"textDocument/implementation", &S::implementation},
        {"textDocument/references", &S::references},
        {"textDocument/documentHighlight", &S::highlights},
        {"textDocument/documentSymbol", &S::documentSymbols},
        {"workspace/symbol", &S::workspaceSymbols},
        {"textDocument/prepareRename", &S::prepareRename},
        {"textDocument/rename", &S::rename},
        {"textDocument/completion", &S::completion},
        {"completionItem/resolve", &S::resolveCompletion},
        {"textDocument/hover", &S::hover},
        {"textDocument/signatureHelp", &S::signatureHelp},
        {"textDocument/semanticTokens/full", &S::semanticTokens},
        {"textDocument/semanticTokens/range", &S::semanticTokens},
        {"textDocument/foldingRange", &S::foldingRanges},
        {"textDocument/selectionRange", &S::selectionRanges},
        {"textDocument/inlayHint", &S::inlayHints},
        {"textDocument/formatting", &S::formatting},
        {"textDocument/rangeFormatting", &S::formatting},
        {"textDocument/codeAction", &S::codeActions},
    };
    return rows;
}

int LanguageServer::serve() {
    while (!leaving_) {
        runPosted();
        const auto message = stream_->mailbox().take(kPause);
        if (message)
            handle(*message);
        else if (stream_->mailbox().ended())
            break;
        else if (!holdsPosted() && !checkDue())
            prepare();
    }
    const std::lock_guard lock(mutex_);
    left_ = true;
    changed_.notify_all();
    return shutDown_ ? 0 : 1;
}

void LanguageServer::handle(const Json& message) {
    const Json& id = rpc::memberOf(message, "id");
    const std::string method = rpc::textOf(message, "method");
    if (!message.is_object() || method.empty()) {
        // Answers to what we have asked; everything else is no message.
        const bool response =
            message.is_object() && (message.contains("result") || message.contains("error"));
        if (!response) stream_->send(errorJson(id, kInvalidRequest, "this is no request"));
        return;
    }
    const Json& params = rpc::memberOf(message, "params");
    if (!message.contains("id")) return notice(method, params);
    const Reply reply = answer(method, params);
    if (reply.code != 0)
        stream_->send(errorJson(id, reply.code, reply.error));
    else
        stream_->send({{"jsonrpc", "2.0"}, {"id", id}, {"result", reply.result}});
}

LanguageServer::Reply LanguageServer::answer(const std::string& method, const Json& params) {
    if (shutDown_) return Reply::failed(kInvalidRequest, "the server has been shut down");
    const auto row = requests().find(method);
    if (!initialized_ && method != "initialize")
        return Reply::failed(kNotInitialized, "the server has not been initialized");
    if (row == requests().end())
        return Reply::failed(kUnknownMethod, "\"" + method + "\" is not supported");
    if (initialized_ && method == "initialize")
        return Reply::failed(kInvalidRequest, "\"initialize\" comes once");
    if (!params.is_null() && !params.is_object() && !params.is_array())
        return Reply::failed(kInvalidParams, "the parameters are no object");
    return (this->*row->second)(params);
}

void LanguageServer::notice(const std::string& method, const Json& params) {
    if (method == "exit") {
        leaving_ = true;
        return;
    }
    if (!initialized_ || shutDown_) return;
    if (method == "textDocument/didOpen") open(params);
    if (method == "textDocument/didChange") change(params);
    if (method == "textDocument/didClose") closeText(params);
}

LanguageServer::Reply LanguageServer::initialize(const Json& params) {
    initialized_ = true;
    utf8_ = offersUtf8(params);
    const Json& text = rpc::memberOf(rpc::memberOf(params, "capabilities"), "textDocument");
    hierarchical_ =
        rpc::truthOf(rpc::memberOf(text, "documentSymbol"), "hierarchicalDocumentSymbolSupport");
    snippets_ = rpc::truthOf(rpc::memberOf(rpc::memberOf(text, "completion"), "completionItem"),
                             "snippetSupport");
    return {{{"capabilities", serverCapabilities(utf8_)}, {"serverInfo", {{"name", "korvant"}}}},
            0,
            {}};
}

LanguageServer::Reply LanguageServer::shutdown(const Json&) {
    shutDown_ = true;
    return {};
}

void LanguageServer::open(const Json& params) {
    const Json& item = rpc::memberOf(params, "textDocument");
    const std::string uri = rpc::textOf(item, "uri");
    if (uri.empty()) return;
    OpenText text;
    text.uri = uri;
    text.version = rpc::numberOf(item, "version");
    text.document = TextDocument(rpc::textOf(item, "text"));
    texts_.insert_or_assign(uri, std::move(text));
    written_ = uri;
}

void LanguageServer::change(const Json& params) {
    OpenText* const text = textOf(params);
    const Json& changes = rpc::memberOf(params, "contentChanges");
    if (text == nullptr || !changes.is_array()) return;
    text->version = rpc::numberOf(rpc::memberOf(params, "textDocument"), "version");
    for (const Json& one : changes) {
        const std::string with = rpc::textOf(one, "text");
        if (rpc::memberOf(one, "range").is_object())
            text->document.replace(rangeOf(*text, rpc::memberOf(one, "range")), with);
        else
            text->document = TextDocument(with);
    }
    text->dirty = true;
    text->answered = false;
    text->prepared = false;
    text->meanings.reset();
    written_ = text->uri;
}

void LanguageServer::closeText(const Json& params) {
    const OpenText* const text = textOf(params);
    if (text == nullptr) return;
    const std::string uri = text->uri;
    texts_.erase(uri);
    stream_->send({{"jsonrpc", "2.0"},
                   {"method", "textDocument/publishDiagnostics"},
                   {"params", {{"uri", uri}, {"diagnostics", Json::array()}}}});
}

}  // namespace korvant::lsp
