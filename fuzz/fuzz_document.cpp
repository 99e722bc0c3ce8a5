// Any bytes as a document and as what lies in the user's folder: opened, changed, saved and offered
// again, on files that give little at a time and of which one operation fails. The document is
// whole at any moment, before the change or after it.
#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "editor/control/command_ids.h"
#include "editor/document/document_encoding.h"
#include "editor/script_editor.h"
#include "support/fake_editor_window.h"

namespace {

using namespace korvant;

void require(bool condition) {
    if (!condition) std::abort();
}

/// Files in memory.
class MemoryFiles final : public FileOperations {
  public:
    std::map<std::string, std::string> content;
    int failing = 0;             ///< that operation fails, counted from 1; 0: none
    int error = EIO;             ///< and why
    std::size_t pieceBytes = 1;  ///< that one read or write moves

    bool hasFailed() const { return failing != 0 && calls_ >= failing; }

    int status(const std::string& path, FileStatus& status) override {
        if (fails()) return error;
        status = {};
        const auto file = content.find(path);
        if (file == content.end()) return 0;
        status.kind = FileStatus::Kind::regular;
        status.size = file->second.size();
        status.links = 1;
        return 0;
    }
    int resolve(const std::string& path, std::string& target) override {
        target = path;
        return result();
    }
    int mayWrite(const std::string&) override { return result(); }
    int openRead(const std::string& path, Handle& handle) override {
        if (fails()) return error;
        return content.count(path) ? open(path, handle) : ENOENT;
    }
    int create(const std::string& path, bool, Handle& handle) override {
        if (fails()) return error;
        return content.emplace(path, "").second ? open(path, handle) : EEXIST;
    }
    int openWrite(const std::string& path, Handle& handle) override {
        return openRead(path, handle);
    }
    std::int64_t read(Handle handle, char* bytes, std::size_t count) override {
        if (fails()) return -error;
        auto& [path, at] = opened(handle);
        const std::string& whole = content[path];
        count = std::min({count, pieceBytes, whole.size() - std::min(at, whole.size())});
        std::copy_n(whole.data() + at, count, bytes);
        at += count;
        return static_cast<std::int64_t>(count);
    }
    std::int64_t write(Handle handle, const char* bytes, std::size_t count) override {
        if (fails()) return -error;
        auto& [path, at] = opened(handle);
        std::string& whole = content[path];
        count = std::min(count, pieceBytes);
        whole.resize(std::max(whole.size(), at + count));
        std::copy_n(bytes, count, whole.data() + at);
        at += count;
        return static_cast<std::int64_t>(count);
    }
    int truncate(Handle handle, std::uint64_t size) override {
        if (fails()) return error;
        content[opened(handle).first].resize(size);
        return 0;
    }
    int flush(Handle) override { return result(); }
    int close(Handle handle) override {
        opened(handle);
        open_.erase(handle);
        return result();
    }
    int copyAttributes(const std::string&, Handle) override { return result(); }
    int rename(const std::string& from, const std::string& to) override {
        if (fails()) return error;
        if (!content.count(from)) return ENOENT;
        content[to] = content[from];
        content.erase(from);
        return 0;
    }
    int remove(const std::string& path) override {
        if (fails()) return error;
        return content.erase(path) ? 0 : ENOENT;
    }
    int makeFolder(const std::string&) override { return result(); }
    int flushFolder(const std::string&) override { return result(); }
    int list(const std::string& folder, std::vector<std::string>& names) override {
        if (fails()) return error;
        for (const auto& [path, _] : content)
            if (path.starts_with(folder + "/")) names.push_back(path.substr(folder.size() + 1));
        return 0;
    }
    int lock(const std::string& path, Handle& handle) override {
        if (fails()) return error;
        content[path];
        return open(path, handle);
    }

    std::size_t openCount() const { return open_.size(); }

  private:
    bool fails() { return ++calls_ == failing; }
    int result() { return fails() ? error : 0; }
    int open(const std::string& path, Handle& handle) {
        handle = next_++;
        open_[handle] = {path, 0};
        return 0;
    }
    std::pair<std::string, std::size_t>& opened(Handle handle) {
        require(open_.count(handle) != 0);
        return open_[handle];
    }

    std::map<Handle, std::pair<std::string, std::size_t>> open_;
    Handle next_ = 3;
    int calls_ = 0;
};

constexpr char kPath[] = "/a.as";
constexpr char kData[] = "/data";

/// An editor that opens the file, types a letter, lets the copies be kept, and saves.
void session(MemoryFiles& files, bool exit) {
    test::FakeEditorWindow window;
    ScriptEditor editor({moduleSession(), window, files, kData, "", {}});
    window.editor.notify = [&](const ControlNotification& n) { editor.editorNotified(n); };
    window.files = {kPath};
    window.answers.assign(4, Answer::yes);
    editor.setHostText("");
    editor.initialise();
    editor.shown();
    editor.command(command_id::kOpen);
    window.editor.caret = window.editor.anchor = 0;
    window.editor.type("x");
    if (exit) return editor.command(command_id::kExit);
    if (editor.documentPath() == kPath) editor.command(command_id::kSave);
    editor.closeBox();
    editor.closed();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 4 || size > 4096) return 0;
    static constexpr int kErrors[] = {EIO, EACCES, ENOSPC, EINTR, EPERM, EROFS};
    const std::string rest(reinterpret_cast<const char*>(data) + 4, size - 4);
    const std::size_t cut = rest.empty() ? 0 : data[3] * rest.size() / 256;
    const std::string before = rest.substr(0, cut);
    MemoryFiles files;
    files.content[kPath] = before;
    files.content[std::string(kData) + "/recent_files"] = rest.substr(cut);
    files.content[std::string(kData) + "/recovery/1-2.current"] = rest.substr(cut);
    files.failing = data[0];
    files.error = kErrors[data[1] % std::size(kErrors)];
    files.pieceBytes = 8u + data[2] * data[2];

    DecodedDocument decoded = decodeDocument(before);
    const std::string after = encodeDocument("x" + decoded.text, decoded.encoding);
    session(files, data[2] % 4 == 0);
    require(files.content[kPath] == before || files.content[kPath] == after);
    require(files.openCount() == 0);
    files.failing = 0;
    session(files, false);
    return 0;
}
