#include "base/system/file_io.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <cstring>
#include <new>
#include <random>

namespace korvant {

namespace {

/// One read; small at first, since most files are.
constexpr std::size_t kFirstBytes = std::size_t{16} << 10;
constexpr std::size_t kReadBytes = std::size_t{1} << 20;

/// Reads once behind what `bytes` holds; 0 at the end, negative on failure.
std::int64_t readMore(FileOperations& files, FileOperations::Handle handle, std::size_t room,
                      std::string& bytes) {
    const std::size_t held = bytes.size();
    bytes.resize(held + room);
    std::int64_t count = 0;
    do count = files.read(handle, bytes.data() + held, room);
    while (count == -EINTR);
    bytes.resize(held + static_cast<std::size_t>(std::max<std::int64_t>(count, 0)));
    return count;
}

}  // namespace

int OpenFile::close() {
    if (handle_ < 0) return 0;
    const int error = files_.close(handle_);
    handle_ = -1;
    return error;
}

int readAll(FileOperations& files, FileOperations::Handle handle, std::size_t limit,
            std::string& bytes) {
    bytes.clear();
    try {
        for (;;) {
            // One byte beyond the limit is enough to see that there is too much.
            const std::size_t piece = std::clamp(bytes.size(), kFirstBytes, kReadBytes);
            const std::size_t room = std::min(piece, limit + 1 - bytes.size());
            const std::int64_t count = readMore(files, handle, room, bytes);
            if (count <= 0) return static_cast<int>(-count);
            if (bytes.size() > limit) return EFBIG;
        }
    } catch (const std::bad_alloc&) {
        return ENOMEM;
    }
}

int readFile(FileOperations& files, const std::string& path, std::size_t limit,
             std::string& bytes) {
    OpenFile file(files);
    if (const int error = files.openRead(path, file.handle())) return error;
    return readAll(files, file.handle(), limit, bytes);
}

int writeFully(FileOperations& files, FileOperations::Handle handle, std::string_view bytes) {
    while (!bytes.empty()) {
        const std::int64_t count = files.write(handle, bytes.data(), bytes.size());
        if (count == -EINTR) continue;
        if (count < 0) return static_cast<int>(-count);
        if (count == 0) return EIO;
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
    return 0;
}

int writeSecretFile(FileOperations& files, const std::string& path, std::string_view bytes) {
    OpenFile file(files);
    if (const int error = files.create(path, true, file.handle())) return error;
    int error = writeFully(files, file.handle(), bytes);
    if (error == 0) error = files.flush(file.handle());
    const int closing = file.close();
    if (error == 0) error = closing;
    if (error != 0) files.remove(path);
    return error;
}

int replaceSecretFile(FileOperations& files, const std::string& path, std::string_view bytes) {
    const std::string temporary = temporaryBeside(path);
    if (const int error = writeSecretFile(files, temporary, bytes)) return error;
    const int error = files.rename(temporary, path);
    if (error != 0) files.remove(temporary);
    return error;
}

std::string folderOf(const std::string& path) {
    const auto end = path.find_last_of(pathSeparators());
    if (end == std::string::npos) return ".";
    return path.substr(0, std::max<std::size_t>(end, 1));
}

std::string nameOf(const std::string& path) {
    const auto end = path.find_last_of("/\\");
    return end == std::string::npos ? path : path.substr(end + 1);
}

std::string joinPath(const std::string& folder, const std::string& name) {
    return folder + pathSeparators()[0] + name;
}

std::string joinPathIn(const std::string& folder, const std::string& name) {
    return folder.empty() ? folder : joinPath(folder, name);
}

std::string temporaryBeside(const std::string& path) {
    static std::random_device random;
    const std::uint64_t number = std::uint64_t{random()} << 32 | random();
    const auto end = path.find_last_of(pathSeparators());
    const std::string name = end == std::string::npos ? path : path.substr(end + 1);
    return joinPath(folderOf(path), "." + name.substr(0, 100) + "." + hexText(number) + ".tmp");
}

std::uint64_t contentHash(std::string_view bytes) noexcept {
    // Multiply and rotate over words of eight bytes, finished by the length and a last mixing.
    // Constants: the 64-bit golden ratio and the finaliser of MurmurHash3 (public domain).
    constexpr std::uint64_t kGolden = 0x9E3779B97F4A7C15u;
    std::uint64_t hash = kGolden ^ bytes.size();
    while (!bytes.empty()) {
        std::uint64_t word = 0;
        const std::size_t count = std::min(bytes.size(), sizeof word);
        std::memcpy(&word, bytes.data(), count);
        hash = (hash ^ word) * kGolden;
        hash ^= hash >> 29;
        bytes.remove_prefix(count);
    }
    hash = (hash ^ hash >> 33) * 0xFF51AFD7ED558CCDu;
    hash = (hash ^ hash >> 33) * 0xC4CEB9FE1A85EC53u;
    return hash ^ hash >> 33;
}

std::string hexText(std::uint64_t value) {
    constexpr std::size_t kDigits = 16;
    std::array<char, kDigits> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + kDigits, value, 16).ptr;
    const std::string text(digits.data(), end);
    return std::string(kDigits - text.size(), '0') + text;
}

}  // namespace korvant
