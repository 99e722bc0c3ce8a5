#include "editor/document/recovery_store.h"

#include <algorithm>
#include <cerrno>

namespace korvant {

namespace {

// Names: OPENING.lock, OPENING.current, OPENING.dropped-N.
constexpr std::string_view kLock = ".lock", kCurrent = ".current", kDropped = ".dropped-";
constexpr std::size_t kLargestRecord = std::size_t{600} << 20;

std::string openingOf(const std::string& name) {
    return name.substr(0, name.find('.'));
}

bool holdsText(const std::string& name) {
    return name.ends_with(kCurrent) || name.find(kDropped) != std::string::npos;
}

/// A name that no other opening has.
std::string freshOpening() {
    const std::string temporary = nameOf(temporaryBeside("x"));
    return openingOf(temporary.substr(temporary.find('.', 1) + 1));
}

}  // namespace

RecoveryStore::RecoveryStore(FileOperations& files, std::string folder)
    : files_(files), folder_(std::move(folder)), lock_(files) {}

RecoveryStore::~RecoveryStore() {
    end();
}

std::string RecoveryStore::pathOf(const std::string& name) const {
    return joinPath(folder_, name);
}

int RecoveryStore::begin() {
    if (begun_) return 0;
    if (folder_.empty()) return ENOENT;
    if (const int error = files_.makeFolder(folder_)) return error;
    opening_ = freshOpening();
    if (const int error = files_.lock(pathOf(opening_ + std::string(kLock)), lock_.handle())) {
        lock_.handle() = -1;
        return error;
    }
    begun_ = true;
    return 0;
}

void RecoveryStore::end() {
    if (!begun_) return;
    lock_.close();
    if (!holdsCurrent_ && dropped_ == 0) files_.remove(pathOf(opening_ + std::string(kLock)));
}

int RecoveryStore::keepCurrent(const RecoveryRecord& record) {
    if (const int error = begin()) return error;
    const int error =
        replaceSecretFile(files_, pathOf(opening_ + std::string(kCurrent)), writeRecord(record));
    holdsCurrent_ = holdsCurrent_ || error == 0;
    return error;
}

void RecoveryStore::removeCurrent() {
    if (!holdsCurrent_) return;
    holdsCurrent_ = files_.remove(pathOf(opening_ + std::string(kCurrent))) != 0;
}

std::string RecoveryStore::currentPath() const {
    return holdsCurrent_ ? pathOf(opening_ + std::string(kCurrent)) : std::string();
}

int RecoveryStore::keepDropped(const RecoveryRecord& record) {
    if (const int error = begin()) return error;
    const std::string name = opening_ + std::string(kDropped) + std::to_string(++dropped_);
    return replaceSecretFile(files_, pathOf(name), writeRecord(record));
}

std::shared_ptr<OpenFile> RecoveryStore::lockOf(const std::string& opening) {
    auto lock = std::make_shared<OpenFile>(files_);
    if (files_.lock(pathOf(opening + std::string(kLock)), lock->handle()) == 0) return lock;
    lock->handle() = -1;
    return nullptr;
}

std::vector<FoundRecord> RecoveryStore::find() {
    std::vector<std::string> names;
    std::vector<FoundRecord> found;
    if (folder_.empty() || files_.list(folder_, names) != 0) return found;
    std::erase_if(names, [](const std::string& name) { return !holdsText(name); });
    std::sort(names.begin(), names.end());
    std::string opening;
    std::shared_ptr<OpenFile> lock;
    for (const std::string& name : names) {
        if (openingOf(name) != opening) {
            opening = openingOf(name);
            lock = lockOf(opening);
        }
        std::string bytes;
        if (!lock || readFile(files_, pathOf(name), kLargestRecord, bytes) != 0) continue;
        if (auto record = readRecord(bytes))
            found.push_back({pathOf(name), std::move(*record), lock});
    }
    std::stable_sort(found.begin(), found.end(), [](const FoundRecord& a, const FoundRecord& b) {
        return a.record.time > b.record.time;
    });
    return found;
}

void RecoveryStore::remove(const FoundRecord& found) {
    files_.remove(found.file);
    std::vector<std::string> names;
    if (files_.list(folder_, names) != 0) return;
    const std::string opening = openingOf(nameOf(found.file));
    const bool last = std::none_of(names.begin(), names.end(), [&](const std::string& name) {
        return openingOf(name) == opening && holdsText(name);
    });
    if (last) files_.remove(pathOf(opening + std::string(kLock)));
}

void RecoveryTimer::changed(std::uint64_t now) {
    if (changes_ == 0) first_ = now;
    ++changes_;
}

bool RecoveryTimer::due(std::uint64_t now) const {
    return changes_ >= kMostChanges || (changes_ > 0 && now - first_ >= kLongestAge);
}

}  // namespace korvant
