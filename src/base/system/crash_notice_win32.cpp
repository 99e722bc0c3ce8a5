#include <windows.h>

#include <atomic>
#include <cstring>

#include "base/system/crash_notice.h"

namespace korvant {

namespace {

constexpr char kBegin[] = "\r\nThe program crashed. Unsaved text of the script editor is in ";

char noticePath[4096];
std::atomic<std::size_t> noticeLength{0};  ///< 0 while the path is not to be used
LPTOP_LEVEL_EXCEPTION_FILTER previousFilter = nullptr;

void write(const char* text, std::size_t length) {
    DWORD written = 0;
    WriteFile(GetStdHandle(STD_ERROR_HANDLE), text, static_cast<DWORD>(length), &written, nullptr);
}

/// What the host or the system does about a crash comes afterwards.
LONG WINAPI onCrash(EXCEPTION_POINTERS* exception) {
    if (const std::size_t length = noticeLength) {
        write(kBegin, sizeof kBegin - 1);
        write(noticePath, length);
        write("\r\n", 2);
    }
    return previousFilter ? previousFilter(exception) : EXCEPTION_CONTINUE_SEARCH;
}

}  // namespace

void setCrashNoticePath(const std::string& path) noexcept {
    noticeLength = 0;
    if (path.size() > sizeof noticePath) return;
    std::memcpy(noticePath, path.data(), path.size());
    noticeLength = path.size();
}

CrashNotice::CrashNotice() {
    previousFilter = SetUnhandledExceptionFilter(onCrash);
}

CrashNotice::~CrashNotice() {
    SetUnhandledExceptionFilter(previousFilter);
    setCrashNoticePath({});
}

}  // namespace korvant
