#include "language/compile_worker.h"

#include <algorithm>
#include <fstream>

#include "base/system/clock.h"
#include "base/system/user_folders.h"

namespace korvant {

namespace {

constexpr std::uint32_t kSendMs = 5000;
constexpr std::uint32_t kIdleMs = 3'600'000;
constexpr int kMostDeaths = 3;  ///< in a row, before a child is only started for a text
constexpr std::size_t kMemory = scaledMebibytes(4096);

#ifdef _WIN32
constexpr char kProgram[] = "korvant-worker.exe";
#else
constexpr char kProgram[] = "korvant-worker";
#endif

}  // namespace

std::string compileWorkerProgram() {
    const std::string folder = moduleFolder();
    for (const std::string& place : {folder + "/" + kProgram, folder + "/korvantide/" + kProgram,
                                     folder + "/" KORVANT_LIBRARY_FOLDER "/korvantide/" + kProgram})
        if (std::ifstream(place, std::ios::binary)) return place;
    return {};
}

bool CompileWorker::start() {
    if (child_ != nullptr) return true;
    frames_ = {};
    std::unique_ptr<ChildProcess> child;
    if (!setup_.program.empty())
        child = ChildProcess::start(
            {setup_.program, {std::to_string(kMemory)}, setup_.libraryFolder, kMemory});
    if (child == nullptr) {
        problem_ = "The program that checks scripts (korvant-worker) cannot be started.";
        return false;
    }
    const std::string engine =
        frameBytes(WorkerFrame::Kind::engine, enginePayload(setup_.limits, setup_.api));
    const std::lock_guard lock(mutex_);
    child_ = std::move(child);
    child_->write(engine, kSendMs);
    return true;
}

void CompileWorker::stop() {
    std::unique_ptr<ChildProcess> child;
    {
        const std::lock_guard lock(mutex_);
        child = std::move(child_);
    }
    frames_ = {};
}

CompileWorker::Outcome CompileWorker::build(const std::string& text) {
    if (!start()) return {};
    ++number_;
    const std::string request = frameBytes(WorkerFrame::Kind::build, buildPayload(number_, text));
    Outcome outcome;
    outcome.end = End::died;
    if (child_->write(request, kSendMs)) outcome = await(number_);
    deaths_ = outcome.end == End::answered ? 0 : deaths_ + 1;
    if (outcome.end != End::answered) stop();
    return outcome;
}

CompileWorker::Outcome CompileWorker::buildTwice(const std::string& text) {
    Outcome outcome = build(text);
    return outcome.end == End::died ? build(text) : outcome;
}

void CompileWorker::noteReady(const WorkerFrame& frame) {
    if (frame.kind == WorkerFrame::Kind::ready)
        hardened_ = !frame.payload.empty() && frame.payload[0] != 0;
    if (frame.kind == WorkerFrame::Kind::failed) problem_ = frame.payload;
}

std::optional<std::string> CompileWorker::ask(const std::string& question) {
    if (!start()) return std::nullopt;
    const std::string request =
        frameBytes(WorkerFrame::Kind::ask, buildPayload(++number_, question));
    std::optional<std::string> answer;
    if (child_->write(request, kSendMs)) answer = awaitAnswer(number_);
    deaths_ = answer ? 0 : deaths_ + 1;
    if (!answer) stop();
    return answer;
}

std::optional<std::string> CompileWorker::awaitAnswer(std::uint64_t number) {
    const std::uint64_t end = systemClock().monotonic() + setup_.buildMs;
    for (;;) {
        while (const auto frame = frames_.next()) {
            noteReady(*frame);
            if (frame->kind == WorkerFrame::Kind::failed) return std::nullopt;
            if (frame->kind != WorkerFrame::Kind::answer) continue;
            const auto answer = readBuild(frame->payload);
            if (answer && answer->number == number) return std::string(answer->text);
        }
        const std::uint64_t now = systemClock().monotonic();
        if (frames_.broken() || leave_ || now >= end) return std::nullopt;
        if (child_->read(frames_.incoming(), static_cast<std::uint32_t>(end - now)) ==
            ChildProcess::Read::ended)
            return std::nullopt;
    }
}

std::optional<CompileWorker::Outcome> CompileWorker::answerTo(std::uint64_t number) {
    while (const auto frame = frames_.next()) {
        noteReady(*frame);
        if (frame->kind == WorkerFrame::Kind::failed) return Outcome{};
        auto answer =
            frame->kind == WorkerFrame::Kind::built ? readBuilt(frame->payload) : std::nullopt;
        if (answer && answer->number == number)
            return Outcome{End::answered, answer->end, std::move(answer->messages)};
    }
    if (frames_.broken()) return Outcome{End::died, {}, {}};
    return std::nullopt;
}

CompileWorker::Outcome CompileWorker::await(std::uint64_t number) {
    const std::uint64_t began = systemClock().monotonic();
    std::uint64_t end = began + setup_.buildMs;
    End late = End::tooLong;
    for (;;) {
        if (auto answer = answerTo(number)) return std::move(*answer);
        if (newer()) {
            end = std::min(end, leave_ ? began : began + setup_.newerMs);
            late = End::interrupted;
        }
        const std::uint64_t now = systemClock().monotonic();
        if (now >= end) return {late, {}, {}};
        const auto left = static_cast<std::uint32_t>(end - now);
        if (child_->read(frames_.incoming(), left) == ChildProcess::Read::ended)
            return {End::died, {}, {}};
    }
}

bool CompileWorker::canIdle() {
    return deaths_ < kMostDeaths && start();
}

void CompileWorker::idle() {
    while (canIdle() && !newer()) {
        const auto read = child_->read(frames_.incoming(), kIdleMs);
        if (read != ChildProcess::Read::ended) continue;
        ++deaths_;
        stop();
    }
}

void CompileWorker::interrupt() noexcept {
    const std::lock_guard lock(mutex_);
    if (child_ != nullptr) child_->interrupt();
}

void CompileWorker::leave() noexcept {
    leave_ = true;
    interrupt();
}

std::int64_t CompileWorker::childId() const noexcept {
    const std::lock_guard lock(mutex_);
    return child_ != nullptr ? child_->id() : -1;
}

}  // namespace korvant
