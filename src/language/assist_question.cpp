#include "language/assist_question.h"

#include <algorithm>

#include "language/frame_bytes.h"
#include "language/rename.h"

namespace korvant {

namespace {

using Kind = AssistQuestion::Kind;

void put(std::string& bytes, ByteRange range) {
    putNumber(bytes, std::uint64_t{range.begin});
    putNumber(bytes, std::uint64_t{range.end});
}

void put(std::string& bytes, const Suggestion& one) {
    putNumber(bytes, one.kind);
    for (const std::string* part : {&one.label, &one.detail, &one.documentation, &one.insert})
        putText(bytes, *part);
    putNumber(bytes, one.snippet);
}

void put(std::string& bytes, const Sentence& one) {
    putText(bytes, one.pattern);
    putNumber(bytes, static_cast<std::uint32_t>(one.parts.size()));
    for (const std::string& part : one.parts) putText(bytes, part);
}

void put(std::string& bytes, const SignatureText& one);
void put(std::string& bytes, const Repair& one) {
    put(bytes, one.title);
    put(bytes, one.range);
    putText(bytes, one.with);
}

void put(std::string& bytes, const ColouredName& one) {
    put(bytes, one.range);
    putNumber(bytes, one.colour);
    putNumber(bytes, one.declares);
    putNumber(bytes, one.readOnly);
}

template <class Item>
void put(std::string& bytes, const std::vector<Item>& list) {
    putNumber(bytes, static_cast<std::uint32_t>(list.size()));
    for (const Item& one : list) put(bytes, one);
}

void put(std::string& bytes, const SignatureText& one) {
    putText(bytes, one.label);
    putText(bytes, one.documentation);
    put(bytes, one.parameters);
}

std::string takeString(FrameReader& reader) {
    return std::string(reader.text());
}

/// A number of one byte that may be no more than `last`.
template <class Enumeration>
Enumeration takeOneOf(FrameReader& reader, Enumeration last) {
    const auto number = reader.take<Enumeration>();
    return number >= Enumeration{} && number <= last ? number : Enumeration{};
}

void take(FrameReader& reader, ByteRange& range) {
    range.begin = static_cast<std::size_t>(reader.take<std::uint64_t>());
    range.end = static_cast<std::size_t>(reader.take<std::uint64_t>());
}

void take(FrameReader& reader, Suggestion& one) {
    one.kind = takeOneOf(reader, Suggestion::Kind::variable);
    for (std::string* part : {&one.label, &one.detail, &one.documentation, &one.insert})
        *part = takeString(reader);
    one.snippet = reader.take<char>() != 0;
}

void take(FrameReader& reader, Sentence& one) {
    one.pattern = takeString(reader);
    const auto count = reader.take<std::uint32_t>();
    for (std::uint32_t i = 0; i < count && reader.whole(); ++i)
        one.parts.push_back(takeString(reader));
}

void take(FrameReader& reader, SignatureText& one);
void take(FrameReader& reader, Repair& one) {
    take(reader, one.title);
    take(reader, one.range);
    one.with = takeString(reader);
}

void take(FrameReader& reader, ColouredName& one) {
    take(reader, one.range);
    one.colour = takeOneOf(reader, NameColour::method);
    one.declares = reader.take<char>() != 0;
    one.readOnly = reader.take<char>() != 0;
}

template <class Item>
void take(FrameReader& reader, std::vector<Item>& list) {
    const auto count = reader.take<std::uint32_t>();
    for (std::uint32_t i = 0; i < count && reader.whole(); ++i) take(reader, list.emplace_back());
}

void take(FrameReader& reader, SignatureText& one) {
    one.label = takeString(reader);
    one.documentation = takeString(reader);
    take(reader, one.parameters);
}

/// The places of declarations, each once.
std::vector<ByteRange> namesOf(const ScopeIndex& index, const std::vector<int>& declarations) {
    std::vector<ByteRange> places;
    for (const int i : declarations)
        if (const auto& one = index.declarations()[static_cast<std::size_t>(i)];
            !one.nameRange.empty())
            places.push_back(one.nameRange);
    return places;
}

void findPlaces(Meanings& meanings, const AssistQuestion& question, AssistAnswer& answer) {
    const auto offset = static_cast<std::size_t>(question.offset);
    const NameUse* const use = meanings.index().useAt(offset);
    if (use == nullptr || inRemarkOrText(meanings.index(), offset)) return;
    answer.word = use->range();
    const int base = meanings.calledBySuper(*use);
    if (question.kind == Kind::definition && base != kNoIndex) {
        answer.places = namesOf(meanings.index(), {base});
        return;
    }
    const Meaning meaning = meanings.of(*use);
    if (meaning.declarations.empty()) {
        answer.refusal = undeclared(meaning, std::string(meanings.nameOf(*use)));
        return;
    }
    if (question.kind == Kind::definition) {
        answer.places = namesOf(meanings.index(), meaning.declarations);
        return;
    }
    for (const NameUse* const one : meanings.referencesTo(meanings.familyOf(meaning.declaration())))
        answer.places.push_back(one->range());
}

}  // namespace

std::string questionBytes(std::string_view text, const AssistQuestion& question) {
    std::string bytes;
    bytes.reserve(text.size() + 256);
    putNumber(bytes, question.kind);
    putNumber(bytes, question.offset);
    putNumber(bytes, question.end);
    putText(bytes, question.name);
    const Diagnostic& problem = question.problem;
    for (const std::int32_t number :
         {problem.line, problem.column, problem.endLine, problem.endColumn})
        putNumber(bytes, number);
    putText(bytes, problem.text);
    return bytes.append(text);
}

std::optional<AskedQuestion> readQuestion(std::string_view bytes) {
    FrameReader reader(bytes);
    AskedQuestion asked;
    AssistQuestion& question = asked.question;
    question.kind = takeOneOf(reader, Kind::colours);
    question.offset = reader.take<std::uint64_t>();
    question.end = reader.take<std::uint64_t>();
    question.name = takeString(reader);
    Diagnostic& problem = question.problem;
    for (std::int32_t* number :
         {&problem.line, &problem.column, &problem.endLine, &problem.endColumn})
        *number = reader.take<std::int32_t>();
    problem.text = takeString(reader);
    asked.text = reader.rest();
    if (!reader.whole()) return std::nullopt;
    question.offset = std::min<std::uint64_t>(question.offset, asked.text.size());
    question.end = std::min<std::uint64_t>(question.end, asked.text.size());
    return asked;
}

std::string answerBytes(const AssistAnswer& answer) {
    std::string bytes;
    put(bytes, answer.suggestions);
    put(bytes, answer.signatures.all);
    putNumber(bytes, std::uint64_t{answer.signatures.active});
    putNumber(bytes, std::uint64_t{answer.signatures.parameter});
    putNumber(bytes, static_cast<char>(answer.hover.has_value()));
    if (answer.hover) {
        put(bytes, answer.hover->range);
        putText(bytes, answer.hover->declaration);
        putText(bytes, answer.hover->documentation);
    }
    put(bytes, answer.places);
    put(bytes, answer.word);
    put(bytes, answer.refusal);
    put(bytes, answer.repairs);
    put(bytes, answer.colours);
    return bytes;
}

std::optional<AssistAnswer> readAnswer(std::string_view bytes) {
    FrameReader reader(bytes);
    AssistAnswer answer;
    take(reader, answer.suggestions);
    take(reader, answer.signatures.all);
    answer.signatures.active = static_cast<std::size_t>(reader.take<std::uint64_t>());
    answer.signatures.parameter = static_cast<std::size_t>(reader.take<std::uint64_t>());
    if (reader.take<char>() != 0) {
        HoverText& hover = answer.hover.emplace();
        take(reader, hover.range);
        hover.declaration = takeString(reader);
        hover.documentation = takeString(reader);
    }
    take(reader, answer.places);
    take(reader, answer.word);
    take(reader, answer.refusal);
    take(reader, answer.repairs);
    take(reader, answer.colours);
    if (!reader.whole()) return std::nullopt;
    return answer;
}

AssistAnswer answerQuestion(OracleEngine& engine, Meanings& meanings, const Documentation& library,
                            const AssistQuestion& question) {
    AssistAnswer answer;
    const auto offset = static_cast<std::size_t>(question.offset);
    switch (question.kind) {
        case Kind::suggestions:
            answer.suggestions = suggestionsAt(meanings, library, offset);
            break;
        case Kind::signatures:
            answer.signatures = signaturesAt(meanings, library, offset);
            break;
        case Kind::hover:
            answer.hover = hoverAt(meanings, library, offset);
            break;
        case Kind::definition:
        case Kind::references:
        case Kind::occurrences:
            findPlaces(meanings, question, answer);
            break;
        case Kind::renamePlace: {
            const RenamePlace place = renamePlace(meanings, offset);
            answer.word = place.range;
            answer.refusal = place.refusal;
            break;
        }
        case Kind::rename: {
            RenameResult renamed = renameAt(engine, meanings, offset, question.name);
            answer.refusal = std::move(renamed.refusal);
            answer.places = std::move(renamed.edits);
            break;
        }
        case Kind::repairs:
            answer.repairs = repairsFor(meanings, question.problem);
            break;
        case Kind::colours:
            answer.colours =
                colouredNames(meanings, {offset, static_cast<std::size_t>(question.end)});
            break;
    }
    return answer;
}

}  // namespace korvant
