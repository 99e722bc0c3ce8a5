// Which files scripts may open.
#pragma once

#include <string>

namespace korvant {

enum class FileAccess { all, readOnly, oneFolder, none };

struct FileRules {
    FileAccess access = FileAccess::all;
    std::string folder;  ///< with FileAccess::oneFolder
};

}  // namespace korvant
