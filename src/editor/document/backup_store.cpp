#include "editor/document/backup_store.h"

#include <algorithm>
#include <cerrno>
#include <chrono>

#include "base/system/file_io.h"

namespace korvant {

namespace {

constexpr std::size_t kCopyBytes = std::size_t{1} << 20;
constexpr std::size_t kLongestName = 100;

/// Names sort by age: file, time, content, name.
std::string stamp() {
    static std::uint64_t last = 0;
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    const std::uint64_t microseconds = static_cast<std::uint64_t>(
        std::chrono::duration_cast<std::chrono::microseconds>(now).count());
    last = std::max(last + 1, microseconds);
    return hexText(last);
}

std::string prefixOf(const std::string& path) {
    return hexText(contentHash(path)) + "-";
}

std::string backupName(const std::string& prefix, std::uint64_t hash, const std::string& name) {
    return prefix + stamp() + "-" + hexText(hash) + "-" + name.substr(0, kLongestName);
}

}  // namespace

int BackupStore::copy(const std::string& path, const std::string& target, std::uint64_t& hash) {
    OpenFile from(files_);
    OpenFile to(files_);
    if (const int error = files_.openRead(path, from.handle())) return error;
    if (const int error = files_.create(target, true, to.handle())) return error;
    std::string piece(kCopyBytes, '\0');
    for (;;) {
        const std::int64_t count = files_.read(from.handle(), piece.data(), piece.size());
        if (count == -EINTR) continue;
        if (count < 0) return static_cast<int>(-count);
        if (count == 0) break;
        const std::string_view bytes(piece.data(), static_cast<std::size_t>(count));
        hash = contentHash(hexText(hash) + hexText(contentHash(bytes)));
        if (const int error = writeFully(files_, to.handle(), bytes)) return error;
    }
    if (const int error = files_.flush(to.handle())) return error;
    return to.close();
}

int BackupStore::keep(const std::string& path, std::string& kept) {
    if (folder_.empty()) return ENOENT;
    if (const int error = files_.makeFolder(folder_)) return error;
    const std::string temporary = temporaryBeside(joinPath(folder_, "new"));
    const Leftover leftover(files_, temporary);
    std::uint64_t hash = 0;
    if (const int error = copy(path, temporary, hash)) return error;
    return adopt(temporary, prefixOf(path), hash, nameOf(path), kept);
}

int BackupStore::keepSomewhere(const std::string& path, std::string& kept) {
    if (keep(path, kept) == 0) return 0;
    kept = path + "." + stamp() + "~";
    std::uint64_t hash = 0;
    const int error = copy(path, kept, hash);
    if (error != 0) files_.remove(kept);
    return error;
}

int BackupStore::keepText(const std::string& name, std::string_view bytes) {
    if (folder_.empty()) return ENOENT;
    if (const int error = files_.makeFolder(folder_)) return error;
    const std::string temporary = temporaryBeside(joinPath(folder_, "new"));
    const Leftover leftover(files_, temporary);
    if (const int error = writeSecretFile(files_, temporary, bytes)) return error;
    std::string kept;
    return adopt(temporary, prefixOf("text:" + name), contentHash(bytes), name, kept);
}

int BackupStore::adopt(const std::string& temporary, const std::string& prefix, std::uint64_t hash,
                       const std::string& name, std::string& kept) {
    kept = keptAlready(prefix, hash);
    if (!kept.empty()) return 0;
    kept = joinPath(folder_, backupName(prefix, hash, name));
    if (const int error = files_.rename(temporary, kept)) return error;
    dropOldest(prefix);
    return 0;
}

std::string BackupStore::keptAlready(const std::string& prefix, std::uint64_t hash) {
    const std::string mark = "-" + hexText(hash) + "-";
    for (const std::string& name : versions(prefix))
        if (name.find(mark, prefix.size()) != std::string::npos) return joinPath(folder_, name);
    return {};
}

void BackupStore::dropOldest(const std::string& prefix) {
    const std::vector<std::string> names = versions(prefix);
    for (std::size_t i = 0; i + kVersions < names.size(); ++i)
        files_.remove(joinPath(folder_, names[i]));
}

std::vector<std::string> BackupStore::versions(const std::string& prefix) {
    std::vector<std::string> names;
    files_.list(folder_, names);
    std::erase_if(names, [&](const std::string& name) { return !name.starts_with(prefix); });
    std::sort(names.begin(), names.end());
    return names;
}

}  // namespace korvant
