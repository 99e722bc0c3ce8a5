#include "editor/document/document_encoding.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "base/text/text_encoding.h"

namespace korvant {

namespace {

using Wide = DocumentEncoding::Wide;

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view kLittleMark = "\xFF\xFE", kBigMark = "\xFE\xFF";

bool plainAscii(std::string_view bytes) {
    return std::all_of(bytes.begin(), bytes.end(),
                       [](char byte) { return static_cast<unsigned char>(byte) < 128; });
}

Wide wideOf(std::string_view bytes) {
    return bytes.starts_with(kLittleMark) ? Wide::littleEndian
           : bytes.starts_with(kBigMark)  ? Wide::bigEndian
                                          : Wide::no;
}

std::optional<std::string> decodeWide(std::string_view bytes, Wide wide) {
    if (wide == Wide::no) return std::nullopt;
    return decodeUtf16(bytes.substr(kLittleMark.size()), wide == Wide::bigEndian);
}

/// True when `western` will be recognised as Windows Western again.
bool readsBack(std::string_view western) {
    return plainAscii(western) || (!isValidUtf8(western) && !decodeWide(western, wideOf(western)));
}

}  // namespace

const char* DocumentEncoding::name() const noexcept {
    if (wide == Wide::littleEndian) return "UTF-16 LE";
    if (wide == Wide::bigEndian) return "UTF-16 BE";
    return western ? "Windows-1252" : "UTF-8";
}

DecodedDocument decodeDocument(std::string_view bytes) {
    DecodedDocument document;
    const Wide wide = wideOf(bytes);
    if (std::optional<std::string> text = decodeWide(bytes, wide)) {
        document.text = std::move(*text);
        document.encoding.wide = wide;
        return document;
    }
    document.encoding.western = !isValidUtf8(bytes);
    document.encoding.byteOrderMark =
        !document.encoding.western && bytes.starts_with(kByteOrderMark);
    if (document.encoding.byteOrderMark) bytes.remove_prefix(kByteOrderMark.size());
    document.text = document.encoding.western ? decodeWestern(bytes) : std::string(bytes);
    return document;
}

std::string encodeDocument(std::string_view text, DocumentEncoding& encoding) {
    if (encoding.wide != Wide::no && isValidUtf8(text)) {
        const bool big = encoding.wide == Wide::bigEndian;
        return std::string(big ? kBigMark : kLittleMark) + encodeUtf16(text, big);
    }
    encoding.wide = Wide::no;
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
    encoding.wide = Wide::no;
    return encodeDocument(text, encoding);
}

}  // namespace korvant
