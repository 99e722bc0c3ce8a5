#include "editor/document/recovery_record.h"

#include <algorithm>
#include <charconv>

#include "base/system/file_io.h"

namespace korvant {

namespace {

// One field a line, texts preceded by their lengths; the last line is the hash of all before it.
constexpr std::string_view kMagic = "korvant recovery 1\n";

template <class Number>
void appendNumber(std::string& out, Number value) {
    char digits[24];
    out.append(digits, std::to_chars(digits, digits + sizeof digits, value).ptr) += '\n';
}

void appendText(std::string& out, std::string_view text) {
    appendNumber(out, text.size());
    out.append(text) += '\n';
}

/// Takes one field after the other off the front; after a failure every field is empty.
class FieldReader {
  public:
    explicit FieldReader(std::string_view bytes) : rest_(bytes) {}

    template <class Number>
    Number number() {
        Number value{};
        const char* end = rest_.data() + rest_.size();
        const auto read = std::from_chars(rest_.data(), end, value);
        const bool whole = read.ec == std::errc() && read.ptr != end && *read.ptr == '\n';
        drop(whole ? static_cast<std::size_t>(read.ptr - rest_.data()) + 1 : rest_.size() + 1);
        return good_ ? value : Number{};
    }

    std::string text() {
        const auto size = number<std::size_t>();
        if (!good_ || size >= rest_.size() || rest_[size] != '\n')
            return drop(rest_.size() + 1), "";
        const std::string value(rest_.substr(0, size));
        drop(size + 1);
        return value;
    }

    void magic() { drop(rest_.starts_with(kMagic) ? kMagic.size() : rest_.size() + 1); }
    bool good() const { return good_; }

  private:
    void drop(std::size_t count) {
        good_ = good_ && count <= rest_.size();
        rest_.remove_prefix(good_ ? count : rest_.size());
    }

    std::string_view rest_;
    bool good_ = true;
};

/// One number: a record that was written before there were more is read as it was meant.
int numberOf(const DocumentEncoding& encoding) {
    if (encoding.western) return 1;
    return encoding.wide == DocumentEncoding::Wide::no ? 0 : 1 + static_cast<int>(encoding.wide);
}

DocumentEncoding encodingOf(int number, bool byteOrderMark) {
    DocumentEncoding encoding{number == 1, byteOrderMark};
    if (number > 1) encoding.wide = static_cast<DocumentEncoding::Wide>(std::min(number, 3) - 1);
    return encoding;
}

}  // namespace

std::string writeRecord(const RecoveryRecord& record) {
    std::string out(kMagic);
    out.reserve(record.text.size() + record.path.size() + 256);
    appendNumber(out, record.time);
    appendNumber(out, record.fileHash);
    appendNumber(out, record.hostHash);
    appendNumber(out, record.delivered ? 1 : 0);
    appendNumber(out, numberOf(record.encoding));
    appendNumber(out, record.encoding.byteOrderMark ? 1 : 0);
    appendText(out, record.path);
    appendText(out, record.text);
    appendNumber(out, contentHash(out));
    return out;
}

std::optional<RecoveryRecord> readRecord(std::string_view bytes) {
    FieldReader fields(bytes);
    RecoveryRecord record;
    fields.magic();
    record.time = fields.number<std::int64_t>();
    record.fileHash = fields.number<std::uint64_t>();
    record.hostHash = fields.number<std::uint64_t>();
    record.delivered = fields.number<int>() != 0;
    const int encoding = fields.number<int>();
    record.encoding = encodingOf(encoding, fields.number<int>() != 0);
    record.path = fields.text();
    record.text = fields.text();
    if (!fields.good()) return std::nullopt;
    return writeRecord(record) == bytes ? std::optional(std::move(record)) : std::nullopt;
}

}  // namespace korvant
