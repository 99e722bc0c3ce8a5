#include <windows.h>

#include <shellapi.h>
#include <shlobj.h>

#include "editor/user_folders.h"
#include "host/wide_text_win32.h"

namespace korvant {

namespace {

constexpr wchar_t kProduct[] = L"\\KorvantIDE";
constexpr INT_PTR kLargestFailure = 32;  // of ShellExecute

}  // namespace

std::string userDataFolder() {
    wchar_t path[MAX_PATH];
    if (SHGetFolderPathW(nullptr, CSIDL_LOCAL_APPDATA, nullptr, 0, path) != S_OK) return {};
    return utf8OfWide(std::wstring(path) + kProduct);
}

std::string programFolder() {
    wchar_t path[32768];
    const DWORD length = GetModuleFileNameW(nullptr, path, 32768);
    const std::wstring file(path, length);
    const auto slash = file.find_last_of(L'\\');
    return slash == std::wstring::npos ? std::string() : utf8OfWide(file.substr(0, slash));
}

std::string manualPage(const std::string& programFolder) {
    return programFolder + "\\scripting_manual\\index.html";
}

bool openWithDesktop(const std::string& path) {
    const HINSTANCE result = ShellExecuteW(nullptr, L"open", wideOfUtf8(path).c_str(), nullptr,
                                           nullptr, SW_SHOWMAXIMIZED);
    return reinterpret_cast<INT_PTR>(result) > kLargestFailure;
}

}  // namespace korvant
