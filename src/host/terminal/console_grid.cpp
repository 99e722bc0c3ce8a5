#include "host/terminal/console_grid.h"

#include <algorithm>

#include "base/text/text_encoding.h"

namespace korvant {

namespace {

constexpr int kTab = 8;
constexpr char32_t kContinued = 0;  ///< second cell of a wide character

struct Range {
    char32_t first, last;
};

bool within(char32_t character, std::span<const Range> ranges) {
    return std::any_of(ranges.begin(), ranges.end(), [character](const Range& range) {
        return character >= range.first && character <= range.last;
    });
}

/// Scripts whose characters are as wide as two others. Source: Unicode East Asian Width.
constexpr Range kWide[] = {{0x1100, 0x115F}, {0x2E80, 0xA4CF},   {0xAC00, 0xD7A3},
                           {0xF900, 0xFAFF}, {0xFE30, 0xFE6F},   {0xFF00, 0xFF60},
                           {0xFFE0, 0xFFE6}, {0x1F300, 0x1FAFF}, {0x20000, 0x3FFFD}};
/// Marks that a grid has no cell for.
constexpr Range kNoWidth[] = {{0x300, 0x36F},   {0x200B, 0x200F}, {0x202A, 0x202E},
                              {0x20D0, 0x20FF}, {0xFE00, 0xFE0F}, {0xFEFF, 0xFEFF}};

int cellsOf(char32_t character) {
    if (character < 0x300) return 1;
    if (within(character, kNoWidth)) return 0;
    return within(character, kWide) ? 2 : 1;
}

char32_t codePointOf(std::string_view sequence) {
    const auto first = static_cast<unsigned char>(sequence.front());
    if (sequence.size() == 1) return first;
    char32_t code = first & (0x7F >> sequence.size());
    for (const char c : sequence.substr(1))
        code = (code << 6) | (static_cast<unsigned char>(c) & 0x3F);
    return code;
}

bool isPlain(char c) {
    const auto byte = static_cast<unsigned char>(c);
    return byte >= 32 && byte < 127;
}

bool isBlankCell(const ConsoleCell& cell) {
    return cell.character == U' ' && (cell.attributes & 0xF0) == 0;
}

bool isWordCharacter(char32_t character) {
    return character != U' ' && character != kContinued;
}

}  // namespace

ConsoleGrid::ConsoleGrid(int columns, int rows, std::size_t historyLines)
    : columns_(columns),
      rowCount_(rows),
      historyLines_(historyLines),
      ring_(static_cast<std::size_t>(rows)) {
    for (Row& row : ring_) blank(row);
}

void ConsoleGrid::blank(Row& row) {
    row.cells.assign(static_cast<std::size_t>(columns_), ConsoleCell{U' ', attributes_});
    row.used = attributes_ & 0xF0 ? columns_ : 0;
    row.wraps = false;
}

void ConsoleGrid::write(std::string_view bytes) {
    std::string joined;
    if (!pending_.empty()) {
        joined = pending_.append(bytes);
        pending_.clear();
        bytes = joined;
    }
    while (!bytes.empty()) {
        if (isPlain(bytes.front())) {
            bytes.remove_prefix(writeAscii(bytes));
            continue;
        }
        const int length = utf8SequenceLength(bytes);
        if (length < 0) {
            pending_ = bytes;
            break;
        }
        if (length == 0)
            put(westernCodePoint(static_cast<unsigned char>(bytes.front())));
        else
            put(codePointOf(bytes.substr(0, static_cast<std::size_t>(length))));
        bytes.remove_prefix(static_cast<std::size_t>(std::max(length, 1)));
    }
    ++version_;
}

void ConsoleGrid::finishSequence() {
    const std::string rest = std::move(pending_);
    pending_.clear();
    for (const char c : rest) put(westernCodePoint(static_cast<unsigned char>(c)));
}

/// The bytes in front that are plain characters and fit on the line; at least one.
std::size_t ConsoleGrid::writeAscii(std::string_view bytes) {
    wrapIfFull();
    Row& row = rowAt(row_);
    const auto room = static_cast<std::size_t>(columns_ - column_);
    const std::size_t most = std::min(bytes.size(), room);
    ConsoleCell* cell = row.cells.data() + column_;
    std::size_t count = 0;
    for (; count < most && isPlain(bytes[count]); ++count)
        cell[count] = {static_cast<char32_t>(bytes[count]), attributes_};
    column_ += static_cast<int>(count);
    row.used = std::max(row.used, column_);
    return count;
}

void ConsoleGrid::put(char32_t character) {
    ++version_;
    if (character < 32 || character == 127) {
        control(character);
        return;
    }
    const int cells = cellsOf(character);
    if (cells == 0) return;
    if (column_ + cells > columns_) {
        rowAt(row_).wraps = true;
        column_ = 0;
        advance();
    }
    Row& row = rowAt(row_);
    row.cells[static_cast<std::size_t>(column_)] = {character, attributes_};
    if (cells == 2) row.cells[static_cast<std::size_t>(column_ + 1)] = {kContinued, attributes_};
    column_ += cells;
    row.used = std::max(row.used, column_);
}

void ConsoleGrid::wrapIfFull() {
    if (column_ < columns_) return;
    rowAt(row_).wraps = true;
    column_ = 0;
    advance();
}

void ConsoleGrid::control(char32_t character) {
    switch (character) {
        case U'\n':
            newLine();
            break;
        case U'\r':
            column_ = 0;
            break;
        case U'\b':
            column_ = std::max(0, std::min(column_, columns_ - 1) - 1);
            break;
        case U'\t':
            column_ = std::min((column_ / kTab + 1) * kTab, columns_ - 1);
            break;
        case U'\a':
            break;
        case 0:
            put(U' ');
            break;
        default:
            put(character == 127 ? 0x2421 : 0x2400 + character);
    }
}

void ConsoleGrid::newLine() {
    ++version_;
    column_ = 0;
    advance();
}

void ConsoleGrid::advance() {
    if (row_ + 1 < rowCount_)
        ++row_;
    else
        scroll();
    usedRows_ = std::max(usedRows_, row_ + 1);
}

void ConsoleGrid::scroll() {
    keep(rowAt(0));
    head_ = (head_ + 1) % rowCount_;
    ++topLine_;
    blank(rowAt(rowCount_ - 1));
}

void ConsoleGrid::keep(const Row& row) {
    if (historyLines_ == 0) return;
    if (history_.size() >= historyLines_) history_.pop_front();
    PastLine& line = history_.emplace_back();
    line.wraps = row.wraps;
    const auto used = static_cast<std::size_t>(row.used);
    line.attributes = used > 0 ? row.cells[0].attributes : attributes_;
    bool uniform = true;
    line.text.reserve(used);
    for (std::size_t i = 0; i < used; ++i) {
        const ConsoleCell& cell = row.cells[i];
        if (cell.character < 128)
            line.text.push_back(static_cast<char>(cell.character));
        else
            appendUtf8(line.text, cell.character);
        uniform = uniform && cell.attributes == line.attributes;
    }
    if (uniform) return;
    for (std::size_t i = 0; i < used; ++i) {
        const std::uint16_t attributes = row.cells[i].attributes;
        if (line.runs.empty() || line.runs.back().attributes != attributes)
            line.runs.push_back({0, attributes});
        ++line.runs.back().cells;
    }
}

void ConsoleGrid::unpack(const PastLine& line) const {
    scratch_.clear();
    std::string_view text = line.text;
    while (!text.empty()) {
        const auto length = static_cast<std::size_t>(std::max(1, utf8SequenceLength(text)));
        scratch_.push_back({codePointOf(text.substr(0, length)), line.attributes});
        text.remove_prefix(length);
    }
    std::size_t cell = 0;
    for (const AttributeRun& run : line.runs)
        for (int i = 0; i < run.cells && cell < scratch_.size(); ++i)
            scratch_[cell++].attributes = run.attributes;
}

void ConsoleGrid::clear() {
    ++version_;
    history_.clear();
    for (Row& row : ring_) blank(row);
    topLine_ += usedRows_;  // a place that was remembered must not point at new text
    usedRows_ = 1;
    row_ = column_ = 0;
    pending_.clear();
}

void ConsoleGrid::moveCursor(int column, int row) {
    if (column < 0 || column >= columns_ || row < 0 || row >= rowCount_) return;
    ++version_;
    column_ = column;
    row_ = row;
    usedRows_ = std::max(usedRows_, row_ + 1);
}

void ConsoleGrid::moveCursorTo(ConsolePlace place) {
    const std::int64_t row = std::clamp<std::int64_t>(place.line - topLine_, 0, rowCount_ - 1);
    moveCursor(0, static_cast<int>(row));
    column_ = std::clamp(place.column, 0, columns_);
}

std::int64_t ConsoleGrid::firstLine() const noexcept {
    return topLine_ - static_cast<std::int64_t>(history_.size());
}

bool ConsoleGrid::inBuffer(std::int64_t number) const {
    return number >= topLine_ && number < endLine();
}

std::span<const ConsoleCell> ConsoleGrid::line(std::int64_t number) const {
    if (inBuffer(number)) {
        const Row& row = rowAt(static_cast<int>(number - topLine_));
        return {row.cells.data(), static_cast<std::size_t>(row.used)};
    }
    if (number < firstLine() || number >= topLine_) return {};
    unpack(history_[static_cast<std::size_t>(number - firstLine())]);
    return scratch_;
}

bool ConsoleGrid::wrapped(std::int64_t number) const {
    if (inBuffer(number)) return rowAt(static_cast<int>(number - topLine_)).wraps;
    if (number < firstLine() || number >= topLine_) return false;
    return history_[static_cast<std::size_t>(number - firstLine())].wraps;
}

std::string ConsoleGrid::text(ConsolePlace from, ConsolePlace to) const {
    std::string result;
    for (std::int64_t number = std::max(from.line, firstLine());
         number <= std::min(to.line, endLine() - 1); ++number) {
        const auto cells = line(number);
        std::size_t end = cells.size();
        const bool last = number == to.line;
        if (last) end = std::min(end, static_cast<std::size_t>(to.column));
        const bool joins = wrapped(number) && !last;
        while (!joins && end > 0 && isBlankCell(cells[end - 1])) --end;
        const auto start = number == from.line ? static_cast<std::size_t>(from.column) : 0;
        for (std::size_t i = start; i < end; ++i)
            if (cells[i].character != kContinued) appendUtf8(result, cells[i].character);
        if (!joins && !last) result += '\n';
    }
    return result;
}

std::pair<ConsolePlace, ConsolePlace> ConsoleGrid::wordAt(ConsolePlace place) const {
    const auto cells = line(place.line);
    const auto size = static_cast<int>(cells.size());
    const auto inWord = [&](int column) {
        return column >= 0 && column < size &&
               isWordCharacter(cells[static_cast<std::size_t>(column)].character);
    };
    int first = place.column, last = place.column;
    if (!inWord(place.column)) return {place, {place.line, place.column + 1}};
    while (inWord(first - 1)) --first;
    while (inWord(last + 1)) ++last;
    return {{place.line, first}, {place.line, last + 1}};
}

}  // namespace korvant
