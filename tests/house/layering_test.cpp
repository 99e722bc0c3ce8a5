// The dependency rule, as a table: which room of the house may include which.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
#include <set>
#include <string>

#include "house/source_tree.h"

namespace fs = std::filesystem;

namespace {

using Rooms = std::set<std::string>;

Rooms operator+(Rooms left, const Rooms& right) {
    left.insert(right.begin(), right.end());
    return left;
}

const Rooms kBase = {"base/text", "base/system"};
const Rooms kHost = {"host/services", "host/engine",  "host/terminal",
                     "host/scan",     "host/library", "host/run"};
const Rooms kObject = {"object/model", "object/form", "object/script"};
const Rooms kEditor = {"editor", "editor/control", "editor/document", "editor/stops",
                       "editor/assist"};
const Rooms kProtocol = {"protocol/rpc", "protocol/dap", "protocol/lsp"};
const Rooms kUi = {"ui/kit", "ui/boxes", "ui/console", "ui/editor", "ui/form"};
const Rooms kCore = kBase + kHost + Rooms{"expr", "language", "debug"} + kObject + kEditor;

/// A room's own headers are always allowed, and so are include/ and the standard library.
const std::map<std::string, Rooms> kMayInclude = {
    {"base/text", {}},
    {"base/system", {"base/text"}},
    {"expr", {}},
    {"host/services", kBase},
    {"host/engine", kBase + Rooms{"angelscript"}},
    {"host/terminal", kBase + Rooms{"host/services"}},
    {"host/scan", kBase + Rooms{"host/engine"}},
    {"host/run", kBase + Rooms{"host/scan", "host/engine", "host/services"}},
    {"host/library", kBase + Rooms{"host/run", "host/engine", "host/services"}},
    {"language", kBase + kHost},
    {"debug", kBase + kHost + Rooms{"language", "expr"}},
    {"object/model", kBase + kHost + kObject + Rooms{"expr"}},
    {"object/form", kBase + kHost + kObject + Rooms{"expr"}},
    {"object/script", kBase + kHost + kObject + Rooms{"expr"}},
    {"editor", kBase + kHost + kEditor + Rooms{"expr", "language", "debug"}},
    {"editor/control", kBase + kHost + kEditor + Rooms{"expr", "language", "debug"}},
    {"editor/document", kBase + kHost + kEditor + Rooms{"expr", "language", "debug"}},
    {"editor/stops", kBase + kHost + kEditor + Rooms{"expr", "language", "debug"}},
    {"editor/assist", kBase + kHost + kEditor + Rooms{"expr", "language", "debug"}},
    {"protocol/rpc", kBase + kHost + kProtocol + Rooms{"language", "debug"}},
    {"protocol/dap", kBase + kHost + kProtocol + Rooms{"language", "debug"}},
    {"protocol/lsp", kBase + kHost + kProtocol + Rooms{"language", "debug"}},
    {"ui/kit", kCore + kUi + Rooms{"wx"}},
    {"ui/boxes", kCore + kUi + Rooms{"wx"}},
    {"ui/console", kCore + kUi + Rooms{"wx"}},
    {"ui/editor", kCore + kUi + Rooms{"wx"}},
    {"ui/form", kCore + kUi + Rooms{"wx"}},
    {"module", kCore + kUi + kProtocol + Rooms{"wx", "angelscript"}},
};

/// The room of a file or header, given from src/; empty for what is in none of them.
std::string roomOf(const std::string& path) {
    const auto last = path.rfind('/');
    if (last == std::string::npos) return "";
    std::string room = path.substr(0, last);
    while (!room.empty() && kMayInclude.count(room) == 0) {
        const auto slash = room.rfind('/');
        room = slash == std::string::npos ? "" : room.substr(0, slash);
    }
    return room;
}

/// The room or library that an include names; empty for the standard library and include/.
std::string ownerOf(const std::string& header) {
    static const std::regex toolkit("^(wx/|gtk/|gdk/|X11/|glib).*");
    if (std::regex_match(header, toolkit)) return "wx";
    if (header.rfind("angelscript", 0) == 0) return "angelscript";
    return roomOf(header);
}

bool allowed(const std::string& room, const std::string& owner) {
    return owner.empty() || owner == room || kMayInclude.at(room).count(owner) > 0;
}

const std::regex kInclude(R"re(^\s*#\s*include\s*[<"]([^>"]+)[>"])re");

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

TEST(Layering, EveryFileHasARoomAndEveryIncludeFollowsTheTable) {
    for (const auto& entry : fs::directory_iterator(kRoot / "src")) {
        if (!entry.is_directory()) continue;
        forEachInclude(entry.path(), [](const fs::path& file, const std::string& header) {
            const std::string place = fs::relative(file, kRoot / "src").generic_string();
            const std::string room = roomOf(place);
            ASSERT_FALSE(room.empty()) << place << " is in no room of the table";
            EXPECT_TRUE(allowed(room, ownerOf(header))) << place << " may not include " << header;
        });
    }
}

TEST(Layering, ProgramsUseOnlyPublicHeadersOfTheCore) {
    forEachInclude(kRoot / "apps", [](const fs::path& file, const std::string& header) {
        const std::string owner = ownerOf(header);
        // What needs no window.
        if (header == "module/configuration.h" || header == "module/families.h") return;
        EXPECT_TRUE(owner != "wx" && owner != "module" && kUi.count(owner) == 0)
            << fs::relative(file, kRoot) << " may not include " << header;
    });
}

TEST(Layering, PublicHeadersNameNoInternalRoom) {
    forEachInclude(kRoot / "include", [](const fs::path& file, const std::string& header) {
        const std::string owner = ownerOf(header);
        EXPECT_TRUE(owner.empty() || owner == "angelscript")
            << fs::relative(file, kRoot) << " may not include " << header;
    });
}

TEST(Layering, TheScannerSeesAForbiddenArrow) {
    EXPECT_FALSE(allowed("expr", ownerOf("base/system/clock.h")));
    EXPECT_FALSE(allowed("editor/control", ownerOf("wx/frame.h")));
    EXPECT_FALSE(allowed("host/run", ownerOf("host/library/progress.h")));
    EXPECT_FALSE(allowed("host/library", ownerOf("object/form/edit_session.h")));
    EXPECT_TRUE(allowed("object/form", ownerOf("base/system/clock.h")));
    EXPECT_EQ(roomOf("editor/script_editor.h"), "editor");
}

}  // namespace
