// The dependency rule, as a table: which folder may include what.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
#include <set>
#include <string>

namespace fs = std::filesystem;

namespace {

const fs::path kRoot = KORVANT_SOURCE_DIR;

/// A folder's own headers are always allowed, and so are include/ and the standard library.
const std::map<std::string, std::set<std::string>> kMayInclude = {
    {"expr", {}},
    {"host", {"angelscript"}},
    {"object", {"expr", "host"}},
    {"editor", {"expr", "host"}},
    {"ui", {"wx", "host", "object", "editor", "expr"}},
    {"module", {"wx", "angelscript", "expr", "host", "object", "editor", "ui", "module"}},
};

const std::regex kInclude(R"re(^\s*#\s*include\s*[<"]([^>"]+)[>"])re");

/// The layer or library that an include names; empty for the standard library and include/.
std::string ownerOf(const std::string& header) {
    static const std::regex toolkit("^(wx/|gtk/|gdk/|X11/|glib).*");
    if (std::regex_match(header, toolkit)) return "wx";
    if (header.rfind("angelscript", 0) == 0 || header.rfind("scriptarray", 0) == 0)
        return "angelscript";
    const auto slash = header.find('/');
    if (slash == std::string::npos) return "";
    const std::string folder = header.substr(0, slash);
    return kMayInclude.count(folder) ? folder : "";
}

/// Layers whose public headers bring the engine's with them.
bool allowed(const std::string& layer, const std::string& owner) {
    return owner.empty() || owner == layer || kMayInclude.at(layer).count(owner) > 0;
}

template <class Visit>
void forEachInclude(const fs::path& folder, Visit visit) {
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
        const auto extension = entry.path().extension();
        if (extension != ".cpp" && extension != ".h") continue;
        std::ifstream file(entry.path());
        std::smatch match;
        for (std::string line; std::getline(file, line);)
            if (std::regex_search(line, match, kInclude)) visit(entry.path(), match[1].str());
    }
}

TEST(Layering, EveryIncludeFollowsTheTable) {
    for (const auto& [layer, _] : kMayInclude) {
        const fs::path folder = kRoot / "src" / layer;
        if (!fs::exists(folder)) continue;
        forEachInclude(folder, [&, layer = layer](const fs::path& file, const std::string& header) {
            EXPECT_TRUE(allowed(layer, ownerOf(header)))
                << fs::relative(file, kRoot) << " may not include " << header;
        });
    }
}

TEST(Layering, ProgramsUseOnlyPublicHeadersOfTheCore) {
    static const std::set<std::string> forbidden = {"wx", "ui", "module"};
    forEachInclude(kRoot / "apps", [](const fs::path& file, const std::string& header) {
        EXPECT_FALSE(forbidden.count(ownerOf(header)))
            << fs::relative(file, kRoot) << " may not include " << header;
    });
}

TEST(Layering, PublicHeadersNameNoInternalFolder) {
    forEachInclude(kRoot / "include", [](const fs::path& file, const std::string& header) {
        const std::string owner = ownerOf(header);
        EXPECT_TRUE(owner.empty() || owner == "angelscript")
            << fs::relative(file, kRoot) << " may not include " << header;
    });
}

TEST(Layering, TheScannerSeesAForbiddenArrow) {
    EXPECT_FALSE(allowed("expr", ownerOf("host/clock.h")));
    EXPECT_FALSE(allowed("editor", ownerOf("wx/frame.h")));
    EXPECT_FALSE(allowed("host", ownerOf("object/edit_session.h")));
    EXPECT_TRUE(allowed("object", ownerOf("host/clock.h")));
}

}  // namespace
