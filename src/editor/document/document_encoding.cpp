#include "editor/document/document_encoding.h"

#include <algorithm>

#include "base/text/text_encoding.h"

namespace korvant {

namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

bool plainAscii(std::string_view bytes) {
    return std::all_of(bytes.begin(), bytes.end(),
                       [](char byte) { return static_cast<unsigned char>(byte) < 128; });
}

/// True when `western` will be recognised as Windows Western again.
bool readsBack(std::string_view western) {
    return plainAscii(western) || !isValidUtf8(western);
}

}  // namespace

DecodedDocument decodeDocument(std::string_view bytes) {
    DecodedDocument document;
    document.encoding.western = !isValidUtf8(bytes);
    document.encoding.byteOrderMark =
        !document.encoding.western && bytes.starts_with(kByteOrderMark);
    if (document.encoding.byteOrderMark) bytes.remove_prefix(kByteOrderMark.size());
    document.text = document.encoding.western ? decodeWestern(bytes) : std::string(bytes);
    return document;
}

std::string encodeDocument(std::string_view text, DocumentEncoding& encoding) {
    if (encoding.western && fitsWestern(text)) {
        std::string western = encodeWestern(text);
        if (readsBack(western)) return western;
    }
    encoding.western = false;
    std::string bytes(encoding.byteOrderMark ? kByteOrderMark : std::string_view());
    return bytes.append(text);
}

std::string encodeScript(std::string_view text, DocumentEncoding encoding) {
    encoding.byteOrderMark = false;
    return encodeDocument(text, encoding);
}

}  // namespace korvant
