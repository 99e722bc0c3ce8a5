// Unsaved text as it is kept on disk.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "editor/document/document_encoding.h"

namespace korvant {

struct RecoveryRecord {
    std::string path;  ///< of the document; empty for a text of the host
    std::string text;  ///< UTF-8
    DocumentEncoding encoding;
    std::uint64_t fileHash = 0;  ///< content of the file as the editor knew it; 0 for no file
    std::uint64_t hostHash = 0;  ///< content that the host gave when the editor was opened
    bool delivered = false;      ///< the host has received this text when the editor closed
    std::int64_t time = 0;       ///< seconds since 1970

    friend bool operator==(const RecoveryRecord&, const RecoveryRecord&) = default;
};

/// The file's bytes.
std::string writeRecord(const RecoveryRecord& record);

/// Nothing unless the bytes are a whole record that writeRecord made.
std::optional<RecoveryRecord> readRecord(std::string_view bytes);

}  // namespace korvant
