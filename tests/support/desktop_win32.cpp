#include <windows.h>

#include <shellapi.h>

#include <cstdlib>
#include <cwchar>

#include "base/system/wide_text_win32.h"
#include "support/desktop.h"
#include "support/temporary_folder.h"

namespace korvant::test {
namespace {

constexpr wchar_t kEnding[] = L".html";
constexpr wchar_t kBrowser[] = L"http\\shell\\open\\command";
constexpr wchar_t kType[] = L"KorvantTest.Page";
constexpr wchar_t kNotePage[] = L"--note-page";

std::wstring ownPath() {
    wchar_t program[32768];
    return {program, GetModuleFileNameW(nullptr, program, 32768)};
}

/// This program is what opens pages: it notes down which, and does nothing else then.
const bool noted = [] {
    int count = 0;
    wchar_t** const arguments = CommandLineToArgvW(GetCommandLineW(), &count);
    const bool asked = arguments && count == 4 && std::wcscmp(arguments[1], kNotePage) == 0;
    if (!asked) return false;
    writeFile(arguments[2], utf8OfWide(arguments[3]));
    ExitProcess(0);
}();

std::wstring defaultOf(const wchar_t* key) {
    wchar_t text[1024];
    DWORD size = sizeof text;
    const bool found = RegGetValueW(HKEY_CLASSES_ROOT, key, nullptr, RRF_RT_REG_SZ, nullptr, text,
                                    &size) == ERROR_SUCCESS;
    return found ? text : std::wstring();
}

void setDefault(const std::wstring& key, const std::wstring& text) {
    RegSetKeyValueW(HKEY_CLASSES_ROOT, key.c_str(), nullptr, REG_SZ, text.c_str(),
                    static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t)));
}

}  // namespace

/// The library's own copy of the environment is told as well as the system's.
Variable::Variable(const std::string& name, const std::string& value) : name_(name) {
    const char* const before = std::getenv(name.c_str());
    existed_ = before != nullptr;
    if (before) before_ = before;
    _putenv_s(name.c_str(), value.c_str());
}

Variable::~Variable() {
    _putenv_s(name_.c_str(), before_.c_str());  // empty removes it
}

const char* userDataVariable() {
    return "LOCALAPPDATA";
}

const char* temporaryVariable() {
    return "TMP";
}

struct PageProgram::State {
    std::wstring before, browser;
};

/// The entry of the ending is pointed at a type of our own; addresses go to it as well.
PageProgram::PageProgram(const std::filesystem::path& folder)
    : folder_(folder), state_(new State{defaultOf(kEnding), defaultOf(kBrowser)}) {
    const std::wstring command = L"\"" + ownPath() + L"\" " + kNotePage + L" \"" +
                                 (folder / "opened").wstring() + L"\" \"%1\"";
    setDefault(kEnding, kType);
    setDefault(std::wstring(kType) + L"\\shell\\open\\command", command);
    setDefault(kBrowser, command);
}

PageProgram::~PageProgram() {
    RegDeleteTreeW(HKEY_CLASSES_ROOT, kType);
    if (state_->before.empty())
        RegDeleteTreeW(HKEY_CLASSES_ROOT, kEnding);
    else
        setDefault(kEnding, state_->before);
    setDefault(kBrowser, state_->browser);
    delete state_;
}

std::string PageProgram::opened() const {
    return readFile(folder_ / "opened");
}

OtherProcess::OtherProcess(const std::string& name) {
    std::wstring line = L"\"" + ownPath() + L"\" --gtest_also_run_disabled_tests --gtest_filter=" +
                        wideOfUtf8(name);
    STARTUPINFOW start{};
    start.cb = sizeof start;
    PROCESS_INFORMATION made{};
    if (!CreateProcessW(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start,
                        &made))
        return;
    CloseHandle(made.hThread);
    process_ = reinterpret_cast<std::intptr_t>(made.hProcess);
}

void OtherProcess::kill() {
    const auto process = reinterpret_cast<HANDLE>(process_);
    if (!process) return;
    TerminateProcess(process, 1);
    WaitForSingleObject(process, INFINITE);
    CloseHandle(process);
    process_ = 0;
}

namespace {

BOOL CALLBACK endSession(HWND window, LPARAM process) {
    DWORD owner = 0;
    GetWindowThreadProcessId(window, &owner);
    if (owner != static_cast<DWORD>(process) || !IsWindowVisible(window)) return TRUE;
    constexpr UINT kPatience = 5000;
    DWORD_PTR answer = 0;
    SendMessageTimeoutW(window, WM_QUERYENDSESSION, 0, 0, SMTO_NORMAL, kPatience, &answer);
    SendMessageTimeoutW(window, WM_ENDSESSION, TRUE, 0, SMTO_NORMAL, kPatience, &answer);
    return TRUE;
}

}  // namespace

/// The system ends a process that has been asked.
void OtherProcess::tellToGo(bool) {
    const auto process = reinterpret_cast<HANDLE>(process_);
    if (!process) return;
    EnumWindows(endSession, static_cast<LPARAM>(GetProcessId(process)));
    kill();
}

}  // namespace korvant::test
