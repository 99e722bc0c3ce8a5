#include "base/text/rich_text.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <vector>

#include "base/text/characters.h"

namespace korvant {

namespace {

constexpr std::size_t kDeepestGroup = 256;

struct Look {
    bool bold = false;
    bool italic = false;
    bool underlined = false;
    bool hidden = false;    ///< inside a table of fonts and the like
    int fallbackBytes = 1;  ///< characters that stand for a code in older readers
};

/// Groups whose content is no text.
bool isHiddenDestination(std::string_view word) {
    for (const std::string_view one : {"fonttbl", "colortbl", "stylesheet", "info", "pict",
                                       "header", "footer", "object", "themedata", "listtable"})
        if (word == one) return true;
    return false;
}

class RichTextReader {
  public:
    explicit RichTextReader(std::string_view text) : text_(text) {}

    std::string read() {
        while (at_ < text_.size()) step();
        setLook(Look());
        return html_;
    }

  private:
    void step() {
        const char c = text_[at_++];
        switch (c) {
            case '{':
                if (groups_.size() < kDeepestGroup) groups_.push_back(look_);
                break;
            case '}':
                closeGroup();
                break;
            case '\\':
                control();
                break;
            case '\r':
            case '\n':
                break;
            default:
                put(static_cast<unsigned char>(c));
        }
    }

    void closeGroup() {
        if (groups_.empty()) return;
        setLook(groups_.back());
        groups_.pop_back();
    }

    void control() {
        if (at_ >= text_.size()) return;
        if (!isLetter(text_[at_])) return controlSymbol(text_[at_++]);
        const std::size_t start = at_;
        while (at_ < text_.size() && isLetter(text_[at_])) ++at_;
        const std::string_view word = text_.substr(start, at_ - start);
        bool given = false;
        const std::int32_t number = readNumber(given);
        if (at_ < text_.size() && text_[at_] == ' ') ++at_;
        controlWord(word, given ? number : 1, given);
    }

    std::int32_t readNumber(bool& given) {
        std::size_t end = at_;
        if (end < text_.size() && text_[end] == '-') ++end;
        while (end < text_.size() && isDigit(text_[end])) ++end;
        std::int32_t number = 0;
        const auto read = std::from_chars(text_.data() + at_, text_.data() + end, number);
        given = read.ec == std::errc() && read.ptr == text_.data() + end;
        if (given) at_ = end;
        return number;
    }

    void controlSymbol(char symbol) {
        if (symbol == '\'') return hexByte();
        if (symbol == '*') {
            Look hidden = look_;
            hidden.hidden = true;
            setLook(hidden);
        } else if (symbol == '~') {
            put(0xA0);
        } else if (symbol == '\\' || symbol == '{' || symbol == '}') {
            put(static_cast<unsigned char>(symbol));
        } else if (symbol == '\n' || symbol == '\r') {
            markup("<br>");
        }
    }

    void hexByte() {
        unsigned byte = 0;
        const std::size_t end = std::min(at_ + 2, text_.size());
        std::from_chars(text_.data() + at_, text_.data() + end, byte, 16);
        at_ = end;
        if (byte != 0) put(byte);
    }

    void controlWord(std::string_view word, std::int32_t number, bool given) {
        Look look = look_;
        if (word == "par" || word == "line") return markup("<br>");
        if (word == "tab") return markup("&nbsp;&nbsp;&nbsp;&nbsp;");
        if (word == "u" && given) return unicode(number);
        if (word == "b") look.bold = number != 0;
        if (word == "i") look.italic = number != 0;
        if (word == "ul") look.underlined = number != 0;
        if (word == "ulnone") look.underlined = false;
        if (word == "plain") look = Look{false, false, false, look.hidden, look.fallbackBytes};
        if (word == "uc" && given && number >= 0) look.fallbackBytes = number;
        if (isHiddenDestination(word)) look.hidden = true;
        setLook(look);
    }

    /// Codes are signed 16-bit numbers; the characters that follow stand in for readers that do
    /// not know the code.
    void unicode(std::int32_t number) {
        put(static_cast<std::uint32_t>(number) & 0xFFFFU);
        for (int i = 0; i < look_.fallbackBytes && at_ < text_.size(); ++i) skipCharacter();
    }

    void skipCharacter() {
        if (text_[at_] == '{' || text_[at_] == '}') return;
        const bool hex = text_.substr(at_, 2) == "\\'";
        at_ = std::min(at_ + (hex ? 4 : 1), text_.size());
    }

    void put(std::uint32_t code) {
        if (look_.hidden) return;
        if (code == '<') return markup("&lt;");
        if (code == '>') return markup("&gt;");
        if (code == '&') return markup("&amp;");
        if (code < 0x80) {
            html_ += static_cast<char>(code);
        } else {
            html_ += "&#";
            html_ += std::to_string(code);
            html_ += ';';
        }
    }

    void markup(std::string_view tag) {
        if (!look_.hidden) html_ += tag;
    }

    /// Elements nest in one order, so all are closed and opened again.
    void setLook(const Look& next) {
        const bool same = look_.bold == next.bold && look_.italic == next.italic &&
                          look_.underlined == next.underlined;
        if (!same) {
            if (look_.underlined) html_ += "</u>";
            if (look_.italic) html_ += "</i>";
            if (look_.bold) html_ += "</b>";
            if (next.bold) html_ += "<b>";
            if (next.italic) html_ += "<i>";
            if (next.underlined) html_ += "<u>";
        }
        look_ = next;
    }

    std::string_view text_;
    std::size_t at_ = 0;
    std::string html_;
    Look look_;
    std::vector<Look> groups_;
};

}  // namespace

std::string htmlOfRichText(std::string_view text) {
    if (text.substr(0, 5) != "{\\rtf") return std::string(text);
    return RichTextReader(text).read();
}

}  // namespace korvant
