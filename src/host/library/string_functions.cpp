#include "host/library/string_functions.h"

#include <algorithm>

#include "base/text/text_search.h"
#include "host/engine/native_call.h"
#include "host/engine/script_string.h"
#include "host/run/script_session.h"

namespace korvant {

namespace {

constexpr std::int32_t kNotFound = -1;

/// Deliberate: a negative position is a very large one; scripts search from the end that way.
std::size_t positionOf(std::int32_t position) {
    return static_cast<std::uint32_t>(position);
}

std::int32_t indexOr(std::size_t found) {
    return found == std::string_view::npos ? kNotFound : static_cast<std::int32_t>(found);
}

ScriptString* outOfRange() {
    raiseInScript("Out of range");
    return nullptr;
}

std::int32_t strSize(const ScriptString& text) {
    return static_cast<std::int32_t>(text.text.size());
}

std::int32_t strFindFrom(const ScriptString& text, const ScriptString& wanted, std::int32_t start) {
    return findForward(text.text, wanted.text, positionOf(start));
}

std::int32_t strFind(const ScriptString& text, const ScriptString& wanted) {
    return findForward(text.text, wanted.text, 0);
}

std::int32_t strRevFindFrom(const ScriptString& text, const ScriptString& wanted,
                            std::int32_t start) {
    return findBackward(text.text, wanted.text, positionOf(start));
}

/// Deliberate: without a start it searches from position 0, so it finds only what stands at the
/// very beginning; scripts rely on it as a test for a beginning.
std::int32_t strRevFind(const ScriptString& text, const ScriptString& wanted) {
    return findBackward(text.text, wanted.text, 0);
}

ScriptString* strInsert(const ScriptString& text, const ScriptString& added, std::int32_t pos) {
    const std::size_t position = positionOf(pos);
    if (position > text.text.size()) return outOfRange();
    std::string result;
    result.reserve(text.text.size() + added.text.size());
    result.append(text.text, 0, position);
    result.append(added.text);
    result.append(text.text, position);
    return returnResultString(std::move(result));
}

/// Deliberate: `end` is a number of bytes, not a position; scripts were written for that.
ScriptString* strSubstring(const ScriptString& text, std::int32_t start, std::int32_t end) {
    const std::size_t position = positionOf(start);
    if (position > text.text.size()) return outOfRange();
    return returnResultString(text.text.substr(position, positionOf(end)));
}

/// Deliberate: bytes from 128 on are negative; scripts compare with such numbers.
std::int32_t strAsc(const ScriptString& text) {
    return text.text.empty() ? 0 : static_cast<signed char>(text.text.front());
}

char upperOf(char byte) {
    return byte >= 'a' && byte <= 'z' ? static_cast<char>(byte - 'a' + 'A') : byte;
}

char lowerOf(char byte) {
    return byte >= 'A' && byte <= 'Z' ? static_cast<char>(byte - 'A' + 'a') : byte;
}

template <char (*Convert)(char)>
ScriptString* converted(const ScriptString& text) {
    constexpr std::size_t kBetweenLooks = std::size_t{4} << 20;
    std::string result(text.text);
    for (std::size_t begin = 0; begin < result.size() && (begin == 0 || !runShouldStop());
         begin += kBetweenLooks) {
        char* const piece = result.data() + begin;
        std::transform(piece, piece + std::min(kBetweenLooks, result.size() - begin), piece,
                       Convert);
    }
    return returnResultString(std::move(result));
}

constexpr char kRange[] = "\"Out of range\" when the position lies beyond the length.";

const FunctionRow kStringRows[] = {
    functionRow<strSize>("int StrSize( string &in )", "The number of bytes.",
                         "int n = StrSize(\"depth\");  // 5"),
    functionRow<strFindFrom>("int StrFind( string &in, string &in, int start )",
                             "The first position at or after start where the second text occurs "
                             "in the first; -1 if there is none.",
                             "int at = StrFind(\"banana\", \"an\", 2);  // 3"),
    functionRow<strFind>("int StrFind( string &in, string &in )",
                         "The first position where the second text occurs in the first; -1 if "
                         "there is none.",
                         "int at = StrFind(\"banana\", \"an\");  // 1"),
    functionRow<strRevFindFrom>("int StrRevFind( string &in, string &in, int start )",
                                "The last position at or before start where the second text "
                                "begins; -1 if there is none. A start of -1 searches from the end.",
                                "int at = StrRevFind(\"banana\", \"an\", 5);  // 3"),
    functionRow<strRevFind>("int StrRevFind( string &in, string &in )",
                            "0 when the first text begins with the second, else -1.",
                            "int at = StrRevFind(\"banana\", \"ba\");  // 0"),
    functionRow<strInsert>("string@ StrInsert( string &in, string &in, int pos )",
                           "The first text with the second inserted before a position."
                           " The next function that returns string@ overwrites the result: assign "
                           "it to a string first.",
                           "s = StrInsert(\"abc\", \"XY\", 1);  // aXYbc", kRange),
    functionRow<strSubstring>("string@ StrSubstring( string &in, int start, int end )",
                              "The part that begins at start and is end bytes long, or the rest "
                              "when the text is shorter. The next function that returns string@ "
                              "overwrites the result: assign it to a string first.",
                              "s = StrSubstring(\"abcdef\", 2, 3);  // cde", kRange),
    functionRow<strAsc>("int StrAsc( string &in )",
                        "The first byte as a number from -128 to 127; 0 for an empty text.",
                        "int code = StrAsc(\"A\");  // 65"),
    functionRow<converted<upperOf>>(
        "string@ StrToUpper( string &in )",
        "The text with a to z as capital letters. The next function that returns string@ "
        "overwrites the result: assign it to a string first.",
        "string upper = StrToUpper(\"core\");  // CORE"),
    functionRow<converted<lowerOf>>(
        "string@ StrToLower( string &in )",
        "The text with A to Z as small letters. The next function that returns string@ overwrites "
        "the result: assign it to a string first.",
        "string lower = StrToLower(\"CORE\");  // core"),
};

}  // namespace

std::int32_t findForward(std::string_view text, std::string_view wanted, std::size_t start) {
    if (wanted.empty()) return start <= text.size() ? static_cast<std::int32_t>(start) : kNotFound;
    if (start >= text.size()) return kNotFound;
    const std::size_t found = searchForward(text.substr(start), wanted);
    return indexOr(found == std::string_view::npos ? found : start + found);
}

std::int32_t findBackward(std::string_view text, std::string_view wanted, std::size_t start) {
    if (wanted.empty()) return static_cast<std::int32_t>(std::min(start, text.size()));
    if (wanted.size() > text.size()) return kNotFound;
    const std::size_t last = std::min(start, text.size() - wanted.size());
    return indexOr(searchBackward(text.substr(0, last + wanted.size()), wanted));
}

int registerStringFunctions(asIScriptEngine* engine) {
    return registerGlobalFunctions(engine, kStringRows);
}

std::span<const FunctionRow> stringFunctionRows() {
    return kStringRows;
}

}  // namespace korvant
