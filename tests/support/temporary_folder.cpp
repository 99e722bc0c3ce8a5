#include "support/temporary_folder.h"

#include <fstream>
#include <random>
#include <sstream>

namespace fs = std::filesystem;

namespace korvant::test {

TemporaryFolder::TemporaryFolder() {
    std::random_device seed;
    do {
        path_ = fs::temp_directory_path() / ("korvant-test-" + std::to_string(seed()));
    } while (!fs::create_directory(path_));
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    fs::remove_all(path_, ignored);
}

std::string readFile(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

std::string readText(const fs::path& path) {
    std::string text = readFile(path);
    for (auto at = text.find("\r\n"); at != std::string::npos; at = text.find("\r\n", at))
        text.erase(at, 1);
    return text;
}

void writeFile(const fs::path& path, const std::string& bytes) {
    std::ofstream(path, std::ios::binary) << bytes;
}

}  // namespace korvant::test
