// Shows how an expression is read: the same text with every operation in parentheses.
#pragma once

#include <string>

#include "expr/expression_text.h"
#include "expr/name_table.h"
#include "expr/split_record.h"

namespace korvant::expr {

/// Writes `text` as its `record` splits it: "a-b-c" becomes "a-(b-c)". Nothing is searched for;
/// each entry is checked against the text, which was read with these `names`. False, and
/// `grouped` is of no meaning, when the record is not this text's.
bool writeGrouped(const PairedText& text, const NameTable& names, SplitRecord& record,
                  std::string& grouped);

}  // namespace korvant::expr
