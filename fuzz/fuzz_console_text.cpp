// What scripts read, and what they print on a terminal: every text of bytes gives defined values,
// nothing steers the terminal, and typed text comes back as it was typed.
#include <cstdint>
#include <cstdlib>

#include "base/system/key_codes.h"
#include "base/text/display_text.h"
#include "base/text/text_encoding.h"
#include "host/library/input_scanner.h"
#include "support/byte_text.h"

namespace {

using namespace korvant;

void require(bool condition) {
    if (!condition) std::abort();
}

/// Every read takes something or says why not; together they reach the end.
void readAll(const std::string& bytes) {
    test::ByteText source(bytes);
    for (std::size_t i = 0; i <= bytes.size() + 1; ++i) {
        std::int32_t integer = 1;
        double real = 1;
        float single = 1;
        std::string word = "old";
        const ScanState states[] = {
            scanInt(source, nullptr, integer), scanDouble(source, nullptr, real),
            scanFloat(source, nullptr, single), scanWord(source, nullptr, word)};
        require(states[0] == ScanState::converted || integer == 0);
        require(states[1] == ScanState::converted || real == 0);
        require(states[2] == ScanState::converted || single == 0);
        if (states[3] != ScanState::converted) {
            require(states[3] == ScanState::endOfInput && word.empty() && source.rest().empty());
            return;
        }
        require(!word.empty());
    }
    std::abort();
}

void show(const std::string& bytes, std::size_t cut) {
    DisplayText whole, pieces;
    std::string shown, shownInPieces;
    whole.append(bytes, shown);
    whole.finish(shown);
    pieces.append(std::string_view(bytes).substr(0, cut), shownInPieces);
    pieces.append(std::string_view(bytes).substr(cut), shownInPieces);
    pieces.finish(shownInPieces);
    require(shown == shownInPieces);
    require(isValidUtf8(shown));
    require(shown.find('\x1b') == std::string::npos);
    for (std::size_t i = 0; i + 1 < shown.size(); ++i)
        require(shown[i] != '\xC2' || static_cast<unsigned char>(shown[i + 1]) >= 0xA0);
    require(!isPlainText(bytes) || shown == bytes);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const std::string bytes(reinterpret_cast<const char*>(data) + 1, size - 1);
    readAll(bytes);
    show(bytes, bytes.empty() ? 0 : data[0] % bytes.size());
    for (const int code : keyCodes(bytes)) require(code >= 0 && code <= 255);
    if (isValidUtf8(bytes)) require(decodeForDisplay(encodeTyped(bytes)) == bytes);
    if (!isValidUtf8(bytes)) require(encodeWestern(decodeForDisplay(bytes)) == bytes);
    return 0;
}
