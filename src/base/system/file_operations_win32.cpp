#include <windows.h>

#include <fcntl.h>
#include <io.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>

#include "base/system/file_operations.h"
#include "base/system/wide_text_win32.h"

namespace korvant {

namespace {

constexpr std::size_t kLargestPiece = std::size_t{1} << 20;
/// 100-nanosecond steps from the system's epoch are kept as nanoseconds.
constexpr std::int64_t kNanosecondsPerStep = 100;

int errorOf(bool worked) {
    if (worked) return 0;
    switch (GetLastError()) {
        case ERROR_FILE_NOT_FOUND:
        case ERROR_PATH_NOT_FOUND:
            return ENOENT;
        case ERROR_ACCESS_DENIED:
        case ERROR_SHARING_VIOLATION:
        case ERROR_LOCK_VIOLATION:
            return EACCES;
        case ERROR_FILE_EXISTS:
        case ERROR_ALREADY_EXISTS:
            return EEXIST;
        case ERROR_DISK_FULL:
        case ERROR_HANDLE_DISK_FULL:
            return ENOSPC;
        case ERROR_NOT_ENOUGH_MEMORY:
        case ERROR_OUTOFMEMORY:
            return ENOMEM;
        default:
            return EIO;
    }
}

HANDLE systemHandle(int handle) {
    return reinterpret_cast<HANDLE>(_get_osfhandle(handle));
}

int open(const std::string& path, DWORD access, DWORD share, DWORD creation, int flags,
         FileOperations::Handle& handle) {
    const HANDLE file = CreateFileW(wideOfUtf8(path).c_str(), access, share, nullptr, creation,
                                    FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) return errorOf(false);
    handle = _open_osfhandle(reinterpret_cast<intptr_t>(file), flags | _O_BINARY | _O_NOINHERIT);
    return 0;
}

std::int64_t nanoseconds(const FILETIME& time) {
    const std::uint64_t steps = (std::uint64_t{time.dwHighDateTime} << 32) | time.dwLowDateTime;
    return static_cast<std::int64_t>(steps) * kNanosecondsPerStep;
}

void describe(const BY_HANDLE_FILE_INFORMATION& file, bool disk, FileStatus& status) {
    if (file.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY)
        status.kind = FileStatus::Kind::folder;
    else
        status.kind = disk ? FileStatus::Kind::regular : FileStatus::Kind::other;
    status.size = (std::uint64_t{file.nFileSizeHigh} << 32) | file.nFileSizeLow;
    status.modified = nanoseconds(file.ftLastWriteTime);
    status.identity = ((std::uint64_t{file.nFileIndexHigh} << 32) | file.nFileIndexLow) ^
                      file.dwVolumeSerialNumber;
    status.links = file.nNumberOfLinks;
}

std::string parentOf(const std::string& path) {
    const auto slash = path.find_last_of("\\/");
    return slash == std::string::npos ? path : path.substr(0, slash);
}

class SystemFiles final : public FileOperations {
  public:
    int status(const std::string& path, FileStatus& status) override {
        status = {};
        const HANDLE file = CreateFileW(
            wideOfUtf8(path).c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
            nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
        if (file == INVALID_HANDLE_VALUE) {
            const int error = errorOf(false);
            return error == ENOENT ? 0 : error;
        }
        BY_HANDLE_FILE_INFORMATION information{};
        const bool disk = GetFileType(file) == FILE_TYPE_DISK;
        if (GetFileInformationByHandle(file, &information))
            describe(information, disk, status);
        else
            status.kind = FileStatus::Kind::other;
        CloseHandle(file);
        return 0;
    }

    int resolve(const std::string& path, std::string& target) override {
        target = path;
        const HANDLE file = CreateFileW(
            wideOfUtf8(path).c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
            nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
        if (file == INVALID_HANDLE_VALUE) return 0;
        wchar_t final[32768];
        const DWORD length = GetFinalPathNameByHandleW(file, final, 32768, FILE_NAME_NORMALIZED);
        CloseHandle(file);
        if (length > 0 && length < 32768) target = utf8OfWide({final, length});
        return 0;
    }

    int mayWrite(const std::string& path) override {
        return _waccess(wideOfUtf8(path).c_str(), 2) == 0 ? 0 : errno;
    }

    int openRead(const std::string& path, Handle& handle) override {
        return open(path, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                    OPEN_EXISTING, _O_RDONLY, handle);
    }

    int create(const std::string& path, bool, Handle& handle) override {
        return open(path, GENERIC_READ | GENERIC_WRITE, 0, CREATE_NEW, _O_RDWR, handle);
    }

    int openWrite(const std::string& path, Handle& handle) override {
        return open(path, GENERIC_WRITE, 0, OPEN_EXISTING, _O_WRONLY, handle);
    }

    std::int64_t read(Handle handle, char* bytes, std::size_t count) override {
        const int result =
            _read(handle, bytes, static_cast<unsigned>(std::min(count, kLargestPiece)));
        return result < 0 ? -errno : result;
    }

    std::int64_t write(Handle handle, const char* bytes, std::size_t count) override {
        const int result =
            _write(handle, bytes, static_cast<unsigned>(std::min(count, kLargestPiece)));
        return result < 0 ? -errno : result;
    }

    int truncate(Handle handle, std::uint64_t size) override {
        return _chsize_s(handle, static_cast<long long>(size));
    }

    int flush(Handle handle) override { return errorOf(FlushFileBuffers(systemHandle(handle))); }

    int close(Handle handle) override { return _close(handle) == 0 ? 0 : errno; }

    /// The replacement takes over attributes and access list at rename().
    int copyAttributes(const std::string&, Handle) override { return 0; }

    int rename(const std::string& from, const std::string& to) override {
        const std::wstring wideTo = wideOfUtf8(to), wideFrom = wideOfUtf8(from);
        if (ReplaceFileW(wideTo.c_str(), wideFrom.c_str(), nullptr, REPLACEFILE_IGNORE_MERGE_ERRORS,
                         nullptr, nullptr))
            return 0;
        return errorOf(MoveFileExW(wideFrom.c_str(), wideTo.c_str(),
                                   MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH));
    }

    int remove(const std::string& path) override {
        return errorOf(DeleteFileW(wideOfUtf8(path).c_str()));
    }

    int makeFolder(const std::string& path) override {
        if (CreateDirectoryW(wideOfUtf8(path).c_str(), nullptr)) return 0;
        const int error = errorOf(false);
        if (error == EEXIST) return 0;
        if (error != ENOENT || parentOf(path) == path) return error;
        if (const int above = makeFolder(parentOf(path))) return above;
        return errorOf(CreateDirectoryW(wideOfUtf8(path).c_str(), nullptr));
    }

    /// The system writes folders itself.
    int flushFolder(const std::string&) override { return 0; }

    int list(const std::string& folder, std::vector<std::string>& names) override {
        WIN32_FIND_DATAW entry{};
        const HANDLE search = FindFirstFileW(wideOfUtf8(folder + "\\*").c_str(), &entry);
        if (search == INVALID_HANDLE_VALUE) return errorOf(false);
        names.clear();
        do {
            const std::string name = utf8OfWide(entry.cFileName);
            if (name != "." && name != "..") names.push_back(name);
        } while (FindNextFileW(search, &entry));
        FindClose(search);
        return 0;
    }

    /// Nobody else can open it, but its holder can remove it before letting go.
    int lock(const std::string& path, Handle& handle) override {
        return open(path, GENERIC_READ | GENERIC_WRITE, FILE_SHARE_DELETE, OPEN_ALWAYS, _O_RDWR,
                    handle);
    }
};

}  // namespace

FileOperations& systemFiles() {
    static SystemFiles* files = new SystemFiles;
    return *files;
}

const char* pathSeparators() {
    return "\\/";
}

}  // namespace korvant
