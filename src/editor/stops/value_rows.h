// The values of a frame as the rows of a tree, of which only what has been opened is read.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "debug/debug_session.h"

namespace korvant {

struct ValueRow {
    DebugValue value;
    int depth = 0;
    bool open = false;
    ValueNode parent = 0;
    std::string summary;     ///< of a value with members; else empty
    std::string path;        ///< of names, from the outermost
    std::uint64_t more = 0;  ///< not a value: so many children are not shown yet
    bool hasChildren() const { return value.node != 0 && more == 0; }
};

class ValueRows {
  public:
    /// Children of one value come in pages of so many.
    static constexpr std::uint64_t kPage = 100;

    explicit ValueRows(DebugSession& session) : session_(session) {}

    /// Reads the rows of a frame anew; what was open stays open where it is still there.
    void read(unsigned frame);
    /// The same with one expression as the first row, opened, and nothing else. False, and no rows,
    /// where it has no value.
    bool readOne(unsigned frame, const std::string& expression);
    void clear() { rows_.clear(); }
    const std::vector<ValueRow>& rows() const noexcept { return rows_; }
    /// Opens or closes a row; on a row of the rest, shows the next page.
    void toggle(std::size_t index);
    void closeAll();
    /// The row of a path; rows().size() when there is none.
    std::size_t find(const std::string& path) const;
    /// What stands in a field in which a value is changed: the value, where that is an expression
    /// of the script, whole; else nothing.
    std::string editText(std::size_t index) const;
    /// Empty, or why a value cannot be changed.
    std::string whyNotSettable(std::size_t index) const;
    /// Empty, or what is wrong with the expression.
    std::string set(std::size_t index, const std::string& expression);
    /// "name = value" with everything in it.
    std::string copyText(std::size_t index) const;

  private:
    void add(DebugValue value, ValueNode parent, int depth, const std::string& path);
    std::string summaryOf(const DebugValue& value);
    void addChildren(const DebugValue& value, int depth, const std::string& path);

    DebugSession& session_;
    void readAgain();

    unsigned frame_ = 0;
    std::string expression_;  ///< of the one row; empty: the whole frame
    std::vector<ValueRow> rows_;
    std::map<std::string, std::uint64_t> open_;  ///< paths, and how many children are shown
};

}  // namespace korvant
