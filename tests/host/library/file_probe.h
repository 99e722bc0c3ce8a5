// Files as scripts open them, without any rule.
#pragma once

#include <string>

#include "host/library/script_files.h"

namespace korvant::test {

inline const FileRules kAllFiles;

inline std::string readAll(InputFile& file) {
    std::string bytes;
    for (int byte; (byte = file.readChar(nullptr)) >= 0;) bytes.push_back(static_cast<char>(byte));
    return bytes;
}

inline bool stopAtOnce() {
    return true;
}

}  // namespace korvant::test
