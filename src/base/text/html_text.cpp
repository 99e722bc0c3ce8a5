#include "base/text/html_text.h"

#include <algorithm>
#include <cstdint>
#include <vector>

#include "base/text/characters.h"
#include "base/text/text_encoding.h"

namespace korvant {
namespace {

enum class Tag { none, text, block, single, raw, ignored };

struct KnownTag {
    std::string_view name;
    Tag kind;
};

/// Sorted by name. `raw` elements vanish with what they hold, `ignored` ones leave it.
constexpr KnownTag kTags[] = {
    {"a", Tag::text},         {"applet", Tag::ignored},   {"b", Tag::text},
    {"big", Tag::text},       {"blockquote", Tag::block}, {"body", Tag::ignored},
    {"br", Tag::single},      {"center", Tag::block},     {"cite", Tag::text},
    {"code", Tag::text},      {"dd", Tag::block},         {"del", Tag::text},
    {"div", Tag::block},      {"dl", Tag::block},         {"dt", Tag::block},
    {"em", Tag::text},        {"embed", Tag::ignored},    {"font", Tag::text},
    {"form", Tag::ignored},   {"h1", Tag::block},         {"h2", Tag::block},
    {"h3", Tag::block},       {"h4", Tag::block},         {"h5", Tag::block},
    {"h6", Tag::block},       {"head", Tag::ignored},     {"hr", Tag::single},
    {"html", Tag::ignored},   {"i", Tag::text},           {"iframe", Tag::ignored},
    {"img", Tag::ignored},    {"input", Tag::ignored},    {"kbd", Tag::text},
    {"li", Tag::block},       {"link", Tag::ignored},     {"meta", Tag::ignored},
    {"object", Tag::ignored}, {"ol", Tag::block},         {"p", Tag::block},
    {"pre", Tag::block},      {"s", Tag::text},           {"samp", Tag::text},
    {"script", Tag::raw},     {"small", Tag::text},       {"span", Tag::text},
    {"strike", Tag::text},    {"strong", Tag::text},      {"style", Tag::raw},
    {"sub", Tag::text},       {"sup", Tag::text},         {"table", Tag::block},
    {"tbody", Tag::ignored},  {"td", Tag::block},         {"th", Tag::block},
    {"thead", Tag::ignored},  {"title", Tag::raw},        {"tr", Tag::block},
    {"tt", Tag::text},        {"u", Tag::text},           {"ul", Tag::block},
    {"var", Tag::text}};

constexpr std::string_view kAttributes[] = {
    "align", "bgcolor", "border",  "cellpadding", "cellspacing", "color", "colspan",
    "face",  "href",    "rowspan", "size",        "valign",      "width"};

constexpr std::size_t kLongestTag = 1024;
constexpr std::size_t kLongestValue = 64;

bool isBlank(char c) {
    return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

Tag kindOf(std::string_view name) {
    const auto* found = std::lower_bound(
        std::begin(kTags), std::end(kTags), name,
        [](const KnownTag& tag, std::string_view wanted) { return tag.name < wanted; });
    return found != std::end(kTags) && found->name == name ? found->kind : Tag::none;
}

/// A number with an optional percent sign; layouts are not stretched beyond reason.
bool isSmallNumber(std::string_view value) {
    std::size_t digits = 0;
    while (digits < value.size() && isDigit(value[digits])) ++digits;
    const std::string_view rest = value.substr(digits);
    return digits > 0 && digits <= 3 && (rest.empty() || rest == "%");
}

bool isAllowed(std::string_view name, std::string_view value) {
    if (value.size() > kLongestValue) return false;
    if (name == "colspan" || name == "rowspan") return isSmallNumber(value) && value.size() <= 2;
    if (name == "width" || name == "border" || name.substr(0, 4) == "cell")
        return isSmallNumber(value);
    if (name == "href")
        return value.substr(0, 1) == "#" && value.find_first_of("\"'<>") == value.npos;
    return std::all_of(value.begin(), value.end(), [](char c) {
        return isLetter(c) || isDigit(c) || c == '#' || c == '+' || c == '-' || c == ' ' ||
               c == ',';
    });
}

/// What stands between "<" and ">".
struct TagText {
    std::string name;
    bool closing = false;
    std::string attributes;  ///< allowed ones, each with a blank in front
};

class AttributeReader {
  public:
    explicit AttributeReader(std::string_view text) : text_(text) {}

    std::string allowed() {
        std::string result;
        std::string name, value;
        while (next(name, value)) {
            const bool known = std::binary_search(std::begin(kAttributes), std::end(kAttributes),
                                                  std::string_view(name));
            if (known && isAllowed(name, value)) result += " " + name + "=\"" + value + "\"";
        }
        return result;
    }

  private:
    bool next(std::string& name, std::string& value) {
        skip([](char c) { return isBlank(c) || c == '/'; });
        if (at_ >= text_.size()) return false;
        name = lowerCase(take([](char c) { return !isBlank(c) && c != '=' && c != '/'; }));
        value.clear();
        skip(isBlank);
        if (at_ < text_.size() && text_[at_] == '=') value = readValue();
        if (name.empty() && value.empty()) ++at_;
        return true;
    }

    std::string readValue() {
        ++at_;
        skip(isBlank);
        if (at_ >= text_.size()) return {};
        const char quote = text_[at_];
        if (quote != '"' && quote != '\'') return take([](char c) { return !isBlank(c); });
        ++at_;
        std::string value = take([quote](char c) { return c != quote; });
        ++at_;
        return value;
    }

    template <class Test>
    void skip(Test test) {
        while (at_ < text_.size() && test(text_[at_])) ++at_;
    }
    template <class Test>
    std::string take(Test test) {
        const std::size_t start = at_;
        skip(test);
        return std::string(text_.substr(start, at_ - start));
    }

    std::string_view text_;
    std::size_t at_ = 0;
};

/// Builds the bounded markup from front to back in one pass.
class Bounder {
  public:
    explicit Bounder(std::string text) : text_(std::move(text)) {}

    std::string run() {
        while (at_ < text_.size()) step();
        while (!open_.empty()) closeLast();
        return std::move(out_);
    }

  private:
    struct Element {
        std::string name;
        bool written;  ///< false: too deep, so it has no tags
    };

    void step() {
        const char c = text_[at_];
        if (c == '<') {
            if (comment() || tag()) return;
            plain("&lt;");
        } else if (c == '>') {
            plain("&gt;");
        } else if (c == '&') {
            entity();
        } else if (c == '\n') {
            lineFeed();
        } else {
            if (static_cast<unsigned char>(c) >= 32 || c == '\t') out_ += c;
            if (!isBlank(c)) afterBreak_ = false;
            ++at_;
        }
    }

    void plain(const char* escaped) {
        out_ += escaped;
        afterBreak_ = false;
        ++at_;
    }

    bool startsWith(std::string_view what) const {
        return text_.compare(at_, what.size(), what) == 0;
    }

    bool comment() {
        if (!startsWith("<!")) return false;
        const std::string_view end = startsWith("<!--") ? "-->" : ">";
        const std::size_t found = text_.find(end, at_);
        if (found == std::string::npos) return false;
        at_ = found + end.size();
        return true;
    }

    /// Where the tag that starts here ends; npos when it is none. A ">" in quotes is no end.
    std::size_t tagEnd() const {
        char quote = 0;
        const std::size_t limit = std::min(text_.size(), at_ + kLongestTag);
        for (std::size_t i = at_ + 1; i < limit; ++i) {
            const char c = text_[i];
            if (quote) {
                if (c == quote) quote = 0;
            } else if (c == '>') {
                return i;
            } else if (c == '<') {
                break;
            } else if ((c == '"' || c == '\'') && text_[i - 1] == '=') {
                quote = c;
            }
        }
        return std::string::npos;
    }

    bool tag() {
        TagText read;
        std::size_t nameAt = at_ + 1;
        if (nameAt < text_.size() && text_[nameAt] == '/') {
            read.closing = true;
            ++nameAt;
        }
        std::size_t nameEnd = nameAt;
        while (nameEnd < text_.size() && (isLetter(text_[nameEnd]) || isDigit(text_[nameEnd])))
            ++nameEnd;
        read.name = lowerCase(std::string_view(text_).substr(nameAt, nameEnd - nameAt));
        const Tag kind = kindOf(read.name);
        if (kind == Tag::none) return false;
        const std::size_t end = tagEnd();
        if (end == std::string::npos || end < nameEnd) return false;
        read.attributes =
            AttributeReader(std::string_view(text_).substr(nameEnd, end - nameEnd)).allowed();
        at_ = end + 1;
        apply(kind, read);
        return true;
    }

    void apply(Tag kind, const TagText& tag) {
        if (kind == Tag::block || kind == Tag::single) afterBreak_ = true;
        switch (kind) {
            case Tag::single:
                if (!tag.closing) out_ += "<" + tag.name + tag.attributes + ">";
                break;
            case Tag::text:
            case Tag::block:
                tag.closing ? close(tag.name) : open(tag);
                break;
            case Tag::raw:
                if (!tag.closing) skipRaw(tag.name);
                break;
            default:
                break;
        }
    }

    /// The content of a script or a style is no text; without an end tag nothing is skipped.
    void skipRaw(const std::string& name) {
        const std::string end = "</" + name;
        for (std::size_t i = text_.find("</", at_); i != std::string::npos;
             i = text_.find("</", i + 2)) {
            if (lowerCase(std::string_view(text_).substr(i, end.size())) != end) continue;
            const std::size_t close = text_.find('>', i);
            at_ = close == std::string::npos ? text_.size() : close + 1;
            return;
        }
    }

    void open(const TagText& tag) {
        const bool table = tag.name == "table";
        const bool fits = written_ < kHtmlDepth && (!table || tables_ < kHtmlTableDepth);
        open_.push_back({tag.name, fits});
        pres_ += tag.name == "pre";
        if (!fits) return;
        ++written_;
        tables_ += table;
        out_ += "<" + tag.name + tag.attributes + ">";
    }

    /// An end tag closes the elements that were left open inside its own; one without a start is
    /// dropped. Only the nearest ones are looked at, so that the time stays linear.
    void close(const std::string& name) {
        const std::size_t reach = std::min<std::size_t>(open_.size(), 2 * kHtmlDepth);
        for (std::size_t back = 0; back < reach; ++back) {
            if (open_[open_.size() - 1 - back].name != name) continue;
            for (std::size_t i = 0; i <= back; ++i) closeLast();
            return;
        }
    }

    void closeLast() {
        const Element last = std::move(open_.back());
        open_.pop_back();
        pres_ -= last.name == "pre";
        if (!last.written) return;
        --written_;
        tables_ -= last.name == "table";
        out_ += "</" + last.name + ">";
    }

    void lineFeed() {
        ++at_;
        if (pres_ > 0) {
            out_ += '\n';
            return;
        }
        if (afterBreak_ || beforeBlock()) {
            out_ += '\n';
            afterBreak_ = false;
            return;
        }
        out_ += "<br>\n";
    }

    /// The next thing on the following line is a tag that breaks the line itself.
    bool beforeBlock() const {
        std::size_t i = at_;
        while (i < text_.size() && (text_[i] == ' ' || text_[i] == '\t')) ++i;
        if (i >= text_.size() || text_[i] != '<') return false;
        i += i + 1 < text_.size() && text_[i + 1] == '/' ? 2 : 1;
        std::size_t end = i;
        while (end < text_.size() && (isLetter(text_[end]) || isDigit(text_[end]))) ++end;
        return kindOf(lowerCase(std::string_view(text_).substr(i, end - i))) == Tag::block;
    }

    /// A reference that a renderer can resolve stays one, any other "&" is a sign.
    void entity() {
        std::size_t end = at_ + 1;
        const bool number = end < text_.size() && text_[end] == '#';
        if (number) ++end;
        const std::size_t start = end;
        while (end < text_.size() && end - start < 8 &&
               (number ? isDigit(text_[end]) : isLetter(text_[end]) || isDigit(text_[end])))
            ++end;
        const bool whole = end > start && end < text_.size() && text_[end] == ';';
        if (!whole || (number && !isCharacter(text_.substr(start, end - start)))) {
            plain("&amp;");
            return;
        }
        out_.append(text_, at_, end + 1 - at_);
        afterBreak_ = false;
        at_ = end + 1;
    }

    static bool isCharacter(const std::string& digits) {
        std::uint32_t code = 0;
        for (const char c : digits) code = code * 10 + static_cast<std::uint32_t>(c - '0');
        return code >= 32 && code <= 0x10FFFF && (code < 0xD800 || code > 0xDFFF);
    }

    std::string text_;
    std::string out_;
    std::size_t at_ = 0;
    std::vector<Element> open_;
    int written_ = 0;
    int tables_ = 0;
    int pres_ = 0;
    bool afterBreak_ = true;  ///< nothing but blanks since a tag that broke the line
};

/// UTF-8 of at most the limit, cut between two characters.
std::string boundedText(std::string_view bytes) {
    const bool cut = bytes.size() > kHtmlBytes;
    if (cut) bytes = bytes.substr(0, kHtmlBytes);
    while (cut && !bytes.empty() && (static_cast<unsigned char>(bytes.back()) & 0xC0) == 0x80)
        bytes.remove_suffix(1);
    if (cut && !bytes.empty() && static_cast<unsigned char>(bytes.back()) >= 0xC0)
        bytes.remove_suffix(1);
    std::string text = decodeForDisplay(bytes);
    if (cut) text += "...";
    return text;
}

}  // namespace

std::string boundedHtml(std::string_view bytes) {
    return Bounder(boundedText(bytes)).run();
}

std::string htmlFromPlain(std::string_view bytes) {
    std::string result;
    bool blank = true;  // a blank at the start of a line or after another one must not vanish
    for (const char c : boundedText(bytes)) {
        switch (c) {
            case '<':
                result += "&lt;";
                break;
            case '>':
                result += "&gt;";
                break;
            case '&':
                result += "&amp;";
                break;
            case '\n':
                result += "<br>\n";
                break;
            case '\t':
                result += "&nbsp;&nbsp;&nbsp; ";
                break;
            case ' ':
                result += blank ? "&nbsp;" : " ";
                break;
            default:
                if (static_cast<unsigned char>(c) >= 32) result += c;
        }
        blank = c == ' ' || c == '\n' || c == '\t';
    }
    return result;
}

}  // namespace korvant
