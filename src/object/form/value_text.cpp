#include "object/form/value_text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <optional>

#include "base/text/characters.h"
#include "base/text/number_text.h"
#include "object/form/expression_words.h"
#include "object/form/form_texts.h"
#include "object/form/typed_formula.h"

namespace korvant {

namespace {

template <class Value>
FormValue<Value> accepted(Value value) {
    return {true, value, {}};
}

template <class Value>
FormValue<Value> refused(FormText why, std::int32_t locale) {
    return {false, Value{}, formText(why, locale)};
}

bool sameWord(std::string_view a, std::string_view b) {
    const auto same = [](char x, char y) { return lowerCase(x) == lowerCase(y); };
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), same);
}

std::optional<std::int32_t> hexColour(std::string_view text) {
    std::uint32_t rgb = 0;
    const char* end = text.data() + text.size();
    const auto read = std::from_chars(text.data() + 1, end, rgb, 16);
    if (text.size() != 7 || read.ec != std::errc() || read.ptr != end) return {};
    const std::uint32_t bgr = (rgb & 0xFFU) << 16 | (rgb & 0xFF00U) | rgb >> 16;
    return static_cast<std::int32_t>(bgr);
}

/// Three numbers from 0 to 255 with commas between them.
std::optional<std::int32_t> listedColour(std::string_view text) {
    std::int32_t colour = 0;
    for (int shift = 0; shift <= 16; shift += 8) {
        const std::size_t comma = shift < 16 ? text.find(',') : text.size();
        if (comma == std::string_view::npos) return {};
        const auto part = parseInt(trimmed(text.substr(0, comma), kTextBlanks));
        if (!part || *part < 0 || *part > 255) return {};
        colour |= *part << shift;
        text.remove_prefix(std::min(comma + 1, text.size()));
    }
    return colour;
}

}  // namespace

std::string realText(double value) {
    const float narrow = static_cast<float>(value);
    const bool exact = std::isfinite(value) && static_cast<double>(narrow) == value;
    return exact ? formatShortest(narrow) : formatShortest(value);
}

std::string roundedText(double value) {
    constexpr int kDigits = 10;
    std::array<char, 64> digits;
    const auto written = std::to_chars(digits.data(), digits.data() + digits.size(), value,
                                       std::chars_format::scientific, kDigits - 1);
    double rounded = value;
    if (std::isfinite(value)) std::from_chars(digits.data(), written.ptr, rounded);
    const std::string text = realText(value);
    std::string few = formatShortest(rounded);
    return few.size() <= text.size() ? few : text;
}

std::string colourText(std::int32_t colour) {
    static constexpr char kDigits[] = "0123456789ABCDEF";
    std::string text = "#";
    for (int shift = 0; shift <= 16; shift += 8) {
        text += kDigits[(colour >> (shift + 4)) & 15];
        text += kDigits[(colour >> shift) & 15];
    }
    return text;
}

FormValue<double> readReal(std::string_view typed, const Evaluate& evaluate, std::int32_t locale) {
    const std::string text = withDecimalPoints(trimmed(typed, kTextBlanks));
    double value = 0.0;
    if (const auto plain = parseNumber(text)) {
        value = *plain;
    } else {
        if (!looksLikeFormula(text)) return refused<double>(FormText::needsNumber, locale);
        const ExpressionResult result = evaluate(text);
        if (!result.error.empty()) return {false, 0.0, expressionMessage(result.error, locale)};
        value = result.value;
    }
    return std::isfinite(value) ? accepted(value) : refused<double>(FormText::notFinite, locale);
}

FormValue<std::int32_t> readInteger(std::string_view typed, const Evaluate& evaluate,
                                    std::int32_t locale) {
    if (const auto plain = parseInt(trimmed(typed, kTextBlanks))) return accepted(*plain);
    FormValue<double> real = readReal(typed, evaluate, locale);
    if (!real.accepted) return {false, 0, std::move(real.message)};
    using Range = std::numeric_limits<std::int32_t>;
    if (std::trunc(real.value) != real.value)
        return refused<std::int32_t>(FormText::notWhole, locale);
    if (real.value < Range::min() || real.value > Range::max())
        return refused<std::int32_t>(FormText::beyond32Bits, locale);
    return accepted(static_cast<std::int32_t>(real.value));
}

FormValue<std::int32_t> readColour(std::string_view typed, std::int32_t locale) {
    const std::string_view text = trimmed(typed, kTextBlanks);
    const bool hex = !text.empty() && text.front() == '#';
    std::optional<std::int32_t> colour = hex ? hexColour(text) : listedColour(text);
    if (!colour && !hex) colour = parseInt(text);
    return colour ? accepted(*colour) : refused<std::int32_t>(FormText::needsColour, locale);
}

FormValue<bool> readBoolean(std::string_view typed, std::int32_t locale) {
    const std::string_view text = trimmed(typed, kTextBlanks);
    const std::string yes = formText(FormText::yes, locale);
    const std::string no = formText(FormText::no, locale);
    for (const std::string_view word : {std::string_view(yes), std::string_view("yes"),
                                        std::string_view("true"), std::string_view("1")})
        if (sameWord(text, word)) return accepted(true);
    for (const std::string_view word : {std::string_view(no), std::string_view("no"),
                                        std::string_view("false"), std::string_view("0")})
        if (sameWord(text, word)) return accepted(false);
    return refused<bool>(FormText::needsYesOrNo, locale);
}

FormValue<std::int32_t> readOption(std::string_view typed, const std::vector<std::string>& options,
                                   std::int32_t locale) {
    const auto found = std::find(options.begin(), options.end(), typed);
    if (found == options.end()) return refused<std::int32_t>(FormText::needsOption, locale);
    return accepted(static_cast<std::int32_t>(found - options.begin()));
}

}  // namespace korvant
