// The compiler's messages about open texts, as the check beside us tells them.
#include <algorithm>

#include "base/text/text_encoding.h"
#include "protocol/lsp/language_server.h"

namespace korvant::lsp {

namespace {

using Clock = std::chrono::steady_clock;

/// One text does not keep the others waiting for longer.
constexpr std::chrono::seconds kLongestCheck{2};
/// A request about messages waits so long for them.
constexpr std::chrono::milliseconds kWait{300};
constexpr std::chrono::seconds kFarewell{3};
constexpr int kWarning = 2;  // Source: the protocol's MessageType.

}  // namespace

void LanguageServer::runPosted() {
    for (;;) {
        std::function<void()> work;
        {
            const std::lock_guard lock(mutex_);
            if (posted_.empty()) return;
            work = std::move(posted_.front());
            posted_.pop_front();
        }
        work();
    }
}

bool LanguageServer::holdsPosted() const {
    const std::lock_guard lock(mutex_);
    return !posted_.empty();
}

bool LanguageServer::checkDue() {
    if (!service_) return false;
    if (checking_) {
        const auto same = texts_.find(checking_->uri);
        if (same != texts_.end() && same->second.dirty) return check(same->second);
        if (same != texts_.end() && Clock::now() - checking_->began < kLongestCheck) return false;
    }
    for (auto& [uri, text] : texts_)
        if (text.dirty) return check(text);
    return false;
}

void LanguageServer::prepare() {
    const auto text = texts_.find(written_);
    if (text == texts_.end() || text->second.prepared) return;
    text->second.prepared = true;
    meaningsOf(text->second).oracle().module();
}

bool LanguageServer::check(OpenText& text) {
    text.dirty = false;
    checking_ = Checking{text.uri, ++checks_, Clock::now()};
    service_->check(checks_, text.document.text());
    return true;
}

void LanguageServer::takeResult(const CheckResult& result) {
    if (!result.note.empty())
        stream_->send({{"jsonrpc", "2.0"},
                       {"method", "window/showMessage"},
                       {"params", {{"type", kWarning}, {"message", result.note}}}});
    if (!checking_ || checking_->number != result.version) return;
    const auto text = texts_.find(checking_->uri);
    checking_.reset();
    if (text == texts_.end() || text->second.dirty || !result.complete) return;
    text->second.diagnostics = result.diagnostics;
    text->second.answered = true;
    publish(text->second);
}

void LanguageServer::publish(const OpenText& text) {
    Json list = Json::array();
    for (const Diagnostic& one : text.diagnostics) {
        if (one.kind == Diagnostic::Kind::information) continue;
        const auto line = static_cast<std::uint32_t>(std::max(0, one.line - 1));
        const auto column = static_cast<std::uint32_t>(std::max(0, one.column - 1));
        const auto end = static_cast<std::uint32_t>(std::max(0, one.endColumn - 1));
        const ByteRange range{text.document.offsetOf({line, column}),
                              text.document.offsetOf({line, std::max(column, end)})};
        list.push_back({{"range", rangeJson(text, range)},
                        {"severity", one.kind == Diagnostic::Kind::error ? 1 : 2},
                        {"source", "korvant"},
                        {"message", decodeForDisplay(one.text)}});
    }
    stream_->send(
        {{"jsonrpc", "2.0"},
         {"method", "textDocument/publishDiagnostics"},
         {"params", {{"uri", text.uri}, {"version", text.version}, {"diagnostics", list}}}});
}

void LanguageServer::awaitAnswer(OpenText& text) {
    if (!service_ || text.answered) return;
    if (text.dirty) check(text);
    const auto end = Clock::now() + kWait;
    while (!text.answered && Clock::now() < end) {
        {
            std::unique_lock lock(mutex_);
            changed_.wait_until(lock, end, [this] { return !posted_.empty(); });
        }
        runPosted();
    }
}

/// On the thread that reads: what is under way is not waited for without end.
void LanguageServer::clientIsGone() {
    std::unique_lock lock(mutex_);
    const bool left = changed_.wait_for(lock, kFarewell, [this] { return left_; });
    if (!left && services_.abandon) services_.abandon();
}

}  // namespace korvant::lsp
