// What stands before the caret: the word being written, what it is a member of, the call it is in.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace korvant {

/// One link of a chain such as "a.b(1)[2].".
struct ChainLink {
    std::string name;
    bool called = false;
    int indexed = 0;  ///< how many times "[...]" follows
};

struct WordBefore {
    std::string word;              ///< what of it stands before the caret; may be empty
    std::vector<ChainLink> chain;  ///< what stands before the last "."
    bool member = false;           ///< the word follows a "."
    bool writable = true;          ///< false inside comments and texts
};

/// `text` ends at the caret. `inComment`: its beginning lies in a comment.
WordBefore wordBefore(std::string_view text, bool inComment);

struct CallBefore {
    WordBefore function;
    int argument = 0;  ///< 0-based; how many commas stand between the bracket and the caret
    int bracket = -1;  ///< position of the "("; negative when the caret is in no call, as in the
                       ///< brackets of a function that is being declared
};
CallBefore callBefore(std::string_view text, bool inComment);

}  // namespace korvant
