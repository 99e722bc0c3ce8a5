// What an editor asks about a text that is being written, and what it gets to know.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "language/diagnostics.h"
#include "language/repairs.h"
#include "language/script_colours.h"
#include "language/script_help.h"
#include "language/suggestions.h"

namespace korvant {

struct AssistQuestion {
    enum class Kind : std::uint8_t {
        suggestions,  ///< what may be written at the place
        signatures,   ///< of the call around the place
        hover,        ///< what the name at the place is
        definition,   ///< where the name at the place is declared
        references,   ///< every place of the same meaning
        occurrences,  ///< the same, for marks
        renamePlace,  ///< whether the name at the place can get another one
        rename,       ///< the places that `name` is written to
        repairs,      ///< what may mend `problem`
        colours       ///< kinds of the names from `offset` up to `end`
    };
    static constexpr int kKinds = 10;

    Kind kind = Kind::suggestions;
    std::uint64_t offset = 0;  ///< bytes
    std::uint64_t end = 0;
    std::string name;
    Diagnostic problem;
};

/// Only what the kind of the question asks for is filled.
struct AssistAnswer {
    std::vector<Suggestion> suggestions;
    Signatures signatures;
    std::optional<HoverText> hover;
    std::vector<ByteRange> places;  ///< in the order of the text
    ByteRange word;                 ///< the name that was asked about; empty for none
    Sentence refusal;               ///< why it cannot be done
    std::vector<Repair> repairs;
    std::vector<ColouredName> colours;
};

/// A text with a question, as the bytes of a frame.
std::string questionBytes(std::string_view text, const AssistQuestion& question);
struct AskedQuestion {
    std::string_view text;  ///< points into the bytes
    AssistQuestion question;
};
std::optional<AskedQuestion> readQuestion(std::string_view bytes);

std::string answerBytes(const AssistAnswer& answer);
std::optional<AssistAnswer> readAnswer(std::string_view bytes);

/// On any thread, but one at a time for an engine.
AssistAnswer answerQuestion(OracleEngine& engine, Meanings& meanings, const Documentation& library,
                            const AssistQuestion& question);

}  // namespace korvant
