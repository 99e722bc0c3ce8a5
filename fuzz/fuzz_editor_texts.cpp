// What the editor reads off texts: documents, recovery records, scripts that are half written,
// lines of the output pane.
#include <cstdint>
#include <cstdlib>
#include <string>

#include "editor/control/output_pane.h"
#include "editor/document/document_encoding.h"
#include "editor/document/recovery_record.h"
#include "editor/stops/condition_check.h"
#include "language/completion.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace korvant;
    const std::string bytes(reinterpret_cast<const char*>(data), size);

    DecodedDocument document = decodeDocument(bytes);
    if (encodeDocument(document.text, document.encoding) != bytes) std::abort();
    if (const auto record = readRecord(bytes); record && writeRecord(*record) != bytes)
        std::abort();
    reportedPlace(bytes);
    if (size < 4096) conditionProblem(bytes);

    static const std::vector<Symbol> none;
    const SymbolTable table(none, scriptSymbols(bytes), static_cast<int>(size));
    const WordBefore word = wordBefore(bytes, size % 2 != 0);
    table.completions(word);
    table.typeOf(word.chain);
    const CallBefore call = callBefore(bytes, false);
    for (const Symbol& function : table.overloads(call.function)) {
        const ParameterPlace place = parameterPlace(function.declaration, call.argument);
        if (place.begin > place.end || place.end > static_cast<int>(function.declaration.size()))
            std::abort();
    }
    return 0;
}
