#include <windows.h>

#include <fcntl.h>
#include <io.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <cwctype>

#include "host/os_file.h"
#include "host/wide_text_win32.h"

namespace korvant {

namespace {

constexpr DWORD kPollMilliseconds = 50;
constexpr unsigned kPiece = 1u << 16;

HANDLE systemHandle(int handle) {
    return reinterpret_cast<HANDLE>(_get_osfhandle(handle));
}

/// Path of what a handle has open, links followed; empty when the system does not say.
std::wstring pathOf(HANDLE file) {
    wchar_t path[32768];
    const DWORD length = GetFinalPathNameByHandleW(file, path, 32768, FILE_NAME_NORMALIZED);
    return length < 32768 ? std::wstring(path, length) : std::wstring();
}

std::wstring pathOfFolder(const std::wstring& name) {
    const HANDLE folder =
        CreateFileW(name.c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                    nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    if (folder == INVALID_HANDLE_VALUE) return {};
    const std::wstring path = pathOf(folder);
    CloseHandle(folder);
    return path;
}

bool startsWith(const std::wstring& path, const std::wstring& root) {
    return path.size() >= root.size() &&
           std::equal(root.begin(), root.end(), path.begin(),
                      [](wchar_t a, wchar_t b) { return std::towlower(a) == std::towlower(b); });
}

bool liesInside(const std::wstring& path, const std::string& folder) {
    std::wstring root = pathOfFolder(wideOfBytes(folder));
    if (root.empty() || path.empty()) return false;
    if (root.back() != L'\\') root += L'\\';
    return startsWith(path, root);
}

std::wstring parentOf(const std::wstring& name) {
    const auto slash = name.find_last_of(L"\\/");
    return slash == std::wstring::npos ? L"." : name.substr(0, slash + 1);
}

bool nameIsUsable(const std::string& name) {
    return !name.empty() && name.find('\0') == std::string::npos;
}

int refuse(HANDLE file) {
    CloseHandle(file);
    return kNoFile;
}

/// Before a file may come into being: its folder must lie inside the allowed one.
bool mayCreate(const std::wstring& name, const FileRules& rules) {
    if (rules.access != FileAccess::oneFolder) return true;
    std::wstring parent = pathOfFolder(parentOf(name));
    if (!parent.empty() && parent.back() != L'\\') parent += L'\\';
    return liesInside(parent, rules.folder);
}

bool allowed(HANDLE file, const FileRules& rules) {
    return rules.access != FileAccess::oneFolder || liesInside(pathOf(file), rules.folder);
}

HANDLE openFile(const std::wstring& name, DWORD access, DWORD creation) {
    return CreateFileW(name.c_str(), access, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, creation,
                       FILE_ATTRIBUTE_NORMAL, nullptr);
}

/// The console and pipes have to be waited for.
bool mustWait(HANDLE handle) {
    return GetFileType(handle) != FILE_TYPE_DISK;
}

bool bytesWait(HANDLE handle) {
    DWORD waiting = 0;
    if (PeekNamedPipe(handle, nullptr, 0, nullptr, &waiting, nullptr)) return waiting > 0;
    if (GetFileType(handle) == FILE_TYPE_CHAR)
        return WaitForSingleObject(handle, 0) == WAIT_OBJECT_0;
    return true;  // a closed pipe: reading says so
}

}  // namespace

int openForReading(const std::string& name, const FileRules& rules) {
    if (!nameIsUsable(name) || rules.access == FileAccess::none) return kNoFile;
    const HANDLE file = openFile(wideOfBytes(name), GENERIC_READ, OPEN_EXISTING);
    if (file == INVALID_HANDLE_VALUE) return kNoFile;
    if (!allowed(file, rules)) return refuse(file);
    return _open_osfhandle(reinterpret_cast<intptr_t>(file), _O_RDONLY | _O_TEXT);
}

int openForWriting(const std::string& name, bool append, const FileRules& rules, StopQuery) {
    if (!nameIsUsable(name) || rules.access == FileAccess::none ||
        rules.access == FileAccess::readOnly)
        return kNoFile;
    const std::wstring wide = wideOfBytes(name);
    if (!mayCreate(wide, rules)) return kNoFile;
    // Emptied only once it is known which file this is.
    const HANDLE file = openFile(wide, GENERIC_WRITE, OPEN_ALWAYS);
    if (file == INVALID_HANDLE_VALUE) return kNoFile;
    if (!allowed(file, rules)) return refuse(file);
    SetFilePointer(file, 0, nullptr, append ? FILE_END : FILE_BEGIN);
    if (!append && !mustWait(file) && !SetEndOfFile(file)) return refuse(file);
    return _open_osfhandle(reinterpret_cast<intptr_t>(file), _O_TEXT | (append ? _O_APPEND : 0));
}

ReadState readSome(int handle, char* buffer, std::size_t room, std::size_t& got,
                   StopQuery shouldStop) {
    const HANDLE system = systemHandle(handle);
    while (mustWait(system) && !bytesWait(system)) {
        if (shouldStop && shouldStop()) return ReadState::stopped;
        Sleep(5);
    }
    const int result =
        _read(handle, buffer, static_cast<unsigned>(std::min<std::size_t>(room, kPiece)));
    if (result <= 0) return ReadState::end;
    got = static_cast<std::size_t>(result);
    return ReadState::bytes;
}

int writeReady(int handle, std::string_view bytes, std::size_t& written) {
    written = 0;
    while (written < bytes.size()) {
        const auto piece =
            static_cast<unsigned>(std::min<std::size_t>(bytes.size() - written, kPiece));
        const int result = _write(handle, bytes.data() + written, piece);
        if (result < 0) return errno;
        if (result == 0) return ENOSPC;
        written += static_cast<std::size_t>(result);
    }
    return 0;
}

int writeAll(int handle, std::string_view bytes, std::size_t& written, StopQuery) {
    return writeReady(handle, bytes, written);
}

void awaitRoom(int) {
    Sleep(kPollMilliseconds / 10);
}

int closeHandle(int handle) {
    return _close(handle) == 0 ? 0 : errno;
}

int openUnblocked(int handle) {
    return _dup(handle);
}

bool isTerminal(int handle) {
    return _isatty(handle) != 0;
}

void keepSignalsAway() {}

std::string systemErrorText(int error) {
    return std::strerror(error);
}

}  // namespace korvant
