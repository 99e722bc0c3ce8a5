// The system's file operations, as far as the editor needs them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace korvant {

/// What stands at a path, links followed.
struct FileStatus {
    enum class Kind { none, regular, folder, other } kind = Kind::none;
    std::uint64_t size = 0;
    std::int64_t modified = 0;   ///< nanoseconds since the system's epoch
    std::uint64_t identity = 0;  ///< changes when another file takes the path
    std::uint32_t links = 0;     ///< hard links

    friend bool operator==(const FileStatus&, const FileStatus&) = default;
};

/// Results are 0 or the system's error number, unless a function says otherwise. One call of the
/// system each: reads and writes may be short, and may be interrupted (EINTR).
class FileOperations {
  public:
    using Handle = int;

    virtual ~FileOperations() = default;
    /// A path where nothing stands is no error: kind none.
    virtual int status(const std::string& path, FileStatus& status) = 0;
    /// Where the symbolic links of `path` end; the last part need not exist.
    virtual int resolve(const std::string& path, std::string& target) = 0;
    /// 0 when this process may write to the existing file.
    virtual int mayWrite(const std::string& path) = 0;

    virtual int openRead(const std::string& path, Handle& handle) = 0;
    /// A new file; fails where one stands. With `secret` only its owner may read it, otherwise it
    /// gets the process's usual mode.
    virtual int create(const std::string& path, bool secret, Handle& handle) = 0;
    /// An existing file, whose content stays.
    virtual int openWrite(const std::string& path, Handle& handle) = 0;
    /// Bytes read, 0 at the end; negative: the error number.
    virtual std::int64_t read(Handle handle, char* bytes, std::size_t count) = 0;
    virtual std::int64_t write(Handle handle, const char* bytes, std::size_t count) = 0;
    virtual int truncate(Handle handle, std::uint64_t size) = 0;
    virtual int flush(Handle handle) = 0;
    virtual int close(Handle handle) = 0;

    /// Mode, owner, group and extended attributes (access lists among them) of `from` to an open
    /// file. An error when one of them could not be kept.
    virtual int copyAttributes(const std::string& from, Handle handle) = 0;
    /// Takes the place of what stands at `to` at once.
    virtual int rename(const std::string& from, const std::string& to) = 0;
    virtual int remove(const std::string& path) = 0;
    /// The folder and those above it, for this user only; no error when it exists.
    virtual int makeFolder(const std::string& path) = 0;
    /// Makes renames in a folder last. Its failure loses nothing that flush() kept.
    virtual int flushFolder(const std::string& path) = 0;
    virtual int list(const std::string& folder, std::vector<std::string>& names) = 0;
    /// Makes and holds a lock file until the handle is closed or the process ends, however it
    /// ends. An error while somebody else holds it.
    virtual int lock(const std::string& path, Handle& handle) = 0;
};

/// The system's own. Lives for the process.
FileOperations& systemFiles();

/// The characters that part the names in a path; the first is the usual one.
const char* pathSeparators();

/// Hands every call on; a test overrides the one that it breaks.
class ForwardingFiles : public FileOperations {
  public:
    explicit ForwardingFiles(FileOperations& next) : next_(next) {}
    int status(const std::string& p, FileStatus& s) override { return next_.status(p, s); }
    int resolve(const std::string& p, std::string& t) override { return next_.resolve(p, t); }
    int mayWrite(const std::string& p) override { return next_.mayWrite(p); }
    int openRead(const std::string& p, Handle& h) override { return next_.openRead(p, h); }
    int create(const std::string& p, bool secret, Handle& h) override {
        return next_.create(p, secret, h);
    }
    int openWrite(const std::string& p, Handle& h) override { return next_.openWrite(p, h); }
    std::int64_t read(Handle h, char* b, std::size_t n) override { return next_.read(h, b, n); }
    std::int64_t write(Handle h, const char* b, std::size_t n) override {
        return next_.write(h, b, n);
    }
    int truncate(Handle h, std::uint64_t size) override { return next_.truncate(h, size); }
    int flush(Handle h) override { return next_.flush(h); }
    int close(Handle h) override { return next_.close(h); }
    int copyAttributes(const std::string& p, Handle h) override {
        return next_.copyAttributes(p, h);
    }
    int rename(const std::string& f, const std::string& t) override { return next_.rename(f, t); }
    int remove(const std::string& p) override { return next_.remove(p); }
    int makeFolder(const std::string& p) override { return next_.makeFolder(p); }
    int flushFolder(const std::string& p) override { return next_.flushFolder(p); }
    int list(const std::string& f, std::vector<std::string>& n) override {
        return next_.list(f, n);
    }
    int lock(const std::string& p, Handle& h) override { return next_.lock(p, h); }

  private:
    FileOperations& next_;
};

}  // namespace korvant
