// How a document's bytes become the control's UTF-8 text, and back.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace korvant {

/// What a document's bytes were read as.
struct DocumentEncoding {
    enum class Wide : std::uint8_t { no, littleEndian, bigEndian };

    bool western = false;        ///< Windows Western, since the bytes were nothing else
    bool byteOrderMark = false;  ///< the UTF-8 one; not part of the text
    Wide wide = Wide::no;        ///< UTF-16, by its byte-order mark, which is always written

    /// As the status bar names it.
    const char* name() const noexcept;

    friend bool operator==(const DocumentEncoding&, const DocumentEncoding&) = default;
};

struct DecodedDocument {
    std::string text;  ///< valid UTF-8
    DocumentEncoding encoding;
};

/// Any bytes are a document: encodeDocument of what this gives is `bytes` again.
DecodedDocument decodeDocument(std::string_view bytes);

/// A Windows Western document whose text no longer fits, or whose bytes would be read as UTF-8 the
/// next time, is written as UTF-8 so that no character is lost; `encoding` then says so.
std::string encodeDocument(std::string_view text, DocumentEncoding& encoding);

/// The bytes for the compiler: encodeDocument without a byte-order mark, UTF-8 for UTF-16.
std::string encodeScript(std::string_view text, DocumentEncoding encoding);

}  // namespace korvant
