#include "ui/kit/readable_markup.h"

#include <algorithm>
#include <cmath>
#include <string_view>

#include "ui/kit/text_conversion.h"
#include "ui/kit/theme.h"

namespace korvant::ui {
namespace {

constexpr char kBreak[] = "<wbr>";
constexpr int kUncut = 12;  ///< characters of a word before it may be cut
constexpr double kContrast = 4.5;
constexpr int kSteps = 20;
constexpr std::string_view kColour = " color=\"", kBackground = " bgcolor=\"";

bool beginsCharacter(char c) {
    return (static_cast<unsigned char>(c) & 0xC0) != 0x80;
}

/// Where what begins at `at` ends: a tag, an entity or one character.
std::size_t endOfPiece(const std::string& markup, std::size_t at) {
    const char closing = markup[at] == '<' ? '>' : ';';
    if (markup[at] == '<' || markup[at] == '&') {
        const std::size_t end = markup.find(closing, at);
        return end == std::string::npos ? markup.size() : end + 1;
    }
    std::size_t end = at + 1;
    while (end < markup.size() && !beginsCharacter(markup[end])) ++end;
    return end;
}

bool isBlank(char c) {
    return c == ' ' || c == '\n' || c == '\t' || c == '\r';
}

/// Paths and lists without blanks are cut behind these first.
bool isJoint(char c) {
    return c == '/' || c == '\\' || c == '-' || c == '_' || c == ',' || c == ';' || c == '.';
}

/// Of a colour between 0 and 255, as the eye weighs it.
double channel(unsigned char value) {
    const double share = value / 255.0;
    return share <= 0.04045 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
}

double brightness(const wxColour& colour) {
    return 0.2126 * channel(colour.Red()) + 0.7152 * channel(colour.Green()) +
           0.0722 * channel(colour.Blue());
}

double contrast(const wxColour& one, const wxColour& other) {
    const double a = brightness(one), b = brightness(other);
    return (std::max(a, b) + 0.05) / (std::min(a, b) + 0.05);
}

}  // namespace

wxColour readableOn(const wxColour& colour, const wxColour& back, const wxColour& text) {
    for (int step = 0; step < kSteps; ++step) {
        const wxColour mixed = blend(text, colour, static_cast<double>(step) / kSteps);
        if (contrast(mixed, back) >= kContrast) return mixed;
    }
    return text;
}

std::string withBreaks(const std::string& markup) {
    std::string result;
    int letters = 0;  // of this word, since it could last be cut
    for (std::size_t at = 0; at < markup.size();) {
        const std::size_t end = endOfPiece(markup, at);
        const char first = markup[at];
        result.append(markup, at, end - at);
        at = end;
        if (first == '<') continue;
        letters = isBlank(first) ? 0 : letters + 1;
        const bool goesOn = at < markup.size() && !isBlank(markup[at]) && markup[at] != '<';
        if (!goesOn || letters < kUncut || (!isJoint(first) && letters < 2 * kUncut)) continue;
        result += kBreak;
        letters = kUncut;
    }
    return result;
}

std::string readableColours(const std::string& markup, const wxColour& back, const wxColour& text) {
    if (markup.find(kBackground) != std::string::npos) return markup;
    std::string result = markup;
    for (std::size_t at = result.find(kColour); at != std::string::npos;
         at = result.find(kColour, at + 1)) {
        const std::size_t begin = at + kColour.size(), end = result.find('"', begin);
        if (end == std::string::npos) break;
        const wxColour wanted(fromUtf8(result.substr(begin, end - begin)));
        if (!wanted.IsOk()) continue;
        result.replace(begin, end - begin,
                       toUtf8(readableOn(wanted, back, text).GetAsString(wxC2S_HTML_SYNTAX)));
    }
    return result;
}

}  // namespace korvant::ui
