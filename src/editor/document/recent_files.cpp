#include "editor/document/recent_files.h"

#include <algorithm>

#include "base/system/file_io.h"

namespace korvant {

namespace {

constexpr std::size_t kLargestList = 1 << 20;
// The one byte that no path has.
constexpr char kEnd = '\0';

}  // namespace

RecentFiles::RecentFiles(FileOperations& files, std::string listFile)
    : files_(files), listFile_(std::move(listFile)) {
    load();
}

void RecentFiles::load() {
    std::string bytes;
    paths_.clear();
    if (listFile_.empty() || readFile(files_, listFile_, kLargestList, bytes) != 0) return;
    for (std::size_t begin = 0; begin < bytes.size() && paths_.size() < kMost;) {
        const auto end = std::min(bytes.find(kEnd, begin), bytes.size());
        if (end > begin) paths_.push_back(bytes.substr(begin, end - begin));
        begin = end + 1;
    }
}

void RecentFiles::save() {
    if (listFile_.empty() || files_.makeFolder(folderOf(listFile_)) != 0) return;
    std::string bytes;
    for (const std::string& path : paths_) bytes += path + kEnd;
    replaceSecretFile(files_, listFile_, bytes);
}

void RecentFiles::add(const std::string& path) {
    // Another editor may have added to the list meanwhile.
    load();
    std::erase(paths_, path);
    paths_.insert(paths_.begin(), path);
    if (paths_.size() > kMost) paths_.resize(kMost);
    save();
}

void RecentFiles::remove(const std::string& path) {
    load();
    std::erase(paths_, path);
    save();
}

}  // namespace korvant
