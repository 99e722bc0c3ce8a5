#include <windows.h>

#include "base/system/os_file.h"
#include "base/system/start_program.h"
#include "base/system/wide_text_win32.h"

namespace korvant {

namespace {

/// One argument so that the usual readers of a command line find it again. Source: the rules for
/// backslashes before quotes of the system's C library.
std::wstring quoted(const std::wstring& argument) {
    std::wstring text = L"\"";
    std::size_t slashes = 0;
    for (const wchar_t c : argument) {
        if (c == L'\\') {
            ++slashes;
            continue;
        }
        text.append(c == L'"' ? 2 * slashes + 1 : slashes, L'\\');
        slashes = 0;
        text.push_back(c);
    }
    text.append(2 * slashes, L'\\');
    return text + L"\"";
}

std::wstring environmentWith(const std::vector<std::pair<std::string, std::string>>& variables) {
    std::wstring all;
    for (const auto& [name, value] : variables) all += wideOfUtf8(name + "=" + value) + L'\0';
    if (wchar_t* const own = GetEnvironmentStringsW()) {
        for (const wchar_t* entry = own; *entry != 0; entry += wcslen(entry) + 1)
            all += std::wstring(entry) + L'\0';
        FreeEnvironmentStringsW(own);
    }
    return all + L'\0';
}

}  // namespace

std::string programPath() {
    wchar_t path[32768];
    const DWORD length = GetModuleFileNameW(nullptr, path, 32768);
    return utf8OfWide(std::wstring(path, length));
}

std::string startProgram(const std::vector<std::string>& command,
                         const std::vector<std::pair<std::string, std::string>>& variables,
                         const std::string& folder) {
    std::wstring line;
    for (const std::string& argument : command)
        line += (line.empty() ? L"" : L" ") + quoted(wideOfUtf8(argument));
    std::wstring environment = environmentWith(variables);
    const std::wstring place = wideOfUtf8(folder);
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process{};
    if (!CreateProcessW(nullptr, line.data(), nullptr, nullptr, FALSE,
                        CREATE_UNICODE_ENVIRONMENT | CREATE_NO_WINDOW, environment.data(),
                        place.empty() ? nullptr : place.c_str(), &startup, &process))
        return command.front() + " cannot be started";
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    return {};
}

}  // namespace korvant
