#include "editor/stops/value_format.h"

#include <algorithm>

#include "base/text/number_text.h"
#include "base/text/text_encoding.h"
#include "editor/control/output_pane.h"

namespace korvant {

namespace {

constexpr char kUnknown[] = "???";
constexpr char kMore[] = "...";
constexpr std::uint32_t kReadBytes = 4;

/// The bytes of an integer of at most 64 bits, lowest first, as one number.
std::uint64_t ownBytes(const ValueView& value) {
    const auto bits = static_cast<std::uint64_t>(integerOf(value));
    return value.bytes < sizeof bits ? bits & ((std::uint64_t{1} << 8 * value.bytes) - 1) : bits;
}

/// Deliberate: integers of every size are read as 32 bits. Only bytes of the value itself count;
/// those beyond it are 0.
std::uint32_t lowWord(const ValueView& value) {
    return static_cast<std::uint32_t>(ownBytes(value));
}

/// Deliberate: an element is read as 32 bits too, so a smaller one takes in the elements behind
/// it, as far as the array goes.
std::uint32_t lowWord(const StoppedScript& script, const ValueView& array, std::uint32_t index,
                      const ValueView& value) {
    std::uint64_t word = ownBytes(value);
    for (std::uint32_t read = value.bytes; value.bytes > 0 && read < kReadBytes;
         read += value.bytes) {
        if (++index >= array.elements) break;
        word |= ownBytes(script.element(array, index)) << 8 * read;
    }
    return static_cast<std::uint32_t>(word);
}

/// In double quotes; of a text longer than `limit` not much more than that.
std::string quoted(std::string_view text, std::size_t limit) {
    const std::string part(text.substr(0, limit + 8));
    return "\"" + decodeForDisplay(cutUtf8(part, limit + 4)) + "\"";
}

bool isInteger(const ValueView& value) {
    return value.kind == ValueKind::signedInteger || value.kind == ValueKind::unsignedInteger;
}

std::string integerText(const ValueView& value, std::uint32_t word) {
    return value.kind == ValueKind::signedInteger ? formatInt(static_cast<std::int32_t>(word))
                                                  : formatUint(word);
}

class Formatter {
  public:
    Formatter(const StoppedScript& script, const ValueLimits& limits)
        : script_(script), limits_(limits) {}

    std::string format(const VariableInfo& variable) {
        const ValueView value =
            variable.inScope ? script_.view(variable.typeId, variable.address) : ValueView{};
        const auto brackets =
            std::count(variable.declaration.begin(), variable.declaration.end(), '[');
        if (value.kind == ValueKind::array)
            appendArray(value, static_cast<int>(brackets) - 1, 1);
        else
            text_ += isInteger(value) ? integerText(value, lowWord(value)) : plain(value);
        if (text_.size() <= limits_.bytes) return text_;
        return cutUtf8(std::move(text_), limits_.bytes) + kMore;
    }

  private:
    bool full() const { return text_.size() > limits_.bytes; }

    std::string plain(const ValueView& value) const {
        switch (value.kind) {
            case ValueKind::uninitialised:
                return kUninitialised;
            case ValueKind::boolean:
                return boolOf(value) ? "true" : "false";
            case ValueKind::singleReal:
            case ValueKind::doubleReal:
                return formatGeneral(realOf(value));
            case ValueKind::string:
                return quoted(textOf(value), limits_.bytes);
            default:
                return kUnknown;
        }
    }

    /// `nested`: how many dimensions the elements have themselves.
    void appendArray(const ValueView& array, int nested, int depth) {
        if (depth > limits_.depth) {
            text_ += kMore;
            return;
        }
        text_ += '{';
        const std::uint32_t shown = std::min(array.elements, limits_.elements);
        for (std::uint32_t i = 0; i < shown && !full(); ++i) {
            if (i > 0) text_ += ", ";
            if (nested > 0) text_ += '\n';
            text_ += '[' + formatUint(i) + "] = ";
            appendElement(array, i, nested, depth);
        }
        if (shown < array.elements) text_ += std::string(", ") + kMore;
        text_ += '}';
    }

    void appendElement(const ValueView& array, std::uint32_t index, int nested, int depth) {
        const ValueView value = script_.element(array, index);
        if (value.kind == ValueKind::array)
            appendArray(value, nested - 1, depth + 1);
        else if (isInteger(value))
            text_ += integerText(value, lowWord(script_, array, index, value));
        else if (value.kind == ValueKind::boolean)
            // Deliberate: in an array a truth value stands in quotes.
            text_ += quoted(plain(value), limits_.bytes);
        else
            text_ += plain(value);
    }

    const StoppedScript& script_;
    const ValueLimits& limits_;
    std::string text_;
};

}  // namespace

std::string formatValue(const StoppedScript& script, const VariableInfo& variable,
                        const ValueLimits& limits) {
    return Formatter(script, limits).format(variable);
}

bool numberOf(const ValueView& value, double& number) {
    switch (value.kind) {
        case ValueKind::signedInteger:
            number = static_cast<std::int32_t>(lowWord(value));
            return true;
        case ValueKind::unsignedInteger:
            number = lowWord(value);
            return true;
        case ValueKind::singleReal:
        case ValueKind::doubleReal:
            number = realOf(value);
            return true;
        case ValueKind::boolean:
            number = boolOf(value) ? 1.0 : 0.0;
            return true;
        default:
            return false;
    }
}

}  // namespace korvant
