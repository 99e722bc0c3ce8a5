// Saves into a folder of their own, through calls of the system that fail when they are told to.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <string>
#include <vector>

#include "base/system/file_io.h"
#include "editor/document/safe_save.h"
#include "support/temporary_folder.h"

namespace korvant::test {

/// Breaks one call, chosen by name, after a number of good ones.
class BrokenFiles : public ForwardingFiles {
  public:
    BrokenFiles() : ForwardingFiles(systemFiles()) {}
    std::string call;
    int error = EIO;
    int good = 0;  ///< that many calls succeed first
    int broken = 0;

    int status(const std::string& p, FileStatus& s) override {
        return fails("status") ? error : ForwardingFiles::status(p, s);
    }
    int resolve(const std::string& p, std::string& t) override {
        return fails("resolve") ? error : ForwardingFiles::resolve(p, t);
    }
    int mayWrite(const std::string& p) override {
        return fails("mayWrite") ? error : ForwardingFiles::mayWrite(p);
    }
    int create(const std::string& p, bool secret, Handle& h) override {
        return fails("create") ? error : ForwardingFiles::create(p, secret, h);
    }
    int openWrite(const std::string& p, Handle& h) override {
        return fails("openWrite") ? error : ForwardingFiles::openWrite(p, h);
    }
    std::int64_t read(Handle h, char* b, std::size_t n) override {
        return fails("read") ? -error : ForwardingFiles::read(h, b, n);
    }
    std::int64_t write(Handle h, const char* b, std::size_t n) override {
        return fails("write") ? -error : ForwardingFiles::write(h, b, n);
    }
    int flush(Handle h) override { return fails("flush") ? error : ForwardingFiles::flush(h); }
    int close(Handle h) override {
        const int result = ForwardingFiles::close(h);
        return fails("close") ? error : result;
    }
    int copyAttributes(const std::string& p, Handle h) override {
        return fails("copyAttributes") ? error : ForwardingFiles::copyAttributes(p, h);
    }
    int rename(const std::string& f, const std::string& t) override {
        return fails("rename") ? error : ForwardingFiles::rename(f, t);
    }
    int flushFolder(const std::string& p) override {
        return fails("flushFolder") ? error : ForwardingFiles::flushFolder(p);
    }

  private:
    bool fails(const char* name) {
        if (call != name || good-- > 0) return false;
        ++broken;
        return true;
    }
};

class SafeSaving : public ::testing::Test {
  protected:
    SaveResult save(FileOperations& files, const std::string& file, const std::string& bytes,
                    const FileMark& known = {}) {
        BackupStore backups(files, folder.file("backups"));
        return SafeSave(files, backups).write(file, bytes, known);
    }
    FileMark markOf(const std::string& file, bool written) {
        FileMark mark{file, {}, contentHash(readFile(file)), written};
        systemFiles().status(file, mark.status);
        return mark;
    }
    std::vector<std::string> names(const std::string& sub = ".") {
        std::vector<std::string> list;
        systemFiles().list(folder.file(sub), list);
        std::sort(list.begin(), list.end());
        return list;
    }
    static std::string readFile(const std::string& file) { return test::readFile(file); }

    TemporaryFolder folder;
    const std::string path = folder.file("a.as");
};

}  // namespace korvant::test
