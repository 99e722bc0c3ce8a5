#include "editor/document/recovery_keeper.h"

#include <ctime>

#include "base/system/file_io.h"
#include "base/text/text_encoding.h"
#include "editor/control/output_pane.h"
#include "editor/document/safe_save.h"

namespace korvant {

namespace {

constexpr std::size_t kLongestBeginning = 60;
/// Of the texts that their hosts received and have not lost so far, this many are kept.
constexpr int kMostDelivered = 5;
constexpr char kUnnamed[] = "script";

std::string nameFor(const RecoveryRecord& record) {
    return record.path.empty() ? kUnnamed : nameOf(record.path);
}

std::uint64_t hashOf(const RecoveryRecord& record) {
    DocumentEncoding encoding = record.encoding;
    return contentHash(encodeDocument(record.text, encoding));
}

std::string dateOf(std::int64_t seconds) {
    const std::time_t time = static_cast<std::time_t>(seconds);
    char text[32] = "";
    if (const std::tm* parts = std::localtime(&time))
        std::strftime(text, sizeof text, "%Y-%m-%d %H:%M", parts);
    return text;
}

/// The first line that is not blank: a text that came from a host has no other name.
std::string beginningOf(const std::string& text) {
    const auto begin = text.find_first_not_of(" \t\r\n");
    if (begin == std::string::npos) return {};
    const std::string line = text.substr(begin, text.find_first_of("\r\n", begin) - begin);
    const std::string shown = cutUtf8(line, kLongestBeginning);
    return decodeForDisplay(shown) + (shown.size() < line.size() ? "..." : "");
}

std::string questionFor(const RecoveryRecord& record) {
    const std::string name =
        record.path.empty() ? EditorDocument::kUntitled : decodeForDisplay(nameOf(record.path));
    return "Unsaved text of \"" + name + "\" from " + dateOf(record.time) +
           " was found. It begins:\n" + beginningOf(record.text) +
           "\n\nDo you want to put it into the editor?\n\n\"No\" moves it to the backups, "
           "\"Cancel\" asks again the next time.";
}

}  // namespace

RecoveryKeeper::RecoveryKeeper(const RecoveryParts& parts, const std::string& folder)
    : document_(parts.document),
      window_(parts.window),
      files_(parts.files),
      backups_(parts.backups),
      clock_(parts.clock),
      store_(parts.files, folder) {}

void RecoveryKeeper::changed() {
    timer_.changed(clock_.monotonic());
}

void RecoveryKeeper::keepIfDue() {
    if (document_.modified() && timer_.due(clock_.monotonic())) keepNow(false);
}

void RecoveryKeeper::keepIfChanged() {
    if (document_.modified() && timer_.pending()) keepNow(false);
}

void RecoveryKeeper::keepNow(bool delivered) {
    timer_.done();
    if (!enabled_) return;
    RecoveryRecord record = document_.snapshot();
    record.delivered = delivered;
    store_.keepCurrent(record);
    if (copyChanged) copyChanged();
}

void RecoveryKeeper::removeCopy() {
    store_.removeCurrent();
    if (copyChanged) copyChanged();
}

void RecoveryKeeper::saved() {
    timer_.done();
    removeCopy();
}

void RecoveryKeeper::begin() {
    saved();
    enabled_ = true;
}

void RecoveryKeeper::dropping() {
    if (!enabled_ || !document_.modified()) return;
    const RecoveryRecord record = document_.snapshot();
    if (!record.text.empty()) store_.keepDropped(record);
}

void RecoveryKeeper::givenUp() {
    if (!enabled_ || !document_.modified()) return;
    RecoveryRecord record = document_.snapshot();
    const std::string bytes = encodeDocument(record.text, record.encoding);
    if (!bytes.empty()) backups_.keepText(nameFor(record), bytes);
}

void RecoveryKeeper::closing(bool delivered) {
    if (document_.modified())
        keepNow(delivered);
    else
        saved();
}

void RecoveryKeeper::setEnabled(bool enabled) {
    enabled_ = enabled;
    if (!enabled) removeCopy();
}

/// True when the text is safe: the host or its file holds it.
bool RecoveryKeeper::elsewhere(const RecoveryRecord& record, std::uint64_t hostHash) {
    const std::uint64_t hash = hashOf(record);
    if (record.text.empty() || hash == hostHash) return true;
    std::string content;
    return !record.path.empty() && readFile(files_, record.path, kLargestCompared, content) == 0 &&
           contentHash(content) == hash;
}

/// A text that the host has received is its own; only when it brings the text from before again,
/// it has evidently lost the newer one. A new script begins empty and tells nothing.
bool RecoveryKeeper::concerns(const RecoveryRecord& record, const RecoveryRecord& now) const {
    return !record.delivered || (record.hostHash == now.hostHash && !now.text.empty());
}

bool RecoveryKeeper::restore(const FoundRecord& found) {
    document_.adopt(found.record);
    keepNow(false);
    store_.remove(found);
    return true;
}

void RecoveryKeeper::giveUp(const FoundRecord& found) {
    DocumentEncoding encoding = found.record.encoding;
    const std::string bytes = encodeDocument(found.record.text, encoding);
    if (backups_.keepText(nameFor(found.record), bytes) == 0) store_.remove(found);
}

bool RecoveryKeeper::offer() {
    return offer([this](const FoundRecord& found) { return restore(found); });
}

void RecoveryKeeper::offerAll(
    const std::function<RecoveryKeeper&(const RecoveryRecord&)>& placeFor) {
    offer([&placeFor](const FoundRecord& found) {
        placeFor(found.record).restore(found);
        return false;
    });
}

/// True when a text was taken and no other one is wanted.
bool RecoveryKeeper::offer(const Take& take) {
    const std::vector<FoundRecord> all = store_.find();
    if (all.empty()) return false;
    const RecoveryRecord now = document_.snapshot();
    int delivered = 0;
    for (const FoundRecord& found : all) {
        if (elsewhere(found.record, now.hostHash)) {
            store_.remove(found);
            continue;
        }
        if (!concerns(found.record, now)) {
            if (++delivered > kMostDelivered) store_.remove(found);
            continue;
        }
        const Answer answer = window_.ask(questionFor(found.record), true);
        if (answer == Answer::yes) {
            if (take(found)) return true;
            continue;
        }
        if (answer == Answer::cancel) return false;
        giveUp(found);
    }
    return false;
}

}  // namespace korvant
