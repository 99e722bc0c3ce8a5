// Any text as a script that is being edited: tokens cover it in order, the reader takes it, and
// whatever is asked about it has an answer inside the text.
#include <cstdint>
#include <cstdlib>
#include <string>

#include "language/scope_index.h"
#include "language/tokens.h"

namespace {

using namespace korvant;

void require(bool holds) {
    if (!holds) std::abort();
}

void checkTokens(const std::string& text) {
    int end = 0;
    for (const ScriptToken& token : scriptTokens(text, Comments::keep)) {
        require(token.position >= end && !token.text.empty());
        end = token.end();
    }
    require(static_cast<std::size_t>(end) <= text.size());
}

void checkIndex(const std::string& text) {
    const ScopeIndex index(text);
    for (const NameUse& use : index.uses()) {
        require(use.range().end <= text.size());
        for (const int meaning : index.meaningsOf(use))
            require(meaning >= 0 &&
                    static_cast<std::size_t>(meaning) < index.declarations().size());
    }
    for (const Declaration& found : index.declarations()) {
        require(found.whole.begin <= found.whole.end && found.whole.end <= text.size());
        require(found.body.end <= text.size());
    }
    for (const Statement& statement : index.statements())
        require(statement.range.begin < statement.range.end && statement.range.end <= text.size());
    for (std::size_t offset = 0; offset <= text.size(); offset += 7) {
        index.variablesAt(offset);
        index.functionAt(offset);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    checkTokens(text);
    checkIndex(text);
    TextDocument document(text);
    for (std::size_t offset = 0; offset <= size; offset += 5) {
        const TextPosition place = document.utf16PositionOf(offset);
        require(document.offsetOfUtf16(place) <= offset);
        require(document.offsetOf(document.positionOf(offset)) <= offset);
    }
    return 0;
}
