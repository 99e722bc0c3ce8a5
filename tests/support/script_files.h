// The scripts that come with the tests and the examples.
#pragma once

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "support/tree.h"

namespace korvant::test {

struct ScriptFile {
    std::string name;
    std::string text;
};

/// All of them, sorted by name.
inline std::vector<ScriptFile> allScriptFiles() {
    namespace fs = std::filesystem;
    std::vector<ScriptFile> files;
    for (const char* folder : {"/tests", "/examples", "/fuzz"})
        for (const auto& entry :
             fs::recursive_directory_iterator(korvant::test::sourceFolder() + folder)) {
            if (entry.path().extension() != ".as") continue;
            std::ifstream file(entry.path(), std::ios::binary);
            std::ostringstream text;
            text << file.rdbuf();
            files.push_back({entry.path().string(), text.str()});
        }
    std::sort(files.begin(), files.end(),
              [](const ScriptFile& a, const ScriptFile& b) { return a.name < b.name; });
    return files;
}

}  // namespace korvant::test
