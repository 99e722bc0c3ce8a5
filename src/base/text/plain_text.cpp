#include "base/text/plain_text.h"

#include <algorithm>

namespace korvant {

namespace {

/// Elements after which, or at which, a line ends.
constexpr std::string_view kLineEnds[] = {"br",  "hr",  "/p",     "/div",   "/li", "/tr",
                                          "/h1", "/h2", "/h3",    "/h4",    "/h5", "/h6",
                                          "/dt", "/dd", "/table", "/center"};

struct Entity {
    std::string_view name;
    char character;
};

constexpr Entity kEntities[] = {
    {"&lt;", '<'}, {"&gt;", '>'}, {"&amp;", '&'}, {"&quot;", '"'}, {"&nbsp;", ' '}};

std::string_view nameOfTag(std::string_view tag) {
    return tag.substr(0, tag.find_first_of(" />", 1));
}

void endLine(std::string& text) {
    if (!text.empty() && text.back() != '\n') text.push_back('\n');
}

void applyTag(std::string_view tag, std::string& text) {
    const std::string_view name = nameOfTag(tag);
    if (name == "br")
        text.push_back('\n');
    else if (name == "li")
        text.append("- ");
    else if (name == "/td" || name == "/th")
        text.append("  ");
    else if (std::find(std::begin(kLineEnds), std::end(kLineEnds), name) != std::end(kLineEnds))
        endLine(text);
}

/// The entity at the front of `html`, or the character that stands there.
std::size_t appendCharacter(std::string_view html, std::string& text) {
    for (const Entity& entity : kEntities)
        if (html.substr(0, entity.name.size()) == entity.name) {
            text.push_back(entity.character);
            return entity.name.size();
        }
    text.push_back(html.front());
    return 1;
}

}  // namespace

std::string plainFromHtml(std::string_view html) {
    std::string text;
    while (!html.empty()) {
        const auto end = html.front() == '<' ? html.find('>') : std::string_view::npos;
        if (end == std::string_view::npos) {
            html.remove_prefix(appendCharacter(html, text));
        } else {
            applyTag(html.substr(1, end - 1), text);
            html.remove_prefix(end + 1);
        }
    }
    while (!text.empty() && text.back() == '\n') text.pop_back();
    return text;
}

}  // namespace korvant
