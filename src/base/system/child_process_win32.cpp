#include <windows.h>

#include <atomic>

#include "base/system/child_process.h"
#include "base/system/clock.h"
#include "base/system/wide_text_win32.h"

namespace korvant {

namespace {

constexpr DWORD kPiece = 64 << 10;
constexpr DWORD kLook = 2;  // ms between two looks at a pipe

void closeHandle(HANDLE& handle) {
    if (handle != nullptr) CloseHandle(handle);
    handle = nullptr;
}

/// One argument as the C runtime of the child takes it apart.
std::string quoted(const std::string& argument) {
    std::string text = "\"";
    std::size_t backslashes = 0;
    for (const char c : argument) {
        if (c == '"') text.append(backslashes + 1, '\\');
        backslashes = c == '\\' ? backslashes + 1 : 0;
        text += c;
    }
    return text.append(backslashes, '\\') + '"';
}

/// Ends with this process, and bounds what is in it.
HANDLE makeJob(std::size_t memoryBytes) {
    HANDLE job = CreateJobObjectW(nullptr, nullptr);
    if (job == nullptr) return nullptr;
    JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits{};
    limits.BasicLimitInformation.LimitFlags =
        JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE | JOB_OBJECT_LIMIT_DIE_ON_UNHANDLED_EXCEPTION;
    if (memoryBytes != 0) {
        limits.BasicLimitInformation.LimitFlags |= JOB_OBJECT_LIMIT_PROCESS_MEMORY;
        limits.ProcessMemoryLimit = memoryBytes;
    }
    SetInformationJobObject(job, JobObjectExtendedLimitInformation, &limits, sizeof limits);
    return job;
}

}  // namespace

struct ChildProcess::Impl {
    HANDLE process = nullptr;
    HANDLE job = nullptr;
    HANDLE toChild = nullptr;
    HANDLE fromChild = nullptr;
    DWORD number = 0;
    std::atomic<bool> woken{false};

    ~Impl() {
        end();
        closeHandle(job);
    }
    void end() {
        closeHandle(toChild);
        closeHandle(fromChild);
        if (process != nullptr) TerminateProcess(process, 1);
        closeHandle(process);
    }
    bool start(const Order& order);
};

/// The handles of the child's ends are the only ones that it inherits.
bool ChildProcess::Impl::start(const Order& order) {
    SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
    HANDLE in = nullptr, out = nullptr;
    if (!CreatePipe(&in, &toChild, &inherited, kPiece)) return false;
    if (!CreatePipe(&fromChild, &out, &inherited, kPiece)) {
        closeHandle(in);
        return false;
    }
    SetHandleInformation(toChild, HANDLE_FLAG_INHERIT, 0);
    SetHandleInformation(fromChild, HANDLE_FLAG_INHERIT, 0);
    job = makeJob(order.memoryBytes);
    std::string line = quoted(order.program);
    for (const std::string& argument : order.arguments) line += " " + quoted(argument);
    std::wstring wide = wideOfUtf8(line);
    STARTUPINFOW how{};
    how.cb = sizeof how;
    how.dwFlags = STARTF_USESTDHANDLES;
    how.hStdInput = in;
    how.hStdOutput = out;
    PROCESS_INFORMATION made{};
    const BOOL started =
        CreateProcessW(wideOfUtf8(order.program).c_str(), wide.data(), nullptr, nullptr, TRUE,
                       CREATE_NO_WINDOW | CREATE_SUSPENDED, nullptr, nullptr, &how, &made);
    closeHandle(in);
    closeHandle(out);
    if (!started) return false;
    if (job != nullptr) AssignProcessToJobObject(job, made.hProcess);
    ResumeThread(made.hThread);
    CloseHandle(made.hThread);
    process = made.hProcess;
    number = made.dwProcessId;
    return true;
}

ChildProcess::ChildProcess(std::unique_ptr<Impl> impl) : impl_(std::move(impl)) {}
ChildProcess::~ChildProcess() = default;

std::unique_ptr<ChildProcess> ChildProcess::start(const Order& order) {
    auto impl = std::make_unique<Impl>();
    if (!impl->start(order)) return nullptr;
    return std::unique_ptr<ChildProcess>(new ChildProcess(std::move(impl)));
}

/// The child reads all the time, so that a pipe is not full for long.
bool ChildProcess::write(std::string_view bytes, std::uint32_t) {
    while (!bytes.empty() && impl_->toChild != nullptr) {
        DWORD sent = 0;
        const auto piece = static_cast<DWORD>(bytes.size() < kPiece ? bytes.size() : kPiece);
        if (!WriteFile(impl_->toChild, bytes.data(), piece, &sent, nullptr)) return false;
        bytes.remove_prefix(sent);
    }
    return bytes.empty();
}

ChildProcess::Read ChildProcess::read(std::string& bytes, std::uint32_t timeoutMs) {
    if (impl_->fromChild == nullptr) return Read::ended;
    const std::uint64_t end = systemClock().monotonic() + timeoutMs;
    for (;;) {
        if (impl_->woken.exchange(false)) return Read::interrupted;
        DWORD there = 0;
        if (!PeekNamedPipe(impl_->fromChild, nullptr, 0, nullptr, &there, nullptr)) break;
        if (there > 0) {
            const std::size_t before = bytes.size();
            bytes.resize(before + (there < kPiece ? there : kPiece));
            DWORD got = 0;
            const BOOL done = ReadFile(impl_->fromChild, bytes.data() + before,
                                       static_cast<DWORD>(bytes.size() - before), &got, nullptr);
            bytes.resize(before + (done ? got : 0));
            if (done && got > 0) return Read::some;
            break;
        }
        if (systemClock().monotonic() >= end) return Read::nothing;
        WaitForSingleObject(impl_->process, kLook);
    }
    impl_->end();
    return Read::ended;
}

void ChildProcess::interrupt() noexcept {
    impl_->woken = true;
}

std::int64_t ChildProcess::id() const noexcept {
    return impl_->process != nullptr ? static_cast<std::int64_t>(impl_->number) : -1;
}

std::size_t readFromParent(char* buffer, std::size_t size) {
    DWORD got = 0;
    const BOOL done =
        ReadFile(GetStdHandle(STD_INPUT_HANDLE), buffer, static_cast<DWORD>(size), &got, nullptr);
    return done ? got : 0;
}

bool writeToParent(std::string_view bytes) {
    while (!bytes.empty()) {
        DWORD sent = 0;
        if (!WriteFile(GetStdHandle(STD_OUTPUT_HANDLE), bytes.data(),
                       static_cast<DWORD>(bytes.size()), &sent, nullptr))
            return false;
        bytes.remove_prefix(sent);
    }
    return true;
}

/// The job that the parent made ends this process and bounds its memory.
void liveWithParent(std::size_t) {
    SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX);
}

}  // namespace korvant
