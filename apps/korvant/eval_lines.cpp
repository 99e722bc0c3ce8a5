#include "eval_lines.h"

#include <charconv>
#include <cmath>
#include <istream>
#include <nlohmann/json.hpp>
#include <ostream>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "expr/evaluator.h"

namespace korvant_app {
namespace {

using nlohmann::json;

constexpr std::size_t kLongestLine = std::size_t{16} << 20;

/// JSON text to bytes: a character from 0 to 255 stands for one byte.
std::string bytesOf(const std::string& utf8) {
    std::string bytes;
    for (std::size_t i = 0; i < utf8.size(); ++i) {
        const auto lead = static_cast<unsigned char>(utf8[i]);
        if (lead < 0x80) {
            bytes += utf8[i];
        } else if (lead <= 0xC3 && i + 1 < utf8.size()) {
            const auto low = static_cast<unsigned char>(utf8[++i]);
            bytes += static_cast<char>((lead & 3) << 6 | (low & 0x3F));
        } else {
            throw std::invalid_argument("a character beyond 255");
        }
    }
    return bytes;
}

std::string utf8Of(const std::string& bytes) {
    std::string utf8;
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < 0x80) {
            utf8 += c;
        } else {
            utf8 += static_cast<char>(0xC0 | byte >> 6);
            utf8 += static_cast<char>(0x80 | (byte & 0x3F));
        }
    }
    return utf8;
}

/// A C hexadecimal float, which holds every bit: "0x1.8p+1", "nan", "inf", "-inf".
std::string hexadecimalText(double value) {
    if (std::isnan(value)) return "nan";
    if (std::isinf(value)) return value < 0 ? "-inf" : "inf";
    char digits[32];
    const auto end =
        std::to_chars(digits, digits + sizeof digits, std::fabs(value), std::chars_format::hex).ptr;
    return (std::signbit(value) ? "-0x" : "0x") + std::string(digits, end);
}

/// Takes a request out of its JSON text as it is parsed, so that nothing is held but the
/// expression and its names; other members are passed over.
class Request : public nlohmann::json_sax<json> {
  public:
    std::string expression;
    std::vector<std::pair<std::string, double>> names;
    bool hasExpression = false;
    std::string problem;

    bool null() override { return scalar(); }
    bool boolean(bool) override { return scalar(); }
    bool number_integer(number_integer_t value) override {
        return number(static_cast<double>(value));
    }
    bool number_unsigned(number_unsigned_t value) override {
        return number(static_cast<double>(value));
    }
    bool number_float(number_float_t, const string_t& text) override {
        const auto value = readEvalNumber(text);
        return value ? number(*value) : refuse("a value that is no number");
    }
    bool string(string_t& text) override {
        if (depth_ == 1 && key_ == "expr") {
            expression = bytesOf(text);
            return hasExpression = true;
        }
        if (!inNames()) return scalar();
        const auto value = readEvalNumber(text);
        return value ? number(*value) : refuse("a value that is no number");
    }
    bool binary(binary_t&) override { return scalar(); }
    bool start_object(std::size_t) override { return open(); }
    bool start_array(std::size_t) override { return depth_ == 0 ? refuse("no object") : open(); }
    bool key(string_t& text) override {
        (depth_ == 1 ? key_ : name_) = text;
        return true;
    }
    bool end_object() override { return close(); }
    bool end_array() override { return close(); }
    bool parse_error(std::size_t, const std::string&,
                     const nlohmann::detail::exception& what) override {
        return refuse(what.what());
    }

  private:
    bool refuse(const std::string& why) {
        problem = why;
        return false;
    }
    bool inNames() const { return depth_ == 2 && key_ == "names"; }
    bool isWanted() const { return depth_ == 0 || inNames() || (depth_ == 1 && key_ == "expr"); }
    bool open() {
        if (isWanted() && depth_ > 0) return refuse("an object or a list in the wrong place");
        ++depth_;
        return true;
    }
    bool close() {
        --depth_;
        return true;
    }
    /// A value that is neither a number nor a text.
    bool scalar() { return isWanted() ? refuse("a value of the wrong kind") : true; }
    bool number(double value) {
        if (!inNames()) return scalar();
        names.emplace_back(bytesOf(name_), value);
        return true;
    }

    int depth_ = 0;
    std::string key_, name_;
};

std::string answer(const std::string& value, const std::string& error) {
    const json reply = {{"value", value}, {"error", error}};
    return reply.dump(-1, ' ', true, json::error_handler_t::replace);
}

/// False when the line is no request, which `reply` then says.
bool answerLine(korvant::ExpressionEvaluator& evaluator, const std::string& line,
                std::string& reply) try {
    Request request;
    const bool read = json::sax_parse(line, &request);
    if (!read || !request.hasExpression)
        throw std::invalid_argument(request.problem.empty() ? "no \"expr\"" : request.problem);
    evaluator.clearValues();
    for (const auto& [name, value] : request.names) evaluator.setValue(name, value);
    const auto result = evaluator.evaluate(request.expression);
    reply = result.error.empty() ? answer(hexadecimalText(result.value), "")
                                 : answer("nan", utf8Of(result.error));
    return true;
} catch (const std::exception& problem) {
    reply = answer("nan", std::string("not a request: ") + problem.what());
    return false;
}

/// The next line without its end; of a longer one than allowed, `whole` is false and the rest
/// is passed over. False at the end of the stream.
bool readLine(std::istream& in, std::string& line, bool& whole) {
    std::streambuf& buffer = *in.rdbuf();
    constexpr int end = std::char_traits<char>::eof();
    line.clear();
    whole = true;
    int byte = buffer.sbumpc();
    if (byte == end) return false;
    for (; byte != end && byte != '\n'; byte = buffer.sbumpc()) {
        whole = whole && line.size() < kLongestLine;
        if (whole) line += static_cast<char>(byte);
    }
    return true;
}

}  // namespace

std::optional<double> readEvalNumber(std::string_view text) {
    const bool negative = text.starts_with('-');
    if (negative || text.starts_with('+')) text.remove_prefix(1);
    const bool hexadecimal = text.starts_with("0x") || text.starts_with("0X");
    if (hexadecimal) text.remove_prefix(2);
    if (text.empty() || text.front() == '-') return std::nullopt;
    double value = 0;
    const auto format = hexadecimal ? std::chars_format::hex : std::chars_format::general;
    const auto [end, error] =
        std::from_chars(text.data(), text.data() + text.size(), value, format);
    if (error != std::errc{} || end != text.data() + text.size()) return std::nullopt;
    return negative ? -value : value;
}

bool answerEvalLines(std::istream& in, std::ostream& out) {
    korvant::ExpressionEvaluator evaluator;
    bool allRead = true, whole = true;
    std::string reply;
    for (std::string line; readLine(in, line, whole);) {
        if (line.empty()) continue;
        if (whole) {
            allRead = answerLine(evaluator, line, reply) && allRead;
        } else {
            reply = answer("nan", "not a request: a line of more than 16 MiB");
            allRead = false;
        }
        out << reply << '\n';
        if (in.rdbuf()->in_avail() <= 0) out.flush();
        if (!out) break;
    }
    out.flush();
    return allRead;
}

}  // namespace korvant_app
