// The plain C functions of the module: translations between its records and the host's.
#include "korvantide/host_interface.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <string>

#include "host/run/script_session.h"
#include "module/guarded.h"
#include "module/message_record.h"

using namespace korvant;

namespace {

static_assert(KORVANT_FILES_NONE == static_cast<int>(FileAccess::none));
static_assert(KORVANT_RUN_FAILED_OTHERWISE == static_cast<int>(RunFailure::Kind::other));
static_assert(KORVANT_RUN_NOT_BUILT == static_cast<int>(RunFailure::Kind::build));
static_assert(KORVANT_MESSAGE_INFORMATION == static_cast<int>(BuildMessage::Kind::information));

/// A caller of an older version has a shorter record: no more than that is touched.
template <class Record>
void handOver(const Record& full, Record* record) {
    if (!record || record->size < sizeof record->size) return;
    const std::uint32_t size = std::min<std::uint32_t>(record->size, sizeof full);
    std::memcpy(record, &full, size);
    record->size = size;
}

/// Fills a record with what `make` says; one that cannot be filled now says so by its size.
template <class Record, class Make>
void fill(Record* record, Make make) {
    const bool filled = guarded(false, [&] {
        handOver(make(), record);
        return true;
    });
    if (!filled && record && record->size >= sizeof record->size) record->size = 0;
}

KorvantLimits toRecord(const Limits& limits) {
    KorvantLimits record{};
    record.size = sizeof record;
    record.callDepth = limits.callDepth;
    record.stringBytes = limits.stringBytes;
    record.runBytes = limits.runBytes;
    record.scriptBytes = limits.scriptBytes;
    record.scriptTokens = limits.scriptTokens;
    record.nameBytes = limits.nameBytes;
    record.hardCeilingMs = limits.hardCeilingMs;
    record.nesting = limits.nesting;
    record.boxesBeforeStopButton = limits.boxesBeforeStopButton;
    record.endOfInputEndsRun = limits.endOfInputEndsRun;
    record.restoreLocaleAfterRun = limits.restoreLocaleAfterRun;
    record.fileAccess = static_cast<std::int32_t>(limits.fileAccess);
    record.fileFolder = limits.fileFolder.c_str();
    record.guardBuilds = limits.guardBuilds;
    return record;
}

std::size_t bounded(std::uint64_t bytes) {
    return static_cast<std::size_t>(std::min<std::uint64_t>(bytes, SIZE_MAX));
}

void takeOver(const KorvantLimits& record, Limits& limits) {
    limits.callDepth = record.callDepth;
    limits.stringBytes = bounded(record.stringBytes);
    limits.runBytes = bounded(record.runBytes);
    limits.scriptBytes = bounded(record.scriptBytes);
    limits.scriptTokens = bounded(record.scriptTokens);
    limits.nameBytes = bounded(record.nameBytes);
    limits.hardCeilingMs = record.hardCeilingMs;
    limits.nesting = record.nesting;
    limits.boxesBeforeStopButton = record.boxesBeforeStopButton;
    limits.endOfInputEndsRun = record.endOfInputEndsRun != 0;
    limits.restoreLocaleAfterRun = record.restoreLocaleAfterRun != 0;
    limits.fileAccess = static_cast<FileAccess>(record.fileAccess);
    limits.fileFolder = record.fileFolder ? record.fileFolder : "";
    limits.guardBuilds = record.guardBuilds != 0;
}

}  // namespace

void KORVANTIDE_CALL GetScriptLimits(KorvantLimits* limits) {
    fill(limits, [] { return toRecord(moduleSession().limits()); });
}

void KORVANTIDE_CALL GetStrictScriptLimits(KorvantLimits* limits) {
    handOver(toRecord(strictLimits()), limits);
}

namespace {

std::int32_t setLimits(const KorvantLimits* limits) {
    if (!limits) {
        moduleSession().setLimits(Limits{});
        return 1;
    }
    if (limits->size < sizeof limits->size || limits->size > sizeof *limits) return 0;
    Limits changed = moduleSession().limits();
    KorvantLimits record = toRecord(changed);
    std::memcpy(&record, limits, limits->size);
    if (record.fileAccess < KORVANT_FILES_ALL || record.fileAccess > KORVANT_FILES_NONE) return 0;
    const std::string folder = record.fileFolder ? record.fileFolder : "";
    record.fileFolder = folder.c_str();
    takeOver(record, changed);
    moduleSession().setLimits(changed);
    return 1;
}

}  // namespace

std::int32_t KORVANTIDE_CALL SetScriptLimits(const KorvantLimits* limits) {
    return guarded(0, [&] { return setLimits(limits); });
}

namespace {

KorvantRunResult lastRun() {
    const RunFailure& failure = moduleSession().lastFailure();
    KorvantRunResult record{};
    record.size = sizeof record;
    record.end = static_cast<std::int32_t>(failure.kind);
    record.line = failure.line;
    record.unwritten = static_cast<std::uint32_t>(failure.unwritten.size());
    record.message = failure.text.c_str();
    record.frames = static_cast<std::uint32_t>(failure.stack.size());
    record.calls = static_cast<std::uint32_t>(failure.calls);
    return record;
}

KorvantRunFrame toRecord(const RunFrame& frame) {
    KorvantRunFrame record{};
    record.size = sizeof record;
    record.line = frame.line;
    record.function = frame.function.c_str();
    record.source = frame.source.c_str();
    return record;
}

}  // namespace

void KORVANTIDE_CALL GetLastRunResult(KorvantRunResult* result) {
    fill(result, lastRun);
}

std::int32_t KORVANTIDE_CALL GetRunFrame(std::uint32_t index, KorvantRunFrame* frame) {
    return guarded(0, [&] {
        const auto& stack = moduleSession().lastFailure().stack;
        if (index >= stack.size()) return 0;
        handOver(toRecord(stack[index]), frame);
        return 1;
    });
}

const char* KORVANTIDE_CALL GetUnwrittenFile(std::uint32_t index) {
    return guarded<const char*>(nullptr, [index]() -> const char* {
        const auto& files = moduleSession().lastFailure().unwritten;
        return index < files.size() ? files[index].c_str() : nullptr;
    });
}

std::uint32_t KORVANTIDE_CALL CountBuildMessages(void) {
    return guarded<std::uint32_t>(
        0, [] { return static_cast<std::uint32_t>(moduleSession().buildMessages().count()); });
}

std::int32_t KORVANTIDE_CALL GetBuildMessage(std::uint32_t index, KorvantBuildMessage* message) {
    return guarded(0, [&] {
        const auto& messages = moduleSession().buildMessages().all();
        if (index >= messages.size()) return 0;
        handOver(toRecord(messages[index]), message);
        return 1;
    });
}

void KORVANTIDE_CALL RequestScriptStop(void) {
    moduleSession().requestStop();
}
