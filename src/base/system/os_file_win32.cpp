#include <windows.h>

#include <fcntl.h>
#include <io.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <cwctype>
#include <map>
#include <mutex>

#include "base/system/os_file.h"
#include "base/system/wide_text_win32.h"
#include "base/text/text_encoding.h"

namespace korvant {

namespace {

constexpr DWORD kPollMilliseconds = 50;
constexpr unsigned kPiece = 1u << 13;

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

bool isConsole(HANDLE handle) {
    DWORD mode = 0;
    return GetConsoleMode(handle, &mode) != 0;
}

bool isCharacter(const INPUT_RECORD& record) {
    return record.EventType == KEY_EVENT && record.Event.KeyEvent.bKeyDown &&
           record.Event.KeyEvent.uChar.UnicodeChar != 0;
}

/// Takes what is no character (keys that go up, the pointer, a change of size) out of the way: a
/// read would wait for what comes after it.
bool characterWaits(HANDLE console) {
    INPUT_RECORD record{};
    DWORD count = 0;
    while (PeekConsoleInputW(console, &record, 1, &count) && count == 1) {
        if (isCharacter(record)) return true;
        ReadConsoleInputW(console, &record, 1, &count);
    }
    return false;
}

bool bytesWait(HANDLE handle) {
    DWORD waiting = 0;
    if (isConsole(handle)) return characterWaits(handle);
    if (PeekNamedPipe(handle, nullptr, 0, nullptr, &waiting, nullptr)) return waiting > 0;
    return true;  // a closed pipe: reading says so
}

/// What is typed, as UTF-8; with whole lines it returns at Enter. Empty when Ctrl+C ended it.
std::string typedText(HANDLE console, std::size_t units) {
    std::wstring typed(units, L'\0');
    DWORD got = 0;
    const DWORD room = static_cast<DWORD>(units);
    if (!ReadConsoleW(console, typed.data(), room, &got, nullptr)) return {};
    std::string text = utf8OfWide({typed.data(), got});
    std::erase(text, '\r');
    return text;
}

/// Ctrl+Z at the beginning of a line is the end.
ReadState readConsole(HANDLE console, char* buffer, std::size_t room, std::size_t& got,
                      StopQuery shouldStop) {
    constexpr std::size_t kBytesOfUnit = 3;
    constexpr char kControlZ = 26;
    static std::string rest;  // of a character that had no room
    if (rest.empty()) rest = typedText(console, std::max<std::size_t>(room / kBytesOfUnit, 1));
    if (rest.empty()) {
        Sleep(kPollMilliseconds);  // the handler of Ctrl+C runs on a thread of its own
        return shouldStop && shouldStop() ? ReadState::stopped : ReadState::end;
    }
    if (rest.front() == kControlZ) {
        rest.clear();
        return ReadState::end;
    }
    got = rest.copy(buffer, room);
    rest.erase(0, got);
    return ReadState::bytes;
}

/// How many bytes at the end are the beginning of a character.
std::size_t unfinishedBytes(std::string_view utf8) {
    constexpr std::size_t kLongestCharacter = 4;
    const std::size_t most = std::min(utf8.size(), kLongestCharacter - 1);
    for (std::size_t tail = 1; tail <= most; ++tail)
        if (utf8SequenceLength(utf8.substr(utf8.size() - tail)) == -1) return tail;
    return 0;
}

/// A piece may end within a character: its beginning is kept for the next piece.
bool writeConsole(HANDLE console, std::string_view piece) {
    static std::mutex lock;
    static auto& begun = *new std::map<HANDLE, std::string>;
    const std::lock_guard guard(lock);
    std::string text = std::move(begun[console]);
    text.append(piece);
    const std::size_t whole = text.size() - unfinishedBytes(text);
    begun[console] = text.substr(whole);
    const std::wstring wide = wideOfUtf8(std::string_view(text).substr(0, whole));
    DWORD written = 0;
    return wide.empty() || WriteConsoleW(console, wide.data(), static_cast<DWORD>(wide.size()),
                                         &written, nullptr) != 0;
}

int writeOnce(int handle, std::string_view piece) {
    const HANDLE system = systemHandle(handle);
    if (!isConsole(system))
        return _write(handle, piece.data(), static_cast<unsigned>(piece.size()));
    if (writeConsole(system, piece)) return static_cast<int>(piece.size());
    errno = EIO;
    return -1;
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
    if (isConsole(system)) return readConsole(system, buffer, room, got, shouldStop);
    const int result =
        _read(handle, buffer, static_cast<unsigned>(std::min<std::size_t>(room, kPiece)));
    if (result <= 0) return ReadState::end;
    got = static_cast<std::size_t>(result);
    return ReadState::bytes;
}

bool awaitBytes(int handle, int milliseconds) {
    const HANDLE system = systemHandle(handle);
    const ULONGLONG end = GetTickCount64() + static_cast<ULONGLONG>(milliseconds);
    while (mustWait(system) && !bytesWait(system)) {
        if (GetTickCount64() >= end) return false;
        Sleep(1);
    }
    return true;
}

int writeReady(int handle, std::string_view bytes, std::size_t& written) {
    written = 0;
    while (written < bytes.size()) {
        const auto piece =
            static_cast<unsigned>(std::min<std::size_t>(bytes.size() - written, kPiece));
        const int result = writeOnce(handle, bytes.substr(written, piece));
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

/// The null device is a character device as well; only a console has a mode.
bool isTerminal(int handle) {
    return isConsole(systemHandle(handle));
}

void keepSignalsAway() {}

std::string systemErrorText(int error) {
    return std::strerror(error);
}

}  // namespace korvant
