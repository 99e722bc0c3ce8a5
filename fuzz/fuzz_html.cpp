// Texts of scripts as the markup that views are given: short, closed, and without anything that is
// fetched or followed.
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "base/text/html_text.h"
#include "base/text/plain_text.h"
#include "base/text/text_encoding.h"

namespace {

using namespace korvant;

void require(bool condition) {
    if (!condition) std::abort();
}

/// Depth of the elements, and whether each is closed by its own end.
void requireClosed(const std::string& html) {
    int depth = 0;
    for (std::size_t at = html.find('<'); at != std::string::npos; at = html.find('<', at + 1)) {
        const std::size_t end = html.find('>', at);
        require(end != std::string::npos);
        const std::string tag = html.substr(at + 1, end - at - 1);
        for (const char* single : {"br", "hr"})
            if (tag.rfind(single, 0) == 0) --depth;
        depth += !tag.empty() && tag[0] == '/' ? -1 : 1;
        require(depth >= 0 && depth <= kHtmlDepth + 1);
        for (const char* never : {"img", "script", "iframe", "link", "object", "embed", "meta"})
            require(tag.rfind(never, 0) != 0);
        at = end;
    }
    require(depth == 0);
}

void check(const std::string& html) {
    require(isValidUtf8(html));
    require(html.size() <= 8 * kHtmlBytes);
    requireClosed(html);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    check(boundedHtml(bytes));
    check(htmlFromPlain(bytes));
    return 0;
}
