#include "support/tree.h"

namespace korvant::test {

const std::string& sourceFolder() {
    static const std::string folder = KORVANT_SOURCE_DIR;
    return folder;
}

const std::string& binFolder() {
    static const std::string folder = KORVANT_BIN_DIR;
    return folder;
}

}  // namespace korvant::test
