// What is said to the user about names: kept apart from its words, so that a window says it in its
// language. The protocols say it in English.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace korvant {

struct Sentence {
    std::string pattern = {};             ///< English; empty: nothing is said
    std::vector<std::string> parts = {};  ///< stand where the pattern has "%s", in their order

    bool empty() const { return pattern.empty(); }
    std::string text() const { return filled(pattern); }
    /// With the words of another language.
    std::string filled(std::string_view words) const {
        std::string result;
        std::size_t done = 0;
        for (const std::string& part : parts) {
            const std::size_t place = words.find("%s", done);
            if (place == std::string_view::npos) break;
            result.append(words, done, place - done).append(part);
            done = place + 2;
        }
        return result.append(words, done);
    }
};

/// Their patterns. The table of the window's words has a row for each.
namespace sentences {

inline constexpr const char* kNoName = "There is no name here that could be changed";
inline constexpr const char* kOfLibrary = "\"%s\" belongs to the library";
inline constexpr const char* kNotDeclared = "\"%s\" is not declared in this script";
inline constexpr const char* kOfLanguage = "\"%s\" is a name that the language calls by itself";
inline constexpr const char* kOfAccessors =
    "\"%s\" is made of accessors; change the names of those";
inline constexpr const char* kAccessor = "Accessors have no names of their own";
inline constexpr const char* kBadName = "\"%s\" cannot be a name";
inline constexpr const char* kDoesNotFit = "\"%s\" does not fit here: %s";
inline constexpr const char* kOtherCode = "\"%s\" is taken: other code would mean something else";
inline constexpr const char* kTaken = "\"%s\" is taken where \"%s\" is used";
inline constexpr const char* kUsedAs = "\"%s\" is used as the property \"%s\"";
inline constexpr const char* kWriteHere = "Write '%s' here";
inline constexpr const char* kChangeTo = "Change to \"%s\"";

inline constexpr const char* kAll[] = {
    kNoName,     kOfLibrary, kNotDeclared, kOfLanguage, kOfAccessors, kAccessor, kBadName,
    kDoesNotFit, kOtherCode, kTaken,       kUsedAs,     kWriteHere,   kChangeTo};

}  // namespace sentences

}  // namespace korvant
