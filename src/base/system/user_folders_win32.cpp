#include <windows.h>

#include <shellapi.h>
#include <shlobj.h>
#include <shlwapi.h>

#include <cstdio>
#include <cstring>
#include <vector>

#include "base/system/user_folders.h"
#include "base/system/wide_text_win32.h"

namespace korvant {

namespace {

constexpr wchar_t kProduct[] = L"\\KorvantIDE";
constexpr char kManual[] = "\\scripting_manual\\index.html";
constexpr INT_PTR kLargestFailure = 32;  // of ShellExecute

std::string folderOf(HMODULE module) {
    wchar_t path[32768];
    const DWORD length = GetModuleFileNameW(module, path, 32768);
    const std::wstring file(path, length);
    const auto slash = file.find_last_of(L'\\');
    return slash == std::wstring::npos ? std::string() : utf8OfWide(file.substr(0, slash));
}

bool isAbsolute(const std::wstring& path) {
    return path.find(L':') == 1 || path.starts_with(L"\\\\");
}

bool isFile(const std::string& path) {
    const DWORD attributes = GetFileAttributesW(wideOfUtf8(path).c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && !(attributes & FILE_ATTRIBUTE_DIRECTORY);
}

}  // namespace

/// Of the library that this code is in, which a host may keep elsewhere.
std::string moduleFolder() {
    HMODULE module = nullptr;
    GetModuleHandleExW(
        GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
        reinterpret_cast<LPCWSTR>(&moduleFolder), &module);
    return folderOf(module);
}

std::string userDataFolder() {
    wchar_t path[32768];
    const DWORD length = GetEnvironmentVariableW(L"LOCALAPPDATA", path, 32768);
    if (length > 0 && length < 32768 && isAbsolute({path, length}))
        return utf8OfWide(std::wstring(path, length) + kProduct);
    if (SHGetFolderPathW(nullptr, CSIDL_LOCAL_APPDATA, nullptr, 0, path) != S_OK) return {};
    return utf8OfWide(std::wstring(path) + kProduct);
}

std::string programFolder() {
    return folderOf(nullptr);
}

std::string absolutePath(const std::string& path) {
    if (isAbsolute(wideOfUtf8(path)) || path.empty()) return path;
    wchar_t absolute[32768];
    const DWORD length = GetFullPathNameW(wideOfUtf8(path).c_str(), 32768, absolute, nullptr);
    return length > 0 && length < 32768 ? utf8OfWide({absolute, length}) : path;
}

std::string manualPage(const std::string& programFolder) {
    const std::string beside = programFolder + kManual;
    if (isFile(beside)) return beside;
    const std::string withModule = moduleFolder() + kManual;
    return isFile(withModule) ? withModule : beside;
}

namespace {

std::wstring addressOf(const std::string& file, const std::string& place) {
    std::string address;
    for (const char letter : absolutePath(file)) {
        const bool plain = (letter & 0x80) != 0 || std::strchr(" \"#%?&^<>|", letter) == nullptr;
        char escaped[4];
        std::snprintf(escaped, sizeof escaped, "%%%02X", static_cast<unsigned char>(letter));
        address += letter == '\\' ? "/" : plain ? std::string(1, letter) : escaped;
    }
    return wideOfUtf8((address.starts_with("//") ? "file:" : "file:///") + address + place);
}

/// What the user's browser is started with, the address in it as "%1"; empty where none is known.
/// What opens pages that are files need not understand addresses.
std::wstring browserCommand() {
    const auto ask = [](wchar_t* text, DWORD& length) {
        return AssocQueryStringW(ASSOCF_NOTRUNCATE, ASSOCSTR_COMMAND, L"http", L"open", text,
                                 &length);
    };
    DWORD length = 0;
    ask(nullptr, length);
    std::vector<wchar_t> command(length + 1);
    return length > 0 && ask(command.data(), length) == S_OK ? command.data() : std::wstring();
}

/// The system's own call drops the place of a page that is a file. An address has no blanks, and
/// some browsers take quotes around it for a part of it.
bool openAddress(const std::wstring& address) {
    std::wstring command = browserCommand();
    const std::size_t name = command.find(L"%1");
    if (name == std::wstring::npos) return false;
    command.replace(name, 2, address);
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESHOWWINDOW;
    startup.wShowWindow = SW_SHOWMAXIMIZED;
    PROCESS_INFORMATION process{};
    if (!CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                        &startup, &process))
        return false;
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    return true;
}

}  // namespace

bool openWithDesktop(const std::string& path) {
    const std::size_t place = path.rfind(".html#");
    const std::string file = place == std::string::npos ? path : path.substr(0, place + 5);
    if (!isFile(file)) return false;
    if (place != std::string::npos && openAddress(addressOf(file, path.substr(place + 5))))
        return true;
    const HINSTANCE result = ShellExecuteW(nullptr, L"open", wideOfUtf8(file).c_str(), nullptr,
                                           nullptr, SW_SHOWMAXIMIZED);
    return reinterpret_cast<INT_PTR>(result) > kLargestFailure;
}

}  // namespace korvant
