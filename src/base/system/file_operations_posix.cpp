#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>

#include "base/system/file_io.h"
#include "base/system/file_operations.h"
#include "base/system/quiet_write_posix.h"

namespace korvant {

namespace {

constexpr int kLinksFollowed = 40;
constexpr mode_t kSecretMode = 0600, kUsualMode = 0666, kFolderMode = 0700, kModeBits = 07777;

int errorOf(int result) {
    return result < 0 ? errno : 0;
}

FileStatus::Kind kindOf(mode_t mode) {
    if (S_ISREG(mode)) return FileStatus::Kind::regular;
    return S_ISDIR(mode) ? FileStatus::Kind::folder : FileStatus::Kind::other;
}

/// `link` as seen from the folder of `path`.
std::string besides(const std::string& path, const std::string& link) {
    if (!link.empty() && link[0] == '/') return link;
    return folderOf(path) + "/" + link;
}

int openAt(const std::string& path, int flags, mode_t mode, int& handle) {
    do handle = ::open(path.c_str(), flags | O_CLOEXEC, mode);
    while (handle < 0 && errno == EINTR);
    return errorOf(handle);
}

/// Copies one extended attribute; those that the folder's file system does not know at all can
/// not have been on a file of the same folder.
int copyAttribute(int from, int to, const char* name) {
    char value[4096];
    const ssize_t size = ::fgetxattr(from, name, value, sizeof value);
    if (size < 0) return errno;
    return errorOf(::fsetxattr(to, name, value, static_cast<std::size_t>(size), 0));
}

int copyExtendedAttributes(int from, int to) {
    char names[4096];
    const ssize_t bytes = ::flistxattr(from, names, sizeof names);
    if (bytes < 0) return errno == ENOTSUP ? 0 : errno;
    for (const char* name = names; name < names + bytes; name += std::strlen(name) + 1)
        if (const int error = copyAttribute(from, to, name)) return error;
    return 0;
}

/// Fails where the owner or the group cannot be kept, since only the superuser gives files away.
int copyModeAndOwner(int from, int to) {
    struct stat source {};
    struct stat target {};
    if (::fstat(from, &source) != 0 || ::fstat(to, &target) != 0) return errno;
    const bool differs = source.st_uid != target.st_uid || source.st_gid != target.st_gid;
    if (differs && ::fchown(to, source.st_uid, source.st_gid) != 0) return errno;
    return errorOf(::fchmod(to, source.st_mode & kModeBits));
}

class SystemFiles final : public FileOperations {
  public:
    int status(const std::string& path, FileStatus& status) override {
        struct stat file {};
        status = {};
        if (::stat(path.c_str(), &file) != 0)
            return errno == ENOENT || errno == ENOTDIR ? 0 : errno;
        status.kind = kindOf(file.st_mode);
        status.size = static_cast<std::uint64_t>(file.st_size);
        status.modified = file.st_mtim.tv_sec * 1'000'000'000LL + file.st_mtim.tv_nsec;
        status.identity = file.st_dev * 0x9E3779B97F4A7C15u ^ file.st_ino;
        status.links = static_cast<std::uint32_t>(file.st_nlink);
        return 0;
    }

    int resolve(const std::string& path, std::string& target) override {
        target = path;
        char link[PATH_MAX];
        for (int followed = 0; followed < kLinksFollowed; ++followed) {
            const ssize_t length = ::readlink(target.c_str(), link, sizeof link);
            if (length < 0) return errno == EINVAL || errno == ENOENT ? 0 : errno;
            target = besides(target, std::string(link, static_cast<std::size_t>(length)));
        }
        return ELOOP;
    }

    int mayWrite(const std::string& path) override {
        return errorOf(::faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS));
    }

    int openRead(const std::string& path, Handle& handle) override {
        // A pipe that takes the path after it was looked at must not block the window.
        return openAt(path, O_RDONLY | O_NONBLOCK, 0, handle);
    }

    int create(const std::string& path, bool secret, Handle& handle) override {
        return openAt(path, O_WRONLY | O_CREAT | O_EXCL, secret ? kSecretMode : kUsualMode, handle);
    }

    int openWrite(const std::string& path, Handle& handle) override {
        return openAt(path, O_WRONLY | O_NONBLOCK, 0, handle);
    }

    std::int64_t read(Handle handle, char* bytes, std::size_t count) override {
        const ssize_t result = ::read(handle, bytes, count);
        return result < 0 ? -errno : result;
    }

    std::int64_t write(Handle handle, const char* bytes, std::size_t count) override {
        return writeQuietly(handle, bytes, count);
    }

    int truncate(Handle handle, std::uint64_t size) override {
        return errorOf(::ftruncate(handle, static_cast<off_t>(size)));
    }

    int flush(Handle handle) override { return errorOf(::fsync(handle)); }

    int close(Handle handle) override {
        // Interrupted or not, the handle is gone.
        const int error = errorOf(::close(handle));
        return error == EINTR ? 0 : error;
    }

    int copyAttributes(const std::string& from, Handle handle) override {
        int source = -1;
        if (const int error = openRead(from, source)) return error;
        int error = copyModeAndOwner(source, handle);
        if (error == 0) error = copyExtendedAttributes(source, handle);
        ::close(source);
        return error;
    }

    int rename(const std::string& from, const std::string& to) override {
        return errorOf(::rename(from.c_str(), to.c_str()));
    }

    int remove(const std::string& path) override { return errorOf(::unlink(path.c_str())); }

    int makeFolder(const std::string& path) override {
        if (::mkdir(path.c_str(), kFolderMode) == 0) return 0;
        if (errno == EEXIST) return 0;
        if (errno != ENOENT || folderOf(path) == path) return errno;
        if (const int error = makeFolder(folderOf(path))) return error;
        return ::mkdir(path.c_str(), kFolderMode) == 0 || errno == EEXIST ? 0 : errno;
    }

    int flushFolder(const std::string& path) override {
        int handle = -1;
        if (const int error = openAt(path, O_RDONLY | O_DIRECTORY, 0, handle)) return error;
        const int error = flush(handle);
        ::close(handle);
        return error;
    }

    int list(const std::string& folder, std::vector<std::string>& names) override {
        const std::unique_ptr<DIR, int (*)(DIR*)> entries(::opendir(folder.c_str()), ::closedir);
        if (!entries) return errno;
        names.clear();
        while (const dirent* entry = ::readdir(entries.get()))
            if (std::strcmp(entry->d_name, ".") != 0 && std::strcmp(entry->d_name, "..") != 0)
                names.emplace_back(entry->d_name);
        return 0;
    }

    int lock(const std::string& path, Handle& handle) override {
        if (const int error = openAt(path, O_RDWR | O_CREAT, kSecretMode, handle)) return error;
        const int error = errorOf(::flock(handle, LOCK_EX | LOCK_NB));
        if (error != 0) ::close(handle);
        return error;
    }
};

}  // namespace

FileOperations& systemFiles() {
    static SystemFiles* files = new SystemFiles;
    return *files;
}

const char* pathSeparators() {
    return "/";
}

}  // namespace korvant
