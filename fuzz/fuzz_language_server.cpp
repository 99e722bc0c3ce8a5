// Any bytes as a client of the language server, and any text as a script that it is asked about:
// every request has one answer.
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>

#include "module/configuration.h"
#include "module/families.h"
#include "protocol/lsp/language_server.h"
#include "protocol/rpc/frame_reader.h"

namespace {

using namespace korvant;
using rpc::Json;

/// Gives what the client says at once, then its end, and counts the answers.
class Recorded final : public rpc::Channel {
  public:
    explicit Recorded(std::string input) : input_(std::move(input)) {}
    bool read(std::string& bytes) override {
        bytes += input_;
        input_.clear();
        return !bytes.empty();
    }
    bool write(std::string_view bytes) override {
        reader_.feed(bytes);
        while (const auto body = reader_.next()) {
            const auto message = rpc::readJson(*body);
            if (!message) std::abort();
            if (message->contains("id")) ++answers_;
        }
        return true;
    }
    void close() override {}
    int answers() const { return answers_; }

  private:
    std::string input_;
    rpc::FrameReader reader_;
    int answers_ = 0;
};

asIScriptEngine* makeEngine() {
    asIScriptEngine* const engine = asCreateScriptEngine();
    asIScriptContext* const context = engine == nullptr ? nullptr : configureEngine(engine);
    if (context != nullptr) context->Release();
    return engine;
}

int answersTo(std::string bytes) {
    const auto channel = std::make_shared<Recorded>(std::move(bytes));
    lsp::LanguageServices services;
    services.engine = makeEngine;
    services.families = allFamilies();
    lsp::LanguageServer(channel, std::move(services)).serve();
    return channel->answers();
}

std::string framed(const Json& message) {
    return rpc::framed(rpc::writeJson(message));
}

/// A script with the caret where `place` says, and everything that can be asked there.
void askAbout(const std::string& text, unsigned place) {
    const Json document = {{"uri", "file:///a.as"}};
    int asked = 0;
    const auto request = [&](const std::string& method, const Json& params) {
        return framed({{"id", ++asked}, {"method", method}, {"params", params}});
    };
    std::string all = request("initialize", {{"capabilities", Json::object()}});
    Json opened = document;
    opened["text"] = text;
    all += framed({{"method", "textDocument/didOpen"}, {"params", {{"textDocument", opened}}}});
    const Json position = {{"line", place / 64 % 64}, {"character", place % 64}};
    const Json params = {{"textDocument", document},
                         {"position", position},
                         {"positions", {position}},
                         {"range", {{"start", {{"line", 0}, {"character", 0}}}, {"end", position}}},
                         {"context", {{"includeDeclaration", true}}},
                         {"newName", "fresh"}};
    for (const char* method :
         {"hover", "completion", "signatureHelp", "definition", "typeDefinition", "implementation",
          "references", "documentHighlight", "documentSymbol", "prepareRename", "rename",
          "semanticTokens/full", "semanticTokens/range", "foldingRange", "selectionRange",
          "inlayHint", "formatting", "rangeFormatting", "codeAction"})
        all += request(std::string("textDocument/") + method, params);
    if (answersTo(all) != asked) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr std::size_t kLongest = 4096;
    if (size < 3 || size > kLongest) return 0;
    const std::string rest(reinterpret_cast<const char*>(data + 3), size - 3);
    if (data[0] % 8 == 0)
        answersTo(rest);
    else
        askAbout(rest, data[1] * 256u + data[2]);
    return 0;
}
