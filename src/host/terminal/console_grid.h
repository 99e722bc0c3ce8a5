// The text grid behind a console window. Knows no window.
#pragma once

#include <cstdint>
#include <deque>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace korvant {

struct ConsoleCell {
    char32_t character = U' ';
    std::uint16_t attributes = 7;  ///< bits 0-2 foreground, 3 intense, 4-6 background, 7 intense
    bool operator==(const ConsoleCell&) const = default;
};

/// A place in everything that the grid keeps. Lines are numbered from the first one ever written,
/// so a number stays valid while the text moves up.
struct ConsolePlace {
    std::int64_t line = 0;
    int column = 0;
    auto operator<=>(const ConsolePlace&) const = default;
};

/// A buffer of rows that scripts address, and above it the history of the lines that have moved
/// out of it. Text wraps at the last column; a text that ends exactly there stays on its line.
class ConsoleGrid {
  public:
    static constexpr int kColumns = 80;
    static constexpr int kRows = 300;
    static constexpr int kShownRows = 25;
    static constexpr std::uint16_t kGreyOnBlack = 7;
    static constexpr std::size_t kHistoryLines = 100'000;

    explicit ConsoleGrid(int columns = kColumns, int rows = kRows,
                         std::size_t historyLines = kHistoryLines);

    /// Bytes of a script: UTF-8 sequences, every other byte Windows Western. A sequence that breaks
    /// off waits for the next write. Line feed, return, tab, backspace do what they say; bell is
    /// ignored; other control characters show as their pictures.
    void write(std::string_view bytes);
    /// What still waits is no sequence after all; before input is awaited.
    void finishSequence();
    void put(char32_t character);
    void newLine();

    /// Blanks with the current attributes everywhere, cursor to 0,0; the history is forgotten.
    void clear();
    std::uint16_t attributes() const noexcept { return attributes_; }
    void setAttributes(std::uint16_t attributes) noexcept { attributes_ = attributes; }
    /// Within the buffer; a place outside of it changes nothing.
    void moveCursor(int column, int row);
    /// To what cursor() gave; the nearest place of the buffer is taken.
    void moveCursorTo(ConsolePlace place);

    int columns() const noexcept { return columns_; }
    int rows() const noexcept { return rowCount_; }
    /// Its column is columns() while the line is full: the next character wraps.
    ConsolePlace cursor() const noexcept { return {topLine_ + row_, column_}; }
    std::int64_t firstLine() const noexcept;                    ///< oldest one that is kept
    std::int64_t topLine() const noexcept { return topLine_; }  ///< row 0 of the buffer
    std::int64_t endLine() const noexcept {
        return topLine_ + usedRows_;
    }  ///< behind the last used

    /// The cells of a line that is kept, up to the last one that was written; empty for any other.
    /// Valid until the next call of any function of the grid.
    std::span<const ConsoleCell> line(std::int64_t number) const;
    /// The line goes on in the next one because it was too long for the grid.
    bool wrapped(std::int64_t number) const;
    /// UTF-8 from `from` up to but not including `to`, blanks at line ends dropped, wrapped lines
    /// joined.
    std::string text(ConsolePlace from, ConsolePlace to) const;
    /// Everything that is kept.
    std::string text() const { return text({firstLine(), 0}, {endLine(), 0}); }
    /// The word around a place: [first, behind the last).
    std::pair<ConsolePlace, ConsolePlace> wordAt(ConsolePlace place) const;

    /// Grows with every change of what is seen.
    std::uint64_t version() const noexcept { return version_; }

  private:
    struct Row {
        std::vector<ConsoleCell> cells;
        int used = 0;
        bool wraps = false;
    };
    struct AttributeRun {
        std::uint16_t cells;
        std::uint16_t attributes;
    };
    /// A line of the history, packed: most are short and have one colour.
    struct PastLine {
        std::string text;  ///< UTF-8
        std::vector<AttributeRun> runs;
        std::uint16_t attributes = 7;  ///< of the whole line when there are no runs
        bool wraps = false;
    };

    Row& rowAt(int row) { return ring_[static_cast<std::size_t>((head_ + row) % rowCount_)]; }
    const Row& rowAt(int row) const {
        return ring_[static_cast<std::size_t>((head_ + row) % rowCount_)];
    }
    void blank(Row& row);
    std::size_t writeAscii(std::string_view bytes);
    void control(char32_t character);
    void wrapIfFull();
    void advance();
    void scroll();
    void keep(const Row& row);
    void unpack(const PastLine& line) const;
    bool inBuffer(std::int64_t number) const;

    int columns_;
    int rowCount_;
    std::size_t historyLines_;
    std::vector<Row> ring_;
    int head_ = 0;
    std::deque<PastLine> history_;
    mutable std::vector<ConsoleCell> scratch_;
    std::string pending_;
    std::int64_t topLine_ = 0;
    int usedRows_ = 1;
    int row_ = 0;
    int column_ = 0;  ///< may be columns_: full, wraps with the next character
    std::uint16_t attributes_ = kGreyOnBlack;
    std::uint64_t version_ = 0;
};

}  // namespace korvant
