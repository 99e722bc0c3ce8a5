// The shape of a text: its outline, what folds, what a selection grows to, how lines are indented.
#pragma once

#include <string>
#include <vector>

#include "language/scope_index.h"

namespace korvant {

/// A declaration in the outline; what stands inside it follows as children.
struct OutlineItem {
    int declaration = kNoIndex;
    std::string name;
    std::string detail;  ///< its type or parameters
    ByteRange whole;
    ByteRange nameRange;
    std::vector<OutlineItem> children;
};

/// Types, functions and variables that are no locals, in the order of the text.
std::vector<OutlineItem> outlineTree(const ScopeIndex& index);

/// Lines from 0, first and last.
struct FoldedLines {
    std::uint32_t first = 0;
    std::uint32_t last = 0;
    bool remark = false;
};
/// Bodies, blocks, lists and remarks of several lines; the closing brace's line stays.
std::vector<FoldedLines> foldingOf(const ScopeIndex& index);

/// Ranges around `offset` from the innermost to the whole text, each larger than the one before.
std::vector<ByteRange> selectionsAt(const ScopeIndex& index, std::size_t offset);

/// What stands in front of lines and is to be replaced: the blanks there, or blanks at their ends.
struct BlankEdit {
    ByteRange range;
    std::string blanks;
};
/// Four blanks a level for the lines `first` to `last` (from 0). Only blanks change, none inside
/// texts and remarks; what is laid out so already gives no edits.
std::vector<BlankEdit> indentationEdits(const ScopeIndex& index, std::uint32_t first,
                                        std::uint32_t last);

}  // namespace korvant
